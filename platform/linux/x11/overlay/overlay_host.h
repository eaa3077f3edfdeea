#pragma once

#include "platform/lifetime.h"
#include "platform/linux/qt/text_rasterizer.h"
#include "platform/linux/x11/input_grab.h"
#include "platform/linux/x11/overlay/render.h"
#include "platform/linux/x11/overlay/snapshot.h"
#include "platform/main_queue.h"
#include "platform/registration.h"
#include "platform/ui/events.h"

#include <xcb/xcb.h>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace trovel {

class HotkeyServiceX11;
class LocalEventMonitors;
class OverlayPeer;
class Window;
class WindowPeer;
class XcbConnection;

/// The frozen desktop: while a selection session lasts, a picture of all screens stands in for the
/// screens themselves, one override-redirect window over each shows its part of the picture with
/// the overlay painted on it, and keyboard and pointer belong to these windows. Since the picture
/// is taken before any of them is there, none can be in it. A window that is ordered out gives up
/// its input at once and its place on the screen when the session ends. Main thread only.
class OverlayHost {
public:
    /// What is handed in outlives it.
    OverlayHost(XcbConnection& x, MainQueue& mainQueue, HotkeyServiceX11& hotkeys,
                LocalEventMonitors& monitors, InputGrab& grab);
    OverlayHost(OverlayHost const&) = delete;
    OverlayHost& operator=(OverlayHost const&) = delete;
    ~OverlayHost();

    /// Takes the picture and asks for keyboard and pointer. Sessions may overlap: the picture is
    /// that of the first one and lasts until the last one ends.
    void beginSession();
    void endSession();

    /// The picture of the running session; null outside of one.
    [[nodiscard]] Snapshot const* snapshot() const;

    /// A mirror of an overlay window, whose content view is a canvas over a whole screen.
    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window);

private:
    friend class OverlayPeer;

    struct PointerMotion {
        int rootX = 0;
        int rootY = 0;
        std::uint16_t state = 0;
    };

    // For the peers.
    void attach(OverlayPeer& peer);
    void detach(OverlayPeer& peer);
    void makeKey(OverlayPeer* peer);
    void takeAway(xcb_window_t window);
    void peerDidHide();
    void schedulePainting();
    TextRasterizer& rasterizer(double scale);

    void handle(xcb_generic_event_t const& event);
    void handleKey(xcb_key_press_event_t const& press);
    void handlePress(xcb_button_press_event_t const& press);
    void handleRelease(xcb_button_release_event_t const& release);
    void deliverMotion();
    void deliverKey(KeyEvent const& event);
    void deliverMouse(OverlayPeer& peer, MouseEvent::Kind kind, PointerMotion const& at);
    void finishBatch();
    void paint();
    void releaseInput();
    void dropUnneeded();
    [[nodiscard]] OverlayPeer* peerUnder(int rootX, int rootY) const;
    [[nodiscard]] bool isShowing() const;
    [[nodiscard]] bool hasCompositor();

    XcbConnection& x_;
    MainQueue& mainQueue_;
    HotkeyServiceX11& hotkeys_;
    LocalEventMonitors& monitors_;
    InputGrab& grab_;
    XcbRender render_;
    int sessions_ = 0;
    std::unique_ptr<Snapshot> snapshot_;
    std::optional<Lifetime> unusedSnapshot_; // until the picture is wanted again
    std::map<double, std::unique_ptr<TextRasterizer>> rasterizers_;
    std::vector<OverlayPeer*> peers_;
    std::vector<xcb_window_t> leaving_; // go when the session ends
    OverlayPeer* keyPeer_ = nullptr;
    OverlayPeer* pressedPeer_ = nullptr;
    std::optional<PointerMotion> motion_; // the newest that has not been delivered
    bool isInBatch_ = false;
    std::optional<Lifetime> scheduledPainting_; // set while a turn of the main loop is to paint
    Registration events_;
    Registration batches_;
};

} // namespace trovel
