#include "delivery/ai_app_catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace trovel {
namespace {

using testing::ElementsAreArray;
using enum SendBehavior;

std::vector<KnownAIApp> const kChatApplications{
    {"Claude", "com.anthropic.claudefordesktop", enter, "brain.head.profile"},
    {"ChatGPT", "com.openai.chat", enter, "bubble.left.fill"},
    {"Gemini", "com.google.Gemini", enter, "sparkles"},
    {"Perplexity", "com.perplexity", enter, "magnifyingglass"},
    {"Copilot", "com.microsoft.copilot", enter, "cpu"},
};
std::vector<KnownAIApp> const kBrowsers{
    {"Safari", "com.apple.Safari", enter, "safari"},
    {"Chrome", "com.google.Chrome", enter, "globe"},
    {"Arc", "company.thebrowser.Browser", enter, "globe"},
    {"Firefox", "org.mozilla.firefox", enter, "globe"},
    {"Edge", "com.microsoft.edgemac", enter, "globe"},
};

TEST(AIAppCatalogue, ListsTheChatApplicationsInOrderOfPreference) {
    EXPECT_THAT(knownAIApps(), ElementsAreArray(kChatApplications));
}

TEST(AIAppCatalogue, ListsTheBrowsers) {
    EXPECT_THAT(knownBrowsers(), ElementsAreArray(kBrowsers));
}

TEST(AIAppCatalogue, PutsTheChatApplicationsBeforeTheBrowsers) {
    auto all = kChatApplications;
    all.insert(all.end(), kBrowsers.begin(), kBrowsers.end());
    EXPECT_THAT(allKnownApps(), ElementsAreArray(all));
}

TEST(SendBehavior, IsOneByteThatStartsWithEnter) {
    static_assert(sizeof(SendBehavior) == 1);
    EXPECT_EQ(static_cast<int>(enter), 0);
    EXPECT_EQ(static_cast<int>(cmdEnter), 1);
}

} // namespace
} // namespace trovel
