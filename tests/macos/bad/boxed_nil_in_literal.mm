// EXPECT analyze: Dictionary value cannot be nil
#import <AppKit/AppKit.h>
id f(bool b) {
    NSString* s = b ? @"x" : nil;
    return @{@"k" : s};
}
