#pragma once

#include "platform/application.h"

#import <AppKit/AppKit.h>

@class TrovelApplicationDelegate;

namespace trovel {

/// The shared application object. `terminate` ends the process inside `run`, which then does not
/// return: AppKit exits with status 0.
class ApplicationMac final : public Application {
public:
    /// Makes the program an accessory also when it runs outside a bundle.
    ApplicationMac();

    [[nodiscard]] bool environmentHas(std::string_view name) const override;
    void setDelegate(ApplicationDelegate* _Nullable delegate) override;
    void run() override;
    void terminate() override;
    void activate() override;
    void activateIgnoringOtherApps() override;

private:
    NSApplication* _Nonnull application_;
    TrovelApplicationDelegate* _Nullable delegate_ = nil; // AppKit holds it weakly
};

} // namespace trovel
