#pragma once

#include "platform/ui/window_controller.h"
#include "setup_windows/window_context.h"

#include <memory>

namespace trovel {

class AppSelectorView;

/// Changes the application that captures go to. A click on a card takes effect at once. Main thread
/// only.
class ChangeAppWindowController final : public WindowController {
public:
    [[nodiscard]] static std::shared_ptr<ChangeAppWindowController>
    make(WindowContext const& context);

    /// Stores the selection once more, if there is one, and closes the window.
    void done();

    void windowWillClose() override;

    [[nodiscard]] std::shared_ptr<AppSelectorView> const& appSelector() const {
        return appSelector_;
    }

private:
    explicit ChangeAppWindowController(WindowContext const& context);

    void buildContent();

    WindowContext context_;
    std::shared_ptr<AppSelectorView> appSelector_;
};

/// Opens the window in the middle of the screen, or brings the one that is open to the front as it
/// stands.
void showChangeAppWindow(WindowContext const& context);

} // namespace trovel
