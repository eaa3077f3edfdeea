#include "platform/linux/x11/input_grab.h"

#include "platform/linux/x11/connection.h"

#include <chrono>
#include <utility>

namespace trovel {

namespace {

constexpr std::chrono::milliseconds kRetryInterval{20};
constexpr int kMostAttempts = 50;

// No motion without the button: an overlay that nobody drags on wakes nobody up.
constexpr std::uint16_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_1_MOTION;

} // namespace

InputGrab::InputGrab(XcbConnection& x, MainQueue& mainQueue) : x_(x), mainQueue_(mainQueue) {}

InputGrab::~InputGrab() {
    end();
}

void InputGrab::begin() {
    if (session_) return;
    hasPointer_ = false;
    hasKeyboard_ = false;
    attempts_ = 0;
    session_.emplace();
    request();
}

void InputGrab::end() {
    if (!session_) return;
    session_.reset();
    if (auto const request = std::exchange(pointerRequest_, std::nullopt)) {
        xcb_discard_reply(x_.get(), request->sequence);
    }
    if (auto const request = std::exchange(keyboardRequest_, std::nullopt)) {
        xcb_discard_reply(x_.get(), request->sequence);
    }
    xcb_ungrab_pointer(x_.get(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(x_.get(), XCB_CURRENT_TIME);
    x_.flush();
}

void InputGrab::setCursor(xcb_cursor_t cursor) {
    cursor_ = cursor;
    if (!session_) return;
    // Without effect while the pointer is not held; the next attempt names the cursor itself.
    xcb_change_active_pointer_grab(x_.get(), cursor_, XCB_CURRENT_TIME, kPointerEvents);
    x_.flush();
}

void InputGrab::request() {
    ++attempts_;
    if (!hasPointer_) {
        pointerRequest_ = xcb_grab_pointer(x_.get(), /*owner_events=*/0, x_.root(), kPointerEvents,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
                                           cursor_, XCB_CURRENT_TIME);
    }
    if (!hasKeyboard_) {
        keyboardRequest_ =
            xcb_grab_keyboard(x_.get(), /*owner_events=*/0, x_.root(), XCB_CURRENT_TIME,
                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    }
    // The answers are read in a later turn: what is on its way to the screen does not wait for
    // them.
    mainQueue_.post(session_->whileItLasts([this] { collect(); }));
}

void InputGrab::collect() {
    if (auto const request = std::exchange(pointerRequest_, std::nullopt)) {
        auto const reply = x_.reply<xcb_grab_pointer_reply>(*request);
        hasPointer_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
    if (auto const request = std::exchange(keyboardRequest_, std::nullopt)) {
        auto const reply = x_.reply<xcb_grab_keyboard_reply>(*request);
        hasKeyboard_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
    if (hasPointer_ && hasKeyboard_) return;
    if (attempts_ < kMostAttempts) {
        mainQueue_.after(kRetryInterval, session_->whileItLasts([this] { request(); }));
        return;
    }
    // Without the keyboard the mouse still selects and cancels; without the pointer nothing would.
    if (!hasPointer_ && onPointerRefused_) onPointerRefused_();
}

} // namespace trovel
