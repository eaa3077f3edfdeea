// EXPECT compile: implicit conversion from nullable pointer
#import <AppKit/AppKit.h>
NSString* _Nonnull f(NSRunningApplication* a) {
    return a.localizedName;
}
