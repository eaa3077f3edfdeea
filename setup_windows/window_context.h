#pragma once

#include "platform/platform.h"

namespace trovel {

struct WindowSlots;

/// What every setup window needs: the desktop, and the places where the windows that are open are
/// held, which outlive the windows.
struct WindowContext {
    Platform platform;
    WindowSlots& slots;
};

} // namespace trovel
