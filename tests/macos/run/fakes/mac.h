#pragma once

#include "tests/macos/run/fakes/clock.h"
#include "tests/macos/run/fakes/foundation.h"
#include "tests/macos/run/fakes/run_loop.h"

#import <AppKit/AppKit.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fakes {

/// This process, among the others.
inline constexpr pid_t kOwnProcess = 4711;

struct Display {
    CGDirectDisplayID number = 0;
    NSRect frame{}; ///< global points, origin at the lower left of the first
    double scale = 1;
};

/// Another program. Its window and the clicks that it got are in global points with the origin at
/// the top left of the first display, as everything that programs say of each other.
struct Program {
    enum class Accessibility : std::uint8_t { answers, hangs, isRefused, hasNoWindow };

    pid_t processIdentifier = 0;
    std::string name;
    std::string bundleIdentifier;
    NSApplicationActivationPolicy policy = NSApplicationActivationPolicyRegular;
    CGRect window{};
    bool isRunning = true;
    Accessibility accessibility = Accessibility::answers;
    bool refusesAppleEvents = false;

    std::vector<CGPoint> clicks;
    std::vector<unsigned> keys; ///< pastes apart
    int pastes = 0;
    /// All of it in order, for example "click 500,590", "key 36", "paste text words" or "paste
    /// picture 200,1100,600,400", which is where it lies on its display.
    std::vector<std::pair<Time, std::string>> received;
};

/// What the system does when this process asks to come to the front: "the framework does not
/// guarantee that the app will be activated at all" (NSApplication.activate).
enum class Activation : std::uint8_t { atOnce, late, never };

/// A window on the screen: one of this process's, or another program's.
struct Shown {
    NSWindow* __unsafe_unretained _Nullable window = nil;
    pid_t program = 0;
};

/// A hot key of somebody's.
struct HotKey {
    std::uintptr_t reference = 0; ///< 0 for another program's
    unsigned keyCode = 0;
    unsigned modifiers = 0; ///< Carbon's
};

/// What calls this process back when a hot key is pressed.
struct EventHandler {
    std::uintptr_t reference = 0;
    void* _Nullable function = nullptr;
    void* _Nullable userData = nullptr;
};

/// Who is told of a notification.
struct Observer {
    id __weak _Nullable observer = nil;
    SEL _Nonnull selector;
    std::string name;
};

/// How ScreenCaptureKit behaves.
struct CaptureService {
    Time delay = std::chrono::milliseconds(10);
    bool neverAnswers = false;
    bool hasPicture = true; ///< else neither a picture nor an error comes
    std::string error;      ///< its answer unless empty
};

/// What the user decides about what a panel asks.
struct Panels {
    std::string chosenPath; ///< in the open panel; none when empty
};

/// The Mac around this process. Everything is on the main thread's side but for its clock.
class Mac {
public:
    Mac();
    Mac(Mac const&) = delete;
    Mac& operator=(Mac const&) = delete;
    ~Mac();

    /// Says what this process did to its surroundings, for `said`.
    void record(std::string what) { journal.push_back(std::move(what)); }
    [[nodiscard]] int count(std::string_view what) const;

    // Other programs.
    Program& start(Program program);
    void quit(pid_t processIdentifier);
    void bringToFront(pid_t processIdentifier);
    [[nodiscard]] Program* _Nullable find(pid_t processIdentifier);

    // The user.
    void keyDown(unsigned keyCode, NSEventModifierFlags flags, std::string characters = "");
    void keyUp(unsigned keyCode);
    void changeFlags(NSEventModifierFlags flags);
    void movePointer(NSPoint point);
    void leftDown();
    void leftUp();
    void rightDown();
    void setDark(bool isDark);
    void notify(std::string_view name);
    /// Closes the alert in front with its first button; false when none is up.
    bool closeAlert();

    /// A colour (0xRRGGBB) for each pixel of a display, origin at the top left.
    [[nodiscard]] static std::uint32_t colorAt(CGDirectDisplayID display, long x, long y);

    [[nodiscard]] bool isActive() const { return frontmost == kOwnProcess; }
    /// Draws what wants to be drawn; false when nothing does.
    bool displayIfNeeded();

    Clock clock;
    RunLoop runLoop{clock};
    std::vector<std::string> journal;

    std::vector<Display> displays;
    std::map<pid_t, Program> programs;
    pid_t frontmost = 0;
    Activation activation = Activation::atOnce;
    std::vector<Shown> shown; ///< from front to back; levels come first
    std::vector<NSWindow * __unsafe_unretained> windows;

    std::set<unsigned> heldKeys;
    NSEventModifierFlags flags = 0;
    NSPoint pointer{};
    std::vector<HotKey> hotKeys;
    bool refusesHotKeys = false;
    std::vector<EventHandler> eventHandlers;
    std::uintptr_t lastReference = 0;

    bool isTrusted = true;
    bool mayRecordScreen = true;
    CaptureService captureService;
    Panels panels;
    bool isDark = false;
    int resolvingAppearance = 0; ///< how many times a drawing appearance was made the current one
    NSGraphicsContext* _Nullable context = nil;
    NSAnimationContext* _Nullable animation = nil; ///< of the group that is being run
    NSApplication* _Nullable application = nil;
    std::vector<NSStatusItem * __weak> statusItems; ///< goes when nobody holds it
    std::vector<NSAlert*> alerts;                   ///< that are up, the last one in front
    std::vector<NSCursor*> cursors;                 ///< the stack
    NSArray* _Nullable pasted = nil;                ///< objects on the pasteboard
    bool ownsPasteboard = false;
    bool hasEventSource = true;
    bool hasKeyboardNavigation = false;
    bool allowsTabbing = true;
    std::vector<Observer> observers;
    int hungReads = 0;      ///< of programs whose accessibility hangs
    Time timeInHungReads{}; ///< how long the main thread would have stood still in them
    int systemVersion = 15;
    long loginItemStatus = 0;   ///< SMAppServiceStatus
    std::string loginItemError; ///< the login item's answer unless empty

    std::map<std::string, id, std::less<>> defaults;
    std::map<std::string, id, std::less<>> bundleInfo;
    std::string home;                             ///< a folder of this Mac's own
    std::map<std::string, std::string> installed; ///< bundle identifiers and where they lie

private:
    void trackPointer();

    pid_t nextProcess_ = 500;
    NSWindow* __weak _Nullable pressed_ = nil; // with the left button down in it
};

/// The Mac that there is now.
[[nodiscard]] Mac& mac();

/// A new Mac, and its end. There is one at a time.
void startMac();
void endMac();

} // namespace fakes
