#include "platform/linux/files/preference_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace trovel {
namespace {

using std::string_literals::operator""s;

std::optional<std::string> string(PreferenceText const& text, std::string_view key) {
    auto const value = text.value(key);
    auto const* const found = value ? std::get_if<std::string>(&*value) : nullptr;
    return found ? std::optional(*found) : std::nullopt;
}

TEST(PreferenceTextTest, EachTypeHasItsForm) {
    PreferenceText const text("yes=true\nno=false\nnumber=-19\nname=\"Claude\"\n");
    EXPECT_FALSE(text.wasBroken());
    EXPECT_EQ(text.value("yes"), StoredPreference(true));
    EXPECT_EQ(text.value("no"), StoredPreference(false));
    EXPECT_EQ(text.value("number"), StoredPreference(std::int64_t(-19)));
    EXPECT_EQ(text.value("name"), StoredPreference("Claude"s));
    EXPECT_EQ(text.value("absent"), std::nullopt);
}

TEST(PreferenceTextTest, IsWrittenAsItIsRead) {
    PreferenceText text;
    text.set("autoSendEnabled", true);
    text.set("hotkeyKeyCode", std::int64_t(19));
    text.set("preferredAIApp", "Claude"s);
    EXPECT_EQ(text.text(), "autoSendEnabled=true\nhotkeyKeyCode=19\npreferredAIApp=\"Claude\"\n");
}

TEST(PreferenceTextTest, StringsOfAnyBytesComeBack) {
    std::string every;
    for (int byte = 0; byte < 256; ++byte) every += static_cast<char>(byte);
    for (auto const& value : {every, ""s, "\""s, "\\"s, "\\n"s, "\n\n"s, " padded "s, "a=b"s, "#"s,
                              "Zoë 🎈"s, "true"s, "19"s}) {
        PreferenceText text;
        text.set("name", value);
        PreferenceText const again(text.text());
        EXPECT_FALSE(again.wasBroken());
        EXPECT_EQ(string(again, "name"), value);
    }
}

TEST(PreferenceTextTest, OtherLinesAreKeptInTheirPlaces) {
    PreferenceText text("# mine\n\nfuture=3.14\nflag = true\nlist=[1, 2]\n");
    EXPECT_FALSE(text.wasBroken());
    text.set("flag", false);
    text.set("new", std::int64_t(1));
    EXPECT_EQ(text.text(), "# mine\n\nfuture=3.14\nflag=false\nlist=[1, 2]\nnew=1\n");
}

TEST(PreferenceTextTest, ValuesOfOtherFormsHoldNothing) {
    PreferenceText const text("a=3.14\nb=Claude\nc=\nd=1e5\ne=0x10\nf=TRUE\ng=+1\nh=1 2\n");
    EXPECT_FALSE(text.wasBroken());
    for (auto const* const key : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        EXPECT_EQ(text.value(key), std::nullopt) << key;
    }
}

TEST(PreferenceTextTest, SpaceAndCarriageReturnsAroundAreNotMeant) {
    PreferenceText const text(" hotkeyKeyCode\t= 19 \r\n");
    EXPECT_EQ(text.value("hotkeyKeyCode"), StoredPreference(std::int64_t(19)));
}

TEST(PreferenceTextTest, TheLastOfSeveralLinesOfAKeyCounts) {
    PreferenceText text("key=1\nkey=2\n");
    EXPECT_EQ(text.value("key"), StoredPreference(std::int64_t(2)));
    text.set("key", std::int64_t(3));
    EXPECT_EQ(PreferenceText(text.text()).value("key"), StoredPreference(std::int64_t(3)));
}

TEST(PreferenceTextTest, NumbersOutOfReachStayOutOfRange) {
    PreferenceText const text("high=99999999999999999999\nlow=-99999999999999999999\n"
                              "max=9223372036854775807\n");
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(text.value("high"), StoredPreference(Limits::max()));
    EXPECT_EQ(text.value("low"), StoredPreference(Limits::min()));
    EXPECT_EQ(text.value("max"), StoredPreference(Limits::max()));
}

TEST(PreferenceTextTest, LinesThatNobodyUnderstandsAreLeftOut) {
    for (auto const& broken :
         {"word\n"s, "=1\n"s, "k y=1\n"s, "name=\"open\n"s, "name=\"a\"b\n"s, "name=\"\\q\"\n"s,
          "name=\"\\x1\"\n"s, "name=\"\\\"\n"s, "nul=\0\n"s, "\x7f"s + "ELF\n"s, "\xff\xfe\n"s}) {
        PreferenceText const text("before=1\n" + broken + "after=2\n");
        EXPECT_TRUE(text.wasBroken()) << broken;
        EXPECT_EQ(text.text(), "before=1\nafter=2\n") << broken;
    }
}

TEST(PreferenceTextTest, WhereverItIsCutOffWholeLinesCountAndNothingElse) {
    std::string const whole = "hotkeyIsCustom=true\nhotkeyKeyCode=190\npreferredAIApp=\"A\\\"B\"\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        auto const part = whole.substr(0, length);
        auto const lineEnd = part.rfind('\n');
        auto const lines = lineEnd == std::string::npos ? ""s : part.substr(0, lineEnd + 1);
        PreferenceText const text(part);
        EXPECT_EQ(text.text(), lines);
        EXPECT_EQ(text.wasBroken(), lines != part);
    }
}

} // namespace
} // namespace trovel
