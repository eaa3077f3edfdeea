#include "platform/linux/permissions_linux.h"

#include "platform/linux/xcb/connection.h"
#include "tests/linux/private_x_server.h"
#include "tests/linux/scoped_environment.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

TEST(PermissionsLinuxTest, ANativeSessionGrantsBoth) {
    auto const connection = XcbConnection::open();
    ASSERT_TRUE(connection);
    PermissionsLinux const permissions(*connection);
    EXPECT_TRUE(permissions.isAccessibilityTrusted());
    EXPECT_TRUE(permissions.preflightScreenCapture());
}

TEST(PermissionsLinuxTest, AWaylandSessionGrantsNeither) {
    auto const connection = XcbConnection::open();
    ASSERT_TRUE(connection);
    PermissionsLinux const permissions(*connection);
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
    auto const connection = XcbConnection::open();
    ASSERT_TRUE(connection);
    PermissionsLinux const permissions(*connection);
    EXPECT_FALSE(permissions.isAccessibilityTrusted());
    EXPECT_TRUE(permissions.preflightScreenCapture());
}

} // namespace
} // namespace trovel
