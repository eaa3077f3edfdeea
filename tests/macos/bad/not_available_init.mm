// EXPECT compile: unavailable
#import <ScreenCaptureKit/ScreenCaptureKit.h>
id f() {
    return [[SCDisplay alloc] init];
}
