// EXPECT analyze: leak
#import <AppKit/AppKit.h>
bool f() {
    NSDictionary* d = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
    CFDictionaryRef o = (__bridge_retained CFDictionaryRef)d;
    return AXIsProcessTrustedWithOptions(o) != 0;
}
