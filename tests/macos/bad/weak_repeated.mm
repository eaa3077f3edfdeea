// EXPECT compile: weak
#import <AppKit/AppKit.h>
@interface C : NSObject
@property(nullable) C* next;
- (void)go;
@end
@implementation C
- (void)go {
    __weak C* w = self;
    dispatch_async(dispatch_get_main_queue(), ^{
      [w.next go];
      [w.next go];
    });
}
@end
