#pragma once

#include "platform/event_synthesizer.h"

namespace trovel {

/// Quartz events, posted to the HID event tap.
class EventSynthesizerMac final : public EventSynthesizer {
public:
    EventSynthesizerMac() = default;

    [[nodiscard]] EventPtr mouseEvent(MouseAction action, Point position) override;
    [[nodiscard]] EventPtr keyboardEvent(KeyCode keyCode, KeyAction action) override;
};

} // namespace trovel
