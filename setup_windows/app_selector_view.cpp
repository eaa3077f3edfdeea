#include "setup_windows/app_selector_view.h"

#include "delivery/ai_app_catalogue.h"
#include "delivery/ai_app_detector.h"
#include "platform/alerts.h"
#include "platform/open_panels.h"
#include "platform/platform.h"
#include "platform/running_application.h"
#include "platform/ui/animator.h"
#include "platform/ui/canvas.h"
#include "platform/ui/icons.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/weak_call.h"
#include "platform/workspace.h"
#include "settings/preferences.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace trovel {

namespace {

using namespace std::chrono_literals;

constexpr double kTileWidth = 96;
constexpr double kTileHeight = 76;
constexpr double kTileGap = 14;
constexpr double kTilePitch = kTileWidth + kTileGap;
constexpr double kTileCornerRadius = 12;
constexpr double kIconSize = 32;
constexpr Rect kNameFrame{0, 6, kTileWidth, 14};
constexpr Rect kPlusFrame{32, 30, 32, 32};
constexpr auto kSelectionFade = 150ms;
constexpr auto kHoverFade = 120ms;

constexpr Color kAccent = Color::system(Color::Name::controlAccent);
constexpr Color kLabelColor = Color::system(Color::Name::label);
constexpr Color kSecondaryLabelColor = Color::system(Color::Name::secondaryLabel);
constexpr Color kTertiaryLabelColor = Color::system(Color::Name::tertiaryLabel);
constexpr Color kSeparatorColor = Color::system(Color::Name::separator);

/// The card's own choice of symbols. It does not follow the catalogue's icons: only these four
/// names have a symbol of their own here.
std::string_view symbolForApp(std::string_view name) {
    if (name == "Claude") return "brain.head.profile";
    if (name == "ChatGPT") return "bubble.left.fill";
    if (name == "Gemini") return "sparkles";
    if (name == "Perplexity") return "magnifyingglass";
    return "app.fill";
}

/// The first character of UTF-8 text, as it stands.
std::string firstCharacter(std::string const& text) {
    std::size_t length = text.empty() ? 0 : 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return text.substr(0, length);
}

LayerStyle cardStyle(bool isSelected) {
    LayerStyle style;
    style.cornerRadius = kTileCornerRadius;
    style.backgroundColor =
        isSelected ? Color::system(Color::Name::controlAccent, 0.1) : Color::clear();
    style.borderWidth = isSelected ? 2 : 1;
    style.borderColor = isSelected ? kAccent : kSeparatorColor;
    return style;
}

DrawnImage letterIcon(std::string const& name, double size) {
    TextAttributes const attributes{Font::system(size * 0.5, Font::Weight::semibold),
                                    kSecondaryLabelColor};
    auto const draw = [letter = firstCharacter(name), attributes](Canvas& canvas, Rect rect) {
        auto const text = canvas.sizeOfText(letter, attributes.font);
        Point const origin{rect.x + (rect.width - text.width) * 0.5,
                           rect.y + (rect.height - text.height) * 0.5};
        canvas.drawText(letter, origin, attributes);
        return true;
    };
    return {{size, size}, draw, false};
}

std::optional<ApplicationIcon> ownIconForApp(Platform const& platform, std::string const& name,
                                             double size) {
    auto const row = std::ranges::find(knownAIApps(), name, &KnownAIApp::name);
    if (row != knownAIApps().end()) {
        if (auto icon = appIcon(platform, row->bundlePrefix, size)) return icon;
    }
    Preferences const preferences(platform.preferences);
    if (preferences.customAppName() != name) return std::nullopt;
    auto const bundleIdentifier = preferences.customAppBundleID();
    return bundleIdentifier ? appIcon(platform, *bundleIdentifier, size) : std::nullopt;
}

std::string lastPathComponentWithoutExtension(std::string path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    path.erase(0, path.rfind('/') + 1);
    auto const dot = path.rfind('.');
    if (dot != std::string::npos && dot > 0) path.erase(dot);
    return path;
}

} // namespace

