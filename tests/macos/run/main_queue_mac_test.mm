#include "platform/alerts.h"
#include "platform/main_queue.h"
#include "tests/macos/run/mac_test.h"

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class QueueMac : public MacTest {};

TEST_F(QueueMac, WhatIsPostedRunsWhileTheAlertOfABlockBeforeItIsUp) {
    std::vector<std::string> said;
    mac().runLoop.later(100ms, [&] { mac().closeAlert(); });
    platform.mainQueue.post([&] {
        platform.alerts.runModal({"Trovel", "Text", AlertStyle::warning, {"OK"}});
        said.emplace_back("closed");
    });
    platform.mainQueue.post([&] {
        said.emplace_back("second");
        platform.mainQueue.post([&] { said.emplace_back("third"); });
    });
    session.wait(1s);
    EXPECT_THAT(said, ElementsAre("second", "third", "closed"));
}

} // namespace
} // namespace trovel
