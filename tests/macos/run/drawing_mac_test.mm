#include "platform/ui/canvas.h"
#include "platform/ui/menu.h"
#include "platform/ui/status_bar.h"
#include "tests/macos/run/mac_test.h"

#include <functional>

namespace trovel {
namespace {

using testing::ElementsAre;

/// Draws what a test says.
class DrawnView final : public CanvasView {
public:
    DrawnView(Rect frame, std::function<void(Canvas&)> drawing)
        : CanvasView(frame), drawing_(std::move(drawing)) {}
    ~DrawnView() override = default;

    void draw(Canvas& canvas) const override { drawing_(canvas); }

private:
    std::function<void(Canvas&)> drawing_;
};

class DrawingMac : public MacTest {
protected:
    std::vector<std::string> drawnBy(std::function<void(Canvas&)> drawing) {
        auto const view = std::make_shared<DrawnView>(Rect{0, 0, 100, 100}, std::move(drawing));
        auto const window = open(view, kTitledWindow);
        return nativeView(*view)->drawn_;
    }
};

TEST_F(DrawingMac, ShapesAreDrawnWithTheirColoursAndOperations) {
    auto const black = Color::white(0, 0.5);
    EXPECT_THAT(drawnBy([&](Canvas& canvas) {
                    canvas.fillRect({1, 2, 3, 4}, black, CompositingOperation::sourceOver);
                    canvas.fillRect({5, 6, 7, 8}, Color::clear(), CompositingOperation::copy);
                    canvas.strokeRect({1, 1, 8, 8}, 1.5, Color::white(1, 1));
                    canvas.fillRoundedRect({0, 0, 10, 20}, 3, 4, black);
                    canvas.fillOval({2, 2, 6, 6}, Color::rgba(1, 0, 0, 1));
                }),
                ElementsAre("fill rect 1,2,3,4 in 0,0,0 0.5 over",
                            "fill rect 5,6,7,8 in 0,0,0 0 copy",
                            "stroke rect 1,1,8,8 width 1.5 in 1,1,1",
                            "fill rounded 0,0,10,20 by 3,4 in 0,0,0 0.5 over",
                            "fill oval 2,2,6,6 in 1,0,0 over"));
}

TEST_F(DrawingMac, LinesHaveRoundCapsAndEmptyOnesAreNone) {
    std::vector<std::vector<Point>> const lines{{{0, 0}, {1, 1}, {2, 0}}, {}, {{5, 5}, {6, 6}}};
    EXPECT_THAT(drawnBy([&](Canvas& canvas) {
                    canvas.strokeLines(lines, 2, Color::system(Color::Name::label));
                }),
                ElementsAre("stroke move 0,0 line 1,1 line 2,0 move 5,5 line 6,6 width 2 round in "
                            "label"));
}

TEST_F(DrawingMac, TextIsDrawnAndMeasuredInItsFont) {
    Size size;
    EXPECT_THAT(drawnBy([&](Canvas& canvas) {
                    auto const font = Font::monospacedSystem(12, Font::Weight::medium);
                    size = canvas.sizeOfText("2 × 3", font);
                    canvas.drawText("2 × 3", {7, 9}, {font, Color::white(1, 0.9)});
                    EXPECT_EQ(canvas.compositingOperation(), CompositingOperation::sourceOver);
                }),
                ElementsAre("text \"2 × 3\" at 7,9 in monospaced 12 0.23 1,1,1 0.9"));
    EXPECT_EQ(size, (Size{36, 12}));
}

TEST_F(DrawingMac, EveryWeightAndEveryColourOfTheDesktopIsItsOwn) {
    std::vector<std::pair<Font::Weight, std::string>> const weights{{Font::Weight::light, "-0.4"},
                                                                    {Font::Weight::regular, "0"},
                                                                    {Font::Weight::medium, "0.23"},
                                                                    {Font::Weight::semibold, "0.3"},
                                                                    {Font::Weight::bold, "0.4"}};
    for (auto const& [weight, text] : weights) {
        EXPECT_THAT(drawnBy([&, drawn = weight](Canvas& canvas) {
                        canvas.drawText("a", {0, 0}, {Font::system(9, drawn), {}});
                    }),
                    ElementsAre("text \"a\" at 0,0 in system 9 " + text + " 0,0,0"));
    }
    std::vector<std::pair<Color::Name, std::string>> const colors{
        {Color::Name::controlAccent, "controlAccent"},
        {Color::Name::controlBackground, "controlBackground"},
        {Color::Name::label, "label"},
        {Color::Name::secondaryLabel, "secondaryLabel"},
        {Color::Name::tertiaryLabel, "tertiaryLabel"},
        {Color::Name::separator, "separator"}};
    for (auto const& [name, text] : colors) {
        EXPECT_THAT(drawnBy([&, drawn = name](Canvas& canvas) {
                        canvas.fillOval({0, 0, 1, 1}, Color::system(drawn));
                    }),
                    ElementsAre("fill oval 0,0,1,1 in " + text + " over"));
    }
}

TEST_F(DrawingMac, TheStatusItemShowsATemplateThatIsDrawnWhenItIsShown) {
    auto item = platform.statusBar.makeSquareItem();
    ASSERT_TRUE(item->hasButton());
    item->setButtonImage({{18, 18},
                          [](Canvas& canvas, Rect rect) {
                              canvas.fillOval(rect, Color::white(0, 1));
                              return true;
                          },
                          true,
                          "Trovel"});
    session.settle();
    NSStatusBarButton* const button = mac().statusItems.front().button;
    EXPECT_EQ(mac().count("status item -2"), 1);
    EXPECT_THAT(button->drawn_, ElementsAre("fill oval 0,0,18,18 in 0,0,0 over"));
    EXPECT_TRUE(button.image->isTemplate_);
    EXPECT_EQ(button.image->description_, "Trovel");
    item.reset();
    EXPECT_TRUE(mac().statusItems.empty());
}

class MenusMac : public MacTest {
protected:
    std::shared_ptr<MenuItem> add(Menu& menu, std::string title) {
        auto item =
            MenuItem::make(title, [this, title](MenuItem const&) { said.push_back(title); });
        menu.addItem(item);
        return item;
    }

