#pragma once

#include "platform/lifetime.h"
#include "platform/linux/tray/menu_rest.h"
#include "platform/main_queue.h"
#include "platform/registration.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <functional>
#include <memory>

namespace trovel {

class InputGrab;
class XcbConnection;

/// Asks the X server: for the pointer, and what was painted.
class MenuRestX11 final : public MenuRest {
public:
    /// What is handed in outlives it. While `ownGrab` is wanted the pointer is not free.
    MenuRestX11(XcbConnection& x, MainQueue& mainQueue, InputGrab const& ownGrab);
    MenuRestX11(MenuRestX11 const&) = delete;
    MenuRestX11& operator=(MenuRestX11 const&) = delete;
    ~MenuRestX11();

    void whenPointerIsFree(std::function<void(bool isFree)> then) override;
    void whenAtRest(std::function<void()> then) override;

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
    Lifetime lifetime_;
};

} // namespace trovel
