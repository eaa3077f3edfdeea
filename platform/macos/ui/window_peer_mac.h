#pragma once

#include "platform/geometry.h"
#include "platform/ui/window_host.h"

#import <AppKit/AppKit.h>

#include <map>
#include <optional>

@class TrovelView;
@class TrovelWindow;

namespace trovel {

/// Mirrors one window and its tree into AppKit.
class WindowPeerMac final : public WindowPeer {
public:
    explicit WindowPeerMac(Window& window);
    ~WindowPeerMac() override;

    void windowDidChange() override;
    void viewDidChange(View const& view) override;
    void viewNeedsDisplay(View const& view) override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    void center() override;

private:
    using Mirrors = std::map<View const*, TrovelView*>;

    void mirrorContent();
    TrovelView* _Nonnull mirror(View& view, Mirrors& former);

    Window& window_;
    TrovelWindow* _Nonnull native_;
    std::optional<Rect> contentRect_; // as last mirrored: the user may have moved the window since
    Mirrors mirrors_;                 // of the views that are in the tree now
};

} // namespace trovel
