#include "platform/linux/x11/overlay/overlay_host.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/hotkey_service_x11.h"
#include "platform/linux/x11/keymap.h"
#include "platform/linux/x11/overlay/overlay_peer.h"
#include "platform/linux/x11/properties.h"
#include "platform/linux/x11/root_pixels.h"
#include "platform/ui/local_event_monitors.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

namespace trovel {

namespace {

constexpr xcb_button_t kLeftButton = 1;
constexpr xcb_button_t kRightButton = 3;

// As long as an overlay may be up at the most: nobody waits for this program after that.
constexpr std::chrono::seconds kSnapshotMemoryKept{30};

/// The virtual key codes of the modifier keys stand together (HIToolbox Events.h).
bool isModifierKey(KeyCode keyCode) {
    constexpr KeyCode kFirst = 54;
    constexpr KeyCode kLast = 63;
    return keyCode >= kFirst && keyCode <= kLast;
}

} // namespace

OverlayHost::OverlayHost(XcbConnection& x, MainQueue& mainQueue, HotkeyServiceX11& hotkeys,
                         LocalEventMonitors& monitors, InputGrab& grab)
    : x_(x), mainQueue_(mainQueue), hotkeys_(hotkeys), monitors_(monitors), grab_(grab), render_(x),
      events_(x.addEventHandler([this](xcb_generic_event_t const& event) { handle(event); })),
      batches_(x.addBatchHandler([this] { finishBatch(); })) {
    // A session that cannot have the pointer ends as if the user had given it up.
    grab_.setRefusedHandler([this] { deliverKey({KeyEvent::Kind::keyDown, kKeyEscape, 0}); });
}

OverlayHost::~OverlayHost() {
    grab_.setRefusedHandler(nullptr);
}

void OverlayHost::beginSession() {
    ++sessions_;
    grab_.begin();
    if (sessions_ > 1 || isShowing()) return;
    unusedSnapshot_.reset();
    if (snapshot_) {
        snapshot_->retake();
    } else {
        snapshot_ = std::make_unique<Snapshot>(x_);
    }
}

Snapshot const* OverlayHost::snapshot() const {
    return sessions_ > 0 || isShowing() ? snapshot_.get() : nullptr;
}

void OverlayHost::endSession() {
    --sessions_;
    if (sessions_ > 0) return;
    for (auto const window : std::exchange(leaving_, {})) takeAway(window);
    if (!isShowing()) releaseInput();
    dropUnneeded();
}

std::unique_ptr<WindowPeer> OverlayHost::makePeer(Window& window) {
    return std::make_unique<OverlayPeer>(*this, window);
}

void OverlayHost::attach(OverlayPeer& peer) {
    peers_.push_back(&peer);
}

void OverlayHost::detach(OverlayPeer& peer) {
    std::erase(peers_, &peer);
    if (keyPeer_ == &peer) keyPeer_ = nullptr;
    if (pressedPeer_ == &peer) pressedPeer_ = nullptr;
}

void OverlayHost::makeKey(OverlayPeer* peer) {
    auto* const before = std::exchange(keyPeer_, peer);
    if (before == peer) return;
    if (before != nullptr) before->window().receiveKeyState(false);
    if (peer != nullptr) peer->window().receiveKeyState(true);
}

// Without it everybody paints the desktop anew, which keeps the server from anything else for a
// while. In a session that waits for its end: the picture is read before.
void OverlayHost::takeAway(xcb_window_t window) {
    if (sessions_ > 0) {
        leaving_.push_back(window);
        return;
    }
    xcb_destroy_window(x_.get(), window);
    x_.flush();
}

void OverlayHost::peerDidHide() {
    if (keyPeer_ != nullptr && !keyPeer_->isShown()) makeKey(nullptr);
    if (pressedPeer_ != nullptr && !pressedPeer_->isShown()) pressedPeer_ = nullptr;
    if (isShowing()) return;
    motion_.reset();
    releaseInput();
    dropUnneeded();
}

void OverlayHost::releaseInput() {
    if (!grab_.isWanted()) return;
    grab_.end();
    hotkeys_.keyboardWasReleased();
}

void OverlayHost::dropUnneeded() {
    if (sessions_ > 0 || isShowing()) return;
    // Kept for a while: fresh memory costs the server more time than the picture itself.
    auto const& unused = unusedSnapshot_.emplace();
    mainQueue_.after(kSnapshotMemoryKept, unused.whileItLasts([this] { snapshot_.reset(); }));
}

bool OverlayHost::hasCompositor() {
    auto const manager = "_NET_WM_CM_S" + std::to_string(x_.screenNumber());
    return selectionOwner(x_, manager) != XCB_WINDOW_NONE;
}

void OverlayHost::schedulePainting() {
    if (isInBatch_ || scheduledPainting_) return;
    auto const& scheduled = scheduledPainting_.emplace();
    mainQueue_.post(scheduled.whileItLasts([this] { paint(); }));
}

TextRasterizer& OverlayHost::rasterizer(double scale) {
    auto& known = rasterizers_[scale];
    if (!known) known = std::make_unique<TextRasterizer>(scale);
    return *known;
}

bool OverlayHost::isShowing() const {
    return std::ranges::any_of(peers_, &OverlayPeer::isShown);
}

OverlayPeer* OverlayHost::peerUnder(int rootX, int rootY) const {
    for (auto* const peer : peers_) {
        if (!peer->isShown()) continue;
        auto const& area = peer->monitor()->area;
        if (!intersection(area, {rootX, rootY, 1, 1}).isEmpty()) return peer;
    }
    return nullptr;
}

void OverlayHost::handle(xcb_generic_event_t const& event) {
    if (!isShowing()) return;
    isInBatch_ = true;
    switch (eventType(event)) {
    case XCB_MOTION_NOTIFY: {
        // Only the newest place counts; it is delivered when all that has arrived is read.
        auto const& motion = eventAs<xcb_motion_notify_event_t>(event);
        motion_ = PointerMotion{motion.root_x, motion.root_y, motion.state};
        return;
    }
    case XCB_KEY_PRESS: handleKey(eventAs<xcb_key_press_event_t>(event)); return;
    case XCB_BUTTON_PRESS: handlePress(eventAs<xcb_button_press_event_t>(event)); return;
    case XCB_BUTTON_RELEASE: handleRelease(eventAs<xcb_button_release_event_t>(event)); return;
    case XCB_EXPOSE: {
        auto const& expose = eventAs<xcb_expose_event_t>(event);
        for (auto* const peer : peers_) {
            if (peer->nativeWindow() == expose.window) peer->exposed(expose);
        }
        return;
    }
    default: return;
    }
}

void OverlayHost::handleKey(xcb_key_press_event_t const& press) {
    deliverMotion();
    if (hotkeys_.isHotKey(press)) return;
    auto const keyCode = Keymap::virtualKeyForKeycode(press.detail);
    if (!keyCode) return;
    auto const kind =
        isModifierKey(*keyCode) ? KeyEvent::Kind::flagsChanged : KeyEvent::Kind::keyDown;
    deliverKey({kind, *keyCode, hotkeys_.modifierMap().flagsForState(press.state)});
}

void OverlayHost::handlePress(xcb_button_press_event_t const& press) {
    deliverMotion();
    auto* const peer = peerUnder(press.root_x, press.root_y);
    if (peer == nullptr) return;
    PointerMotion const at{press.root_x, press.root_y, press.state};
    if (press.detail == kLeftButton) {
        pressedPeer_ = peer;
        if (peer->window().canBecomeKey()) makeKey(peer);
        deliverMouse(*peer, MouseEvent::Kind::leftDown, at);
    } else if (press.detail == kRightButton) {
        deliverMouse(*peer, MouseEvent::Kind::rightDown, at);
    }
}

void OverlayHost::handleRelease(xcb_button_release_event_t const& release) {
    if (release.detail != kLeftButton) return;
    deliverMotion();
    if (auto* const peer = std::exchange(pressedPeer_, nullptr)) {
        deliverMouse(*peer, MouseEvent::Kind::leftUp,
                     {release.root_x, release.root_y, release.state});
    }
}

void OverlayHost::deliverMotion() {
    auto const motion = std::exchange(motion_, std::nullopt);
    if (!motion || pressedPeer_ == nullptr) return;
    deliverMouse(*pressedPeer_, MouseEvent::Kind::leftDragged, *motion);
}

void OverlayHost::deliverMouse(OverlayPeer& peer, MouseEvent::Kind kind, PointerMotion const& at) {
    peer.window().receive(MouseEvent{kind, pointInMonitor(*peer.monitor(), at.rootX, at.rootY),
                                     hotkeys_.modifierMap().flagsForState(at.state)});
}

void OverlayHost::deliverKey(KeyEvent const& event) {
    if (event.kind == KeyEvent::Kind::keyDown && monitors_.swallows(event)) return;
    if (keyPeer_ != nullptr) keyPeer_->window().receive(event);
}

void OverlayHost::finishBatch() {
    if (!std::exchange(isInBatch_, false)) return;
    deliverMotion();
    paint();
}

void OverlayHost::paint() {
    scheduledPainting_.reset();
    for (auto* const peer : peers_) peer->paintIfNeeded();
    x_.flush();
}

} // namespace trovel
