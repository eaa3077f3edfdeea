#include "platform/linux/system/permissions_linux.h"

#include "platform/alerts.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/session_grants_x11.h"
#include "tests/linux/support/private_x_server.h"
#include "tests/linux/support/scoped_environment.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace trovel {
namespace {

struct Fixture {
    std::unique_ptr<XcbConnection> connection = XcbConnection::open();
    std::vector<Alert> shown{};
    SessionGrantsX11 grants{*connection};
    PermissionsLinux permissions{[this] { return grants.read(); },
                                 [this](Alert const& alert) { shown.push_back(alert); }};
};

TEST(PermissionsLinuxTest, ANativeSessionGrantsBoth) {
    Fixture fixture;
    auto& permissions = fixture.permissions;
    EXPECT_TRUE(permissions.isAccessibilityTrusted());
    EXPECT_TRUE(permissions.preflightScreenCapture());
}

TEST(PermissionsLinuxTest, AWaylandSessionGrantsNeither) {
    Fixture fixture;
    auto& permissions = fixture.permissions;
    for (auto const& [name, value] :
         {std::pair("XDG_SESSION_TYPE", "wayland"), std::pair("WAYLAND_DISPLAY", "wayland-0")}) {
        ScopedEnvironment const session(name, value);
        EXPECT_FALSE(permissions.isAccessibilityTrusted()) << name;
        EXPECT_FALSE(permissions.preflightScreenCapture()) << name;
    }
    ScopedEnvironment const session("XDG_SESSION_TYPE", "x11");
    EXPECT_TRUE(permissions.isAccessibilityTrusted());
}

TEST(PermissionsLinuxTest, AServerThatTakesNoInputGrantsScreenCaptureOnly) {
    PrivateXServer const server({"-screen", "0", "640x480x24", "-extension", "XTEST"});
    ScopedEnvironment const display("DISPLAY", server.display().c_str());
    Fixture fixture;
    auto& permissions = fixture.permissions;
    EXPECT_FALSE(permissions.isAccessibilityTrusted());
    EXPECT_TRUE(permissions.preflightScreenCapture());
    permissions.requestScreenCapture();
    EXPECT_TRUE(fixture.shown.empty());
    permissions.promptForAccessibility();
    ASSERT_EQ(fixture.shown.size(), 1U);
    EXPECT_NE(fixture.shown[0].informativeText.find("XTEST"), std::string::npos);
}

TEST(PermissionsLinuxTest, WhereNothingIsMissingNothingIsPrompted) {
    Fixture fixture;
    fixture.permissions.promptForAccessibility();
    fixture.permissions.requestScreenCapture();
    EXPECT_TRUE(fixture.shown.empty());
    fixture.permissions.explain();
    ASSERT_EQ(fixture.shown.size(), 1U);
    EXPECT_TRUE(fixture.shown[0].informativeText.starts_with("Nothing is missing"));
}

TEST(PermissionsLinuxTest, InAWaylandSessionBothPromptsExplainWhatIsMissing) {
    Fixture fixture;
    ScopedEnvironment const session("XDG_SESSION_TYPE", "wayland");
    fixture.permissions.promptForAccessibility();
    fixture.permissions.requestScreenCapture();
    ASSERT_EQ(fixture.shown.size(), 2U);
    EXPECT_EQ(fixture.shown[0], fixture.shown[1]);
    EXPECT_NE(fixture.shown[0].informativeText.find("Wayland"), std::string::npos);
}

} // namespace
} // namespace trovel
