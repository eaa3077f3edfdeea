#include "platform/preference_store.h"
#include "tests/contract/contract_world.h"

#include <limits>

namespace trovel {
namespace {

using PreferencesContract = ContractTest;

TEST_F(PreferencesContract, AnAbsentKeyReadsAsFalseZeroAndNothing) {
    EXPECT_FALSE(platform.preferences.boolForKey("absent"));
    EXPECT_EQ(platform.preferences.integerForKey("absent"), 0);
    EXPECT_EQ(platform.preferences.stringForKey("absent"), std::nullopt);
}

TEST_F(PreferencesContract, AWriteIsSeenByTheNextReadAndByALaterRun) {
    platform.preferences.setBool("truth", true);
    platform.preferences.setInteger("number", -42);
    platform.preferences.setString("text", "words");
    for (auto* store : {&platform.preferences, &world->laterPreferences()}) {
        EXPECT_TRUE(store->boolForKey("truth"));
        EXPECT_EQ(store->integerForKey("number"), -42);
        EXPECT_EQ(store->stringForKey("text"), "words");
    }
}

TEST_F(PreferencesContract, AWriteReplacesAValueOfAnyType) {
    platform.preferences.setString("key", "words");
    platform.preferences.setBool("key", true);
    EXPECT_TRUE(platform.preferences.boolForKey("key"));
    platform.preferences.setBool("key", false);
    EXPECT_FALSE(platform.preferences.boolForKey("key"));
}

TEST_F(PreferencesContract, IntegersAreWholeToTheLastBit) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (auto const value :
         {Limits::min(), std::int64_t{-1}, std::int64_t{4294967296}, Limits::max()}) {
        platform.preferences.setInteger("number", value);
        EXPECT_EQ(world->laterPreferences().integerForKey("number"), value);
    }
}

TEST_F(PreferencesContract, TextsComeBackByteForByte) {
    for (auto const* text : {"", " ", "a = b", "[section]", "; comment", "# comment", "\"quoted\"",
                             "back\\slash", "two\nlines", "\ttab", "Zoë 🎉", "true", "12"}) {
        platform.preferences.setString("text", text);
        EXPECT_EQ(world->laterPreferences().stringForKey("text"), text);
    }
}

TEST_F(PreferencesContract, ATextReadsAsNoBooleanAndNoInteger) {
    world->storePreference("text", std::string("words"));
    EXPECT_FALSE(world->laterPreferences().boolForKey("text"));
    EXPECT_EQ(world->laterPreferences().integerForKey("text"), 0);
}

TEST_F(PreferencesContract, ARealNumberReadsAsNoBooleanAndNoInteger) {
    world->storePreference("real", 2.5);
    EXPECT_FALSE(world->laterPreferences().boolForKey("real"));
    EXPECT_EQ(world->laterPreferences().integerForKey("real"), 0);
}

TEST_F(PreferencesContract, KeysAreCaseSensitive) {
    platform.preferences.setBool("hotkeyIsCustom", true);
    EXPECT_FALSE(platform.preferences.boolForKey("hotkeyiscustom"));
}

} // namespace
} // namespace trovel
