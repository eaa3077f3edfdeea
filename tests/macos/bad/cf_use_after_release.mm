// EXPECT analyze: after it is released
#import <ApplicationServices/ApplicationServices.h>
void f() {
    CGEventRef e = CGEventCreateKeyboardEvent(nullptr, 9, true);
    if (!e) return;
    CFRelease(e);
    CGEventPost(kCGHIDEventTap, e);
}
