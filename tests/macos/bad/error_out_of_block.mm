// EXPECT compile: captures an autoreleasing out-parameter
#import <AppKit/AppKit.h>
void f(NSURL* u, NSError** e) {
    dispatch_async(dispatch_get_main_queue(), ^{
      [NSFileManager.defaultManager removeItemAtURL:u error:e];
    });
}
