#include "platform/url_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace trovel {
namespace {

TEST(UrlRulesTest, WebAndMailAddressesAreOpened) {
    for (auto const* url : {"https://trovel.example/changelog", "http://localhost:8080/?a=b#c",
                            "HTTPS://a", "https://user@host.example",
                            "mailto:support@trovel.example", "mailto:a@b?subject=Hello%20there"}) {
        EXPECT_EQ(kindOfUrl(url), UrlKind::handler) << url;
    }
}

TEST(UrlRulesTest, AnAddressWithoutItsMainPartIsNone) {
    for (auto const* url : {"", ":", "https:", "https://", "https:///path", "https://?q",
                            "https:/a", "https://user@", "https://:80", "mailto:", "mailto:@",
                            "mailto:a@", "mailto:@b", "mailto:a@?subject=b", "trovel.example"}) {
        EXPECT_EQ(kindOfUrl(url), UrlKind::invalid) << url;
    }
}

TEST(UrlRulesTest, OtherSchemesAreNotOpened) {
    for (auto const* url : {"file:///etc/passwd", "javascript://a", "ftp://a", "-https://a",
                            "x-apple.systempreferences:"}) {
        EXPECT_EQ(kindOfUrl(url), UrlKind::invalid) << url;
    }
}

TEST(UrlRulesTest, CharactersThatNoUrlHasAreRefused) {
    for (auto const* each :
         {" ", "\n", "\x7f", "\"", "<", ">", "\\", "^", "`", "{", "|", "\xc3\xbc"}) {
        EXPECT_EQ(kindOfUrl(std::string("https://a/") + each), UrlKind::invalid) << each;
    }
    EXPECT_EQ(kindOfUrl(std::string_view("https://a/\0", 11)), UrlKind::invalid);
}

TEST(UrlRulesTest, ThePrivacySettingsAreKnownByTheirExactAddress) {
    std::string const pane =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";
    EXPECT_EQ(kindOfUrl(pane), UrlKind::privacySettings);
    EXPECT_EQ(kindOfUrl(pane + "2"), UrlKind::invalid);
    EXPECT_EQ(kindOfUrl("X" + pane.substr(1)), UrlKind::invalid);
}

} // namespace
} // namespace trovel
