#pragma once

#include "platform/linux/qt/animator_linux.h"
#include "platform/linux/qt/window_host_linux.h"
#include "platform/linux/system/main_queue_linux.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/cursors_x11.h"
#include "platform/linux/x11/hotkey_service_x11.h"
#include "platform/linux/x11/input_grab.h"
#include "platform/linux/x11/overlay/overlay_host.h"
#include "platform/linux/x11/overlay/screen_capturer_x11.h"
#include "platform/linux/x11/screens_x11.h"
#include "platform/ui/local_event_monitors.h"
#include "platform/worker.h"
#include "tests/linux/support/other_program.h"

#include <QGuiApplication>

#include <poll.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace trovel {

/// A Qt application without a window system, for what only needs fonts.
class QtFonts {
private:
    std::array<char, 7> name_{"trovel"};
    std::array<char, 10> platform_{"-platform"};
    std::array<char, 10> offscreen_{"offscreen"};
    std::array<char*, 4> arguments_{name_.data(), platform_.data(), offscreen_.data(), nullptr};
    int count_ = 3;
    QGuiApplication application_{count_, arguments_.data()};
};

/// Tasks that wait until the test runs them.
class HeldWorker final : public Worker {
public:
    ~HeldWorker() = default;
    void run(Task task) override { tasks_.push_back(std::move(task)); }
    [[nodiscard]] std::size_t count() const { return tasks_.size(); }
    void runAll() {
        for (auto const& task : std::exchange(tasks_, {})) task();
    }

private:
    std::vector<Task> tasks_;
};

/// A queue for what happens now, in which a block of half a minute or more from now waits until the
/// test lets it run.
class ImpatientQueue final : public MainQueue {
public:
    explicit ImpatientQueue(MainQueueLinux& now) : now_(now) {}
    ~ImpatientQueue() = default;
    void post(Block block) override { now_.post(std::move(block)); }
    void after(Duration delay, Block block) override {
        if (delay >= std::chrono::seconds(30)) {
            late_.emplace_back(delay, std::move(block));
        } else {
            now_.after(delay, std::move(block));
        }
    }
    Registration every(Duration interval, Block block) override {
        return now_.every(interval, std::move(block));
    }
    /// Lets the blocks run that wait for at most that long.
    void runLate(Duration delay) {
        for (auto const& [due, block] : std::exchange(late_, {})) {
            if (due <= delay) {
                block();
            } else {
                late_.emplace_back(due, block);
            }
        }
    }

private:
    MainQueueLinux& now_;
    std::vector<std::pair<Duration, Block>> late_;
};

/// The parts of the backend that an overlay is made of, on a connection to the display of the test.
struct FrozenDesktop {
    std::unique_ptr<XcbConnection> x = XcbConnection::open();
    MainQueueLinux queue;
    HeldWorker worker;
    LocalEventMonitors monitors;
    HotkeyServiceX11 hotkeys{*x};
    InputGrab grab{*x, queue};
    ImpatientQueue impatientQueue{queue};
    OverlayHost overlays{*x, impatientQueue, hotkeys, monitors, grab};
    CursorsX11 cursors{*x, grab};
    ScreensX11 screens{*x};
    ScreenCapturerX11 capturer{overlays, worker};
    AnimatorLinux animator;
    WindowHostLinux windows{
        [this](Window& window) { return overlays.makePeer(window); },
        {animator, monitors, [](std::uint32_t) { return EventFlags{0}; }, [] {}, [](QWidget&) {}}};

    /// Does what has arrived and what is due, the way an event loop would.
    void turn() {
        x->processEvents();
        queue.runDue();
        x->processQueuedEvents();
        x->flush();
    }

    /// Turns until the condition holds; false when it did not within five seconds.
    [[nodiscard]] bool turnsUntil(std::function<bool()> const& condition) {
        return OtherProgram::eventually([&] {
            turn();
            return condition();
        });
    }

    /// Turns until nothing arrives any more that the server knew of when this was called.
    void settle() {
        for (int i = 0; i < 3; ++i) {
            turn();
            static_cast<void>(x->reply<xcb_get_input_focus_reply>(xcb_get_input_focus(x->get())));
            turn();
        }
    }
};

} // namespace trovel
