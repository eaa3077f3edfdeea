#pragma once

#include "platform/application.h"
#include "platform/ui/window.h"
#include "setup_windows/window_context.h"

#include <memory>

namespace trovel {

/// Shows the window whose controller `slot` holds: the one that is open, else that of `make`, in
/// the middle of the screen. `prepare` gets the controller first, either way. The program comes to
/// the front with it.
template <class Controller, class Make, class Prepare>
void showInSlot(WindowContext const& context, std::shared_ptr<Controller>& slot, Make const& make,
                Prepare const& prepare) {
    if (slot) {
        prepare(*slot);
        slot->window()->makeKeyAndOrderFront();
    } else {
        std::shared_ptr<Controller> controller = make();
        prepare(*controller);
        controller->window()->center();
        controller->window()->makeKeyAndOrderFront();
        slot = std::move(controller);
    }
    context.platform.application.activate();
}

} // namespace trovel
