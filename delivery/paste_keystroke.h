#pragma once

#include "platform/key_codes.h"

namespace trovel {

class EventSynthesizer;

/// Presses and releases one key with exactly these modifier flags. Nothing is sent unless both
/// events could be made, so the key cannot stay down.
void sendKeystroke(EventSynthesizer& events, KeyCode keyCode, EventFlags flags);

/// Command-V. A system on which programs differ in how they paste may press other keys for it: the
/// one who makes the events chooses.
void sendPasteKeystroke(EventSynthesizer& events);

} // namespace trovel
