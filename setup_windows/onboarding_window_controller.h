#pragma once

#include "platform/ui/window_controller.h"
#include "setup_windows/window_context.h"

#include <memory>

namespace trovel {

class AppSelectorView;
class Button;

/// The first-run window: what Trovel does, in three steps, and the choice of the application that
/// captures go to. Main thread only.
class OnboardingWindowController final : public WindowController {
public:
    [[nodiscard]] static std::shared_ptr<OnboardingWindowController>
    make(WindowContext const& context);

    /// Stores the chosen application, closes the window and opens the permissions window, whose
    /// completion marks the onboarding as done.
    void getStarted();

    void windowWillClose() override;

    [[nodiscard]] std::shared_ptr<AppSelectorView> const& appSelector() const {
        return appSelector_;
    }
    [[nodiscard]] std::shared_ptr<Button> const& continueButton() const { return continueButton_; }

private:
    explicit OnboardingWindowController(WindowContext const& context);

    void buildContent();
    void addHeading();
    void addSteps();
    void addSelector();
    void addContinueButton();
    void selectionChanged(std::string const& name);

    WindowContext context_;
    std::shared_ptr<AppSelectorView> appSelector_;
    std::shared_ptr<Button> continueButton_;
};

/// Opens the first-run window in the middle of the screen, in front of everything.
void showOnboardingWindow(WindowContext const& context);

} // namespace trovel
