#include "delivery/standard_alert.h"

#include "platform/simulated/simulated_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <variant>

namespace trovel {
namespace {

TEST(StandardAlert, ActivatesTheProgramAndThenShowsOneSentenceWithOneButton) {
    SimulatedDesktop desktop;
    desktop.journal.clear();
    showStandardAlert(desktop.platform(), "A sentence.");
    Alert const expected{"Trovel", "A sentence.", AlertStyle::informational, {"OK"}};
    auto const& entries = desktop.journal.entries();
    ASSERT_GE(entries.size(), 2U);
    EXPECT_EQ(entries.front().effect, Effect(effect::ActivationAsked{false}));
    EXPECT_THAT(desktop.journal.all<effect::AlertShown>(),
                testing::ElementsAre(effect::AlertShown{expected}));
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 1U);
}

} // namespace
} // namespace trovel
