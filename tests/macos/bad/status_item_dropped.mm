// EXPECT none: a status item that no one keeps leaves the menu bar
#import <AppKit/AppKit.h>
void f(NSMenu* m) {
    NSStatusItem* i = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    i.menu = m;
}
