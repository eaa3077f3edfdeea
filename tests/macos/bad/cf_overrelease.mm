// EXPECT analyze: not owned
#import <ApplicationServices/ApplicationServices.h>
void f(CFArrayRef a) {
    CFTypeRef v = CFArrayGetValueAtIndex(a, 0);
    CFRelease(v);
}
