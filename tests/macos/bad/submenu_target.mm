// EXPECT sources: a row that may have a submenu gets a target
#import <AppKit/AppKit.h>
NSMenuItem* makeRow(id target, NSMenu* _Nullable submenu) {
    NSMenuItem* row = [[NSMenuItem alloc] initWithTitle:@"x" action:nullptr keyEquivalent:@""];
    row.target = target;
    if (submenu != nil) row.submenu = submenu;
    return row;
}
