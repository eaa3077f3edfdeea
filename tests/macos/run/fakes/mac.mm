#include "tests/macos/run/fakes/mac.h"

#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/fakes/carbon.h"
#include "tests/macos/run/fakes/images.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace fakes {

namespace {

constexpr NSEventModifierFlags kCommandFlag = 1U << 20U;
constexpr unsigned kPasteKey = 9;

std::unique_ptr<Mac>& current() {
    static auto* const mac = new std::unique_ptr<Mac>;
    return *mac;
}

NSEvent* _Nonnull makeEvent(NSUInteger type, NSWindow* _Nullable window) {
    NSEvent* const event = [[NSEvent alloc] init];
    event->type_ = static_cast<NSEventType>(type);
    event->modifierFlags_ = mac().flags;
    event->window_ = window;
    NSPoint const pointer = mac().pointer;
    event->locationInWindow_ =
        NSMakePoint(pointer.x - window.frame.origin.x, pointer.y - window.frame.origin.y);
    return event;
}

/// Sends the application a mouse event where the pointer is now.
void postMouse(NSUInteger type, NSWindow* _Nonnull window) {
    NSEvent* const event = makeEvent(type, window);
    mac().runLoop.postEvent([event] { [application() sendEvent:event]; });
}

/// A key goes to the window that is key when its turn comes.
void postKey(NSEvent* _Nonnull event) {
    mac().runLoop.postEvent([event] {
        event->window_ = keyWindow();
        [application() sendEvent:event];
    });
}

bool takesMouse(NSWindow* _Nonnull window) {
    // "Setting it to NO explicitly makes the window receive events even where it is transparent";
    // until then those fall through.
    if (window.ignoresMouseEvents) return false;
    return window.opaque || window->hasSaidIgnoresMouse_;
}

/// The y of the other way of counting: from the top of the first display, or from its bottom.
double flip(double y) {
    return mac().displays.front().frame.size.height - y;
}

NSRect cocoaFrame(Shown const& shown) {
    if (shown.window != nil) return shown.window.frame;
    NSRect frame = mac().find(shown.program)->window;
    frame.origin.y = flip(frame.origin.y + frame.size.height);
    return frame;
}

std::string pasteboardText() {
    NSArray* const pasted = mac().pasted;
    if (pasted == nil || pasted.count == 0) return "nothing";
    id const first = [pasted objectAtIndex:0];
    if ([first isKindOfClass:NSString.class]) return "text " + toText(first);
    FakeImage* const picture = static_cast<NSImage*>(first)->picture_;
    return "picture " + std::to_string(picture->left_) + "," + std::to_string(picture->top_) + "," +
           std::to_string(picture->width_) + "," + std::to_string(picture->height_);
}

/// Has the owner hear that the pointer came, moved or left, in a turn of the loop.
void tellOfPointer(NSTrackingArea* _Nonnull area, NSEvent* _Nonnull event, bool isInside) {
    bool const wasInside = std::exchange(area->isInside_, isInside);
    bool const tellsEnds = (area->options_ & NSTrackingMouseEnteredAndExited) != 0;
    bool const tellsMoves = (area->options_ & NSTrackingMouseMoved) != 0;
    if (tellsEnds && isInside != wasInside) {
        mac().runLoop.postEvent([area, event, isInside] {
            NSResponder* const owner = area->owner_;
            isInside ? [owner mouseEntered:event] : [owner mouseExited:event];
        });
    }
    if (tellsMoves && isInside) {
        mac().runLoop.postEvent([area, event] {
            NSResponder* const owner = area->owner_;
            [owner mouseMoved:event];
        });
    }
}

/// The frontmost thing under the pointer that takes the mouse; null for the desktop.
Shown const* _Nullable underPointer() {
    for (auto const& each : mac().shown) {
        if (each.window != nil && !takesMouse(each.window)) continue;
        if (contains(cocoaFrame(each), mac().pointer)) return &each;
    }
    return nullptr;
}

} // namespace

Mac& mac() {
    return *current();
}

