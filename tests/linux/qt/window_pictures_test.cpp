#include "platform/simulated/simulated_desktop.h"
#include "platform/ui/button.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/change_app_window_controller.h"
#include "setup_windows/hotkey_recorder_window_controller.h"
#include "setup_windows/onboarding_window_controller.h"
#include "setup_windows/permissions_window_controller.h"
#include "setup_windows/window_context.h"
#include "setup_windows/window_slots.h"
#include "tests/linux/qt/native_world.h"

#include "platform/linux/qt/qt_image.h"

#include <gtest/gtest.h>

#include <QPalette>
#include <QStyle>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace trovel {
namespace {

/// Icons as an installation without any chat application has them.
class SymbolsOnly final : public Icons {
public:
    [[nodiscard]] bool hasSystemSymbol(std::string_view) const override { return true; }
    [[nodiscard]] std::optional<ApplicationIcon> iconOfRunningApplication(RunningApplication const&,
                                                                          double) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfInstalledApplication(std::string_view identifier, double size) const override {
        if (identifier != "org.example.paint.desktop") return std::nullopt;
        QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(0xd0, 0x50, 0x30));
        return ApplicationIcon{{std::make_shared<QtImage const>(image), {size, size}}};
    }
};

/// Writes what every window looks like to build/pictures, for people to look at.
class WindowPictures : public testing::Test {
protected:
    ~WindowPictures() override { world.runPending(); }

    Platform platform() {
        auto all = desktop.platform();
        return {.application = all.application,
                .mainQueue = all.mainQueue,
                .worker = all.worker,
                .preferences = all.preferences,
                .pasteboard = all.pasteboard,
                .workspace = all.workspace,
                .scripts = all.scripts,
                .accessibility = all.accessibility,
                .events = all.events,
                .permissions = all.permissions,
                .screens = all.screens,
                .capturer = all.capturer,
                .hotkeys = all.hotkeys,
                .windows = world,
                .monitors = all.monitors,
                .cursors = all.cursors,
                .alerts = all.alerts,
                .statusBar = all.statusBar,
                .animator = world.animator,
                .icons = icons,
                .openPanels = all.openPanels,
                .files = all.files,
                .imageEncoder = all.imageEncoder,
                .wallClock = all.wallClock,
                .bundle = all.bundle,
                .process = all.process,
                .loginItem = all.loginItem,
                .updater = all.updater};
    }

    void write(std::string const& name) {
        auto const* const folder = std::getenv("TROVEL_PICTURES");
        std::filesystem::path const path = folder != nullptr ? folder : "pictures";
        std::filesystem::create_directories(path);
        for (bool const isDark : {false, true}) {
            setDark(isDark);
            for (int const scale : {1, 2}) {
                auto const file = path / (name + (isDark ? "-dark" : "-light") + "@" +
                                          std::to_string(scale) + "x.png");
                auto const image = NativeWorld::picture(world.latest->widget(), scale);
                EXPECT_FALSE(image.isNull());
                EXPECT_TRUE(image.save(QString::fromStdString(file.string())));
            }
        }
        setDark(false);
    }

    /// Lets what fades in reach its look.
    void letFadesEnd() {
        world.runUntil([begin = std::chrono::steady_clock::now()] {
            return std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(200);
        });
    }

    static void setDark(bool isDark) {
        QApplication::setPalette(appearancePalette(isDark));
        QCoreApplication::processEvents();
    }

    NativeWorld world;
    SimulatedDesktop desktop;
    SymbolsOnly icons;
    WindowSlots slots;
    WindowContext context{platform(), slots};
};

TEST_F(WindowPictures, Onboarding) {
    showOnboardingWindow(context);
    ASSERT_TRUE(slots.sharedOnboardingWindow);
    letFadesEnd();
    write("onboarding");
    auto const& content = *slots.sharedOnboardingWindow->window()->contentView();
    auto const card = std::ranges::find_if(content.subviews(), [](auto const& view) {
        return dynamic_cast<AppSelectorView*>(view.get()) != nullptr;
    });
    ASSERT_NE(card, content.subviews().end());
    auto const& selector = static_cast<AppSelectorView&>(**card);
    selector.cards()[2]->mouseEntered();
    selector.cards()[1]->mouseDown({});
    letFadesEnd();
    write("onboarding-chosen");
}

TEST_F(WindowPictures, ChangeApp) {
    desktop.preferences.store("customAppName", std::string("Paint"));
    desktop.preferences.store("customAppBundleID", std::string("org.example.paint.desktop"));
    desktop.preferences.store("preferredAIApp", std::string("Paint"));
    showChangeAppWindow(context);
    letFadesEnd();
    write("change-app");
}

TEST_F(WindowPictures, Permissions) {
    desktop.permissions.revoke(Permission::accessibility);
    desktop.permissions.revoke(Permission::screenRecording);
    showPermissionsWindow(context, {});
    write("permissions-missing");
    desktop.permissions.grant(Permission::accessibility);
    slots.sharedPermissionsWindow->openScreenRecording();
    desktop.queue.advance(std::chrono::seconds(1));
    write("permissions-restart");
    desktop.permissions.grant(Permission::screenRecording);
    desktop.queue.advance(std::chrono::seconds(1));
    write("permissions-granted");
}

TEST_F(WindowPictures, HotkeyRecorder) {
    showHotkeyRecorderWindow(context, {});
    write("hotkey-recorder");
    KeyEvent held;
    held.kind = KeyEvent::Kind::flagsChanged;
    held.modifierFlags = kFlagCommand | kFlagShift;
    slots.sharedHotkeyRecorderWindow->flagsChanged(held);
    write("hotkey-recorder-held");
    slots.sharedHotkeyRecorderWindow->keyDown({});
    write("hotkey-recorder-no-modifier");
}

} // namespace
} // namespace trovel
