#pragma once

#include "platform/main_queue.h"
#include "platform/registration.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <functional>
#include <memory>

namespace trovel {

class InputGrab;
class XcbConnection;

/// Tells when a menu is gone: from the pointer, which a menu holds while it is open, and from the
/// screen, where it may fade and what it covered has to be painted again. Main thread only.
class MenuRestX11 {
public:
    /// What is handed in outlives it. While `ownGrab` is wanted the pointer is not free.
    MenuRestX11(XcbConnection& x, MainQueue& mainQueue, InputGrab const& ownGrab);
    MenuRestX11(MenuRestX11 const&) = delete;
    MenuRestX11& operator=(MenuRestX11 const&) = delete;
    ~MenuRestX11();

    /// Calls `then` in a later turn of the main loop: with true when nobody holds the pointer, with
    /// false when `ownGrab` wants it or somebody else has held it for a second.
    void whenPointerIsFree(std::function<void(bool isFree)> then);

    /// Calls `then` when the pointer is free and nothing has been painted for a moment, or when
    /// that has taken longer than half a second: something on the screen may never rest.
    void whenAtRest(std::function<void()> then);

private:
    class Watch;

    [[nodiscard]] bool isPointerFree() const;
    void awaitPointer(int attempts, std::function<void(bool)> const& then);
    void awaitRest(std::shared_ptr<Watch> const& watch, int ticks, int quietTicks,
                   std::function<void()> const& then);
    void later(std::function<void()> block);

    XcbConnection& x_;
    MainQueue& mainQueue_;
    InputGrab const& ownGrab_;
    std::shared_ptr<int> alive_ = std::make_shared<int>(0); // blocks that wait hold it weakly
};

} // namespace trovel
