// EXPECT none: no terminator behind a string_view
#import <AppKit/AppKit.h>
#include <string_view>
NSString* f(std::string_view s) {
    return [NSString stringWithUTF8String:s.data()];
}
