#include "platform/linux/x11/pasteboard_x11.h"

#include "platform/linux/pictures/captured_image.h"
#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::Not;
using testing::StartsWith;

/// What a command prints.
std::string output(std::string const& command) {
    std::string result;
    auto* const pipe = popen(command.c_str(), "r");
    std::string buffer(1 << 16, '\0');
    while (auto const count = fread(buffer.data(), 1, buffer.size(), pipe)) {
        result.append(buffer, 0, count);
    }
    pclose(pipe);
    return result;
}

/// Pixels that hardly get smaller in a PNG.
Image noise(int width, int height) {
    auto const pixels = std::make_shared<std::vector<std::uint32_t>>(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::minstd_rand generate(1);
    std::ranges::generate(
        *pixels, [&generate] { return static_cast<std::uint32_t>(generate()) & 0xffffffU; });
    PixelRows const rows{.data = reinterpret_cast<std::uint8_t const*>(pixels->data()),
                         .stride = static_cast<std::size_t>(width) * sizeof(std::uint32_t),
                         .width = width,
                         .height = height};
    return {std::make_shared<CapturedImage const>(PixelBuffer{rows, pixels}, 1.0),
            {static_cast<double>(width), static_cast<double>(height)}};
}

std::string pngOf(Image const& image) {
    auto const png = dynamic_cast<CapturedImage const&>(*image.pixels).pngData();
    return {png->begin(), png->end()};
}

class PasteboardX11Test : public testing::Test {
protected:
    /// What an independent reader gets, while this program's loop runs.
    std::string clipboard(std::string const& target, std::string const& selection = "clipboard") {
        std::atomic<bool> isDone = false;
        std::string result;
        std::thread reader([&] {
            result = output("xclip -selection " + selection + " -o -t " + target + " 2>/dev/null");
            isDone = true;
            queue_.post([] {}); // wakes the loop
        });
        while (!isDone) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        reader.join();
        return result;
    }
    void runFor(MainQueue::Duration duration) {
        bool isOver = false;
        queue_.after(duration, [&isOver] { isOver = true; });
        while (!isOver) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    std::vector<std::string> targets(std::string const& selection = "clipboard") {
        std::istringstream lines(clipboard("TARGETS", selection));
        std::vector<std::string> result;
        for (std::string line; std::getline(lines, line);) result.push_back(line);
        return result;
    }

    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    MainQueueLinux queue_;
    std::unique_ptr<ApplicationLinux> application_ = std::make_unique<ApplicationLinux>(queue_);
    PasteboardX11 pasteboard_{*connection_};
};

TEST_F(PasteboardX11Test, APictureIsOfferedAsPngAndNothingElse) {
    auto const image = noise(20, 10);
    pasteboard_.clearContents();
    ASSERT_TRUE(pasteboard_.writeImage(image));
    EXPECT_EQ(clipboard("image/png"), pngOf(image));
    auto const offered = targets();
    EXPECT_THAT(offered, Contains("image/png"));
    EXPECT_EQ(std::ranges::count_if(offered, [](auto const& name) { return name.contains('/'); }),
              1);
    EXPECT_THAT(offered, Not(Contains("UTF8_STRING")));
    EXPECT_THAT(offered, Not(Contains("STRING")));
}

TEST_F(PasteboardX11Test, WhatIsWrittenReplacesWhatWasThere) {
    auto const second = noise(30, 30);
    ASSERT_TRUE(pasteboard_.writeImage(noise(20, 10)));
    ASSERT_TRUE(pasteboard_.writeImage(second));
    EXPECT_EQ(clipboard("image/png"), pngOf(second));
    EXPECT_EQ(clipboard("image/png"), pngOf(second)) << "as often as it is asked for";
}

TEST_F(PasteboardX11Test, ClearingLeavesNothing) {
    ASSERT_TRUE(pasteboard_.writeImage(noise(20, 10)));
    pasteboard_.clearContents();
    EXPECT_THAT(targets(), Not(Contains(StartsWith("image/"))));
    EXPECT_EQ(clipboard("image/png"), "");
}

TEST_F(PasteboardX11Test, AnImageThatIsNoCaptureIsRefused) {
    EXPECT_FALSE(pasteboard_.writeImage({}));
}

TEST_F(PasteboardX11Test, ATextIsOnBothSelectionsAsPlainTextByteForByte) {
    std::string const text = "/home/an 'n\"/\xc3\xbc \xff/.trovel/captures/Trovel-1.png ";
    ASSERT_TRUE(pasteboard_.writeText(text));
    for (std::string const selection : {"clipboard", "primary"}) {
        EXPECT_EQ(clipboard("UTF8_STRING", selection), text) << selection;
        EXPECT_EQ(clipboard("'text/plain;charset=utf-8'", selection), text) << selection;
        auto const offered = targets(selection);
        EXPECT_THAT(offered, testing::IsSupersetOf({"UTF8_STRING", "STRING", "TEXT"}));
        for (auto const& name : offered) {
            EXPECT_TRUE(!name.contains('/') || name.starts_with("text/plain")) << name;
        }
    }
}

TEST_F(PasteboardX11Test, AnAsciiTextIsTheSameInEveryForm) {
    std::string const text = "/home/ann/.trovel/captures/Trovel-1731700000123.png ";
    ASSERT_TRUE(pasteboard_.writeText(text));
    for (auto const* form : {"UTF8_STRING", "STRING", "TEXT", "text/plain"}) {
        EXPECT_EQ(clipboard(form), text) << form;
    }
}

TEST_F(PasteboardX11Test, ItKnowsWhatWasWrittenLast) {
    EXPECT_EQ(pasteboard_.lastWritten(), WrittenContents::picture);
    ASSERT_TRUE(pasteboard_.writeText("a "));
    EXPECT_EQ(pasteboard_.lastWritten(), WrittenContents::text);
    EXPECT_FALSE(pasteboard_.writeImage({}));
    EXPECT_EQ(pasteboard_.lastWritten(), WrittenContents::text);
    ASSERT_TRUE(pasteboard_.writeImage(noise(20, 10)));
    EXPECT_EQ(pasteboard_.lastWritten(), WrittenContents::picture);
    EXPECT_THAT(targets(), Not(Contains("UTF8_STRING")));
}

TEST_F(PasteboardX11Test, ThePictureIsTakenEvenWhereAnotherProgramWasThereAMomentAgo) {
    ASSERT_TRUE(pasteboard_.writeImage(noise(20, 10)));
    auto const other = XcbConnection::open();
    auto const window = xcb_generate_id(other->get());
    xcb_create_window(other->get(), XCB_COPY_FROM_PARENT, window, other->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    for (int i = 0; i < 5; ++i) {
        auto const image = noise(20 + i, 10);
        runFor(5ms); // the server's clock counts milliseconds
        ASSERT_TRUE(other->succeeded(xcb_set_selection_owner_checked(
            other->get(), window, other->atom("CLIPBOARD"), XCB_CURRENT_TIME)));
        pasteboard_.clearContents();
        EXPECT_TRUE(pasteboard_.writeImage(image));
        EXPECT_EQ(clipboard("image/png"), pngOf(image));
    }
}

TEST_F(PasteboardX11Test, AFrozenOwnerOfTheClipboardHoldsNothingUp) {
    auto const other = XcbConnection::open(); // never looks at its events
    auto const window = xcb_generate_id(other->get());
    xcb_create_window(other->get(), XCB_COPY_FROM_PARENT, window, other->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    ASSERT_TRUE(other->succeeded(xcb_set_selection_owner_checked(
        other->get(), window, other->atom("CLIPBOARD"), XCB_CURRENT_TIME)));
    QCoreApplication::processEvents();
    auto const start = std::chrono::steady_clock::now();
    pasteboard_.clearContents();
    EXPECT_TRUE(pasteboard_.writeImage(noise(20, 10)));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
}

TEST_F(PasteboardX11Test, TwentyMebibytesArriveWholeWhileTheProgramGoesOn) {
    auto const image = noise(2500, 2900);
    auto const png = pngOf(image);
    ASSERT_GT(png.size(), 20U * 1024 * 1024);
    ASSERT_TRUE(pasteboard_.writeImage(image));
    auto last = std::chrono::steady_clock::now();
    auto longest = 0ns;
    int ticks = 0;
    auto const clock = queue_.every(2ms, [&] {
        auto const now = std::chrono::steady_clock::now();
        longest = std::max<std::chrono::nanoseconds>(longest, now - last);
        last = now;
        ++ticks;
    });
    EXPECT_TRUE(clipboard("image/png") == png);
    EXPECT_GT(ticks, 3);
    EXPECT_LT(longest, 300ms);
}

/// A clipboard manager: takes the picture over when it is asked to.
class ClipboardManager {
public:
    ClipboardManager() {
        auto* const x = connection_->get();
        window_ = xcb_generate_id(x);
        xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, connection_->root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        EXPECT_TRUE(connection_->succeeded(xcb_set_selection_owner_checked(
            x, window_, connection_->atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME)));
    }

    /// Serves one request and returns the picture.
    std::string takeOver() {
        auto* const x = connection_->get();
        auto const request = await<xcb_selection_request_event_t>(XCB_SELECTION_REQUEST);
        EXPECT_EQ(request->target, connection_->atom("SAVE_TARGETS"));
        auto const property = connection_->atom("PICTURE");
        xcb_convert_selection(x, window_, connection_->atom("CLIPBOARD"),
                              connection_->atom("image/png"), property, XCB_CURRENT_TIME);
        connection_->flush();
        await<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY);
        auto const content = connection_->reply<xcb_get_property_reply>(
            xcb_get_property(x, 0, window_, property, XCB_ATOM_ANY, 0, 1 << 20));
        xcb_selection_notify_event_t done{};
        done.response_type = XCB_SELECTION_NOTIFY;
        done.requestor = request->requestor;
        done.selection = request->selection;
        done.target = request->target;
        done.property = request->property;
        done.time = request->time;
        xcb_send_event(x, 0, request->requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<char const*>(&done));
        connection_->flush();
        return {static_cast<char const*>(xcb_get_property_value(content.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(content.get()))};
    }

private:
    template <class Event>
    XcbPointer<Event> await(std::uint8_t type) {
        while (auto* const event = xcb_wait_for_event(connection_->get())) {
            if (eventType(*event) == type) {
                return XcbPointer<Event>(reinterpret_cast<Event*>(event));
            }
            std::free(event);
        }
        return nullptr;
    }

    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(PasteboardX11Test, AtTheEndAClipboardManagerTakesThePictureOver) {
    auto const image = noise(40, 30);
    ASSERT_TRUE(pasteboard_.writeImage(image));
    ClipboardManager manager;
    std::string taken;
    std::thread thread([&] { taken = manager.takeOver(); });
    application_.reset();
    thread.join();
    EXPECT_EQ(taken, pngOf(image));
}

} // namespace
} // namespace trovel
