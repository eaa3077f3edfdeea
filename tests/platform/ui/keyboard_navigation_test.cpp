#include "platform/ui/keyboard_navigation.h"

#include "platform/ui/window.h"
#include "tests/support/desktop_test.h"

namespace trovel {
namespace {

constexpr KeyCode kKeyX = 7;

class KeyboardNavigationTest : public DesktopTest {
protected:
    NavigationKey press(KeyCode keyCode, EventFlags flags = 0) {
        return navigationKey(*window, {KeyEvent::Kind::keyDown, keyCode, flags});
    }
    std::shared_ptr<Window> window =
        std::make_shared<Window>(platform.windows, WindowAttributes{.contentRect = {0, 0, 10, 10},
                                                                    .styleMask = kStyleTitled});
};

TEST_F(KeyboardNavigationTest, TabGoesOnAndBackAndSpacePresses) {
    EXPECT_EQ(press(kKeyTab), NavigationKey::next);
    EXPECT_EQ(press(kKeyTab, kFlagShift), NavigationKey::previous);
    EXPECT_EQ(press(kKeySpace), NavigationKey::press);
    EXPECT_EQ(press(kKeyX), NavigationKey::none);
    EXPECT_EQ(press(kKeyReturn), NavigationKey::none);
    EXPECT_EQ(press(kKeySpace, kFlagShift), NavigationKey::none);
}

TEST_F(KeyboardNavigationTest, WithAnotherModifierTheyAreShortcuts) {
    for (auto const flag : {kFlagControl, kFlagOption, kFlagCommand}) {
        EXPECT_EQ(press(kKeyTab, flag), NavigationKey::none);
        EXPECT_EQ(press(kKeyTab, flag | kFlagShift), NavigationKey::none);
        EXPECT_EQ(press(kKeySpace, flag), NavigationKey::none);
    }
}

TEST_F(KeyboardNavigationTest, AModifierThatMovesIsNoNavigation) {
    EXPECT_EQ(navigationKey(*window, {KeyEvent::Kind::flagsChanged, kKeyTab, 0}),
              NavigationKey::none);
}

TEST_F(KeyboardNavigationTest, AWindowThatTakesEveryKeyHasNone) {
    auto attributes = window->attributes();
    attributes.takesEveryKey = true;
    window->setAttributes(attributes);
    EXPECT_EQ(press(kKeyTab), NavigationKey::none);
    EXPECT_EQ(press(kKeyTab, kFlagShift), NavigationKey::none);
    EXPECT_EQ(press(kKeySpace), NavigationKey::none);
}

} // namespace
} // namespace trovel
