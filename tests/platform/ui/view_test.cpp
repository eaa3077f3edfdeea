#include "platform/ui/view.h"

#include "platform/ui/window.h"
#include "tests/support/desktop_test.h"
#include "tests/support/probe_view.h"

namespace trovel {
namespace {

using testing::ElementsAre;

class ViewTest : public DesktopTest {
protected:
    [[nodiscard]] std::shared_ptr<ProbeView> make(std::string name, Rect frame) {
        return std::make_shared<ProbeView>(std::move(name), frame, log);
    }

    ProbeView::Log log;
};

TEST_F(ViewTest, ItsBoundsAreItsSizeAtTheOrigin) {
    auto const view = make("view", {10, 20, 30, 40});
    EXPECT_EQ(view->bounds(), (Rect{0, 0, 30, 40}));
    view->setFrame({1, 2, 3, 4});
    EXPECT_EQ(view->frame(), (Rect{1, 2, 3, 4}));
    EXPECT_EQ(view->bounds(), (Rect{0, 0, 3, 4}));
}

TEST_F(ViewTest, HitTestFindsTheFrontmostViewAtThePoint) {
    auto const root = make("root", {0, 0, 100, 100});
    auto const back = make("back", {10, 10, 50, 50});
    auto const front = make("front", {30, 30, 50, 50});
    root->addSubview(back);
    root->addSubview(front);
    EXPECT_EQ(root->hitTest({20, 20}), back.get());
    EXPECT_EQ(root->hitTest({40, 40}), front.get());
    EXPECT_EQ(root->hitTest({90, 90}), root.get());
    EXPECT_EQ(root->hitTest({101, 50}), nullptr);
    EXPECT_EQ(root->hitTest({50, -1}), nullptr);
}

TEST_F(ViewTest, HitTestCountsBothEdgesOfAView) {
    auto const root = make("root", {0, 0, 100, 100});
    EXPECT_EQ(root->hitTest({0, 0}), root.get());
    EXPECT_EQ(root->hitTest({100, 100}), root.get());
}

TEST_F(ViewTest, HitTestDescendsInTheCoordinatesOfEachSuperview) {
    auto const root = make("root", {100, 100, 300, 300});
    auto const middle = make("middle", {50, 50, 100, 100});
    auto const leaf = make("leaf", {10, 10, 20, 20});
    root->addSubview(middle);
    middle->addSubview(leaf);
    EXPECT_EQ(root->hitTest({100 + 50 + 15, 100 + 50 + 15}), leaf.get());
    EXPECT_EQ(root->hitTest({100 + 50 + 45, 100 + 50 + 45}), middle.get());
}

TEST_F(ViewTest, APartOfASubviewThatSticksOutIsNotHit) {
    auto const root = make("root", {0, 0, 100, 100});
    root->addSubview(make("wide", {50, 0, 100, 100}));
    EXPECT_EQ(root->hitTest({120, 50}), nullptr);
}

TEST_F(ViewTest, ConvertsAPointOfTheWindowThroughEverySuperview) {
    auto const root = make("root", {5, 6, 300, 300});
    auto const leaf = make("leaf", {10, 20, 20, 20});
    root->addSubview(leaf);
    EXPECT_EQ(root->convertFromWindow({100, 100}), (Point{95, 94}));
    EXPECT_EQ(leaf->convertFromWindow({100, 100}), (Point{85, 74}));
}

TEST_F(ViewTest, ASubviewThatIsAddedElsewhereLeavesWhereItWas) {
    auto const first = make("first", {0, 0, 10, 10});
    auto const second = make("second", {0, 0, 10, 10});
    auto const leaf = make("leaf", {0, 0, 5, 5});
    first->addSubview(leaf);
    second->addSubview(leaf);
    EXPECT_TRUE(first->subviews().empty());
    EXPECT_THAT(second->subviews(), ElementsAre(leaf));
    EXPECT_EQ(leaf->superview(), second.get());
    leaf->removeFromSuperview();
    leaf->removeFromSuperview();
    EXPECT_EQ(leaf->superview(), nullptr);
    EXPECT_TRUE(second->subviews().empty());
}

TEST_F(ViewTest, AddingASubviewAgainPutsItInFront) {
    auto const root = make("root", {0, 0, 100, 100});
    auto const first = make("first", {0, 0, 50, 50});
    auto const second = make("second", {0, 0, 50, 50});
    root->addSubview(first);
    root->addSubview(second);
    root->addSubview(first);
    EXPECT_THAT(root->subviews(), ElementsAre(second, first));
    EXPECT_EQ(root->hitTest({10, 10}), first.get());
}

TEST_F(ViewTest, ASubviewOutlivesItsSuperview) {
    auto root = make("root", {0, 0, 100, 100});
    auto const leaf = make("leaf", {0, 0, 50, 50});
    root->addSubview(leaf);
    root.reset();
    EXPECT_EQ(leaf->superview(), nullptr);
    EXPECT_EQ(leaf->window(), nullptr);
    leaf->removeFromSuperview();
}

TEST_F(ViewTest, KnowsItsWindowAsLongAsItIsPartOfIt) {
    auto window = std::make_shared<Window>(platform.windows, WindowAttributes{});
    auto const root = make("root", {0, 0, 100, 100});
    auto const leaf = make("leaf", {0, 0, 50, 50});
    root->addSubview(leaf);
    EXPECT_EQ(leaf->window(), nullptr);
    window->setContentView(root);
    EXPECT_EQ(leaf->window(), window.get());
    EXPECT_EQ(root->nextResponder(), window.get());
    EXPECT_EQ(leaf->nextResponder(), root.get());
    window.reset();
    EXPECT_EQ(leaf->window(), nullptr);
    EXPECT_EQ(root->nextResponder(), nullptr);
}

TEST_F(ViewTest, AReplacedContentViewForgetsTheWindow) {
    auto const window = std::make_shared<Window>(platform.windows, WindowAttributes{});
    auto const first = make("first", {0, 0, 100, 100});
    window->setContentView(first);
    window->setContentView(make("second", {0, 0, 100, 100}));
    EXPECT_EQ(first->window(), nullptr);
}

} // namespace
} // namespace trovel
