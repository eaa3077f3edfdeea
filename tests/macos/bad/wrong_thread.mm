// EXPECT sources: close is for the main thread
#import <AppKit/AppKit.h>
void f(NSWindow* w) {
    dispatch_async(dispatch_get_global_queue(0, 0), ^{
      [w close];
    });
}
