#pragma once

#include "platform/ui/window_host.h"

#import <AppKit/AppKit.h>

#include <map>

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

private:
    using Mirrors = std::map<View const*, TrovelView*>;

    void mirrorContent();
    TrovelView* _Nonnull mirror(View const& view, Mirrors const& former);

    Window& window_;
    TrovelWindow* _Nonnull native_;
    Mirrors mirrors_; // of the views that are in the tree now
};

} // namespace trovel
