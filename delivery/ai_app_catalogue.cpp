#include "delivery/ai_app_catalogue.h"

#include <array>

namespace trovel {

namespace {

constexpr std::size_t kChatApplicationCount = 5;

} // namespace

std::span<KnownAIApp const> allKnownApps() {
    using enum SendBehavior;
    static auto const table = std::to_array<KnownAIApp>({
        {"Claude", "com.anthropic.claudefordesktop", enter, "brain.head.profile"},
        {"ChatGPT", "com.openai.chat", enter, "bubble.left.fill"},
        {"Gemini", "com.google.Gemini", enter, "sparkles"},
        {"Perplexity", "com.perplexity", enter, "magnifyingglass"},
        {"Copilot", "com.microsoft.copilot", enter, "cpu"},
        {"Safari", "com.apple.Safari", enter, "safari"},
        {"Chrome", "com.google.Chrome", enter, "globe"},
        {"Arc", "company.thebrowser.Browser", enter, "globe"},
        {"Firefox", "org.mozilla.firefox", enter, "globe"},
        {"Edge", "com.microsoft.edgemac", enter, "globe"},
    });
    return table;
}

std::span<KnownAIApp const> knownAIApps() {
    return allKnownApps().first(kChatApplicationCount);
}

std::span<KnownAIApp const> knownBrowsers() {
    return allKnownApps().subspan(kChatApplicationCount);
}

} // namespace trovel
