#pragma once

#include "platform/screen_capturer.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_permissions.h"
#include "platform/simulated/simulated_screens.h"
#include "platform/simulated/simulated_window_host.h"
#include "platform/simulated/simulated_worker.h"

namespace trovel {

/// Takes pictures of the simulated displays as they are at that moment: with Trovel's own windows
/// where they are up, and with the pointer where it is asked for.
class SimulatedScreenCapturer final : public ScreenCapturer {
public:
    struct World {
        Journal& journal;
        Faults& faults;
        SimulatedWorker const& worker;
        SimulatedPermissions const& permissions;
        SimulatedScreens const& screens;
        SimulatedWindowHost const& windows;
    };

    explicit SimulatedScreenCapturer(World world) : world_(world) {}
    ~SimulatedScreenCapturer() = default;

    void sessionWillBegin() override;
    void sessionDidEnd() override;
    [[nodiscard]] Result<std::vector<CaptureDisplay>> shareableDisplays() override;
    [[nodiscard]] Result<std::shared_ptr<PixelImage const>>
    captureImage(CaptureDisplay const& display, StreamConfiguration const& configuration) override;

    /// Where the user's pointer is, in global screen points.
    void setPointer(Point pointer) { pointer_ = pointer; }

    /// Sessions that have begun and not ended.
    [[nodiscard]] int openSessions() const { return openSessions_; }

private:
    World world_;
    Point pointer_;
    int openSessions_ = 0;
};

} // namespace trovel
