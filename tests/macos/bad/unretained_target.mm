// EXPECT compile: assigning retained object to unsafe_unretained variable
#import <AppKit/AppKit.h>
@interface T : NSObject
@end
@implementation T
@end
id f(NSMenuItem* i) {
    __unsafe_unretained T* t = [[T alloc] init];
    i.target = t;
    return i;
}
