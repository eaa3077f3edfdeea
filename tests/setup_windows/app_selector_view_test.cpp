#include "setup_windows/app_selector_view.h"

#include "platform/simulated/simulated_pixels.h"
#include "platform/ui/canvas_recording.h"
#include "platform/ui/image_view.h"
#include "platform/ui/window.h"
#include "settings/preferences.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using effect::AnimationGroupRun;
using effect::PreferenceWritten;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Rect kFrame{0, 0, 600, 80};
constexpr auto kClaude = "com.anthropic.claudefordesktop";

std::string const kSelectedLook = " | layer radius 12 border 2 controlAccent background "
                                  "controlAccent at 0.1 | says button ";
std::string const kPlainLook = " | layer radius 12 border 1 separator background clear | says "
                               "button ";

/// The lines of a card of that name without an icon of its own.
std::vector<std::string> cardLines(std::string const& frame, std::string const& name,
                                   std::string const& symbol, bool isSelected) {
    return {"  view " + frame + (isSelected ? kSelectedLook : kPlainLook) + '"' + name + "\" \"" +
                (isSelected ? "selected" : "not selected") + "\" | tracks",
            "    image (32, 30, 32, 32) | symbol " + symbol + " \"" + name +
                "\" system 19.2 medium | fills",
            "    label (0, 6, 96, 14) \"" + name + "\" | system 11 medium | label | centred"};
}

std::vector<std::string> tileLines(std::string const& frame) {
    return {"  view " + frame + kPlainLook + R"("Choose other app" | tracks | clicks)",
            R"(    label (32, 30, 32, 32) "+" | system 24 light | tertiaryLabel | centred)",
            R"(    label (0, 6, 96, 14) "Other" | system 11 medium | secondaryLabel | centred)"};
}

std::vector<std::string> joined(std::vector<std::vector<std::string>> const& parts) {
    std::vector<std::string> lines{"view (0, 0, 600, 80)"};
    for (auto const& part : parts) lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

class AppSelectorTest : public DesktopTest {
protected:
    AppSelectorView& make(std::optional<std::string> selectedName = {}) {
        selector = AppSelectorView::make(platform, kFrame, std::move(selectedName));
        selector->setOnSelectionChanged(
            [this](std::string const& name) { changes.push_back(name); });
        window->setContentView(selector);
        window->makeKeyAndOrderFront();
        desktop.workspace.bringToFront(kTrovelProcess);
        desktop.journal.clear();
        return *selector;
    }
    void storeCustomApp(std::string name, std::string bundleID) {
        desktop.preferences.store(kCustomAppName, std::move(name));
        desktop.preferences.store(kCustomAppBundleID, std::move(bundleID));
    }
    void chooseInPanel(std::string path, ApplicationBundle bundle) {
        desktop.openPanels.install(path, std::move(bundle));
        desktop.openPanels.setAnswer(std::move(path));
        desktop.user.click(visibleCentre(*selector->plusButton()));
    }
    /// A point of a tile that lies within the window, even when the tile reaches past its edge.
    static Point visibleCentre(View const& tile) {
        auto const centre = centreOf(tile);
        return {std::min(centre.x, 595.0), centre.y};
    }
    std::vector<std::string> selectedNames() {
        std::vector<std::string> names;
        for (auto const& card : selector->cards()) {
            if (card->isSelected()) names.push_back(card->appName());
        }
        return names;
    }
    std::string backgroundOf(AppCard const& card) { return textOf(card.layer()->backgroundColor); }

    std::shared_ptr<AppSelectorView> selector;
    std::vector<std::string> changes;
    std::shared_ptr<Window> window = std::make_shared<Window>(
        platform.windows, WindowAttributes{.contentRect = kFrame, .styleMask = kStyleTitled});
};

TEST_F(AppSelectorTest, ShowsFiveCardsAndTheTileCentredAndWiderThanTheWindow) {
    make("Claude");
    EXPECT_THAT(linesOf(*selector),
                ElementsAreArray(
                    joined({cardLines("(-23, 2, 96, 76)", "Claude", "brain.head.profile", true),
                            cardLines("(87, 2, 96, 76)", "ChatGPT", "bubble.left.fill", false),
                            cardLines("(197, 2, 96, 76)", "Gemini", "sparkles", false),
                            cardLines("(307, 2, 96, 76)", "Perplexity", "magnifyingglass", false),
                            cardLines("(417, 2, 96, 76)", "Copilot", "app.fill", false),
                            tileLines("(527, 2, 96, 76)")})));
    EXPECT_EQ(selector->customCard(), nullptr);
}

TEST_F(AppSelectorTest, ACustomApplicationHasTheSixthCard) {
    storeCustomApp("MyTool", "com.example.tool");
    make("MyTool");
    EXPECT_THAT(linesOf(*selector),
                ElementsAreArray(
                    joined({cardLines("(-78, 2, 96, 76)", "Claude", "brain.head.profile", false),
                            cardLines("(32, 2, 96, 76)", "ChatGPT", "bubble.left.fill", false),
                            cardLines("(142, 2, 96, 76)", "Gemini", "sparkles", false),
                            cardLines("(252, 2, 96, 76)", "Perplexity", "magnifyingglass", false),
                            cardLines("(362, 2, 96, 76)", "Copilot", "app.fill", false),
                            cardLines("(472, 2, 96, 76)", "MyTool", "app.fill", true),
                            tileLines("(582, 2, 96, 76)")})));
    ASSERT_THAT(selector->cards(), SizeIs(6));
    EXPECT_EQ(selector->customCard(), selector->cards().back());
}

TEST_F(AppSelectorTest, EveryCardFadesInWhenTheRowIsBuilt) {
    auto const row = AppSelectorView::make(platform, kFrame, "Gemini");
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAreArray(std::vector<Effect>(5, AnimationGroupRun{150ms})));
}

