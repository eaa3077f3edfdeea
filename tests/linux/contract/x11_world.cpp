#include "platform/alerts.h"
#include "platform/backend.h"
#include "platform/carbon_modifiers.h"
#include "platform/linux/files/preference_store_linux.h"
#include "platform/linux/pictures/captured_image.h"
#include "platform/linux/qt/window_peer_linux.h"
#include "platform/linux/qt/window_widget.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/keymap.h"
#include "platform/main_queue.h"
#include "platform/ui/window.h"
#include "platform/workspace.h"
#include "tests/contract/contract_world.h"
#include "tests/linux/contract/x11_program.h"
#include "tests/linux/support/private_x_server.h"
#include "tests/linux/support/scoped_environment.h"

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QWidget>
#include <QWindow>

#include <xcb/xtest.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

namespace trovel {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

/// A folder of its own for everything that the program keeps.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = fs::temp_directory_path() / "trovel-contract-XXXXXX";
        path_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() { fs::remove_all(path_); }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    [[nodiscard]] fs::path const& path() const { return path_; }

private:
    fs::path path_;
};

std::vector<std::uint32_t> pixelsOfPng(QByteArray const& png) {
    auto const image = QImage::fromData(png, "PNG").convertToFormat(QImage::Format_RGB32);
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) pixels.push_back(image.pixel(x, y) & 0xffffffU);
    }
    return pixels;
}

/// The Linux backend on an X server of its own, without a window manager.
class X11World final : public ContractWorld {
public:
    X11World() {
        fs::create_directories(applications());
        paintPattern();
        auto made = makeBackend();
        if (made) backend_ = std::move(*made);
    }

    [[nodiscard]] Platform platform() override { return backend_->platform(); }

    void wait(Duration duration) override {
        QEventLoop loop;
        platform().mainQueue.after(duration, [&loop] { loop.quit(); });
        loop.exec();
    }
    [[nodiscard]] bool waitUntil(std::function<bool()> const& predicate) override {
        constexpr int kTries = 5000;
        for (int i = 0; i < kTries; ++i) {
            if (predicate()) return true;
            wait(2ms);
        }
        return false;
    }

    void place(Window& window) override {
        auto const& frame = window.attributes().contentRect;
        for (auto* const widget : QApplication::topLevelWidgets()) {
            auto const* const native = dynamic_cast<WindowWidget*>(widget);
            if (native == nullptr || native->peer() == nullptr) continue;
            if (&native->peer()->window() != &window) continue;
            widget->move(static_cast<int>(frame.x), static_cast<int>(kHeight - frame.maxY()));
            // A window that asks for the keyboard before that gets it some time after.
            EXPECT_TRUE(waitUntil([widget] { return widget->windowHandle()->isExposed(); }));
        }
        QGuiApplication::sync();
    }

    void keyDown(KeyCode keyCode, EventFlags flags) override {
        for (auto const modifier : modifierKeys(flags)) key(modifier, XCB_KEY_PRESS);
        key(keyCode, XCB_KEY_PRESS);
    }
    void keyUp(KeyCode keyCode, EventFlags flags) override {
        key(keyCode, XCB_KEY_RELEASE);
        for (auto const modifier : modifierKeys(flags)) key(modifier, XCB_KEY_RELEASE);
    }
    void movePointer(Point point) override {
        fake(XCB_MOTION_NOTIFY, 0, static_cast<std::int16_t>(point.x),
             static_cast<std::int16_t>(kHeight - 1 - point.y));
    }
    void leftDown() override { fake(XCB_BUTTON_PRESS, 1); }
    void leftUp() override { fake(XCB_BUTTON_RELEASE, 1); }
    void rightClick() override {
        fake(XCB_BUTTON_PRESS, 3);
        fake(XCB_BUTTON_RELEASE, 3);
    }
    void closeAlertAfter(Duration duration) override {
        platform().mainQueue.after(duration, [this] {
            auto* const alert = QApplication::activeModalWidget();
            if (alert == nullptr) return closeAlertAfter(1ms);
            alert->close();
        });
    }

