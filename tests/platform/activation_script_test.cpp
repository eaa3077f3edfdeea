#include "platform/activation_script.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

TEST(ActivationScript, IsOneSentenceAroundTheName) {
    EXPECT_EQ(activationScript("Claude"), "tell application \"Claude\" to activate");
    EXPECT_EQ(activationScript(""), "tell application \"\" to activate");
}

TEST(ActivationScript, ReadsBackTheNameThatItWasMadeFrom) {
    EXPECT_EQ(activatedApplicationName(activationScript("Claude")), "Claude");
    EXPECT_EQ(activatedApplicationName(activationScript("")), "");
    EXPECT_EQ(activatedApplicationName(activationScript("Zoë's App")), "Zoë's App");
}

TEST(ActivationScript, RefusesNamesThatCouldSmuggleInAnotherStatement) {
    for (auto const* name : {"a\"b", "a\\", "a\nb", "a\rb", "a\tb", "\x7f"}) {
        EXPECT_EQ(activatedApplicationName(activationScript(name)), std::nullopt) << name;
    }
}

TEST(ActivationScript, RefusesEveryOtherText) {
    for (auto const* text :
         {"", "activate", "tell application \"x\" to quit", " tell application \"x\" to activate",
          "tell application \"x\" to activate ", "tell application \" to activate",
          "tell every application to come to the front", "tell application \"x to the front please",
          "ask the application for x\" to activate"}) {
        EXPECT_EQ(activatedApplicationName(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace trovel
