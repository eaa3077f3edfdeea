// EXPECT analyze: dispatch_once
#import <AppKit/AppKit.h>
void f() {
    dispatch_once_t t = 0;
    dispatch_once(&t, ^{
                  });
}