Icon iconForApp(Platform const& platform, std::string const& name, double size) {
    if (auto icon = ownIconForApp(platform, name, size)) return *icon;
    auto const symbol = symbolForApp(name);
    if (platform.icons.hasSystemSymbol(symbol)) {
        return SymbolIcon{std::string(symbol), name,
                          SymbolConfiguration{size * 0.6, Font::Weight::medium}};
    }
    return letterIcon(name, size);
}

std::optional<ApplicationIcon> appIcon(Platform const& platform, std::string_view bundleIdentifier,
                                       double size) {
    for (auto const& application : platform.workspace.runningApplications()) {
        if (!application.bundleIdentifier.has_value()) continue;
        if (!application.bundleIdentifier->starts_with(bundleIdentifier)) continue;
        if (auto icon = platform.icons.iconOfRunningApplication(application, size)) return icon;
        break;
    }
    return platform.icons.iconOfInstalledApplication(bundleIdentifier, size);
}

AppCard::AppCard(Platform const& platform, std::string name, Rect frame)
    : View(frame), platform_(platform), appName_(std::move(name)) {
    setupViews();
}

void AppCard::setupViews() {
    updateAccessibility();
    Rect const iconFrame{(frame().width - kIconSize) * 0.5, frame().height - 46, kIconSize,
                         kIconSize};
    addSubview(std::make_shared<ImageView>(iconFrame, iconForApp(platform_, appName_, kIconSize),
                                           std::nullopt, ImageScaling::proportionallyUpOrDown));
    addSubview(std::make_shared<Label>(
        Rect{kNameFrame.x, kNameFrame.y, frame().width, 14}, appName_,
        Label::Look{Font::system(11, Font::Weight::medium), kLabelColor, TextAlignment::center}));
    trackPointer();
    updateAppearance();
}

void AppCard::updateAppearance() {
    setLayer(cardStyle(isSelectedState_));
}

void AppCard::fadeToAppearance() {
    platform_.animator.runGroup(kSelectionFade, [this] { updateAppearance(); });
}

void AppCard::updateAccessibility() {
    setAccessibility({AccessibilityInfo::Role::button, appName_,
                      isSelectedState_ ? "selected" : "not selected"});
}

void AppCard::setSelected(bool isSelected) {
    isSelectedState_ = isSelected;
    updateAccessibility();
    fadeToAppearance();
}

// The group that was run when the card was made had nothing on the screen to fade.
void AppCard::willAppear() {
    if (isSelectedState_) setLayer(cardStyle(false));
}

void AppCard::didAppear() {
    if (isSelectedState_) fadeToAppearance();
}

void AppCard::setOnClick(std::function<void(std::string const&)> onClick) {
    onClick_ = std::move(onClick);
}

void AppCard::mouseDown(MouseEvent const&) {
    // The click may rebuild the row and with it this card.
    auto const onClick = onClick_;
    if (onClick) onClick(appName_);
}

void AppCard::mouseEntered() {
    if (!isSelectedState_) fadeBackgroundTo(Color::system(Color::Name::label, 0.04));
}

void AppCard::mouseExited() {
    if (!isSelectedState_) fadeBackgroundTo(Color::clear());
}

void AppCard::fadeBackgroundTo(Color color) {
    platform_.animator.runGroup(kHoverFade, [this, color] {
        auto style = layer().value_or(LayerStyle{});
        style.backgroundColor = color;
        setLayer(style);
    });
}

std::shared_ptr<AppSelectorView> AppSelectorView::make(Platform const& platform, Rect frame,
                                                       std::optional<std::string> selectedName) {
    auto view = std::make_shared<AppSelectorView>(platform, frame, std::move(selectedName));
    view->buildCards();
    return view;
}

AppSelectorView::AppSelectorView(Platform const& platform, Rect frame,
                                 std::optional<std::string> selectedName)
    : View(frame), platform_(platform), selectedName_(std::move(selectedName)) {}

