#include "platform/linux/x11/hotkey_service_x11.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/keymap.h"
#include "platform/linux/x11/xkb.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ranges>
#include <vector>

namespace trovel {

namespace {

constexpr std::uint16_t kModifierBits = 0xff;

} // namespace

HotkeyServiceX11::HotkeyServiceX11(XcbConnection& x) : x_(x) {
    watchKeyboard();
    modifierMap_ = readModifierMap(x_);
    events_ = x_.addEventHandler([this](xcb_generic_event_t const& event) { handle(event); });
    // A change of layout comes as a burst of events; the last one of it is the time to act.
    batches_ = x_.addBatchHandler([this] {
        if (isMappingStale_) followMapping();
    });
}

HotkeyServiceX11::~HotkeyServiceX11() {
    for (auto const& [ref, each] : grabs_) ungrab(each);
}

void HotkeyServiceX11::watchKeyboard() {
    auto const* const extension = x_.extension(xcb_xkb_id);
    if (extension == nullptr) return;
    auto const use = xcb_xkb_use_extension(x_.get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    if (auto const used = x_.reply<xcb_xkb_use_extension_reply>(use); !used || !used->supported) {
        return;
    }
    xkbEvent_ = extension->first_event;
    // A held key then sends presses only, no release between them.
    constexpr std::uint32_t kDetectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(x_.get(), xcb_xkb_per_client_flags(x_.get(), XCB_XKB_ID_USE_CORE_KBD,
                                                         kDetectable, kDetectable, 0, 0, 0)
                                    .sequence);
    // Who uses XKB gets no core mapping events any more.
    constexpr std::uint16_t kChanges =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kAllParts = 0xff;
    xcb_xkb_select_events(x_.get(), XCB_XKB_ID_USE_CORE_KBD, kChanges, 0, kChanges, kAllParts,
                          kAllParts, nullptr);
}

std::optional<EventHandlerRef> HotkeyServiceX11::installEventHandler(HotKeyHandler handler,
                                                                     void* userData) {
    auto const ref = nextRef_++;
    handlers_.emplace(ref, InstalledHandler{handler, userData});
    return EventHandlerRef{ref};
}

void HotkeyServiceX11::removeEventHandler(EventHandlerRef handler) {
    handlers_.erase(static_cast<std::uintptr_t>(handler));
}

std::optional<EventHotKeyRef> HotkeyServiceX11::registerEventHotKey(std::uint32_t keyCode,
                                                                    std::uint32_t modifiers,
                                                                    EventHotKeyId) {
    auto const keycode = Keymap::keycodeForVirtualKey(keyCode);
    // X takes keycode 0 for "every key".
    if (!keycode || *keycode == XCB_GRAB_ANY) return std::nullopt;
    Grab const wanted{*keycode, modifiers};
    if (!grab(wanted)) return std::nullopt;
    if (isSuspended()) { // held for a moment only to learn whether the system lets us
        ungrab(wanted);
        x_.flush();
    }
    auto const ref = nextRef_++;
    grabs_.emplace(ref, wanted);
    return EventHotKeyRef{ref};
}

void HotkeyServiceX11::unregisterEventHotKey(EventHotKeyRef hotKey) {
    auto const found = grabs_.find(static_cast<std::uintptr_t>(hotKey));
    if (found == grabs_.end()) return;
    ungrab(found->second);
    grabs_.erase(found);
    x_.flush();
}

Registration HotkeyServiceX11::suspend() {
    if (suspensions_++ == 0 && !isResuming_) {
        for (auto const& each : grabs_ | std::views::values) ungrab(each);
        x_.flush();
    }
    return Registration(lifetime_.whileItLasts([this] { endSuspension(); }));
}

void HotkeyServiceX11::endSuspension() {
    if (--suspensions_ > 0 || isResuming_) return;
    isResuming_ = true;
    resume();
}

void HotkeyServiceX11::resume() {
    // A grab that begins while its key is down takes the key's repetitions for presses.
    constexpr std::chrono::milliseconds kInterval{20};
    if (isAnyKeyDown()) {
        QTimer::singleShot(kInterval, lifetime_.whileItLasts([this] { resume(); }));
        return;
    }
    isResuming_ = false;
    if (isSuspended()) return;
    for (auto const& each : grabs_ | std::views::values) grab(each);
    x_.flush();
}

bool HotkeyServiceX11::isAnyKeyDown() const {
    auto const keys = x_.reply<xcb_query_keymap_reply>(xcb_query_keymap(x_.get()));
    return keys && std::ranges::any_of(grabs_ | std::views::values, [&keys](Grab const& each) {
               unsigned const eightKeys = keys->keys[each.keycode / 8U];
               return (eightKeys >> (each.keycode % 8U) & 1U) != 0;
           });
}

bool HotkeyServiceX11::grab(Grab const& grab) const {
    auto const state = modifierMap_.stateForCarbon(grab.carbonModifiers);
    std::vector<xcb_void_cookie_t> requests;
    for (auto const locks : modifierMap_.lockCombinations()) {
        requests.push_back(xcb_grab_key_checked(
            x_.get(), /*owner_events=*/0, x_.root(), static_cast<std::uint16_t>(state | locks),
            grab.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isGranted = true;
    for (auto const request : requests) isGranted = x_.succeeded(request) && isGranted;
    if (!isGranted) ungrab(grab);
    return isGranted;
}

void HotkeyServiceX11::ungrab(Grab const& grab) const {
    auto const state = modifierMap_.stateForCarbon(grab.carbonModifiers);
    for (auto const locks : modifierMap_.lockCombinations()) {
        xcb_ungrab_key(x_.get(), grab.keycode, x_.root(),
                       static_cast<std::uint16_t>(state | locks));
    }
}

void HotkeyServiceX11::followMapping() {
    isMappingStale_ = false;
    auto const map = readModifierMap(x_);
    if (map == modifierMap_) return;
    for (auto const& each : grabs_ | std::views::values) ungrab(each);
    modifierMap_ = map;
    if (isSuspended()) return;
    // A combination that somebody else holds in the new mapping stays registered without a grab and
    // gets another chance with the next change.
    for (auto const& each : grabs_ | std::views::values) grab(each);
}

bool HotkeyServiceX11::isHotKey(xcb_key_press_event_t const& press) const {
    if (isSuspended()) return false;
    auto const state = static_cast<std::uint16_t>(press.state & kModifierBits &
                                                  static_cast<unsigned>(~modifierMap_.locks()));
    for (auto const& each : grabs_ | std::views::values) {
        if (each.keycode == press.detail &&
            modifierMap_.stateForCarbon(each.carbonModifiers) == state) {
            return true;
        }
    }
    return false;
}

void HotkeyServiceX11::handle(xcb_generic_event_t const& event) {
    auto const type = eventType(event);
    if (type == XCB_KEY_PRESS) {
        handlePress(eventAs<xcb_key_press_event_t>(event));
    } else if (type == XCB_KEY_RELEASE) {
        auto const& release = eventAs<xcb_key_release_event_t>(event);
        if (held_ && held_->keycode == release.detail) held_->release = release.time;
    } else if (type == XCB_MAPPING_NOTIFY || (xkbEvent_ != 0 && type == xkbEvent_)) {
        isMappingStale_ = true;
    }
}

void HotkeyServiceX11::handlePress(xcb_key_press_event_t const& press) {
    if (!isHotKey(press)) return;
    bool const isHeld = isRepeat(press);
    held_ = HeldKey{press.detail, press.time, std::nullopt};
    if (!isHeld) callHandlers();
}

bool HotkeyServiceX11::isRepeat(xcb_key_press_event_t const& press) const {
    if (!held_ || held_->keycode != press.detail) return false;
    // Without detectable auto-repeat a repetition is a release and a press of the same moment.
    if (held_->release) return xkbEvent_ == 0 && *held_->release == press.time;
    // A release that went to somebody else was never seen; no repetition comes this late.
    constexpr xcb_timestamp_t kLongestRepeatDelay = 2000; // milliseconds
    return press.time - held_->lastPress < kLongestRepeatDelay;
}

void HotkeyServiceX11::keyboardWasReleased() {
    if (!held_ || held_->release) return;
    auto const keys = x_.reply<xcb_query_keymap_reply>(xcb_query_keymap(x_.get()));
    if (!keys) return;
    unsigned const eightKeys = keys->keys[held_->keycode / 8U];
    bool const isDown = (eightKeys >> (held_->keycode % 8U) & 1U) != 0;
    if (!isDown) held_.reset();
}

void HotkeyServiceX11::callHandlers() const {
    // The newest first, until one has handled it; a handler may change the list.
    auto const handlers = handlers_;
    for (auto const& each : handlers | std::views::values | std::views::reverse) {
        if (each.handler(each.userData) != kEventNotHandledErr) return;
    }
}

} // namespace trovel
