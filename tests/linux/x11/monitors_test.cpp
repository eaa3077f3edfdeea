#include "platform/linux/x11/monitors.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/screens_x11.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/support/scoped_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ScaleOfMonitorTest, IsOneWhenNothingIsSaid) {
    EXPECT_EQ(scaleOfMonitor({}, "HDMI-1", 0), 1);
}

TEST(ScaleOfMonitorTest, ComesFromTheResolutionOfText) {
    EXPECT_EQ(scaleOfMonitor({"", "", "*foo: bar\nXft.dpi:\t144\nXft.hinting: 1\n"}, "A", 0), 1.5);
    EXPECT_EQ(scaleOfMonitor({"", "", "Xft.dpi: nonsense"}, "A", 0), 1);
    EXPECT_EQ(scaleOfMonitor({"", "", "Xft.dpi: -96"}, "A", 0), 1);
    EXPECT_EQ(scaleOfMonitor({"", "", "Xft.dpi: 0"}, "A", 0), 1);
}

TEST(ScaleOfMonitorTest, AFactorForAllScreensBeatsTheResolutionOfText) {
    EXPECT_EQ(scaleOfMonitor({"", "1.25", "Xft.dpi: 192"}, "A", 0), 1.25);
}

TEST(ScaleOfMonitorTest, AFactorForTheScreenBeatsThatForAll) {
    EXPECT_EQ(scaleOfMonitor({"A=1.75;B=2", "1.25", "Xft.dpi: 192"}, "A", 0), 1.75);
    EXPECT_EQ(scaleOfMonitor({"A=1.75;B=2", "1.25", "Xft.dpi: 192"}, "B", 1), 2);
    EXPECT_EQ(scaleOfMonitor({"A=1.75;B=2", "1.25", "Xft.dpi: 192"}, "C", 2), 1.25);
}

TEST(ScaleOfMonitorTest, FactorsWithoutNamesGoByTheOrderOfTheScreens) {
    EXPECT_EQ(scaleOfMonitor({"1.5;2", "", ""}, "A", 0), 1.5);
    EXPECT_EQ(scaleOfMonitor({"1.5;2", "", ""}, "A", 1), 2);
    EXPECT_EQ(scaleOfMonitor({"1.5;2", "", ""}, "A", 2), 1);
}

TEST(ScaleOfMonitorTest, WhatIsNoSensibleFactorIsPassedOver) {
    for (auto const* const factor : {"0", "-2", "nan", "inf", "1e99", "two", "1.5x", "", " "}) {
        EXPECT_EQ(scaleOfMonitor({factor, "1.5", ""}, "A", 0), 1.5) << factor;
        EXPECT_EQ(scaleOfMonitor({"", factor, "Xft.dpi: 192"}, "A", 0), 2) << factor;
    }
}

class MonitorsTest : public testing::Test {
protected:
    MonitorsTest() : display_({"-screen", "0", "1600x1000x24"}), x_(XcbConnection::open()) {}

    ScopedEnvironment factors_{"QT_SCREEN_SCALE_FACTORS", nullptr};
    ScopedEnvironment factor_{"QT_SCALE_FACTOR", nullptr};
    TestDisplay display_;
    std::unique_ptr<XcbConnection> x_;
};

TEST_F(MonitorsTest, OneScreenIsOneMonitor) {
    auto const monitors = listMonitors(*x_);
    ASSERT_EQ(monitors.size(), 1U);
    EXPECT_EQ(monitors[0].area, (PixelRect{0, 0, 1600, 1000}));
    EXPECT_EQ(monitors[0].scale, 1);
    EXPECT_EQ(monitors[0].id, x_->atom(monitors[0].name));
}

TEST_F(MonitorsTest, ThePrimaryMonitorComesFirstAndTheOthersKeepTheirOrder) {
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "left", "400/100x1000/100+0+0", "screen"}));
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "middle", "400/100x1000/100+400+0", "none"}));
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "*right", "800/100x1000/100+800+0", "none"}));
    std::vector<std::string> names;
    for (auto const& monitor : listMonitors(*x_)) names.push_back(monitor.name);
    EXPECT_THAT(names, ElementsAre("right", "left", "middle"));
}

TEST_F(MonitorsTest, AScreenHasItsFrameItsScaleAndItsNumber) {
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "*main", "1000/100x1000/100+600+0", "screen"}));
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "side", "600/100x600/100+0+400", "none"}));
    ScopedEnvironment const scales("QT_SCREEN_SCALE_FACTORS", "main=2;side=1.5");
    auto const screens = ScreensX11(*x_).screens();
    EXPECT_THAT(screens, ElementsAre(Screen{{0, 0, 500, 500}, 2, x_->atom("main")},
                                     Screen{{-300, 0, 400, 400}, 1.5, x_->atom("side")}));
}

TEST_F(MonitorsTest, ResourcesOfTheServerScaleAllScreens) {
    std::string_view const text = "Xft.dpi:\t120\n";
    xcb_change_property(x_->get(), XCB_PROP_MODE_REPLACE, x_->root(), XCB_ATOM_RESOURCE_MANAGER,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
    EXPECT_EQ(listMonitors(*x_).front().scale, 1.25);
}

TEST_F(MonitorsTest, WithoutTheServerThereAreNone) {
    display_.kill();
    EXPECT_THAT(listMonitors(*x_), IsEmpty());
    EXPECT_THAT(ScreensX11(*x_).screens(), IsEmpty());
}

TEST(MonitorsWithoutRandrTest, TheRootWindowIsTheOnlyScreen) {
    TestDisplay const display({"-screen", "0", "640x480x24", "-extension", "RANDR"});
    auto const x = XcbConnection::open();
    auto const monitors = listMonitors(*x);
    ASSERT_EQ(monitors.size(), 1U);
    EXPECT_EQ(monitors[0].area, (PixelRect{0, 0, 640, 480}));
}

} // namespace
} // namespace trovel
