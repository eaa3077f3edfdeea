// EXPECT analyze: null
#import <AppKit/AppKit.h>
#include <optional>
int f(bool b) {
    int v = 1;
    int* p = b ? &v : nullptr;
    return *p;
}
