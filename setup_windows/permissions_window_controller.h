#pragma once

#include "platform/color.h"
#include "platform/registration.h"
#include "platform/ui/window_controller.h"
#include "setup_windows/window_context.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace trovel {

class Button;
class Label;

/// States the two grants that Trovel needs, lets the user ask for each, and watches them once a
/// second while it is open. Main thread only.
class PermissionsWindowController final : public WindowController {
public:
    using Completion = std::function<void()>;

    [[nodiscard]] static std::shared_ptr<PermissionsWindowController>
    make(WindowContext const& context);

    /// Called when the user presses "Continue", and never when the window is closed otherwise.
    void setOnComplete(Completion onComplete) { onComplete_ = std::move(onComplete); }

    void openScreenRecording();
    void openAccessibility();
    /// Ends the program and has it started again once it is gone.
    void restartApp();
    void continueClicked();

    /// Reads both grants afresh and shows them.
    void refreshStatus();

    void windowWillClose() override;

    [[nodiscard]] Label const& screenRecLabel() const { return *screenRecLabel_; }
    [[nodiscard]] Label const& accessibilityLabel() const { return *accessibilityLabel_; }
    [[nodiscard]] Button& screenRecButton() const { return *screenRecButton_; }
    [[nodiscard]] Button& accessibilityButton() const { return *accessibilityButton_; }
    [[nodiscard]] Button& continueButton() const { return *continueButton_; }
    [[nodiscard]] Button& restartButton() const { return *restartButton_; }

private:
    struct Row;

    explicit PermissionsWindowController(WindowContext const& context);

    void buildContent();
    std::shared_ptr<Label> addRow(Row const& row);
    std::shared_ptr<Button> addGrantButton(double y, void (PermissionsWindowController::*action)());
    std::shared_ptr<Button> addFilledButton(Rect frame, std::string title, Color background,
                                            double cornerRadius, double fontSize,
                                            void (PermissionsWindowController::*action)());
    void refreshScreenRecording(bool isGranted);

    WindowContext context_;
    std::shared_ptr<Label> screenRecLabel_;
    std::shared_ptr<Label> accessibilityLabel_;
    std::shared_ptr<Button> screenRecButton_;
    std::shared_ptr<Button> accessibilityButton_;
    std::shared_ptr<Button> continueButton_;
    std::shared_ptr<Button> restartButton_;
    Registration pollTimer_;
    bool screenRecNeedsRestart_ = false;
    bool screenRecFlowStarted_ = false; // the user has asked for Screen Recording in this window
    Completion onComplete_;
};

/// Opens the permissions window in the middle of the screen, or brings the open one to the front
/// and replaces its completion.
void showPermissionsWindow(WindowContext const& context,
                           PermissionsWindowController::Completion onComplete);

} // namespace trovel