void startMac() {
    current() = std::make_unique<Mac>();
}

void endMac() {
    // What is left on the Mac still asks for it when it goes.
    @autoreleasepool {
        Mac& last = mac();
        last.application = nil;
        last.cursors.clear();
        last.pasted = nil;
        last.defaults.clear();
        last.bundleInfo.clear();
        last.runLoop.clear();
    }
    current().reset();
}

Mac::Mac() {
    std::string name = std::filesystem::temp_directory_path() / "trovel-mac-XXXXXX";
    home = mkdtemp(name.data());
    displays.push_back({1, NSMakeRect(0, 0, 1440, 900), 2});
}

Mac::~Mac() {
    std::filesystem::remove_all(home);
}

int Mac::count(std::string_view what) const {
    return static_cast<int>(std::ranges::count(journal, what));
}

Program& Mac::start(Program program) {
    program.processIdentifier = nextProcess_++;
    auto const pid = program.processIdentifier;
    programs[pid] = std::move(program);
    if (programs[pid].window.size.width > 0) shown.push_back({nil, pid});
    bringToFront(pid);
    return programs[pid];
}

void Mac::quit(pid_t processIdentifier) {
    programs.at(processIdentifier).isRunning = false;
    std::erase_if(shown, [&](auto const& each) { return each.program == processIdentifier; });
    if (frontmost == processIdentifier) frontmost = 0;
}

void Mac::bringToFront(pid_t processIdentifier) {
    auto const former = std::exchange(frontmost, processIdentifier);
    if (former == processIdentifier) return;
    // The application hears of its coming and going as of an event.
    if (former == kOwnProcess || isActive()) runLoop.wakeUp();
    if (former == kOwnProcess) tellKeyWindow(false);
    // The windows of one program come to the front of their level together, in their order.
    auto const isNormal = [](Shown const& each) { return each.window.level == 0; };
    auto const isIts = [&](Shown const& each) {
        return each.window != nil ? processIdentifier == kOwnProcess
                                  : each.program == processIdentifier;
    };
    auto const normal = std::ranges::find_if(shown, isNormal);
    std::stable_partition(normal, shown.end(), isIts);
    if (isActive()) tellKeyWindow(true);
}

Program* Mac::find(pid_t processIdentifier) {
    auto const found = programs.find(processIdentifier);
    return found != programs.end() && found->second.isRunning ? &found->second : nullptr;
}

// A hot key takes its key before any window sees it; a key that is held is one press of it.
void Mac::keyDown(unsigned keyCode, NSEventModifierFlags newFlags, std::string characters) {
    flags = newFlags;
    heldKeys.insert(keyCode);
    if (pressHotKey(keyCode, flags)) return;
    if (isActive()) {
        NSEvent* const event = makeEvent(NSEventTypeKeyDown, nil);
        event->keyCode_ = static_cast<unsigned short>(keyCode);
        event->characters_ = toNative(characters);
        return postKey(event);
    }
    auto* const program = find(frontmost);
    if (program == nullptr) return;
    if (keyCode == kPasteKey && flags == kCommandFlag) {
        ++program->pastes;
        program->received.emplace_back(clock.now(), "paste " + pasteboardText());
    } else {
        program->keys.push_back(keyCode);
        program->received.emplace_back(clock.now(), "key " + std::to_string(keyCode));
    }
}

void Mac::keyUp(unsigned keyCode) {
    heldKeys.erase(keyCode);
    flags = 0;
}

void Mac::changeFlags(NSEventModifierFlags newFlags) {
    flags = newFlags;
    if (isActive()) postKey(makeEvent(NSEventTypeFlagsChanged, nil));
}

void Mac::movePointer(NSPoint point) {
    pointer = point;
    @autoreleasepool {
        if (pressed_ != nil) postMouse(NSEventTypeLeftMouseDragged, pressed_);
        trackPointer();
    }
}

