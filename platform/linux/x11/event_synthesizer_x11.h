#pragma once

#include "platform/event_synthesizer.h"
#include "platform/linux/pictures/written_contents.h"
#include "platform/linux/x11/keymap.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <vector>

namespace trovel {

class XcbConnection;

/// Makes input through the server's XTEST extension, so that no program can tell it from the
/// hardware's. Positions are pixels of the root window.
///
/// Before anything is pressed, the modifiers that the user still holds are lifted, and they are not
/// pressed again. Whatever is still pressed when the synthesizer goes away is released.
///
/// The paste keystroke (the V key with Command alone) has no one chord on this system. For a
/// picture it is Ctrl with the key that types a `v`, whatever its position, and Shift+Insert where
/// no key does. For text it is Shift+Insert, which terminals understand too.
class EventSynthesizerX11 final : public EventSynthesizer {
public:
    using LastWritten = std::function<WrittenContents()>;

    /// `connection` outlives the synthesizer, which outlives the events that it makes.
    EventSynthesizerX11(XcbConnection& connection, LastWritten lastWritten);
    ~EventSynthesizerX11();

    EventPtr mouseEvent(MouseAction action, Point position) override;
    EventPtr keyboardEvent(KeyCode keyCode, KeyAction action) override;

private:
    class MouseEvent;
    class KeyboardEvent;

    /// Keys in the order in which they are pressed; the last one is the key that is meant.
    using Chord = std::vector<xcb_keycode_t>;

    [[nodiscard]] bool canMakeEvents() const;
    [[nodiscard]] Chord chordFor(KeyCode keyCode, EventFlags flags) const;
    [[nodiscard]] Chord pasteChord() const;
    [[nodiscard]] Chord withModifiers(EventFlags flags, std::optional<xcb_keycode_t> key) const;

    void press(KeyCode keyCode, EventFlags flags);
    void release(KeyCode keyCode);
    void releaseChord();
    void pressButton(Point position);
    void releaseButton(Point position);
    void moveTo(Point position);
    void liftHeldKeys(Chord const& chord);
    void fake(std::uint8_t type, std::uint8_t detail, Point position = {});

    XcbConnection& connection_;
    Keymap keymap_;
    LastWritten lastWritten_;
    Chord pressed_;
    std::optional<KeyCode> pressedKey_;
    bool isButtonPressed_ = false;
};

} // namespace trovel
