#pragma once

#include "platform/ui/view.h"
#include "platform/ui/window.h"
#include "tests/macos/run/fakes/appkit.h"
#include "tests/macos/run/mac_session.h"
#include "tests/macos/run/native_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace trovel {

/// A test of the macOS backend on a Mac of its own.
class MacTest : public testing::Test {
protected:
    /// A window with that content, which is as large as the window.
    std::shared_ptr<Window> open(std::shared_ptr<View> content, std::uint32_t styleMask,
                                 Point corner = {100, 100}) {
        WindowAttributes attributes;
        attributes.contentRect = {corner.x, corner.y, content->frame().width,
                                  content->frame().height};
        attributes.styleMask = styleMask;
        auto window = std::make_shared<Window>(platform.windows, attributes);
        window->setContentView(std::move(content));
        window->makeKeyAndOrderFront();
        session.settle();
        return window;
    }
    void click(View const& view) {
        mac().movePointer(onScreen(view));
        mac().leftDown();
        mac().leftUp();
        session.settle();
    }
    void press(unsigned keyCode, NSEventModifierFlags flags, std::string characters) {
        mac().keyDown(keyCode, flags, std::move(characters));
        session.settle();
        mac().keyUp(keyCode);
    }
    [[nodiscard]] static fakes::Mac& mac() { return fakes::mac(); }

    static constexpr std::uint32_t kTitledWindow = kStyleTitled | kStyleClosable;

    MacSession session;
    Platform platform = session.platform();
};

} // namespace trovel
