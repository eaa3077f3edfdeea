#include "setup_windows/hotkey_recorder_window_controller.h"

#include "platform/hotkey_service.h"
#include "platform/ui/button.h"
#include "platform/weak_call.h"
#include "settings/hotkey.h"
#include "settings/preferences.h"
#include "setup_windows/show_in_slot.h"
#include "setup_windows/window_parts.h"
#include "setup_windows/window_slots.h"

#include <string>
#include <utility>

namespace trovel {

namespace {

constexpr double kWidth = 360;
constexpr double kHeight = 160;
constexpr EventFlags kModifierFlags = kFlagShift | kFlagControl | kFlagOption | kFlagCommand;

std::shared_ptr<Window> makeWindow(Platform const& platform) {
    Rect const content{0, 0, kWidth, kHeight};
    auto window = std::make_shared<Window>(
        platform.windows, WindowAttributes{.contentRect = content,
                                           .styleMask = kStyleTitled | kStyleClosable,
                                           .title = "Change Hotkey",
                                           .takesEveryKey = true});
    window->setContentView(std::make_shared<View>(content));
    return window;
}

} // namespace

std::shared_ptr<HotkeyRecorderWindowController>
HotkeyRecorderWindowController::make(WindowContext const& context) {
    std::shared_ptr<HotkeyRecorderWindowController> controller(
        new HotkeyRecorderWindowController(context));
    controller->buildContent();
    return controller;
}

HotkeyRecorderWindowController::HotkeyRecorderWindowController(WindowContext const& context)
    : WindowController(makeWindow(context.platform)), context_(context) {}

void HotkeyRecorderWindowController::buildContent() {
    auto& content = *window()->contentView();
    addLabel(content, {0, 115, kWidth, 20}, "Press a new hotkey combination",
             Font::system(14, Font::Weight::semibold), Color::system(Color::Name::label),
             TextAlignment::center);
    instructionLabel_ = addLabel(
        content, {0, 92, kWidth, 16}, "Must include at least one modifier (⌘, ⌃, ⌥, or ⇧)",
        Font::system(11), Color::system(Color::Name::secondaryLabel), TextAlignment::center);
    Label::Look look;
    look.font = Font::monospacedSystem(22, Font::Weight::medium);
    look.alignment = TextAlignment::center;
    look.isBezeled = true;
    recordLabel_ = std::make_shared<Label>(Rect{60, 48, 240, 34}, storedText(), look);
    content.addSubview(recordLabel_);
    cancelButton_ =
        std::make_shared<Button>(Rect{140, 10, 80, 28}, "Cancel", Button::Look{},
                                 weakCall(*this, &HotkeyRecorderWindowController::cancel));
    content.addSubview(cancelButton_);
}

std::string HotkeyRecorderWindowController::storedText() const {
    return storedHotkeyText(Preferences(context_.platform.preferences));
}

void HotkeyRecorderWindowController::setOnHotkeyRecorded(OnHotkeyRecorded onHotkeyRecorded) {
    onHotkeyRecorded_ = std::move(onHotkeyRecorded);
}

void HotkeyRecorderWindowController::keyDown(KeyEvent const& event) {
    if ((event.modifierFlags & kModifierFlags) == 0) {
        recordLabel_->setText("Add a modifier key");
        return;
    }
    // Closing empties the slot, which may hold the last reference.
    auto const keep = shared_from_this();
    auto const flags = event.modifierFlags & kDeviceIndependentFlags;
    recordLabel_->setText(hotkeyText(event.keyCode, flags));
    // Asking for the recorder in it would replace it while it runs.
    auto const onHotkeyRecorded = onHotkeyRecorded_;
    if (onHotkeyRecorded) onHotkeyRecorded(event.keyCode, carbonModifiers(flags));
    window()->close();
    context_.slots.sharedHotkeyRecorderWindow.reset();
}

void HotkeyRecorderWindowController::flagsChanged(KeyEvent const& event) {
    auto const glyphs = modifierGlyphs(event.modifierFlags);
    recordLabel_->setText(glyphs.empty() ? storedText() : glyphs + "…");
}

void HotkeyRecorderWindowController::cancel() {
    auto const keep = shared_from_this();
    window()->close();
    context_.slots.sharedHotkeyRecorderWindow.reset();
}

void HotkeyRecorderWindowController::windowWillClose() {
    hotkeySuspension_.reset();
    context_.slots.sharedHotkeyRecorderWindow.reset();
}

void HotkeyRecorderWindowController::windowDidBecomeKey() {
    hotkeySuspension_ = context_.platform.hotkeys.suspend();
}

void HotkeyRecorderWindowController::windowDidResignKey() {
    hotkeySuspension_.reset();
}

void showHotkeyRecorderWindow(WindowContext const& context,
                              HotkeyRecorderWindowController::OnHotkeyRecorded onHotkeyRecorded) {
    showInSlot(
        context, context.slots.sharedHotkeyRecorderWindow,
        [&] { return HotkeyRecorderWindowController::make(context); },
        [&](auto& controller) { controller.setOnHotkeyRecorded(std::move(onHotkeyRecorded)); });
}

} // namespace trovel
