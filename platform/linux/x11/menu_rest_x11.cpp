#include "platform/linux/x11/menu_rest_x11.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/input_grab.h"

#include <chrono>
#include <utility>

namespace trovel {

namespace {

constexpr std::chrono::milliseconds kTick{10};
constexpr int kMostAttempts = 100;
constexpr int kQuietTicks = 5;
constexpr int kMostTicks = 50;

} // namespace

/// Notes whether anything was painted on the screen.
class MenuRestX11::Watch {
public:
    explicit Watch(XcbConnection& x) : x_(x) {
        auto const* const extension = x_.extension(xcb_damage_id);
        if (extension == nullptr) return;
        xcb_discard_reply(x_.get(), xcb_damage_query_version(x_.get(), XCB_DAMAGE_MAJOR_VERSION,
                                                             XCB_DAMAGE_MINOR_VERSION)
                                        .sequence);
        damage_ = xcb_generate_id(x_.get());
        xcb_damage_create(x_.get(), damage_, x_.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        x_.flush();
        events_ = x_.addEventHandler(
            [this, type = extension->first_event + XCB_DAMAGE_NOTIFY](auto const& event) {
                if (eventType(event) == type) wasPainted_ = true;
            });
    }
    ~Watch() {
        if (damage_ == XCB_NONE) return;
        xcb_damage_destroy(x_.get(), damage_);
        x_.flush();
    }
    Watch(Watch const&) = delete;
    Watch& operator=(Watch const&) = delete;

    /// Whether anything was painted since the last call.
    [[nodiscard]] bool takePainted() {
        if (!std::exchange(wasPainted_, false)) return false;
        xcb_damage_subtract(x_.get(), damage_, XCB_NONE, XCB_NONE);
        x_.flush();
        return true;
    }

private:
    XcbConnection& x_;
    xcb_damage_damage_t damage_ = XCB_NONE;
    bool wasPainted_ = false;
    Registration events_;
};

MenuRestX11::MenuRestX11(XcbConnection& x, MainQueue& mainQueue, InputGrab const& ownGrab)
    : x_(x), mainQueue_(mainQueue), ownGrab_(ownGrab) {}
MenuRestX11::~MenuRestX11() = default;

void MenuRestX11::whenPointerIsFree(std::function<void(bool)> then) {
    // A grab of our own counts although it may be over in the next turn.
    bool const isOurs = ownGrab_.isWanted();
    later([this, isOurs, then = std::move(then)] {
        if (isOurs) {
            then(false);
        } else {
            awaitPointer(1, then);
        }
    });
}

void MenuRestX11::whenAtRest(std::function<void()> then) {
    // The watch begins before the pointer is free: painting that is over by then counts too.
    auto const watch = std::make_shared<Watch>(x_);
    later([this, watch, then = std::move(then)] { awaitRest(watch, 1, 0, then); });
}

void MenuRestX11::awaitPointer(int attempts, std::function<void(bool)> const& then) {
    bool const isFree = isPointerFree();
    if (isFree || ownGrab_.isWanted() || attempts == kMostAttempts) {
        then(isFree);
        return;
    }
    later([this, attempts, then] { awaitPointer(attempts + 1, then); });
}

void MenuRestX11::awaitRest(std::shared_ptr<Watch> const& watch, int ticks, int quietTicks,
                            std::function<void()> const& then) {
    bool const isQuiet = !watch->takePainted() && (quietTicks > 0 || isPointerFree());
    int const quiet = isQuiet ? quietTicks + 1 : 0;
    if (quiet == kQuietTicks || ticks == kMostTicks) {
        then();
        return;
    }
    later([=, this] { awaitRest(watch, ticks + 1, quiet, then); });
}

void MenuRestX11::later(std::function<void()> block) {
    mainQueue_.after(kTick, lifetime_.whileItLasts(std::move(block)));
}

bool MenuRestX11::isPointerFree() const {
    // The server lets a connection have again what it has, and trying it would end that.
    if (ownGrab_.isWanted()) return false;
    auto const answer = x_.reply<xcb_grab_pointer_reply>(xcb_grab_pointer(
        x_.get(), /*owner_events=*/1, x_.root(), XCB_EVENT_MASK_NO_EVENT, XCB_GRAB_MODE_ASYNC,
        XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME));
    bool const isFree = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
    if (isFree) xcb_ungrab_pointer(x_.get(), XCB_CURRENT_TIME);
    x_.flush();
    return isFree;
}

} // namespace trovel