    std::vector<std::string> said;
    std::shared_ptr<Menu> menu = std::make_shared<Menu>();
    std::unique_ptr<StatusItem> item = platform.statusBar.makeSquareItem();
};

TEST_F(MenusMac, ARowIsChosenWithItsTitleAndStateOfTheMoment) {
    auto const row = add(*menu, "First");
    menu->setWillOpen([&] {
        said.emplace_back("opens");
        row->setTitle("Renamed");
        row->setState(MenuItem::State::on);
    });
    item->setMenu(menu);
    EXPECT_TRUE(fakes::chooseRow({"Renamed"}));
    EXPECT_THAT(said, ElementsAre("opens", "First"));
    NSMenuItem* const native = fakes::openMenu({"Renamed"});
    EXPECT_EQ(native.state, NSControlStateValueOn);
    row->setState(MenuItem::State::off);
    EXPECT_EQ(native.state, NSControlStateValueOff);
}

TEST_F(MenusMac, ARowWithASubmenuCanBeOpened) {
    auto const submenu = std::make_shared<Menu>();
    add(*submenu, "Inner");
    auto const row = MenuItem::make("Outer");
    row->setSubmenu(submenu);
    menu->addItem(row);
    menu->addItem(MenuItem::separator());
    item->setMenu(menu);
    EXPECT_TRUE(fakes::chooseRow({"Outer", "Inner"}));
    EXPECT_THAT(said, ElementsAre("Inner"));
}

TEST_F(MenusMac, ARowWithoutAnActionIsGrey) {
    menu->addItem(MenuItem::make("Nothing"));
    item->setMenu(menu);
    EXPECT_FALSE(fakes::chooseRow({"Nothing"}));
}

TEST_F(MenusMac, KeyEquivalentsAreShownWithTheirModifiers) {
    add(*menu, "Quit")->setKeyEquivalent("q", kFlagCommand);
    add(*menu, "Plain");
    item->setMenu(menu);
    NSMenuItem* const quit = fakes::openMenu({"Quit"});
    EXPECT_EQ(fakes::toText(quit->keyEquivalent_), "q");
    EXPECT_EQ(quit.keyEquivalentModifierMask, kFlagCommand);
    EXPECT_EQ(fakes::toText(fakes::openMenu({"Plain"})->keyEquivalent_), "");
}

TEST_F(MenusMac, AMenuThatIsSetAgainIsMirroredAnew) {
    auto const row = add(*menu, "First");
    item->setMenu(menu);
    item->setMenu(menu);
    row->setTitle("Renamed");
    EXPECT_TRUE(fakes::chooseRow({"Renamed"}));
    auto const other = std::make_shared<Menu>();
    add(*other, "Second");
    item->setMenu(other);
    EXPECT_FALSE(fakes::chooseRow({"Renamed"}));
    EXPECT_TRUE(fakes::chooseRow({"Second"}));
}

} // namespace
} // namespace trovel
