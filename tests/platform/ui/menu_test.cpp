#include "platform/ui/menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Mirror final : public MenuMirror {
public:
    ~Mirror() = default;
    void itemDidChange(MenuItem const& item) override { changed.push_back(item.title()); }

    std::vector<std::string> changed;
};

class MenuTest : public testing::Test {
protected:
    MenuTest() {
        submenu->addItem(inner);
        outer->setSubmenu(submenu);
        menu->addItem(outer);
        menu->addItem(MenuItem::separator());
    }

    Mirror mirror;
    std::shared_ptr<Menu> menu = std::make_shared<Menu>();
    std::shared_ptr<Menu> submenu = std::make_shared<Menu>();
    std::shared_ptr<MenuItem> outer = MenuItem::make("outer");
    std::shared_ptr<MenuItem> inner = MenuItem::make("inner");
};

TEST_F(MenuTest, ANewItemHasOnlyItsTitle) {
    EXPECT_EQ(inner->title(), "inner");
    EXPECT_FALSE(inner->isSeparator());
    EXPECT_FALSE(inner->hasAction());
    EXPECT_EQ(inner->state(), MenuItem::State::off);
    EXPECT_EQ(inner->tag(), 0);
    EXPECT_EQ(inner->representedObject(), std::nullopt);
    EXPECT_EQ(inner->keyEquivalent(), "");
    EXPECT_EQ(inner->submenu(), nullptr);
    EXPECT_TRUE(menu->items()[1]->isSeparator());
    EXPECT_FALSE(menu->items()[1]->hasAction());
}

TEST_F(MenuTest, AKeyEquivalentIsAKeyAndItsModifiers) {
    inner->setKeyEquivalent("q", kFlagShift);
    EXPECT_EQ(inner->keyEquivalent(), "q");
    EXPECT_EQ(inner->keyEquivalentModifiers(), kFlagShift);
}

TEST_F(MenuTest, TheMirrorHearsOfRowsAtEveryDepth) {
    menu->setMirror(&mirror);
    outer->setState(MenuItem::State::on);
    inner->setTitle("renamed");
    EXPECT_THAT(mirror.changed, ElementsAre("outer", "renamed"));
    menu->setMirror(nullptr);
    inner->setState(MenuItem::State::on);
    EXPECT_EQ(mirror.changed.size(), 2U);
}

TEST_F(MenuTest, ARowThatOutlivesItsMenuHasNobodyToTell) {
    menu->setMirror(&mirror);
    menu.reset();
    outer->setTitle("alone");
    submenu.reset();
    inner->setState(MenuItem::State::on);
    EXPECT_THAT(mirror.changed, IsEmpty());
}

TEST_F(MenuTest, ASubmenuThatOutlivesItsRowHasNobodyToTell) {
    menu->setMirror(&mirror);
    outer.reset();
    menu.reset();
    inner->setTitle("alone");
    EXPECT_THAT(mirror.changed, IsEmpty());
}

TEST_F(MenuTest, ASubmenuThatIsReplacedIsNoLongerPartOfTheMenu) {
    menu->setMirror(&mirror);
    outer->setSubmenu(std::make_shared<Menu>());
    inner->setTitle("alone");
    EXPECT_THAT(mirror.changed, IsEmpty());
    outer->setSubmenu(submenu);
    inner->setTitle("back");
    EXPECT_THAT(mirror.changed, ElementsAre("back"));
}

TEST_F(MenuTest, AMirrorOfASubmenuAloneHearsOfItsRowsInsteadOfTheWholeMenus) {
    Mirror whole;
    menu->setMirror(&whole);
    submenu->setMirror(&mirror);
    inner->setTitle("renamed");
    EXPECT_THAT(mirror.changed, ElementsAre("renamed"));
    EXPECT_THAT(whole.changed, IsEmpty());
}

TEST_F(MenuTest, TheActionIsGivenItsRowAndMayDropTheMenu) {
    std::vector<std::string> chosen;
    auto item = MenuItem::make("item", [&](MenuItem const& sender) {
        menu.reset();
        chosen.push_back(sender.title());
    });
    menu->addItem(item);
    auto* const bare = item.get();
    item.reset();
    bare->receiveChosen();
    EXPECT_THAT(chosen, ElementsAre("item"));
    inner->receiveChosen(); // without an action: nothing
}

TEST_F(MenuTest, TheMenuSaysBeforeItOpensAndMayBeDroppedThen) {
    int opened = 0;
    auto token = std::make_shared<int>();
    std::weak_ptr<int> const weak = token;
    menu->receiveWillOpen();
    menu->setWillOpen([&, token = std::move(token)] {
        menu.reset();
        opened += weak.expired() ? 0 : 1;
    });
    menu->receiveWillOpen();
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(weak.expired());
}

} // namespace
} // namespace trovel
