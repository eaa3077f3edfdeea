#include "platform/linux/x11/event_synthesizer_x11.h"

#include "platform/linux/x11/connection.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace trovel {

namespace {

struct ModifierKey {
    EventFlags flag;
    xcb_keysym_t keysym;
};

constexpr std::array kModifierKeys{
    ModifierKey{kFlagControl, XKB_KEY_Super_L}, ModifierKey{kFlagOption, XKB_KEY_Alt_L},
    ModifierKey{kFlagShift, XKB_KEY_Shift_L}, ModifierKey{kFlagCommand, XKB_KEY_Control_L}};

constexpr std::uint8_t kLeftButton = 1;

std::optional<xcb_keycode_t> firstOf(std::vector<xcb_keycode_t> const& keys) {
    if (keys.empty()) return std::nullopt;
    return keys.front();
}

/// The pixel that a coordinate lies in, as far as the protocol can name it.
std::int16_t pixelAt(double coordinate) {
    return static_cast<std::int16_t>(
        std::clamp(std::floor(coordinate), double{INT16_MIN}, double{INT16_MAX}));
}

} // namespace

// A press waits in the connection's buffer until its release or the end of the event. The two then
// leave in one piece, so that a process that is killed between them leaves nothing pressed.

class EventSynthesizerX11::MouseEvent final : public SynthesizedEvent {
public:
    MouseEvent(EventSynthesizerX11& synthesizer, MouseAction action, Point position)
        : synthesizer_(synthesizer), action_(action), position_(position) {}
    ~MouseEvent() override { synthesizer_.connection_.flush(); }

    /// A click is always a plain one here: held modifiers are lifted, and none is pressed.
    void setFlags(EventFlags /*flags*/) override {}

    void post() override {
        if (action_ == MouseAction::leftDown) {
            synthesizer_.pressButton(position_);
        } else {
            synthesizer_.releaseButton(position_);
        }
    }

private:
    EventSynthesizerX11& synthesizer_;
    MouseAction action_;
    Point position_;
};

class EventSynthesizerX11::KeyboardEvent final : public SynthesizedEvent {
public:
    KeyboardEvent(EventSynthesizerX11& synthesizer, KeyCode keyCode, KeyAction action)
        : synthesizer_(synthesizer), keyCode_(keyCode), action_(action) {}
    ~KeyboardEvent() override { synthesizer_.connection_.flush(); }

    void setFlags(EventFlags flags) override { flags_ = flags; }

    void post() override {
        if (action_ == KeyAction::down) {
            synthesizer_.press(keyCode_, flags_);
        } else {
            synthesizer_.release(keyCode_);
        }
    }

private:
    EventSynthesizerX11& synthesizer_;
    KeyCode keyCode_;
    KeyAction action_;
    EventFlags flags_ = 0;
};

EventSynthesizerX11::EventSynthesizerX11(XcbConnection& connection, LastWritten lastWritten)
    : connection_(connection), keymap_(connection), lastWritten_(std::move(lastWritten)) {}

EventSynthesizerX11::~EventSynthesizerX11() {
    releaseChord();
    if (isButtonPressed_) fake(XCB_BUTTON_RELEASE, kLeftButton);
    connection_.flush();
}

EventSynthesizer::EventPtr EventSynthesizerX11::mouseEvent(MouseAction action, Point position) {
    if (!canMakeEvents()) return nullptr;
    return std::make_unique<MouseEvent>(*this, action, position);
}

EventSynthesizer::EventPtr EventSynthesizerX11::keyboardEvent(KeyCode keyCode, KeyAction action) {
    if (!canMakeEvents() || !Keymap::keycodeForVirtualKey(keyCode)) return nullptr;
    return std::make_unique<KeyboardEvent>(*this, keyCode, action);
}

bool EventSynthesizerX11::canMakeEvents() const {
    return connection_.extension(xcb_test_id) != nullptr;
}

EventSynthesizerX11::Chord EventSynthesizerX11::chordFor(KeyCode keyCode, EventFlags flags) const {
    if (keyCode == kKeyV && flags == kFlagCommand) return pasteChord();
    return withModifiers(flags, Keymap::keycodeForVirtualKey(keyCode));
}

EventSynthesizerX11::Chord EventSynthesizerX11::pasteChord() const {
    if (lastWritten_() == WrittenContents::picture) {
        auto const typesV = firstOf(keymap_.keycodesTyping(XKB_KEY_v));
        if (typesV) return withModifiers(kFlagCommand, typesV);
    }
    return withModifiers(kFlagShift, firstOf(keymap_.keycodesTyping(XKB_KEY_Insert)));
}

EventSynthesizerX11::Chord
EventSynthesizerX11::withModifiers(EventFlags flags, std::optional<xcb_keycode_t> key) const {
    Chord chord;
    for (auto const& modifier : kModifierKeys) {
        if ((flags & modifier.flag) == 0) continue;
        auto const modifierKey = firstOf(keymap_.keycodesTyping(modifier.keysym));
        // Half a chord would mean something else.
        if (!modifierKey) return {};
        chord.push_back(*modifierKey);
    }
    if (!key) return {};
    chord.push_back(*key);
    return chord;
}

void EventSynthesizerX11::press(KeyCode keyCode, EventFlags flags) {
    releaseChord();
    auto chord = chordFor(keyCode, flags);
    if (chord.empty()) return;
    liftHeldKeys(chord);
    for (auto const key : chord) fake(XCB_KEY_PRESS, key);
    pressed_ = std::move(chord);
    pressedKey_ = keyCode;
}

void EventSynthesizerX11::release(KeyCode keyCode) {
    if (pressedKey_ == keyCode) releaseChord();
    connection_.flush();
}

void EventSynthesizerX11::releaseChord() {
    for (; !pressed_.empty(); pressed_.pop_back()) fake(XCB_KEY_RELEASE, pressed_.back());
    pressedKey_.reset();
}

void EventSynthesizerX11::pressButton(Point position) {
    liftHeldKeys({});
    moveTo(position);
    fake(XCB_BUTTON_PRESS, kLeftButton);
    isButtonPressed_ = true;
}

void EventSynthesizerX11::releaseButton(Point position) {
    moveTo(position);
    fake(XCB_BUTTON_RELEASE, kLeftButton);
    isButtonPressed_ = false;
    connection_.flush();
}

void EventSynthesizerX11::moveTo(Point position) {
    constexpr std::uint8_t kAbsolute = 0;
    fake(XCB_MOTION_NOTIFY, kAbsolute, position);
}

void EventSynthesizerX11::liftHeldKeys(Chord const& chord) {
    auto const modifiers = keymap_.modifierKeys();
    for (auto const key : keymap_.heldKeys()) {
        // A key that is down already would swallow our press.
        if (std::ranges::count(modifiers, key) != 0 || std::ranges::count(chord, key) != 0) {
            fake(XCB_KEY_RELEASE, key);
        }
    }
}

void EventSynthesizerX11::fake(std::uint8_t type, std::uint8_t detail, Point position) {
    constexpr std::uint8_t kCoreDevice = 0;
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, connection_.root(),
                        pixelAt(position.x), pixelAt(position.y), kCoreDevice);
}

} // namespace trovel
