#include "delivery/paste_keystroke.h"

#include "platform/event_synthesizer.h"

namespace trovel {

void sendKeystroke(EventSynthesizer& events, KeyCode keyCode, EventFlags flags) {
    auto const down = events.keyboardEvent(keyCode, KeyAction::down);
    auto const up = events.keyboardEvent(keyCode, KeyAction::up);
    if (!down || !up) return;
    down->setFlags(flags);
    up->setFlags(flags);
    down->post();
    up->post();
}

void sendPasteKeystroke(EventSynthesizer& events) {
    sendKeystroke(events, kKeyV, kFlagCommand);
}

} // namespace trovel
