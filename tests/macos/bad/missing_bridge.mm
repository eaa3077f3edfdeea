// EXPECT compile: requires a bridged cast
#import <AppKit/AppKit.h>
CFDictionaryRef f() {
    NSDictionary* d = @{@"a" : @YES};
    return (CFDictionaryRef)(void*)d;
}
