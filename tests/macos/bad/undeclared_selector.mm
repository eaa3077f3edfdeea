// EXPECT compile: undeclared selector 'triggerCaptur'
#import <AppKit/AppKit.h>
NSMenuItem* f() {
    return [[NSMenuItem alloc] initWithTitle:@"x"
                                      action:@selector(triggerCaptur)
                               keyEquivalent:@""];
}
