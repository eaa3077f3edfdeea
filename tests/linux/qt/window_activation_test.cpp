#include "platform/linux/qt/window_activation.h"

#include "tests/linux/qt/native_world.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <QWindow>

#include <optional>

namespace trovel {
namespace {

class WindowActivationTest : public testing::Test {
protected:
    [[nodiscard]] bool show() {
        window.show();
        return world.runUntil([this] { return window.windowHandle()->isExposed(); });
    }

    NativeWorld world;
    QWidget window;
    int activations = 0;
    std::optional<WindowActivation> activation{std::in_place, window, [this](QWidget& which) {
                                                   EXPECT_EQ(&which, &window);
                                                   ++activations;
                                               }};
};

TEST_F(WindowActivationTest, AWindowThatIsNotShownIsActivatedOnceItIsPainted) {
    activation->wish();
    activation->wish();
    world.runPending();
    EXPECT_EQ(activations, 0) << "the window manager does not know it yet";
    ASSERT_TRUE(show());
    EXPECT_TRUE(world.runUntil([this] { return activations > 0; }));
    window.repaint();
    EXPECT_EQ(activations, 1);
}

TEST_F(WindowActivationTest, AWindowOnTheScreenIsActivatedAtOnce) {
    ASSERT_TRUE(show());
    window.repaint();
    EXPECT_EQ(activations, 0) << "nobody wished for it";
    activation->wish();
    EXPECT_EQ(activations, 1);
    window.repaint();
    EXPECT_EQ(activations, 1);
}

TEST_F(WindowActivationTest, AWishDoesNotOutliveIt) {
    activation->wish();
    activation.reset();
    ASSERT_TRUE(show());
    window.repaint();
    EXPECT_EQ(activations, 0);
}

} // namespace
} // namespace trovel
