// EXPECT compile: from incompatible type
#import <AppKit/AppKit.h>
void f(NSButton* b) {
    b.bezelStyle = NSTextFieldRoundedBezel;
}
