// EXPECT compile: ARC forbids explicit message send of 'dealloc'
#import <AppKit/AppKit.h>
@interface C : NSObject
@end
@implementation C
- (void)dealloc {
    [super dealloc];
}
@end
