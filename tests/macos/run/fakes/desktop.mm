#include "tests/macos/run/fakes/appkit.h"

#include <algorithm>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

// Screens, cursors, the pasteboard, and the workspace with its programs.

NSPasteboardType const NSPasteboardTypeString = @"public.utf8-plain-text";

@implementation NSScreen {
    fakes::Display display_;
}

+ (NSArray<NSScreen*>*)screens {
    NSMutableArray<NSScreen*>* const screens = [NSMutableArray array];
    for (auto const& display : fakes::mac().displays) {
        NSScreen* const screen = [[NSScreen alloc] init];
        screen->display_ = display;
        [screens addObject:screen];
    }
    return screens;
}

- (NSRect)frame {
    return display_.frame;
}

- (CGFloat)backingScaleFactor {
    return display_.scale;
}

- (NSDictionary*)deviceDescription {
    return @{@"NSScreenNumber" : [NSNumber numberWithLongLong:display_.number]};
}

@end

@implementation NSCursor

+ (NSCursor*)crosshairCursor {
    return [[NSCursor alloc] init];
}

- (void)push {
    fakes::mac().record("push cursor");
    fakes::mac().cursors.push_back(self);
}

- (void)set {
    fakes::mac().record("set cursor");
}

+ (void)pop {
    fakes::mac().record("pop cursor");
    if (!fakes::mac().cursors.empty()) fakes::mac().cursors.pop_back();
}

@end

@implementation NSPasteboard

+ (NSPasteboard*)generalPasteboard {
    return [[NSPasteboard alloc] init];
}

- (NSInteger)clearContents {
    fakes::mac().record("clear pasteboard");
    fakes::mac().pasted = nil;
    fakes::mac().ownsPasteboard = true;
    return 1;
}

// "…you should call clearContents … before": what is there already is another's.
- (BOOL)writeObjects:(NSArray*)objects {
    if (!fakes::mac().ownsPasteboard) return NO;
    fakes::mac().pasted = objects;
    fakes::mac().record("write objects");
    return YES;
}

- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)dataType {
    if (!fakes::mac().ownsPasteboard || ![dataType isEqualToString:NSPasteboardTypeString]) {
        return NO;
    }
    fakes::mac().pasted = @[ string ];
    fakes::mac().record("write \"" + fakes::toText(string) + "\"");
    return YES;
}

@end

@implementation NSRunningApplication {
    pid_t processIdentifier_;
    std::string name_;
    std::string bundleIdentifier_;
    NSApplicationActivationPolicy policy_;
}

+ (instancetype)runningApplicationFor:(fakes::Program const&)program {
    NSRunningApplication* const application = [[NSRunningApplication alloc] init];
    application->processIdentifier_ = program.processIdentifier;
    application->name_ = program.name;
    application->bundleIdentifier_ = program.bundleIdentifier;
    application->policy_ = program.policy;
    return application;
}

+ (NSArray<NSRunningApplication*>*)allWhere:(bool (^)(fakes::Program const&))isWanted {
    NSMutableArray<NSRunningApplication*>* const list = [NSMutableArray array];
    for (auto const& [pid, program] : fakes::mac().programs) {
        if (program.isRunning && isWanted(program)) {
            [list addObject:[self runningApplicationFor:program]];
        }
    }
    return list;
}

+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:
    (NSString*)bundleIdentifier {
    auto const wanted = fakes::toText(bundleIdentifier);
    return [self allWhere:^(fakes::Program const& program) {
      return program.bundleIdentifier == wanted;
    }];
}

+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid {
    auto const* const program = fakes::mac().find(pid);
    return program != nullptr ? [self runningApplicationFor:*program] : nil;
}

- (NSString*)localizedName {
    return fakes::toNative(name_);
}

- (NSString*)bundleIdentifier {
    return bundleIdentifier_.empty() ? nil : fakes::toNative(bundleIdentifier_);
}

- (pid_t)processIdentifier {
    return processIdentifier_;
}

- (NSApplicationActivationPolicy)activationPolicy {
    return policy_;
}

- (NSImage*)icon {
    return [NSImage imageNamed:NSImageNameApplicationIcon];
}

@end

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
    return [[NSWorkspace alloc] init];
}

- (NSRunningApplication*)frontmostApplication {
    auto const frontmost = fakes::mac().frontmost;
    if (frontmost == fakes::kOwnProcess) {
        return [NSRunningApplication
            runningApplicationFor:{.processIdentifier = fakes::kOwnProcess,
                                   .name = "Trovel",
                                   .bundleIdentifier = "org.trovel.Trovel",
                                   .policy = NSApplicationActivationPolicyAccessory}];
    }
    return [NSRunningApplication runningApplicationWithProcessIdentifier:frontmost];
}

- (NSArray<NSRunningApplication*>*)runningApplications {
    return [NSRunningApplication allWhere:^(fakes::Program const&) {
      return true;
    }];
}

- (BOOL)openURL:(NSURL*)url {
    fakes::mac().record("open " + fakes::toText(url.description));
    return YES;
}

- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier {
    auto const& installed = fakes::mac().installed;
    auto const found = installed.find(fakes::toText(bundleIdentifier));
    if (found == installed.end()) return nil;
    return [NSURL fileURLWithPath:fakes::toNative(found->second) isDirectory:YES];
}

- (NSImage*)iconForFile:(NSString*)fullPath {
    fakes::require(fullPath != nil, "the icon of no file");
    return [NSImage imageNamed:NSImageNameApplicationIcon];
}

@end

@implementation NSAppleEventDescriptor
@end

@implementation NSAppleScript {
    std::string source_;
}

- (instancetype)initWithSource:(NSString*)source {
    self = [super init];
    source_ = fakes::toText(source);
    return self;
}

- (instancetype)init {
    return [self initWithSource:@""];
}

// Only "activate" is understood. A program that may not be controlled is an error (-1743).
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary**)errorInfo {
    fakes::mac().record("script " + source_);
    constexpr fakes::Time kSwitching = std::chrono::milliseconds(50);
    auto const begin = source_.find('"') + 1;
    auto const name = source_.substr(begin, source_.rfind('"') - begin);
    for (auto const& [pid, program] : fakes::mac().programs) {
        if (!program.isRunning || program.name != name || program.refusesAppleEvents) continue;
        auto const activated = pid;
        fakes::mac().runLoop.later(kSwitching, [activated] {
            if (fakes::mac().find(activated) != nullptr) fakes::mac().bringToFront(activated);
        });
        return [[NSAppleEventDescriptor alloc] init];
    }
    return nil;
}

@end
