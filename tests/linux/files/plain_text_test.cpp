#include "platform/linux/files/plain_text.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

TEST(PlainTextTest, ValidTextStaysAsItIs) {
    for (auto const* text : {"", "Claude", "Zoë's Wörterbuch", "日本語", "😀 x", "a  b"}) {
        EXPECT_EQ(plainText(text), text);
    }
}

TEST(PlainTextTest, WhatAScriptCannotCarryIsReplaced) {
    EXPECT_EQ(plainText("say \"hi\""), "say 'hi'");
    EXPECT_EQ(plainText("a\\b"), "a/b");
    EXPECT_EQ(plainText("a\nb\tc\x7f"
                        "d\x01"),
              "a b c d");
    EXPECT_EQ(plainText(std::string_view("a\0b", 3)), "a b");
}

TEST(PlainTextTest, SpacesAtTheEndsAreLeftOut) {
    EXPECT_EQ(plainText("  a b \n"), "a b");
    EXPECT_EQ(plainText(" \n "), "");
}

TEST(PlainTextTest, EachBrokenByteIsReplaced) {
    EXPECT_EQ(plainText("a\xff"
                        "b"),
              "a\uFFFDb");
    EXPECT_EQ(plainText("\xe9t\xe9"), "\uFFFDt\uFFFD");
    EXPECT_EQ(plainText("\xc3"), "\uFFFD");
    EXPECT_EQ(plainText("\xc0\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xe0\x80\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xed\xa0\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xf0\x80\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xf4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xf5\x80\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(PlainTextTest, AMegabyteIsCutBetweenCharacters) {
    EXPECT_EQ(plainText(std::string(1 << 20, 'x')), std::string(kPlainTextLimit, 'x'));
    std::string const umlauts = "x" + [] {
        std::string many;
        for (int i = 0; i < 1000; ++i) many += "ü";
        return many;
    }();
    auto const text = plainText(umlauts);
    EXPECT_EQ(text.size(), kPlainTextLimit - 1);
    EXPECT_TRUE(text.ends_with("ü"));
}

TEST(PlainTextTest, TrimmingTakesBlanksAndLineEndsOffTheEnds) {
    for (auto const* const text : {"a \t b", " a \t b", "a \t b\r\n", "\n\t a \t b\t "}) {
        EXPECT_EQ(trimmed(text), "a \t b");
    }
    EXPECT_EQ(trimmed(" \t\r\n"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(PlainTextTest, LowerCaseLeavesOtherLettersAlone) {
    EXPECT_EQ(asciiLowerCase("Google-CHROME Ü1"), "google-chrome Ü1");
}

} // namespace
} // namespace trovel
