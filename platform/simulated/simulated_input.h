#pragma once

#include "platform/geometry.h"
#include "platform/key_codes.h"
#include "platform/simulated/simulated_alerts.h"
#include "platform/simulated/simulated_application.h"
#include "platform/simulated/simulated_event_monitors.h"
#include "platform/simulated/simulated_hotkey_service.h"
#include "platform/simulated/simulated_pasteboard.h"
#include "platform/simulated/simulated_screen_capturer.h"
#include "platform/simulated/simulated_screens.h"
#include "platform/simulated/simulated_window_host.h"
#include "platform/simulated/simulated_workspace.h"
#include "platform/ui/events.h"

#include <memory>
#include <set>
#include <vector>

namespace trovel {

/// Where input goes, the user's and the program's alike: hot keys first, then Trovel's monitors and
/// its key window or alert when the keyboard is Trovel's, else the program in front; the mouse to
/// whatever lies under it. Points are global screen points.
class SimulatedInput {
public:
    struct World {
        Journal& journal;
        SimulatedMainQueue& queue;
        SimulatedScreens const& screens;
        SimulatedWorkspace& workspace;
        SimulatedApplication& application;
        SimulatedPasteboard const& pasteboard;
        SimulatedHotkeyService& hotkeys;
        SimulatedEventMonitors const& monitors;
        SimulatedWindowHost& windows;
        SimulatedAlerts& alerts;
        SimulatedScreenCapturer& capturer;
    };

    explicit SimulatedInput(World world) : world_(world) {}

    /// A key that is down already is the keyboard's auto-repeat.
    void keyDown(KeyCode keyCode, EventFlags flags);
    void keyUp(KeyCode keyCode);
    /// The modifiers that are held change.
    void changeFlags(EventFlags flags);
    void leftDown(Point point);
    void leftUp(Point point);
    void rightDown(Point point);
    void movePointer(Point point);

    /// Whether a key or the left button is down.
    [[nodiscard]] bool isAnythingDown() const { return !keysDown_.empty() || isLeftDown_; }
    [[nodiscard]] Point pointer() const { return pointer_; }

private:
    [[nodiscard]] bool hasKeyboard() const;
    void sendKeyToTrovel(KeyEvent const& event);
    void sendKeyToProgram(KeyCode keyCode, EventFlags flags);
    void trackPointer();
    void sendMouse(Window& window, MouseEvent::Kind kind);

    World world_;
    std::set<KeyCode> keysDown_;
    std::set<KeyCode> hotKeysDown_; // among them, those that were a hot key
    std::weak_ptr<Window> pressedWindow_;
    std::vector<std::weak_ptr<View>> viewsUnderPointer_; // those that track it
    bool isLeftDown_ = false;
    Point pointer_;
};

} // namespace trovel
