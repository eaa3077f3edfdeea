#pragma once

#include "platform/ui/view.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace trovel {

/// A view that writes down the events which it gets, and handles them or passes them on.
class ProbeView final : public View {
public:
    using Log = std::vector<std::string>;

    ProbeView(std::string name, Rect frame, Log& log)
        : View(frame), name_(std::move(name)), log_(log) {}
    ~ProbeView() override { log_.push_back(name_ + " gone"); }

    [[nodiscard]] bool acceptsFirstResponder() const override { return takesKeys; }
    [[nodiscard]] bool acceptsFirstMouse() const override { return takesFirstMouse; }

    void mouseDown(MouseEvent const& event) override {
        location = event.locationInWindow;
        say("down");
        if (passesOn) View::mouseDown(event);
    }
    void mouseDragged(MouseEvent const& event) override {
        say("dragged");
        if (passesOn) View::mouseDragged(event);
    }
    void mouseUp(MouseEvent const& event) override {
        say("up");
        if (passesOn) View::mouseUp(event);
    }
    void rightMouseDown(MouseEvent const& event) override {
        say("right");
        if (passesOn) View::rightMouseDown(event);
    }
    void keyDown(KeyEvent const& event) override {
        say("key " + std::to_string(event.keyCode));
        if (passesOn) View::keyDown(event);
    }
    void flagsChanged(KeyEvent const& event) override {
        say("flags");
        if (passesOn) View::flagsChanged(event);
    }

    bool takesKeys = true;
    bool takesFirstMouse = true;
    bool passesOn = false;
    Point location;                ///< of the last press, in the window
    std::function<void()> onEvent; ///< called by every event

private:
    void say(std::string const& what) {
        log_.push_back(name_ + ' ' + what);
        if (onEvent) onEvent();
    }

    std::string name_;
    Log& log_;
};

} // namespace trovel