    RunningApplication startProgram(std::string const& name, Point position, Size size) override {
        auto const identity = name + std::to_string(++started_);
        std::ofstream(applications() / (identity + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=" << identity
            << "\nStartupWMClass=" << identity << '\n';
        auto program = std::make_unique<X11Program>(identity, position, size);
        auto application = *platform().workspace.frontmostApplication();
        programs_[application.processIdentifier] = std::move(program);
        return application;
    }
    void quitProgram(RunningApplication const& program) override {
        programs_.erase(program.processIdentifier);
        // The server has seen to it when it answers another client.
        static_cast<void>(user_->reply<xcb_get_input_focus_reply>(xcb_get_input_focus(user())));
        wait(20ms);
    }
    void bringToFront(RunningApplication const& program) override {
        programs_.at(program.processIdentifier)->bringToFront();
    }
    [[nodiscard]] ProgramReport report(RunningApplication const& program) override {
        return programs_.at(program.processIdentifier)->report();
    }
    void takeHotKeyElsewhere(std::uint32_t keyCode, std::uint32_t modifiers) override {
        std::uint16_t mask = 0;
        if ((modifiers & kCmdKey) != 0) mask |= XCB_MOD_MASK_CONTROL;
        if ((modifiers & kShiftKey) != 0) mask |= XCB_MOD_MASK_SHIFT;
        if ((modifiers & kOptionKey) != 0) mask |= XCB_MOD_MASK_1;
        if ((modifiers & kControlKey) != 0) mask |= XCB_MOD_MASK_4;
        EXPECT_TRUE(user_->succeeded(xcb_grab_key_checked(
            user(), 1, user_->root(), mask, Keymap::keycodeForVirtualKey(keyCode).value_or(0),
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    }

    void storePreference(std::string_view key, PreferenceValue const& value) override {
        PreferenceStoreLinux store;
        if (auto const* const flag = std::get_if<bool>(&value)) store.setBool(key, *flag);
        if (auto const* const number = std::get_if<std::int64_t>(&value)) {
            store.setInteger(key, *number);
        }
        if (auto const* const text = std::get_if<std::string>(&value)) store.setString(key, *text);
        if (auto const* const real = std::get_if<double>(&value)) {
            std::ofstream(preferencesPath(), std::ios::app) << key << '=' << *real << '\n';
        }
    }
    [[nodiscard]] PreferenceStore& laterPreferences() override { return later_; }
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> pastedPixels() override {
        std::atomic<bool> isDone = false;
        QByteArray png;
        std::thread reader([&] {
            auto* const pipe = popen("xclip -selection clipboard -o -t image/png 2>/dev/null", "r");
            for (int byte = fgetc(pipe); byte != EOF; byte = fgetc(pipe)) {
                png.append(static_cast<char>(byte));
            }
            pclose(pipe);
            isDone = true;
        });
        EXPECT_TRUE(waitUntil([&] { return isDone.load(); }));
        reader.join();
        if (png.isEmpty()) return std::nullopt;
        return pixelsOfPng(png);
    }

    [[nodiscard]] std::vector<std::uint32_t> pixelsOf(PixelImage const& image) override {
        // Only what is cropped out of a display's picture has left the server.
        auto const whole = image.croppedTo({0, 0, static_cast<double>(image.widthPixels()),
                                            static_cast<double>(image.heightPixels())});
        auto const& captured = dynamic_cast<CapturedImage const&>(*whole);
        auto const png = captured.pngData();
        return pixelsOfPng(QByteArray(reinterpret_cast<char const*>(png->data()),
                                      static_cast<qsizetype>(png->size())));
    }
    [[nodiscard]] std::vector<std::uint32_t> displayPixels(PixelRect const& rect) override {
        auto const image = user_->reply<xcb_get_image_reply>(xcb_get_image(
            user(), XCB_IMAGE_FORMAT_Z_PIXMAP, user_->root(), static_cast<std::int16_t>(rect.x),
            static_cast<std::int16_t>(rect.y), static_cast<std::uint16_t>(rect.width),
            static_cast<std::uint16_t>(rect.height), ~0U));
        auto const* const data =
            reinterpret_cast<std::uint32_t const*>(xcb_get_image_data(image.get()));
        std::vector<std::uint32_t> pixels(data, data + rect.width * rect.height);
        for (auto& pixel : pixels) pixel &= 0xffffffU;
        return pixels;
    }

private:
    [[nodiscard]] xcb_connection_t* user() const { return user_->get(); }
    [[nodiscard]] fs::path applications() const { return folder_.path() / "data/applications"; }

    static std::vector<KeyCode> modifierKeys(EventFlags flags) {
        constexpr KeyCode kCommand = 55;
        constexpr KeyCode kShift = 56;
        constexpr KeyCode kOption = 58;
        constexpr KeyCode kControl = 59;
        std::vector<KeyCode> keys;
        if ((flags & kFlagCommand) != 0) keys.push_back(kCommand);
        if ((flags & kFlagShift) != 0) keys.push_back(kShift);
        if ((flags & kFlagOption) != 0) keys.push_back(kOption);
        if ((flags & kFlagControl) != 0) keys.push_back(kControl);
        return keys;
    }
    void key(KeyCode keyCode, std::uint8_t type) {
        fake(type, Keymap::keycodeForVirtualKey(keyCode).value_or(0));
    }
    void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0) {
        EXPECT_TRUE(user_->succeeded(xcb_test_fake_input_checked(
            user(), type, detail, XCB_CURRENT_TIME, user_->root(), x, y, 0)));
    }

    /// Colours that tell every place of the root window, in blocks of a pixel.
    void paintPattern() {
        auto const pixmap = xcb_generate_id(user());
        auto const context = xcb_generate_id(user());
        xcb_create_pixmap(user(), user_->screen().root_depth, pixmap, user_->root(), kWidth,
                          kHeight);
        xcb_create_gc(user(), context, pixmap, 0, nullptr);
        for (int y = 0; y < kHeight; ++y) {
            std::vector<std::uint32_t> row;
            for (int x = 0; x < kWidth; ++x) {
                row.push_back(static_cast<std::uint32_t>(y * kWidth + x) * 7U & 0xffffffU);
            }
            xcb_put_image(user(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, kWidth, 1, 0,
                          static_cast<std::int16_t>(y), 0, user_->screen().root_depth, kWidth * 4,
                          reinterpret_cast<std::uint8_t const*>(row.data()));
        }
        xcb_change_window_attributes(user(), user_->root(), XCB_CW_BACK_PIXMAP, &pixmap);
        EXPECT_TRUE(user_->succeeded(
            xcb_clear_area_checked(user(), 0, user_->root(), 0, 0, kWidth, kHeight)));
    }

    PrivateXServer server_{
        {"-screen", "0", std::to_string(kWidth) + 'x' + std::to_string(kHeight) + "x24"}};
    TemporaryFolder folder_;
    ScopedEnvironment display_{"DISPLAY", server_.display().c_str()};
    ScopedEnvironment configuration_{"XDG_CONFIG_HOME", (folder_.path() / "config").c_str()};
    ScopedEnvironment data_{"XDG_DATA_HOME", (folder_.path() / "data").c_str()};
    ScopedEnvironment wayland_{"WAYLAND_DISPLAY", nullptr};
    ScopedEnvironment session_{"XDG_SESSION_TYPE", nullptr};
    std::unique_ptr<XcbConnection> user_ = XcbConnection::open();
    PreferenceStoreLinux later_;
    std::unique_ptr<Backend> backend_;
    std::map<std::int32_t, std::unique_ptr<X11Program>> programs_;
    int started_ = 0;
};

} // namespace

std::unique_ptr<ContractWorld> makeContractWorld() {
    return std::make_unique<X11World>();
}

} // namespace trovel