TEST_F(AppSelectorTest, TheFirstSelectedLookFadesInWhenItsWindowIsOnTheScreen) {
    selector = AppSelectorView::make(platform, kFrame, "Gemini");
    window->setContentView(selector);
    desktop.journal.clear();
    window->makeKeyAndOrderFront();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::OrderedFront{1}), Effect(effect::MadeKey{1}),
                            Effect(AnimationGroupRun{150ms})));
    EXPECT_EQ(backgroundOf(*selector->cards()[2]), "controlAccent at 0.1");
    window->orderOut();
    desktop.journal.clear();
    window->makeKeyAndOrderFront();
    EXPECT_EQ(desktop.journal.count<AnimationGroupRun>(), 0U);
}

TEST_F(AppSelectorTest, TheSelectedLookFadesInFromThePlainOne) {
    auto const row = AppSelectorView::make(platform, kFrame, "Gemini");
    auto& card = *row->cards()[2];
    auto& plain = *row->cards()[1];
    card.willAppear();
    plain.willAppear();
    EXPECT_EQ(card.layer(), plain.layer());
    desktop.journal.clear();
    card.didAppear();
    plain.didAppear();
    EXPECT_EQ(backgroundOf(card), "controlAccent at 0.1");
    EXPECT_THAT(effectsOf(desktop.journal), ElementsAre(Effect(AnimationGroupRun{150ms})));
}

TEST_F(AppSelectorTest, ANameWithoutACardSelectsNothingUntilTheFirstClick) {
    for (auto const& name : {std::optional<std::string>(), std::optional<std::string>("Safari"),
                             std::optional<std::string>("claude")}) {
        make(name);
        EXPECT_THAT(selectedNames(), IsEmpty());
        EXPECT_EQ(selector->selectedName(), name);
        desktop.user.click(centreOf(*selector->cards()[2]));
        EXPECT_THAT(selectedNames(), ElementsAre("Gemini"));
    }
}

TEST_F(AppSelectorTest, APressOnACardSelectsItAtOnceAndReportsItsName) {
    make("Claude");
    desktop.user.mouseDown(centreOf(*selector->cards()[1]));
    EXPECT_THAT(selectedNames(), ElementsAre("ChatGPT"));
    EXPECT_EQ(selector->selectedName(), "ChatGPT");
    EXPECT_THAT(changes, ElementsAre("ChatGPT"));
    EXPECT_EQ(selector->cards()[0]->accessibility()->value, "not selected");
    EXPECT_EQ(selector->cards()[1]->accessibility()->value, "selected");
    EXPECT_THAT(desktop.journal.all<AnimationGroupRun>(), SizeIs(5));
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(), IsEmpty());
    desktop.user.mouseUp({0, 0});
    EXPECT_THAT(changes, ElementsAre("ChatGPT"));
}

