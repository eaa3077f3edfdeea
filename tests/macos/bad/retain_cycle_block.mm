// EXPECT compile: capturing 'self' strongly in this block is likely to lead to a retain cycle
#import <AppKit/AppKit.h>
@interface C : NSObject
@property(copy) void (^onClick)(void);
- (void)go;
@end
@implementation C
- (void)go {
    self.onClick = ^{
      [self go];
    };
}
@end
