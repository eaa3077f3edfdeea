#include "setup_windows/change_app_window_controller.h"

#include "platform/ui/button.h"
#include "platform/weak_call.h"
#include "settings/preferences.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/show_in_slot.h"
#include "setup_windows/window_parts.h"
#include "setup_windows/window_slots.h"

#include <utility>

namespace trovel {

namespace {

constexpr double kWidth = 600;
constexpr double kHeight = 210;

} // namespace

std::shared_ptr<ChangeAppWindowController>
ChangeAppWindowController::make(WindowContext const& context) {
    std::shared_ptr<ChangeAppWindowController> controller(new ChangeAppWindowController(context));
    controller->buildContent();
    return controller;
}

ChangeAppWindowController::ChangeAppWindowController(WindowContext const& context)
    : WindowController(makePanelWindow(context.platform, {kWidth, kHeight})), context_(context) {}

void ChangeAppWindowController::buildContent() {
    auto& content = *window()->contentView();
    addLabel(content, {0, kHeight - 44, kWidth, 20}, "Choose your AI app",
             Font::system(15, Font::Weight::semibold), Color::system(Color::Name::label),
             TextAlignment::center);
    addLabel(content, {0, kHeight - 64, kWidth, 16}, "Screenshots will be sent here first",
             Font::system(11.5), Color::system(Color::Name::tertiaryLabel), TextAlignment::center);

    Preferences preferences(context_.platform.preferences);
    appSelector_ =
        AppSelectorView::make(context_.platform, {0, 42, kWidth, 80}, preferences.preferredAIApp());
    appSelector_->setOnSelectionChanged(
        [preferences](std::string const& name) mutable { preferences.setPreferredAIApp(name); });
    content.addSubview(appSelector_);

    Button::Look look;
    look.font = Font::system(12, Font::Weight::medium);
    look.keyEquivalent = "\r";
    content.addSubview(std::make_shared<Button>(Rect{(kWidth - 100) * 0.5, 10, 100, 28}, "Done",
                                                look,
                                                weakCall(*this, &ChangeAppWindowController::done)));
}

void ChangeAppWindowController::done() {
    // Closing empties the slot, which may hold the last reference.
    auto const keep = shared_from_this();
    if (auto const& name = appSelector_->selectedName()) {
        Preferences(context_.platform.preferences).setPreferredAIApp(*name);
    }
    window()->close();
}

void ChangeAppWindowController::windowWillClose() {
    context_.slots.sharedChangeAppWindow.reset();
}

void showChangeAppWindow(WindowContext const& context) {
    auto const make = [&] {
        auto controller = ChangeAppWindowController::make(context);
        controller->showWindow();
        return controller;
    };
    showInSlot(context, context.slots.sharedChangeAppWindow, make, [](auto&) {});
}

} // namespace trovel