void Mac::leftDown() {
    auto const* const hit = underPointer();
    if (hit == nullptr) return;
    if (hit->window != nil) {
        @autoreleasepool {
            pressed_ = hit->window;
            postMouse(NSEventTypeLeftMouseDown, hit->window);
        }
        return;
    }
    auto const program = hit->program;
    auto const place = CGPointMake(pointer.x, flip(pointer.y));
    find(program)->clicks.push_back(place);
    find(program)->received.emplace_back(clock.now(), "click " + textOf(place));
    bringToFront(program);
}

void Mac::leftUp() {
    @autoreleasepool {
        if (NSWindow* const window = std::exchange(pressed_, nil)) {
            postMouse(NSEventTypeLeftMouseUp, window);
        }
    }
}

void Mac::rightDown() {
    auto const* const hit = underPointer();
    if (hit != nullptr && hit->window != nil) postMouse(NSEventTypeRightMouseDown, hit->window);
}

// A tracking area that is always active hears of the pointer whoever is active; others only in the
// key window (NSTrackingArea.Options).
void Mac::trackPointer() {
    auto const* const hit = underPointer();
    std::vector<NSView*> views;
    std::function<void(NSView*)> const collect = [&](NSView* view) {
        if (view == nil) return;
        views.push_back(view);
        for (NSView* subview in view.subviews)
            collect(subview);
    };
    for (NSWindow* const window : windows) {
        if (window.isVisible) collect(window.contentView);
    }
    for (NSView* const view : views) {
        NSWindow* const window = view.window;
        NSEvent* const event = makeEvent(NSEventTypeMouseMoved, window);
        bool const isUnder = hit != nullptr && hit->window == window && !view.hidden;
        NSPoint const place = [view fromWindow:event->locationInWindow_];
        for (NSTrackingArea* const area : view->trackingAreas_) {
            bool const isVisibleRect = (area->options_ & NSTrackingInVisibleRect) != 0;
            NSRect const rect = isVisibleRect ? view.bounds : area->rect_;
            bool const hears = (area->options_ & NSTrackingActiveAlways) != 0 || window.keyWindow;
            tellOfPointer(area, event, isUnder && hears && contains(rect, place));
        }
    }
}

void Mac::setDark(bool newDark) {
    isDark = newDark;
    std::function<void(NSView*)> const tell = [&](NSView* view) {
        [view viewDidChangeEffectiveAppearance];
        for (NSView* subview in view.subviews)
            tell(subview);
    };
    for (NSWindow* const window : windows)
        tell(window.contentView);
}

void Mac::notify(std::string_view name) {
    auto const told = observers;
    for (auto const& each : told) {
        if (each.name == name) send(each.observer, each.selector, [[NSNotification alloc] init]);
    }
}

bool Mac::displayIfNeeded() {
    bool didDraw = false;
    std::function<void(NSView*)> const draw = [&](NSView* view) {
        if (view == nil || view.hidden) return;
        if (view->needsDisplay_) {
            view->needsDisplay_ = NO;
            context = [[NSGraphicsContext alloc] init];
            [view drawRect:view.bounds];
            view->drawn_ = std::move(context->drawn_);
            context = nil;
            didDraw = true;
        }
        for (NSView* subview in view.subviews)
            draw(subview);
    };
    for (auto const& each : shown) {
        if (each.window != nil) draw(each.window.contentView);
    }
    for (NSStatusItem* const item : statusItems)
        draw(item.button);
    return didDraw;
}

std::uint32_t Mac::colorAt(CGDirectDisplayID display, long x, long y) {
    auto const mixed = static_cast<std::uint32_t>(x * 2654435761L + y * 40503L) + display * 97U;
    return mixed & 0xffffffU;
}

bool contains(NSRect rect, NSPoint point) {
    return point.x >= rect.origin.x && point.y >= rect.origin.y &&
           point.x < rect.origin.x + rect.size.width && point.y < rect.origin.y + rect.size.height;
}

NSApplication* application() {
    if (mac().application == nil) mac().application = [[NSApplication alloc] init];
    return mac().application;
}

} // namespace fakes