TEST_F(AppSelectorTest, AClickOnTheSelectedCardFadesAllOfThemAgainAndReportsAgain) {
    make("Claude");
    desktop.user.movePointer(centreOf(*selector->cards()[0]));
    desktop.user.click(centreOf(*selector->cards()[0]));
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAreArray(std::vector<Effect>(5, AnimationGroupRun{150ms})));
    EXPECT_THAT(changes, ElementsAre("Claude"));
}

TEST_F(AppSelectorTest, ReportsOnlyWhenTheRowShowsTheNewSelection) {
    make("Claude");
    std::vector<std::vector<std::string>> shown;
    selector->setOnSelectionChanged([&](std::string const&) { shown.push_back(selectedNames()); });
    desktop.user.click(centreOf(*selector->cards()[1]));
    chooseInPanel("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    EXPECT_THAT(shown, ElementsAre(ElementsAre("ChatGPT"), ElementsAre("MyTool")));
}

TEST_F(AppSelectorTest, AScreenReaderPressesTheOutermostTilesToo) {
    storeCustomApp("MyTool", "com.example.tool");
    make("MyTool");
    window->receivePress(*selector->cards()[0]);
    EXPECT_THAT(selectedNames(), ElementsAre("Claude"));
    EXPECT_THAT(changes, ElementsAre("Claude"));
    desktop.journal.clear();
    window->receivePress(*selector->plusButton());
    EXPECT_EQ(desktop.journal.count<effect::PanelShown>(), 1U);
}

TEST_F(AppSelectorTest, WithoutACallbackAClickSelectsAllTheSame) {
    make("Claude");
    selector->setOnSelectionChanged(nullptr);
    desktop.user.click(centreOf(*selector->cards()[3]));
    EXPECT_THAT(selectedNames(), ElementsAre("Perplexity"));
}

TEST_F(AppSelectorTest, ThePointerTintsACardThatIsNotSelected) {
    make("Claude");
    auto& card = *selector->cards()[1];
    desktop.user.movePointer(centreOf(card));
    EXPECT_EQ(backgroundOf(card), "label at 0.04");
    EXPECT_EQ(textOf(card.layer()->borderColor), "separator");
    EXPECT_EQ(card.layer()->borderWidth, 1);
    desktop.user.movePointer({300, 500});
    EXPECT_EQ(backgroundOf(card), "clear");
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAreArray(std::vector<Effect>(2, AnimationGroupRun{120ms})));
}

TEST_F(AppSelectorTest, ThePointerDoesNothingToTheSelectedCard) {
    make("ChatGPT");
    auto& card = *selector->cards()[1];
    desktop.user.movePointer(centreOf(card));
    EXPECT_EQ(backgroundOf(card), "controlAccent at 0.1");
    desktop.user.movePointer({300, 500});
    EXPECT_EQ(backgroundOf(card), "controlAccent at 0.1");
    EXPECT_EQ(desktop.journal.count<AnimationGroupRun>(), 0U);
}

TEST_F(AppSelectorTest, ASelectionReplacesTheTintAndADeselectionUnderThePointerStaysClear) {
    make();
    auto& card = *selector->cards()[1];
    desktop.user.movePointer(centreOf(card));
    card.setSelected(true);
    EXPECT_EQ(backgroundOf(card), "controlAccent at 0.1");
    card.setSelected(false);
    EXPECT_EQ(backgroundOf(card), "clear");
    EXPECT_EQ(card.layer()->borderWidth, 1);
    desktop.user.movePointer({300, 500});
    desktop.user.movePointer(centreOf(card));
    EXPECT_EQ(backgroundOf(card), "label at 0.04");
}

