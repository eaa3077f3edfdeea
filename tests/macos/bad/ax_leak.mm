// EXPECT none: a +1 out-parameter that nobody releases (the analyzer does not follow them)
#import <ApplicationServices/ApplicationServices.h>
bool f(AXUIElementRef e) {
    CFTypeRef v = nullptr;
    if (AXUIElementCopyAttributeValue(e, kAXPositionAttribute, &v) != kAXErrorSuccess) return false;
    return v != nullptr;
}
