#pragma once

#include "platform/ui/window.h"

namespace trovel {

/// A window without a title bar that can have the keyboard all the same.
class KeyableWindow final : public Window {
public:
    using Window::Window;

    [[nodiscard]] bool canBecomeKey() const override { return true; }
};

} // namespace trovel
