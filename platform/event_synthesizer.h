#pragma once

#include "platform/geometry.h"
#include "platform/key_codes.h"

#include <cstdint>
#include <memory>

namespace trovel {

/// An input event that has been made but not yet sent.
class SynthesizedEvent {
public:
    SynthesizedEvent(SynthesizedEvent const&) = delete;
    SynthesizedEvent& operator=(SynthesizedEvent const&) = delete;
    virtual ~SynthesizedEvent() = default;

    /// Sets exactly these modifier flags; what the user holds down is left out.
    virtual void setFlags(EventFlags flags) = 0;

    /// Sends it as if it came from the hardware. Without the accessibility grant the system drops
    /// it and says nothing.
    virtual void post() = 0;

protected:
    SynthesizedEvent() = default;
};

enum class MouseAction : std::uint8_t { leftDown, leftUp };
enum class KeyAction : std::uint8_t { down, up };

/// Makes input events. Main thread only.
class EventSynthesizer {
public:
    using EventPtr = std::unique_ptr<SynthesizedEvent>;

    EventSynthesizer(EventSynthesizer const&) = delete;
    EventSynthesizer& operator=(EventSynthesizer const&) = delete;

    /// A press or release of the left button without an event source, at `position`: global screen
    /// coordinates, origin at the top left of the primary screen, y downward, in the unit that
    /// Accessibility reports. Null when the event cannot be made.
    [[nodiscard]] virtual EventPtr mouseEvent(MouseAction action, Point position) = 0;

    /// A press or release of a key, from a source with the combined-session state. Null when the
    /// event cannot be made.
    [[nodiscard]] virtual EventPtr keyboardEvent(KeyCode keyCode, KeyAction action) = 0;

protected:
    EventSynthesizer() = default;
    ~EventSynthesizer() = default;
};

} // namespace trovel
