#include "setup_windows/onboarding_window_controller.h"

#include "platform/application.h"
#include "platform/ui/button.h"
#include "platform/ui/icons.h"
#include "platform/ui/image_view.h"
#include "platform/ui/separator.h"
#include "platform/weak_call.h"
#include "settings/preferences.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/permissions_window_controller.h"
#include "setup_windows/window_parts.h"
#include "setup_windows/window_slots.h"

#include <array>
#include <string_view>
#include <utility>

namespace trovel {

namespace {

constexpr double kWidth = 600;
constexpr double kHeight = 600;
constexpr std::string_view kFallbackApp = "Claude";

constexpr Color kLabelColor = Color::system(Color::Name::label);
constexpr Color kSecondaryLabelColor = Color::system(Color::Name::secondaryLabel);
constexpr Color kTertiaryLabelColor = Color::system(Color::Name::tertiaryLabel);
constexpr Color kAccent = Color::system(Color::Name::controlAccent);

struct Step {
    std::string_view symbol;
    std::string_view title;
    std::string_view description;
};

// The first title names the default shortcut, whatever the hotkey in force.
constexpr std::array<Step, 3> kSteps{
    Step{"command", "Press ⌘⇧2 anywhere",
         "A global shortcut that works no matter what app is in front"},
    Step{"crop", "Drag to select a region", "Capture exactly the part of the screen you need"},
    Step{"paperplane.fill", "Automatically sent to AI",
         "Your screenshot is pasted and sent — nothing else to do"}};
constexpr double kFirstStepY = 370;
constexpr double kStepPitch = 58;

} // namespace

std::shared_ptr<OnboardingWindowController>
OnboardingWindowController::make(WindowContext const& context) {
    std::shared_ptr<OnboardingWindowController> controller(new OnboardingWindowController(context));
    controller->buildContent();
    return controller;
}

OnboardingWindowController::OnboardingWindowController(WindowContext const& context)
    : WindowController(makePanelWindow(context.platform, {kWidth, kHeight})), context_(context) {}

void OnboardingWindowController::buildContent() {
    addHeading();
    addSteps();
    auto& content = *window()->contentView();
    content.addSubview(std::make_shared<Separator>(Rect{56, 192, kWidth - 112, 1}));
    addLabel(content, {0, 164, kWidth, 18}, "Choose your AI app",
             Font::system(13, Font::Weight::medium), kSecondaryLabelColor, TextAlignment::center);
    addSelector();
    addContinueButton();
}

void OnboardingWindowController::addHeading() {
    auto& content = *window()->contentView();
    auto icon =
        std::make_shared<ImageView>(Rect{(kWidth - 56) * 0.5, 500, 56, 56}, OwnApplicationIcon{},
                                    std::nullopt, ImageScaling::proportionallyUpOrDown);
    LayerStyle style;
    style.cornerRadius = 12;
    style.masksToBounds = true;
    style.shadow = LayerShadow{Color::white(0, 0.25), {0, -2}, 8, 1};
    icon->setLayer(style);
    content.addSubview(std::move(icon));
    addLabel(content, {0, 450, kWidth, 30}, "Trovel", Font::system(24, Font::Weight::bold),
             kLabelColor, TextAlignment::center);
    addLabel(content, {56, 426, kWidth - 112, 18},
             "Screenshot any part of your screen and send it to AI — instantly.", Font::system(13),
             kSecondaryLabelColor, TextAlignment::center);
}

void OnboardingWindowController::addSteps() {
    auto& content = *window()->contentView();
    double y = kFirstStepY;
    for (auto const& step : kSteps) {
        auto circle = std::make_shared<View>(Rect{56, y, 36, 36});
        LayerStyle style;
        style.cornerRadius = 18;
        style.backgroundColor = Color::system(Color::Name::controlAccent, 0.12);
        circle->setLayer(style);
        std::optional<Icon> icon;
        if (context_.platform.icons.hasSystemSymbol(step.symbol)) {
            icon = SymbolIcon{std::string(step.symbol), std::string(step.title),
                              SymbolConfiguration{14, Font::Weight::medium}};
        }
        circle->addSubview(
            std::make_shared<ImageView>(Rect{6, 6, 24, 24}, std::move(icon), kAccent));
        content.addSubview(std::move(circle));
        addLabel(content, {106, y + 18, kWidth - 162, 17}, std::string(step.title),
                 Font::system(13, Font::Weight::semibold), kLabelColor);
        addLabel(content, {106, y + 1, kWidth - 162, 15}, std::string(step.description),
                 Font::system(12), kTertiaryLabelColor);
        y -= kStepPitch;
    }
}

void OnboardingWindowController::addSelector() {
    auto const preferred = Preferences(context_.platform.preferences)
                               .preferredAIApp()
                               .value_or(std::string(kFallbackApp));
    appSelector_ = AppSelectorView::make(context_.platform, {0, 74, kWidth, 80}, preferred);
    appSelector_->setOnSelectionChanged(
        weakCall(*this, &OnboardingWindowController::selectionChanged));
    window()->contentView()->addSubview(appSelector_);
}

void OnboardingWindowController::addContinueButton() {
    Button::Look look;
    look.font = Font::system(14, Font::Weight::semibold);
    look.isBordered = false;
    look.isLarge = true;
    look.contentTint = Color::white(1, 1);
    look.keyEquivalent = "\r";
    continueButton_ =
        std::make_shared<Button>(Rect{(kWidth - 180) * 0.5, 28, 180, 36}, "Get Started", look,
                                 weakCall(*this, &OnboardingWindowController::getStarted));
    LayerStyle style;
    style.cornerRadius = 8;
    style.backgroundColor = kAccent;
    continueButton_->setLayer(style);
    window()->contentView()->addSubview(continueButton_);
}

void OnboardingWindowController::selectionChanged(std::string const& /*name*/) {
    continueButton_->setEnabled(true);
}

void OnboardingWindowController::getStarted() {
    // Closing empties the slot, which may hold the last reference.
    auto const keep = shared_from_this();
    Preferences preferences(context_.platform.preferences);
    preferences.setPreferredAIApp(appSelector_->selectedName().value_or(std::string(kFallbackApp)));
    window()->close();
    context_.slots.sharedOnboardingWindow.reset();
    showPermissionsWindow(context_,
                          [preferences]() mutable { preferences.setHasCompletedOnboarding(true); });
}

void OnboardingWindowController::windowWillClose() {
    context_.slots.sharedOnboardingWindow.reset();
}

void showOnboardingWindow(WindowContext const& context) {
    auto controller = OnboardingWindowController::make(context);
    controller->showWindow();
    controller->window()->center();
    controller->window()->makeKeyAndOrderFront();
    context.platform.application.activate();
    context.slots.sharedOnboardingWindow = std::move(controller);
}

} // namespace trovel
