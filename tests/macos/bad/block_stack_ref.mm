// EXPECT sources: holds the reference done
#import <AppKit/AppKit.h>
#include <functional>
void f(std::function<void()>& done) {
    dispatch_async(dispatch_get_main_queue(), ^{
      done();
    });
}
