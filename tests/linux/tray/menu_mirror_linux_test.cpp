#include "platform/linux/tray/menu_mirror_linux.h"

#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include <memory>
#include <string>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;

class MenuMirrorLinuxTest : public testing::Test {
protected:
    MenuMirrorLinuxTest() {
        auto const action = [this](MenuItem const& item) { done_.push_back(item.title()); };
        first_ = MenuItem::make("Salt & Pepper", action);
        inner_ = MenuItem::make("Inner", action);
        auto submenu = std::make_shared<Menu>();
        submenu->addItem(inner_);
        auto owner = MenuItem::make("More");
        owner->setSubmenu(submenu);
        auto quit = MenuItem::make("Quit", action);
        quit->setKeyEquivalent("q", kFlagCommand);
        for (auto const& item : {first_, MenuItem::separator(), owner, quit}) menu_->addItem(item);
        menu_->setWillOpen([this] { ++refreshes_; });
    }

    MainQueueLinux queue_;
    ApplicationLinux application_{queue_};
    std::vector<std::string> done_;
    std::vector<std::string> chosen_;
    int refreshes_ = 0;
    std::shared_ptr<Menu> menu_ = std::make_shared<Menu>();
    std::shared_ptr<MenuItem> first_;
    std::shared_ptr<MenuItem> inner_;
    MenuMirrorLinux mirror_{menu_, [this](auto const& item) { chosen_.push_back(item->title()); }};
};

TEST_F(MenuMirrorLinuxTest, EveryRowIsThereInOrder) {
    auto const actions = mirror_.native().actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0]->text(), "Salt && Pepper");
    EXPECT_TRUE(actions[1]->isSeparator());
    ASSERT_NE(actions[2]->menu(), nullptr);
    EXPECT_EQ(actions[2]->text(), "More");
    ASSERT_EQ(actions[2]->menu()->actions().size(), 1);
    EXPECT_EQ(actions[2]->menu()->actions()[0]->text(), "Inner");
    EXPECT_EQ(actions[3]->shortcut(), QKeySequence("Ctrl+Q"));
    EXPECT_TRUE(actions[0]->shortcut().isEmpty());
}

TEST_F(MenuMirrorLinuxTest, ChangesReachBothMenusAtOnce) {
    auto* const here = mirror_.native().actions()[2]->menu()->actions()[0];
    auto* const elsewhere = mirror_.exported().actions()[2]->menu()->actions()[0];
    EXPECT_FALSE(here->isCheckable());
    inner_->setState(MenuItem::State::on);
    inner_->setTitle("Other");
    for (auto const* action : {here, elsewhere}) {
        EXPECT_TRUE(action->isCheckable() && action->isChecked());
        EXPECT_EQ(action->text(), "Other");
    }
    inner_->setState(MenuItem::State::off);
    EXPECT_FALSE(here->isCheckable()) << "no empty box";
    EXPECT_TRUE(elsewhere->isCheckable()) << "a panel is never told of properties that go";
    EXPECT_FALSE(elsewhere->isChecked());
}

TEST_F(MenuMirrorLinuxTest, AChoiceIsHandedOnAndLeavesTheCheckmarkToTheTree) {
    inner_->setState(MenuItem::State::on);
    for (auto* const menu : {&mirror_.native(), &mirror_.exported()}) {
        auto* const action = menu->actions()[2]->menu()->actions()[0];
        action->trigger();
        EXPECT_TRUE(action->isChecked());
    }
    EXPECT_THAT(chosen_, ElementsAre("Inner", "Inner"));
    EXPECT_TRUE(done_.empty());
}

TEST_F(MenuMirrorLinuxTest, TheTreeIsAskedBeforeTheMenuShows) {
    menu_->setWillOpen([this] {
        ++refreshes_;
        first_->setTitle("Fresh");
    });
    auto& native = mirror_.native();
    EXPECT_EQ(refreshes_, 0);
    native.popup({0, 0});
    EXPECT_EQ(refreshes_, 1);
    EXPECT_EQ(native.actions()[0]->text(), "Fresh");
    native.close();
}

} // namespace
} // namespace trovel
