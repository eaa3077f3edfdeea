#include "platform/backend.h"

#include "platform/macos/accessibility_mac.h"
#include "platform/macos/alerts_mac.h"
#include "platform/macos/application_mac.h"
#include "platform/macos/cursors_mac.h"
#include "platform/macos/event_synthesizer_mac.h"
#include "platform/macos/hotkey_service_mac.h"
#include "platform/macos/main_queue_mac.h"
#include "platform/macos/pasteboard_mac.h"
#include "platform/macos/permissions_mac.h"
#include "platform/macos/preference_store_mac.h"
#include "platform/macos/screen_capturer_mac.h"
#include "platform/macos/screens_mac.h"
#include "platform/macos/script_runner_mac.h"
#include "platform/macos/ui/event_monitors_mac.h"
#include "platform/macos/ui/window_host_mac.h"
#include "platform/macos/worker_mac.h"
#include "platform/macos/workspace_mac.h"

namespace trovel {

namespace {

class BackendMac final : public Backend {
public:
    [[nodiscard]] Platform platform() override {
        return {application_, mainQueue_,     worker_,   preferences_, pasteboard_, workspace_,
                scripts_,     accessibility_, events_,   permissions_, screens_,    capturer_,
                hotkeys_,     windows_,       monitors_, cursors_,     alerts_};
    }

private:
    ApplicationMac application_;
    MainQueueMac mainQueue_;
    WorkerMac worker_;
    PreferenceStoreMac preferences_;
    PasteboardMac pasteboard_;
    WorkspaceMac workspace_;
    ScriptRunnerMac scripts_;
    AccessibilityMac accessibility_;
    EventSynthesizerMac events_;
    PermissionsMac permissions_;
    ScreensMac screens_;
    ScreenCapturerMac capturer_;
    HotkeyServiceMac hotkeys_;
    WindowHostMac windows_;
    EventMonitorsMac monitors_;
    CursorsMac cursors_;
    AlertsMac alerts_;
};

} // namespace

std::expected<std::unique_ptr<Backend>, int> makeBackend() {
    return std::make_unique<BackendMac>();
}

} // namespace trovel
