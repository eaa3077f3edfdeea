#include "platform/simulated/simulated_input.h"

#include "platform/carbon_modifiers.h"
#include "platform/ui/view.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <string>
#include <utility>

namespace trovel {

bool SimulatedInput::hasKeyboard() const {
    if (world_.windows.keyWindow() == nullptr && world_.alerts.shown().empty()) return false;
    return world_.application.selfActivation() == SelfActivation::changesNothing ||
           world_.workspace.frontmost() == kTrovelProcess;
}

void SimulatedInput::keyDown(KeyCode keyCode, EventFlags flags) {
    bool const isRepeat = !keysDown_.insert(keyCode).second;
    if (isRepeat && hotKeysDown_.contains(keyCode)) return;
    KeyCombination const combination{keyCode, carbonModifiers(flags)};
    if (world_.hotkeys.isRegistered(combination) && !world_.hotkeys.isSuspended()) {
        hotKeysDown_.insert(keyCode);
        world_.hotkeys.press(combination);
        return;
    }
    if (hasKeyboard()) {
        std::string const characters = keyCode == kKeyReturn ? "\r" : "";
        sendKeyToTrovel({KeyEvent::Kind::keyDown, keyCode, flags, characters});
    } else {
        sendKeyToProgram(keyCode, flags);
    }
}

void SimulatedInput::changeFlags(EventFlags flags) {
    auto* const window = world_.windows.keyWindow();
    if (window == nullptr || !hasKeyboard()) return;
    window->receive(KeyEvent{KeyEvent::Kind::flagsChanged, 0, flags, {}});
}

void SimulatedInput::keyUp(KeyCode keyCode) {
    keysDown_.erase(keyCode);
    hotKeysDown_.erase(keyCode);
}

void SimulatedInput::sendKeyToTrovel(KeyEvent const& event) {
    if (world_.monitors.swallows(event)) return;
    if (auto* window = world_.windows.keyWindow()) {
        window->receive(event);
    } else if (event.keyCode == kKeyReturn || event.keyCode == kKeyEscape) {
        world_.alerts.close();
    }
}

void SimulatedInput::sendKeyToProgram(KeyCode keyCode, EventFlags flags) {
    auto* program = world_.workspace.program(world_.workspace.frontmost());
    if (program == nullptr) return;
    auto const note = [&](auto input) {
        program->inputs.push_back({world_.queue.now(), input});
        world_.journal.record(std::move(input));
    };
    if (keyCode == kKeyV && flags == kFlagCommand) {
        note(effect::Pasted{program->processIdentifier, world_.pasteboard.contents()});
    } else {
        note(effect::Typed{program->processIdentifier, keyCode, flags});
    }
}

void SimulatedInput::movePointer(Point point) {
    pointer_ = point;
    world_.capturer.setPointer(point);
    if (!isLeftDown_) {
        trackPointer();
        return;
    }
    if (auto const window = pressedWindow_.lock()) {
        sendMouse(*window, MouseEvent::Kind::leftDragged);
    }
}

void SimulatedInput::trackPointer() {
    auto* const window = world_.windows.windowAt(pointer_);
    std::vector<std::weak_ptr<View>> under;
    if (window != nullptr && window->contentView()) {
        auto const& frame = window->attributes().contentRect;
        auto* view = window->contentView()->hitTest({pointer_.x - frame.x, pointer_.y - frame.y});
        for (; view != nullptr; view = view->superview()) {
            if (view->tracksPointer()) under.push_back(view->weak_from_this());
        }
    }
    auto const tell = [](auto const& views, auto const& others, bool isInside) {
        for (auto const& weak : views) {
            auto const view = weak.lock();
            bool const isInBoth = std::ranges::any_of(
                others, [&view](auto const& other) { return other.lock() == view; });
            auto* const owner = view ? view->window() : nullptr;
            if (owner != nullptr && !isInBoth) owner->receivePointer(*view, isInside);
        }
    };
    auto const before = std::exchange(viewsUnderPointer_, under);
    tell(before, under, false);
    tell(under, before, true);
}

void SimulatedInput::sendMouse(Window& window, MouseEvent::Kind kind) {
    if (!window.isVisible()) return;
    auto const& frame = window.attributes().contentRect;
    window.receive(MouseEvent{kind, {pointer_.x - frame.x, pointer_.y - frame.y}, 0});
}

void SimulatedInput::leftDown(Point point) {
    pointer_ = point;
    world_.capturer.setPointer(point);
    isLeftDown_ = true;
    pressedWindow_.reset();
    auto const inputPoint = world_.screens.flipped(point);
    if (auto* hit = world_.windows.windowAt(point)) {
        auto const window = hit->shared_from_this();
        pressedWindow_ = window;
        bool const wasKey = window->isKeyWindow();
        world_.windows.makeKey(hit);
        if (world_.application.selfActivation() == SelfActivation::comesToFront) {
            world_.workspace.bringToFront(kTrovelProcess);
        }
        auto const& frame = window->attributes().contentRect;
        auto* view = window->contentView()
                         ? window->contentView()->hitTest({point.x - frame.x, point.y - frame.y})
                         : nullptr;
        // A press that has to make the window key first reaches only a view that wants such.
        if (wasKey || (view != nullptr && view->acceptsFirstMouse())) {
            sendMouse(*window, MouseEvent::Kind::leftDown);
        } else {
            pressedWindow_.reset();
        }
    } else if (auto* program = world_.workspace.raiseProgramAt(inputPoint)) {
        effect::Clicked const click{program->processIdentifier, inputPoint};
        program->inputs.push_back({world_.queue.now(), click});
        world_.journal.record(click);
    }
}

void SimulatedInput::leftUp(Point point) {
    movePointer(point);
    isLeftDown_ = false;
    if (auto const window = std::exchange(pressedWindow_, {}).lock()) {
        sendMouse(*window, MouseEvent::Kind::leftUp);
    }
}

void SimulatedInput::rightDown(Point point) {
    pointer_ = point;
    world_.capturer.setPointer(point);
    if (auto* hit = world_.windows.windowAt(point)) sendMouse(*hit, MouseEvent::Kind::rightDown);
}

} // namespace trovel