void AppSelectorView::setOnSelectionChanged(
    std::function<void(std::string const&)> onSelectionChanged) {
    onSelectionChanged_ = std::move(onSelectionChanged);
}

void AppSelectorView::buildCards() {
    auto const customName = Preferences(platform_.preferences).customAppName();
    auto const cardCount = knownAIApps().size() + (customName ? 1 : 0);
    auto const tileCount = static_cast<double>(cardCount + 1);
    double const rowWidth = tileCount * kTileWidth + (tileCount * kTileGap - kTileGap);
    double x = (frame().width - rowWidth) * 0.5;
    double const y = (frame().height - kTileHeight) * 0.5;

    for (auto const& row : knownAIApps()) {
        addCard(row.name, {x, y, kTileWidth, kTileHeight});
        x += kTilePitch;
    }
    if (customName) {
        customCard_ = addCard(*customName, {x, y, kTileWidth, kTileHeight});
        x += kTilePitch;
    }
    addPlusButton({x, y, kTileWidth, kTileHeight});
}

std::shared_ptr<AppCard> AppSelectorView::addCard(std::string const& name, Rect frame) {
    auto card = std::make_shared<AppCard>(platform_, name, frame);
    card->setSelected(selectedName_ == name);
    card->setOnClick(weakCall(*this, &AppSelectorView::selectApp));
    addSubview(card);
    cards_.push_back(card);
    return card;
}

void AppSelectorView::addPlusButton(Rect frame) {
    plusButton_ = std::make_shared<View>(frame);
    LayerStyle style;
    style.cornerRadius = kTileCornerRadius;
    style.borderWidth = 1;
    style.borderColor = kSeparatorColor;
    plusButton_->setLayer(style);
    plusButton_->addSubview(
        std::make_shared<Label>(kPlusFrame, "+",
                                Label::Look{Font::system(24, Font::Weight::light),
                                            kTertiaryLabelColor, TextAlignment::center}));
    plusButton_->addSubview(
        std::make_shared<Label>(kNameFrame, "Other",
                                Label::Look{Font::system(11, Font::Weight::medium),
                                            kSecondaryLabelColor, TextAlignment::center}));
    plusButton_->setClickAction(weakCall(*this, &AppSelectorView::plusClicked));
    plusButton_->setAccessibility({AccessibilityInfo::Role::button, "Choose other app", ""});
    plusButton_->trackPointer();
    addSubview(plusButton_);
}

void AppSelectorView::selectApp(std::string const& name) {
    selectedName_ = name;
    for (auto const& card : cards_) card->setSelected(card->appName() == name);
    auto const onSelectionChanged = onSelectionChanged_;
    if (onSelectionChanged) onSelectionChanged(name);
}

void AppSelectorView::plusClicked() {
    chooseCustomApp();
}

void AppSelectorView::chooseCustomApp() {
    OpenPanel panel;
    panel.title = "Choose an App";
    panel.applicationsOnly = true;
    panel.directory = "/Applications";
    auto const path = platform_.openPanels.runModal(panel);
    if (!path) return;

    auto const bundle = platform_.openPanels.bundleAtPath(*path);
    if (!bundle || !bundle->bundleIdentifier) {
        showInvalidAppAlert();
        return;
    }
    auto const name = bundle->bundleName.value_or(lastPathComponentWithoutExtension(*path));
    AIAppDetector(platform_.workspace, Preferences(platform_.preferences))
        .saveCustomApp(name, *bundle->bundleIdentifier);

    selectedName_ = name;
    removeAllSubviews();
    cards_.clear();
    customCard_.reset();
    plusButton_.reset();
    buildCards();
    auto const onSelectionChanged = onSelectionChanged_;
    if (onSelectionChanged) onSelectionChanged(name);
}

void AppSelectorView::showInvalidAppAlert() {
    platform_.alerts.runModal({"Invalid App",
                               "Could not read the bundle identifier for this application.",
                               AlertStyle::warning,
                               {"OK"}});
}

} // namespace trovel
