#pragma once

#include <functional>

namespace trovel {

/// Tells when a menu is gone: from the pointer, which a menu holds while it is open, and from the
/// screen, where it may fade and what it covered has to be painted again. Main thread only.
class MenuRest {
public:
    MenuRest(MenuRest const&) = delete;
    MenuRest& operator=(MenuRest const&) = delete;

    /// Calls `then` in a later turn of the main loop: with true when nobody holds the pointer, with
    /// false when this program wants it or somebody else has held it for a second.
    virtual void whenPointerIsFree(std::function<void(bool isFree)> then) = 0;

    /// Calls `then` when the pointer is free and nothing has been painted for a moment, or when
    /// that has taken longer than half a second: something on the screen may never rest.
    virtual void whenAtRest(std::function<void()> then) = 0;

protected:
    MenuRest() = default;
    ~MenuRest() = default;
};

} // namespace trovel
