// EXPECT none: an error left unexamined when the call succeeded or not
#import <AppKit/AppKit.h>
NSString* f(NSFileManager* m, NSURL* u) {
    NSError* e = nil;
    [m removeItemAtURL:u error:&e];
    return e.localizedDescription;
}
