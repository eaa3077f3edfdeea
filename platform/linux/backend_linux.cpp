#include "platform/backend.h"

#include "platform/linux/applications/accessibility_linux.h"
#include "platform/linux/applications/application_groups.h"
#include "platform/linux/applications/script_runner_linux.h"
#include "platform/linux/applications/workspace_linux.h"
#include "platform/linux/files/file_system_linux.h"
#include "platform/linux/files/login_item_linux.h"
#include "platform/linux/files/preference_store_linux.h"
#include "platform/linux/files/user_folders.h"
#include "platform/linux/pictures/image_encoder_linux.h"
#include "platform/linux/qt/alerts_linux.h"
#include "platform/linux/qt/animator_linux.h"
#include "platform/linux/qt/appearance_linux.h"
#include "platform/linux/qt/icons_linux.h"
#include "platform/linux/qt/open_panels_linux.h"
#include "platform/linux/qt/window_host_linux.h"
#include "platform/linux/system/application_linux.h"
#include "platform/linux/system/bundle_info_linux.h"
#include "platform/linux/system/child_process.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/system/permissions_linux.h"
#include "platform/linux/system/process_host_linux.h"
#include "platform/linux/system/single_instance.h"
#include "platform/linux/system/updater_linux.h"
#include "platform/linux/system/wall_clock_linux.h"
#include "platform/linux/system/worker_linux.h"
#include "platform/linux/tray/status_bar_linux.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/cursors_x11.h"
#include "platform/linux/x11/event_pump.h"
#include "platform/linux/x11/event_synthesizer_x11.h"
#include "platform/linux/x11/hotkey_service_x11.h"
#include "platform/linux/x11/input_grab.h"
#include "platform/linux/x11/menu_rest_x11.h"
#include "platform/linux/x11/overlay/overlay_host.h"
#include "platform/linux/x11/overlay/screen_capturer_x11.h"
#include "platform/linux/x11/pasteboard_x11.h"
#include "platform/linux/x11/screens_x11.h"
#include "platform/linux/x11/session_grants_x11.h"
#include "platform/linux/x11/system_tray_x11.h"
#include "platform/linux/x11/window_source_x11.h"
#include "platform/linux/x11/xsettings.h"
#include "platform/ui/local_event_monitors.h"

#include <QSocketNotifier>
#include <QWidget>

#include <malloc.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <utility>

namespace trovel {

namespace {

/// Everything there is of this program on an X11 desktop, in the order in which one needs another.
class BackendLinux final : public Backend {
public:
    BackendLinux(std::unique_ptr<XcbConnection> connection, SingleInstance instance)
        : instance_(std::move(instance)), connection_(std::move(connection)) {
        connection_->setLostHandler([this] { application_.terminate(); });
        application_.setActivator([this] { windows_.bringForward(); });
        if (instance_.fileDescriptor() < 0) return;
        secondStarts_.emplace(instance_.fileDescriptor(), QSocketNotifier::Read);
        QObject::connect(&*secondStarts_, &QSocketNotifier::activated, &*secondStarts_, [this] {
            if (instance_.takeSecondStarts()) statusBar_.popUpMenu();
        });
    }

    ~BackendLinux() override {
        worker_.stop();
        mainQueue_.clear();
    }

    Platform platform() override {
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
    SingleInstance instance_;
    std::unique_ptr<XcbConnection> connection_;
    MainQueueLinux mainQueue_;
    ApplicationLinux application_{mainQueue_};
    XcbEventPump pump_{*connection_};
    WorkerLinux worker_;
    PreferenceStoreLinux preferences_;
    PasteboardX11 pasteboard_{*connection_};

    WindowSourceX11 windowSource_{*connection_};
    ApplicationGroups groups_{windowSource_, dataFolders(), getpid()};
    std::function<void()> followDesktop_ = [this] {
        followAppearance(readDesktopLook(*connection_));
    };
    WindowActivator activateWindow_ = [this](QWidget& window) {
        windowSource_.activate(static_cast<WindowId>(window.winId()));
    };
    AlertsLinux alerts_{followDesktop_, activateWindow_};
    SessionGrantsX11 grants_{*connection_};
    PermissionsLinux permissions_{[this] { return grants_.read(); },
                                  [this](Alert const& alert) { alerts_.show(alert); }};
    WorkspaceLinux workspace_{groups_, [this] { permissions_.explain(); }};
    ScriptRunnerLinux scripts_{groups_};
    AccessibilityLinux accessibility_{groups_};
    EventSynthesizerX11 events_{*connection_, [this] { return pasteboard_.lastWritten(); }};

    LocalEventMonitors monitors_;
    HotkeyServiceX11 hotkeys_{*connection_};
    ScreensX11 screens_{*connection_};
    InputGrab grab_{*connection_, mainQueue_};
    OverlayHost overlays_{*connection_, mainQueue_, hotkeys_, monitors_, grab_};
    AnimatorLinux animator_;
    WindowHostLinux windows_{[this](Window& window) { return overlays_.makePeer(window); },
                             {animator_, monitors_,
                              [this](std::uint32_t state) {
                                  return hotkeys_.modifierMap().flagsForState(
                                      static_cast<std::uint16_t>(state));
                              },
                              followDesktop_, activateWindow_}};
    IconsLinux icons_{groups_, dataFolders()};
    OpenPanelsLinux openPanels_{dataFolders(), followDesktop_, activateWindow_};
    CursorsX11 cursors_{*connection_, grab_};
    ScreenCapturerX11 capturer_{overlays_, worker_};

    FileSystemLinux files_;
    ImageEncoderLinux imageEncoder_;
    WallClockLinux wallClock_;
    BundleInfoLinux bundle_;
    ProcessHostLinux process_;
    LoginItemLinux loginItem_{autostartEntryPath(), ownProgram()};
    UpdaterLinux updater_{alerts_, ownProgram()};
    SystemTrayX11 systemTray_{*connection_};
    MenuRestX11 menuRest_{*connection_, mainQueue_, grab_};
    StatusBarLinux statusBar_{
        systemTray_,
        menuRest_,
        mainQueue_,
        {preferencesPath().parent_path(), autostartEntryPath().parent_path()}};
    std::optional<QSocketNotifier> secondStarts_;
};

} // namespace

std::expected<std::unique_ptr<Backend>, int> makeBackend() {
    // Fixed, since the library would raise it to the size of a picture: such memory is to go back
    // to the system when the picture goes.
    constexpr int kSeparateBytes = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, kSeparateBytes);

    auto connection = XcbConnection::open();
    auto const* const display = std::getenv("DISPLAY");
    if (!connection || display == nullptr) {
        std::fputs("trovel: There is no X server to connect to. Trovel needs an X11 desktop.\n",
                   stderr);
        return std::unexpected(1);
    }
    auto instance = SingleInstance::claim(display);
    if (!instance) return std::unexpected(0);
    return std::make_unique<BackendLinux>(std::move(connection), std::move(*instance));
}

} // namespace trovel
