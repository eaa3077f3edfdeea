// EXPECT analyze: leak
#import <ApplicationServices/ApplicationServices.h>
void f() {
    CGEventRef e = CGEventCreateKeyboardEvent(nullptr, 9, true);
    if (!e) return;
    CGEventPost(kCGHIDEventTap, e);
}
