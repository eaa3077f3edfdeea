#include "tests/linux/support/private_x_server.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    trovel::PrivateXServer const server({"-screen", "0", "1920x1080x24"});
    if (server.display().empty()) {
        std::fputs("These tests need Xvfb, and it did not start.\n", stderr);
        return 1;
    }
    setenv("DISPLAY", server.display().c_str(), 1);
    // The tests are about a plain X11 session, whatever session runs them.
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_SESSION_TYPE");
    return RUN_ALL_TESTS();
}
