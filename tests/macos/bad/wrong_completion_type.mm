// EXPECT compile: cannot initialize a parameter of type 'void (^ _Nullable)
#import <ScreenCaptureKit/ScreenCaptureKit.h>
void f(SCContentFilter* a, SCStreamConfiguration* b) {
    [SCScreenshotManager captureImageWithFilter:a
                                  configuration:b
                              completionHandler:^(NSData* d, NSError* e) {
                                (void)d;
                                (void)e;
                              }];
}
