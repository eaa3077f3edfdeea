#pragma once

#include "platform/registration.h"
#include "platform/ui/window_controller.h"
#include "setup_windows/window_context.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace trovel {

class Button;
class Label;

/// Lets the user press a new hotkey and reports it; storing and registering it is the caller's.
/// Main thread only.
///
/// A registered hot key never reaches a window, so while this window has the keyboard the program's
/// own hotkey is suspended and can be recorded again.
class HotkeyRecorderWindowController final : public WindowController {
public:
    /// A virtual key code and a Carbon modifier mask.
    using OnHotkeyRecorded = std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)>;

    [[nodiscard]] static std::shared_ptr<HotkeyRecorderWindowController>
    make(WindowContext const& context);

    void setOnHotkeyRecorded(OnHotkeyRecorded onHotkeyRecorded);

    void keyDown(KeyEvent const& event) override;
    void flagsChanged(KeyEvent const& event) override;
    /// Closes the window; nothing is reported.
    void cancel();

    void windowWillClose() override;
    void windowDidBecomeKey() override;
    void windowDidResignKey() override;

    [[nodiscard]] Label const& recordLabel() const { return *recordLabel_; }
    [[nodiscard]] Label const& instructionLabel() const { return *instructionLabel_; }
    [[nodiscard]] Button& cancelButton() const { return *cancelButton_; }

private:
    explicit HotkeyRecorderWindowController(WindowContext const& context);

    void buildContent();
    [[nodiscard]] std::string storedText() const;

    WindowContext context_;
    std::shared_ptr<Label> recordLabel_;
    std::shared_ptr<Label> instructionLabel_;
    std::shared_ptr<Button> cancelButton_;
    OnHotkeyRecorded onHotkeyRecorded_;
    Registration hotkeySuspension_;
};

/// Opens the recorder in the middle of the screen, or brings the open one to the front and replaces
/// its callback.
void showHotkeyRecorderWindow(WindowContext const& context,
                              HotkeyRecorderWindowController::OnHotkeyRecorded onHotkeyRecorded);

} // namespace trovel
