// EXPECT compile: block implicitly retains 'self'
#import <AppKit/AppKit.h>
@interface C : NSObject
- (void)go;
@end
@implementation C {
    int n_;
}
- (void)go {
    dispatch_async(dispatch_get_main_queue(), ^{
      n_ = 1;
    });
}
@end