TEST_F(AppSelectorTest, ThePointerChangesNothingOnTheTile) {
    make();
    auto const before = linesOf(*selector->plusButton());
    desktop.user.movePointer(visibleCentre(*selector->plusButton()));
    EXPECT_EQ(linesOf(*selector->plusButton()), before);
    EXPECT_THAT(effectsOf(desktop.journal), IsEmpty());
}

TEST_F(AppSelectorTest, TheTileOpensAPanelForOneApplication) {
    make();
    desktop.user.click(visibleCentre(*selector->plusButton()));
    OpenPanel expected;
    expected.title = "Choose an App";
    expected.canChooseFiles = true;
    expected.canChooseDirectories = false;
    expected.allowsMultipleSelection = false;
    expected.applicationsOnly = true;
    expected.directory = "/Applications";
    EXPECT_THAT(effectsOf(desktop.journal), ElementsAre(Effect(effect::PanelShown{expected})));
}

TEST_F(AppSelectorTest, ACancelledPanelChangesNothing) {
    make("Claude");
    auto const before = linesOf(*selector);
    desktop.user.click(visibleCentre(*selector->plusButton()));
    EXPECT_EQ(linesOf(*selector), before);
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_EQ(desktop.journal.count<PreferenceWritten>(), 0U);
}

TEST_F(AppSelectorTest, AChosenApplicationIsStoredShownSelectedAndReported) {
    make("Claude");
    chooseInPanel("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"customAppName", std::string("MyTool")},
                            PreferenceWritten{"customAppBundleID", std::string("com.example.tool")},
                            PreferenceWritten{"preferredAIApp", std::string("MyTool")}));
    EXPECT_THAT(selector->cards(), SizeIs(6));
    EXPECT_EQ(selector->subviews().size(), 7U);
    EXPECT_EQ(selector->customCard()->appName(), "MyTool");
    EXPECT_EQ(selector->customCard()->frame(), (Rect{472, 2, 96, 76}));
    EXPECT_EQ(selector->plusButton()->frame(), (Rect{582, 2, 96, 76}));
    EXPECT_EQ(selector->selectedName(), "MyTool");
    EXPECT_THAT(selectedNames(), ElementsAre("MyTool"));
    EXPECT_THAT(changes, ElementsAre("MyTool"));
}

