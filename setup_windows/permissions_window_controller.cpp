#include "setup_windows/permissions_window_controller.h"

#include "platform/application.h"
#include "platform/main_queue.h"
#include "platform/permissions.h"
#include "platform/process_host.h"
#include "platform/ui/button.h"
#include "platform/ui/icons.h"
#include "platform/ui/image_view.h"
#include "platform/weak_call.h"
#include "platform/workspace.h"
#include "setup_windows/show_in_slot.h"
#include "setup_windows/window_parts.h"
#include "setup_windows/window_slots.h"

#include <array>
#include <chrono>
#include <string_view>
#include <utility>

namespace trovel {

namespace {

constexpr double kWidth = 440;
constexpr double kHeight = 380;
constexpr double kScreenRecordingRowY = kHeight - 160;
constexpr double kAccessibilityRowY = kHeight - 236;
constexpr std::chrono::seconds kPollInterval{1};

constexpr Color kBgColor = Color::rgba(17.0 / 255, 17.0 / 255, 17.0 / 255, 1);
constexpr Color kAccentColor = Color::rgba(138.0 / 255, 109.0 / 255, 72.0 / 255, 1);
constexpr Color kMutedColor = Color::rgba(107.0 / 255, 114.0 / 255, 128.0 / 255, 1);
constexpr Color kGreenColor = Color::rgba(34.0 / 255, 197.0 / 255, 94.0 / 255, 1);
constexpr Color kRestartOrange = Color::rgba(239.0 / 255, 131.0 / 255, 28.0 / 255, 1);
constexpr Color kWhite = Color::white(1, 1);
constexpr Color kButtonBackground = Color::white(1, 0.2);
constexpr Color kGrantedButtonBackground = Color::white(1, 0.15);
constexpr double kDisabledOpacity = 0.4;

constexpr std::string_view kScreenRecordingPane =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";

// Waits until the old process is gone, then opens the bundle. The arguments after it are the
// script's own name, the process and the bundle.
constexpr std::string_view kRestartScript =
    R"(while kill -0 $1 2>/dev/null; do sleep 0.2; done; open "$2")";

std::shared_ptr<Window> makeWindow(Platform const& platform) {
    Rect const content{0, 0, kWidth, kHeight};
    auto window = std::make_shared<Window>(
        platform.windows, WindowAttributes{.contentRect = content,
                                           .styleMask = kStyleTitled | kStyleClosable,
                                           .backgroundColor = kBgColor,
                                           .title = "Trovel",
                                           .isMovableByBackground = true});
    auto view = std::make_shared<View>(content);
    LayerStyle style;
    style.backgroundColor = kBgColor;
    view->setLayer(style);
    window->setContentView(std::move(view));
    return window;
}

void setBackground(Button& button, Color color) {
    auto style = button.layer().value_or(LayerStyle{});
    style.backgroundColor = color;
    button.setLayer(style);
}

/// The look of a row whose grant is there, or missing and still to be asked for.
void showGrant(Label& label, Button& button, bool isGranted) {
    label.setText(isGranted ? "Granted ✓" : "Not granted");
    label.setTextColor(isGranted ? kGreenColor : kMutedColor);
    button.setTitle(isGranted ? "Granted" : "Grant");
    button.setEnabled(!isGranted);
    setBackground(button, isGranted ? kGrantedButtonBackground : kButtonBackground);
}

} // namespace

struct PermissionsWindowController::Row {
    double y = 0;
    std::string_view symbol;
    std::string_view name;
    std::string_view detail;
};

std::shared_ptr<PermissionsWindowController>
PermissionsWindowController::make(WindowContext const& context) {
    std::shared_ptr<PermissionsWindowController> controller(
        new PermissionsWindowController(context));
    controller->buildContent();
    controller->refreshStatus();
    controller->pollTimer_ = controller->context_.platform.mainQueue.every(
        kPollInterval, weakCall(*controller, &PermissionsWindowController::refreshStatus));
    return controller;
}

PermissionsWindowController::PermissionsWindowController(WindowContext const& context)
    : WindowController(makeWindow(context.platform)), context_(context) {}

void PermissionsWindowController::buildContent() {
    auto& content = *window()->contentView();
    addLabel(content, {0, kHeight - 52, kWidth, 24}, "Permissions",
             Font::system(18, Font::Weight::medium), kWhite, TextAlignment::center);
    content.addSubview(std::make_shared<Label>(
        Rect{32, kHeight - 96, kWidth - 64, 34},
        "Trovel captures a screen region (⌘⇧2) and pastes it\n"
        "into your AI app. These permissions make that work.",
        Label::Look{Font::system(12), kMutedColor, TextAlignment::center, 2}));
    screenRecLabel_ =
        addRow({kScreenRecordingRowY, "rectangle.dashed.badge.record", "Screen Recording",
                "Needed to capture your screenshot. Without it, captures come back blank."});
    screenRecButton_ =
        addGrantButton(kScreenRecordingRowY, &PermissionsWindowController::openScreenRecording);
    accessibilityLabel_ =
        addRow({kAccessibilityRowY, "hand.point.up.braille", "Accessibility",
                "Needed to paste your screenshot into the AI app and send it for you."});
    accessibilityButton_ =
        addGrantButton(kAccessibilityRowY, &PermissionsWindowController::openAccessibility);
    restartButton_ =
        addFilledButton({(kWidth - 180) / 2, 68, 180, 28}, "Restart Trovel", kRestartOrange, 6, 12,
                        &PermissionsWindowController::restartApp);
    restartButton_->setHidden(true);
    continueButton_ = addFilledButton({(kWidth - 180) / 2, 24, 180, 32}, "Continue", kAccentColor,
                                      8, 13, &PermissionsWindowController::continueClicked);
}

std::shared_ptr<Label> PermissionsWindowController::addRow(Row const& row) {
    auto& content = *window()->contentView();
    std::optional<Icon> icon;
    if (context_.platform.icons.hasSystemSymbol(row.symbol)) {
        icon = SymbolIcon{std::string(row.symbol), std::string(row.name),
                          SymbolConfiguration{14, Font::Weight::medium}};
    }
    content.addSubview(
        std::make_shared<ImageView>(Rect{32, row.y + 18, 24, 24}, std::move(icon), kAccentColor));
    addLabel(content, {66, row.y + 36, 160, 16}, std::string(row.name),
             Font::system(13, Font::Weight::semibold), kWhite);
    auto status =
        addLabel(content, {66, row.y + 18, 200, 14}, "Not granted", Font::system(11), kMutedColor);
    addLabel(content, {66, row.y, kWidth - 64 - 34, 14}, std::string(row.detail), Font::system(10),
             Color::white(1, 0.4));
    return status;
}

std::shared_ptr<Button>
PermissionsWindowController::addGrantButton(double y,
                                            void (PermissionsWindowController::*action)()) {
    return addFilledButton({kWidth - 32 - 80, y + 26, 72, 24}, "Grant", kButtonBackground, 6, 11,
                           action);
}

std::shared_ptr<Button>
PermissionsWindowController::addFilledButton(Rect frame, std::string title, Color background,
                                             double cornerRadius, double fontSize,
                                             void (PermissionsWindowController::*action)()) {
    Button::Look look;
    look.font = Font::system(fontSize, Font::Weight::medium);
    look.isBordered = false;
    look.contentTint = kWhite;
    auto button = std::make_shared<Button>(frame, std::move(title), look, weakCall(*this, action));
    LayerStyle style;
    style.cornerRadius = cornerRadius;
    style.backgroundColor = background;
    button->setLayer(style);
    window()->contentView()->addSubview(button);
    return button;
}

void PermissionsWindowController::refreshStatus() {
    auto const& permissions = context_.platform.permissions;
    bool const isTrusted = permissions.isAccessibilityTrusted();
    bool const canRecord = permissions.preflightScreenCapture();
    showGrant(*accessibilityLabel_, *accessibilityButton_, isTrusted);
    refreshScreenRecording(canRecord);

    bool const canContinue = isTrusted && (canRecord || screenRecNeedsRestart_);
    continueButton_->setEnabled(canContinue);
    auto style = continueButton_->layer().value_or(LayerStyle{});
    style.opacity = canContinue ? 1 : kDisabledOpacity;
    continueButton_->setLayer(style);
}

void PermissionsWindowController::refreshScreenRecording(bool isGranted) {
    if (!isGranted && screenRecFlowStarted_) {
        screenRecLabel_->setText("May need restart");
        screenRecLabel_->setTextColor(kRestartOrange);
        screenRecNeedsRestart_ = true;
        restartButton_->setHidden(false);
        return;
    }
    showGrant(*screenRecLabel_, *screenRecButton_, isGranted);
    if (!isGranted) return;
    screenRecNeedsRestart_ = false;
    restartButton_->setHidden(true);
}

void PermissionsWindowController::openScreenRecording() {
    screenRecFlowStarted_ = true;
    auto const& platform = context_.platform;
    if (platform.process.isSystemAtLeast(15, 0)) platform.permissions.requestScreenCapture();
    platform.workspace.openUrl(kScreenRecordingPane);
}

void PermissionsWindowController::openAccessibility() {
    context_.platform.permissions.promptForAccessibility();
}

void PermissionsWindowController::restartApp() {
    auto const& platform = context_.platform;
    std::array<std::string, 5> const arguments{"-c", std::string(kRestartScript), "--",
                                               std::to_string(platform.process.processIdentifier()),
                                               platform.process.bundlePath()};
    // Without the child nobody opens the program again; it ends all the same.
    static_cast<void>(platform.process.startChild("/bin/bash", arguments));
    platform.application.terminate();
}

void PermissionsWindowController::continueClicked() {
    // Closing empties the slot, which may hold the last reference.
    auto const keep = shared_from_this();
    pollTimer_.reset();
    window()->close();
    context_.slots.sharedPermissionsWindow.reset();
    if (onComplete_) onComplete_();
}

void PermissionsWindowController::windowWillClose() {
    pollTimer_.reset();
    context_.slots.sharedPermissionsWindow.reset();
}

void showPermissionsWindow(WindowContext const& context,
                           PermissionsWindowController::Completion onComplete) {
    showInSlot(
        context, context.slots.sharedPermissionsWindow,
        [&] { return PermissionsWindowController::make(context); },
        [&](auto& controller) { controller.setOnComplete(std::move(onComplete)); });
}

} // namespace trovel
