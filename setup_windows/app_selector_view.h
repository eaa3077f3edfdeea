#pragma once

#include "platform/platform.h"
#include "platform/ui/icon.h"
#include "platform/ui/view.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

/// The icon shown on the card of the application called `name`: its own where it runs or is
/// installed, else a symbol, else its first letter. `size` is points, the icon's width and height.
[[nodiscard]] Icon iconForApp(Platform const& platform, std::string const& name, double size);

/// The icon of the first running application whose identifier begins with `bundleIdentifier`, else
/// of the installed one with exactly that identifier.
[[nodiscard]] std::optional<ApplicationIcon>
appIcon(Platform const& platform, std::string_view bundleIdentifier, double size);

/// One tile of the row: an application's icon and name. It reports clicks; who is selected is the
/// selector's business. Main thread only.
class AppCard final : public View {
public:
    AppCard(Platform const& platform, std::string name, Rect frame);

    [[nodiscard]] std::string const& appName() const { return appName_; }
    [[nodiscard]] bool isSelected() const { return isSelectedState_; }

    /// Shows the card as selected or not. Every write fades, also one that changes nothing.
    void setSelected(bool isSelected);

    void setOnClick(std::function<void(std::string const&)> onClick);

    void mouseDown(MouseEvent const& event) override;
    void mouseEntered() override;
    void mouseExited() override;
    void willAppear() override;
    void didAppear() override;

private:
    void setupViews();
    void updateAppearance();
    void fadeToAppearance();
    void updateAccessibility();
    void fadeBackgroundTo(Color color);

    Platform platform_;
    std::string appName_;
    // Neither layer is ever attached or filled: the selected state is shown by tint and border
    // alone.
    std::shared_ptr<LayerStyle> iconLayer_ = std::make_shared<LayerStyle>();
    std::shared_ptr<LayerStyle> checkLayer_ = std::make_shared<LayerStyle>();
    bool isSelectedState_ = false;
    std::function<void(std::string const&)> onClick_;
};

/// The row of tiles with which the user picks the target application: one card for each chat
/// application of the catalogue, one for the custom application if there is one, and a tile that
/// opens a panel for choosing any other. Main thread only.
///
/// The row is centred and wider than its windows: the outermost tiles reach past both edges.
class AppSelectorView final : public View {
public:
    [[nodiscard]] static std::shared_ptr<AppSelectorView>
    make(Platform const& platform, Rect frame, std::optional<std::string> selectedName);

    /// Called with the new name after every selection that is made in the view.
    void setOnSelectionChanged(std::function<void(std::string const&)> onSelectionChanged);

    /// What the tile does: lets the user choose any application and makes it the custom one.
    void plusClicked();

    [[nodiscard]] std::optional<std::string> const& selectedName() const { return selectedName_; }
    [[nodiscard]] std::vector<std::shared_ptr<AppCard>> const& cards() const { return cards_; }
    [[nodiscard]] std::shared_ptr<AppCard> const& customCard() const { return customCard_; }
    [[nodiscard]] std::shared_ptr<View> const& plusButton() const { return plusButton_; }

    AppSelectorView(Platform const& platform, Rect frame, std::optional<std::string> selectedName);

private:
    void buildCards();
    std::shared_ptr<AppCard> addCard(std::string const& name, Rect frame);
    void addPlusButton(Rect frame);
    void selectApp(std::string const& name);
    void chooseCustomApp();
    void showInvalidAppAlert();

    Platform platform_;
    std::vector<std::shared_ptr<AppCard>> cards_;
    std::shared_ptr<AppCard> customCard_;
    std::shared_ptr<View> plusButton_;
    std::optional<std::string> selectedName_;
    std::function<void(std::string const&)> onSelectionChanged_;
};

} // namespace trovel
