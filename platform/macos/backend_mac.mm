#include "platform/backend.h"

#include "platform/macos/accessibility_mac.h"
#include "platform/macos/alerts_mac.h"
#include "platform/macos/application_mac.h"
#include "platform/macos/bundle_info_mac.h"
#include "platform/macos/event_synthesizer_mac.h"
#include "platform/macos/file_system_mac.h"
#include "platform/macos/hotkey_service_mac.h"
#include "platform/macos/image_encoder_mac.h"
#include "platform/macos/login_item_mac.h"
#include "platform/macos/main_queue_mac.h"
#include "platform/macos/open_panels_mac.h"
#include "platform/macos/pasteboard_mac.h"
#include "platform/macos/permissions_mac.h"
#include "platform/macos/preference_store_mac.h"
#include "platform/macos/process_host_mac.h"
#include "platform/macos/screen_capturer_mac.h"
#include "platform/macos/screens_mac.h"
#include "platform/macos/script_runner_mac.h"
#include "platform/macos/ui/animator_mac.h"
#include "platform/macos/ui/cursors_mac.h"
#include "platform/macos/ui/event_monitors_mac.h"
#include "platform/macos/ui/icons_mac.h"
#include "platform/macos/ui/status_bar_mac.h"
#include "platform/macos/ui/window_host_mac.h"
#include "platform/macos/updater_mac.h"
#include "platform/macos/wall_clock_mac.h"
#include "platform/macos/worker_mac.h"
#include "platform/macos/workspace_mac.h"

namespace trovel {

namespace {

class BackendMac final : public Backend {
public:
    [[nodiscard]] Platform platform() override {
        return {.application = application_,
                .mainQueue = mainQueue_,
                .worker = worker_,
                .preferences = preferences_,
                .pasteboard = pasteboard_,
                .workspace = workspace_,
                .scripts = scripts_,
                .accessibility = accessibility_,
                .events = events_,
                .permissions = permissions_,
                .screens = screens_,
                .capturer = capturer_,
                .hotkeys = hotkeys_,
                .windows = windows_,
                .monitors = monitors_,
                .cursors = cursors_,
                .alerts = alerts_,
                .statusBar = statusBar_,
                .animator = animator_,
                .icons = icons_,
                .openPanels = openPanels_,
                .files = files_,
                .imageEncoder = imageEncoder_,
                .wallClock = wallClock_,
                .bundle = bundle_,
                .process = process_,
                .loginItem = loginItem_,
                .updater = updater_};
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
    HotkeyServiceMac hotkeys_{mainQueue_};
    WindowHostMac windows_;
    EventMonitorsMac monitors_;
    CursorsMac cursors_;
    AlertsMac alerts_;
    StatusBarMac statusBar_;
    AnimatorMac animator_;
    IconsMac icons_;
    OpenPanelsMac openPanels_;
    FileSystemMac files_;
    ImageEncoderMac imageEncoder_;
    WallClockMac wallClock_;
    BundleInfoMac bundle_;
    ProcessHostMac process_;
    LoginItemMac loginItem_;
    UpdaterMac updater_;
};

} // namespace

std::expected<std::unique_ptr<Backend>, int> makeBackend() {
    return std::make_unique<BackendMac>();
}

} // namespace trovel