TEST_F(AppSelectorTest, TheCardOfAChosenApplicationFadesInOnceItIsOnTheScreen) {
    make("Claude");
    chooseInPanel("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    // One a card while the row is built, and one when the selected card is there.
    EXPECT_EQ(desktop.journal.count<AnimationGroupRun>(), 7U);
}

TEST_F(AppSelectorTest, ASecondChoiceReplacesTheFirst) {
    make();
    chooseInPanel("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    chooseInPanel("/Applications/Other.app", {"com.example.other", "Another"});
    EXPECT_THAT(selector->cards(), SizeIs(6));
    EXPECT_EQ(selector->customCard()->appName(), "Another");
    EXPECT_EQ(desktop.preferences.stringForKey(kCustomAppBundleID), "com.example.other");
    EXPECT_THAT(changes, ElementsAre("MyTool", "Another"));
}

TEST_F(AppSelectorTest, WithoutABundleNameTheFilesNameIsTheApplications) {
    make();
    chooseInPanel("/Applications/Some Tool.v2.app", {"com.example.tool", std::nullopt});
    EXPECT_THAT(changes, ElementsAre("Some Tool.v2"));
    chooseInPanel("/Applications/Foo.app/", {"com.example.foo", std::nullopt});
    EXPECT_THAT(changes, ElementsAre("Some Tool.v2", "Foo"));
    chooseInPanel("/Applications/.hidden", {"com.example.hidden", std::nullopt});
    EXPECT_EQ(changes.back(), ".hidden"); // a name, not an extension
}

TEST_F(AppSelectorTest, AnApplicationOfTheCatalogueCanBeTheCustomOneToo) {
    make();
    chooseInPanel("/Applications/Claude.app", {"com.example.claude", "Claude"});
    EXPECT_THAT(selectedNames(), ElementsAre("Claude", "Claude"));
    EXPECT_EQ(selector->customCard(), selector->cards().back());
}

TEST_F(AppSelectorTest, AnApplicationThatCannotBeReadIsRefusedWithAWarning) {
    make("Claude");
    auto const before = linesOf(*selector);
    chooseInPanel("/Applications/Nameless.app", {std::nullopt, "Nameless"});
    desktop.openPanels.setAnswer("/Applications/NoBundle.app");
    desktop.user.click(visibleCentre(*selector->plusButton()));
    Alert const warning{"Invalid App",
                        "Could not read the bundle identifier for this application.",
                        AlertStyle::warning,
                        {"OK"}};
    EXPECT_THAT(desktop.journal.all<effect::AlertShown>(),
                ElementsAre(effect::AlertShown{warning}, effect::AlertShown{warning}));
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
    EXPECT_EQ(linesOf(*selector), before);
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_EQ(desktop.journal.count<PreferenceWritten>(), 0U);
}

TEST_F(AppSelectorTest, ACustomNameWithoutAnIdentifierShowsTheGeneralSymbol) {
    desktop.preferences.store(kCustomAppName, std::string("MyTool"));
    make();
    EXPECT_THAT(linesOf(*selector->customCard()),
                testing::Contains(R"(  image (32, 30, 32, 32) | symbol app.fill "MyTool" system )"
                                  R"(19.2 medium | fills)"));
}

TEST_F(AppSelectorTest, TheRowHoldsItselfOnlyWeakly) {
    make();
    auto const card = selector->cards()[0];
    std::weak_ptr<AppSelectorView> weak = selector;
    window->setContentView(nullptr);
    selector.reset();
    EXPECT_TRUE(weak.expired());
    weak.reset(); // it would keep the memory that nobody may touch any more
    card->mouseDown({});
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(AppSelectorTest, ACardThatTheCallbackRemovesOutlivesItsClick) {
    make();
    std::weak_ptr<AppCard> const card = selector->cards()[0];
    selector->setOnSelectionChanged([this](std::string const& name) {
        window->setContentView(nullptr);
        selector.reset();
        changes.push_back(name);
    });
    desktop.user.click(centreOf(*card.lock()));
    EXPECT_TRUE(card.expired());
    EXPECT_THAT(changes, ElementsAre("Claude"));
}

class AppIconTest : public DesktopTest {
protected:
    void run(std::string bundleIdentifier) {
        SimulatedProgram program;
        program.bundleIdentifier = std::move(bundleIdentifier);
        desktop.workspace.start(std::move(program));
    }
    /// The number that an application's icon was given; 0 for an icon of another kind.
    static std::uint32_t numberOf(Icon const& icon) {
        auto const* own = std::get_if<ApplicationIcon>(&icon);
        if (own == nullptr) return 0;
        return dynamic_cast<SimulatedPixels const&>(*own->image.pixels).displayId();
    }
    static std::string symbolOf(Icon const& icon) {
        auto const* symbol = std::get_if<SymbolIcon>(&icon);
        return symbol != nullptr ? symbol->name : "";
    }
};

TEST_F(AppIconTest, ARunningApplicationsIconComesBeforeTheInstalledOnes) {
    run(kClaude);
    desktop.icons.setRunningIcon(kClaude, 7);
    desktop.icons.setInstalledIcon(kClaude, 8);
    auto const icon = iconForApp(platform, "Claude", 32);
    EXPECT_EQ(numberOf(icon), 7U);
    EXPECT_EQ(std::get<ApplicationIcon>(icon).image.size, (Size{32, 32}));
}

TEST_F(AppIconTest, AnInstalledApplicationsIconIsNext) {
    desktop.icons.setInstalledIcon(kClaude, 8);
    EXPECT_EQ(numberOf(iconForApp(platform, "Claude", 32)), 8U);
    EXPECT_EQ(numberOf(*appIcon(platform, kClaude, 16)), 8U);
    EXPECT_FALSE(appIcon(platform, "com.example.none", 16));
}

TEST_F(AppIconTest, TheFirstRunningApplicationWhoseIdentifierBeginsWithThePrefixCounts) {
    run("org.example");
    run("com.perplexity.mac");
    run("com.perplexity.beta");
    desktop.icons.setRunningIcon("org.example", 1);
    desktop.icons.setRunningIcon("com.perplexity.mac", 2);
    desktop.icons.setRunningIcon("com.perplexity.beta", 3);
    EXPECT_EQ(numberOf(iconForApp(platform, "Perplexity", 32)), 2U);
    EXPECT_FALSE(appIcon(platform, "com.Perplexity", 32));
}

TEST_F(AppIconTest, WhereTheFirstHasNoIconOnlyTheInstalledOneIsAskedNext) {
    run("com.perplexity.mac");
    run("com.perplexity.beta");
    desktop.icons.setRunningIcon("com.perplexity.beta", 3);
    EXPECT_EQ(symbolOf(iconForApp(platform, "Perplexity", 32)), "magnifyingglass");
    desktop.icons.setInstalledIcon("com.perplexity", 4);
    EXPECT_EQ(numberOf(iconForApp(platform, "Perplexity", 32)), 4U);
}

TEST_F(AppIconTest, AnApplicationWithoutAnIdentifierSuppliesNoIcon) {
    desktop.workspace.start({});
    desktop.icons.setRunningIcon("", 1);
    EXPECT_FALSE(appIcon(platform, "com.example", 32));
}

TEST_F(AppIconTest, TheCustomApplicationsIconIsFoundByItsIdentifier) {
    desktop.preferences.store(kCustomAppName, std::string("MyTool"));
    desktop.preferences.store(kCustomAppBundleID, std::string("com.example.tool"));
    desktop.icons.setInstalledIcon("com.example.tool", 5);
    EXPECT_EQ(numberOf(iconForApp(platform, "MyTool", 32)), 5U);
    EXPECT_EQ(symbolOf(iconForApp(platform, "mytool", 32)), "app.fill");
}

TEST_F(AppIconTest, ACatalogueNameWithoutItsOwnIconTakesTheCustomApplicationsOfThatName) {
    desktop.preferences.store(kCustomAppName, std::string("Claude"));
    desktop.preferences.store(kCustomAppBundleID, std::string("com.example.claude"));
    desktop.icons.setInstalledIcon("com.example.claude", 5);
    EXPECT_EQ(numberOf(iconForApp(platform, "Claude", 32)), 5U);
    desktop.icons.setInstalledIcon(kClaude, 8);
    EXPECT_EQ(numberOf(iconForApp(platform, "Claude", 32)), 8U);
}

TEST_F(AppIconTest, OtherwiseTheNameDecidesWhichSymbolItIs) {
    EXPECT_EQ(symbolOf(iconForApp(platform, "Claude", 32)), "brain.head.profile");
    EXPECT_EQ(symbolOf(iconForApp(platform, "ChatGPT", 32)), "bubble.left.fill");
    EXPECT_EQ(symbolOf(iconForApp(platform, "Gemini", 32)), "sparkles");
    EXPECT_EQ(symbolOf(iconForApp(platform, "Perplexity", 32)), "magnifyingglass");
    EXPECT_EQ(symbolOf(iconForApp(platform, "Copilot", 32)), "app.fill");
    EXPECT_EQ(symbolOf(iconForApp(platform, "Safari", 32)), "app.fill");
}

TEST_F(AppIconTest, WithoutASymbolTheFirstLetterIsDrawnInTheMiddle) {
    desktop.icons.removeSymbol("app.fill");
    auto const icon = iconForApp(platform, "étoile", 32);
    auto const& drawn = std::get<DrawnImage>(icon);
    EXPECT_EQ(drawn.size, (Size{32, 32}));
    EXPECT_FALSE(drawn.isTemplate);
    CanvasRecording canvas([](std::string_view text, Font) {
        return Size{4.0 * static_cast<double>(text.size()), 20};
    });
    EXPECT_TRUE(drawn.draw(canvas, {0, 0, 32, 32}));
    TextAttributes const attributes{Font::system(16, Font::Weight::semibold),
                                    Color::system(Color::Name::secondaryLabel)};
    EXPECT_THAT(canvas.operations(),
                ElementsAre(CanvasOperation(DrawTextOperation{"é", {12, 6}, attributes})));
}

} // namespace
} // namespace trovel
