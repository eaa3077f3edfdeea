// probe: one X client that presses, drags and clocks what the X server sees.
//
//   probe overlay  --trigger key:Ctrl+Shift+2 | click:X,Y | command:TEXT  [--drag
//   X0,Y0,X1,Y1,MOTIONS,MS]
//                  [--clipboard] [--file FOLDER] [--confirm KEYS] [--cancel]
//                  [--ready painted|cursor|settled] [--cpu NAME=PID]...
//   probe grabbed  --key Ctrl+Shift+2 -- COMMAND ARGUMENTS...
//
// The answer is one JSON object on standard output; times are milliseconds. Everything is measured
// by one clock in this process, so no time stamps of different processes are compared.

#include <X11/keysym.h>
#include <xcb/damage.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <map>
#include <memory>
#include <optional>
#include <poll.h>
#include <span>
#include <string>
#include <string_view>
#include <sys/inotify.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

struct Free {
    void operator()(void* pointer) const { std::free(pointer); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

[[noreturn]] void die(std::string const& what) {
    std::fprintf(stderr, "probe: %s\n", what.c_str());
    std::exit(2);
}

double nowMs() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

void waitMs(double ms) {
    if (ms <= 0) return;
    timespec time{};
    time.tv_sec = static_cast<time_t>(ms / 1e3);
    time.tv_nsec = static_cast<long>((ms - 1e3 * static_cast<double>(time.tv_sec)) * 1e6);
    nanosleep(&time, nullptr);
}

/// CPU time of another process in milliseconds, finished threads included; 0 when it is gone.
double cpuMs(pid_t process) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) return 0;
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double median(std::vector<double> values) {
    if (values.empty()) return -1;
    std::ranges::sort(values);
    return values[values.size() / 2];
}

double percentile95(std::vector<double> values) {
    if (values.empty()) return -1;
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(static_cast<double>(values.size()) * 0.95)];
}

/// A JSON object that is printed when it is complete.
class Report {
public:
    void number(std::string const& name, double value) {
        char text[64];
        std::snprintf(text, sizeof text, "%.3f", value);
        add(name, text);
    }
    void whole(std::string const& name, long value) { add(name, std::to_string(value)); }
    void print() const { std::printf("{%s}\n", body_.c_str()); }

private:
    void add(std::string const& name, std::string const& value) {
        if (!body_.empty()) body_ += ", ";
        body_ += "\"" + name + "\": " + value;
    }
    std::string body_;
};

/// The X display: its connection, input synthesis and requests that the measurements share.
class Display {
public:
    Display() {
        int number = 0;
        connection_ = xcb_connect(nullptr, &number);
        if (xcb_connection_has_error(connection_) != 0) die("cannot connect to the display");
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
        for (; number > 0; --number) xcb_screen_next(&screens);
        screen_ = screens.data;
        symbols_ = xcb_key_symbols_alloc(connection_);
        damageEvent_ = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event;
        fixesEvent_ = xcb_get_extension_data(connection_, &xcb_xfixes_id)->first_event;
        Reply<void>(xcb_damage_query_version_reply(
            connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
        Reply<void>(xcb_xfixes_query_version_reply(
            connection_, xcb_xfixes_query_version(connection_, 5, 0), nullptr));
    }
    Display(Display const&) = delete;
    Display& operator=(Display const&) = delete;
    ~Display() {
        xcb_key_symbols_free(symbols_);
        xcb_disconnect(connection_);
    }

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] std::uint16_t width() const { return screen_->width_in_pixels; }
    [[nodiscard]] std::uint16_t height() const { return screen_->height_in_pixels; }
    [[nodiscard]] std::uint8_t damageEvent() const { return damageEvent_; }
    [[nodiscard]] std::uint8_t fixesEvent() const { return fixesEvent_; }

    void flush() const { xcb_flush(connection_); }
    void roundTrip() const {
        Reply<void>(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        auto const cookie =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        Reply<xcb_intern_atom_reply_t> const reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr));
        return reply->atom;
    }

    [[nodiscard]] xcb_keycode_t keycode(std::string const& name) const {
        Reply<xcb_keycode_t> const codes(xcb_key_symbols_get_keycode(symbols_, keysym(name)));
        if (!codes) die("no key types " + name);
        return codes.get()[0];
    }
    void key(xcb_keycode_t code, bool down) const {
        fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, 0, 0);
    }
    void button(std::uint8_t number, bool down) const {
        fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number, 0, 0);
    }
    void motion(int x, int y) const { fake(XCB_MOTION_NOTIFY, 0, x, y); }

private:
    static xcb_keysym_t keysym(std::string const& name) {
        if (name == "Ctrl") return XK_Control_L;
        if (name == "Alt") return XK_Alt_L;
        if (name == "Shift") return XK_Shift_L;
        if (name == "Return") return XK_Return;
        if (name == "Escape") return XK_Escape;
        return static_cast<xcb_keysym_t>(static_cast<unsigned char>(name.front()));
    }
    void fake(std::uint8_t type, std::uint8_t detail, int x, int y) const {
        xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, screen_->root,
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    }

    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    xcb_key_symbols_t* symbols_ = nullptr;
    std::uint8_t damageEvent_ = 0;
    std::uint8_t fixesEvent_ = 0;
};

std::vector<std::string> split(std::string const& text, char separator) {
    std::vector<std::string> parts(1);
    for (char const character : text) {
        if (character == separator) {
            parts.emplace_back();
        } else {
            parts.back() += character;
        }
    }
    return parts;
}

/// Sixteen rows of the screen, evenly spread: enough to tell a dimmed screen from an undimmed one
/// without reading all of it.
class Rows {
public:
    explicit Rows(Display const& display) : display_(display), rowBytes_(display.width() * 4U) {
        int const id = shmget(IPC_PRIVATE, rowBytes_ * kRows, IPC_CREAT | 0600);
        data_ = static_cast<std::uint32_t*>(shmat(id, nullptr, 0));
        segment_ = xcb_generate_id(display.connection());
        xcb_shm_attach(display.connection(), segment_, static_cast<std::uint32_t>(id), 0);
        display.roundTrip();
        shmctl(id, IPC_RMID, nullptr);
    }
    Rows(Rows const&) = delete;
    Rows& operator=(Rows const&) = delete;
    ~Rows() {
        xcb_shm_detach(display_.connection(), segment_);
        shmdt(data_);
    }

    void read() {
        for (std::uint32_t row = 0; row < kRows; ++row) {
            auto const y = (2 * row + 1) * display_.height() / (2 * kRows);
            auto const cookie = xcb_shm_get_image(display_.connection(), display_.root(), 0,
                                                  static_cast<std::int16_t>(y), display_.width(), 1,
                                                  ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment_,
                                                  static_cast<std::uint32_t>(row * rowBytes_));
            Reply<void>(xcb_shm_get_image_reply(display_.connection(), cookie, nullptr));
        }
    }
    void copyFrom(Rows const& other) { std::memcpy(data_, other.data_, rowBytes_ * kRows); }

    /// The share of pixels that differ.
    [[nodiscard]] double differenceTo(Rows const& other) const {
        std::size_t const count = rowBytes_ / 4 * kRows;
        std::size_t different = 0;
        for (std::size_t i = 0; i < count; ++i) {
            different += ((data_[i] ^ other.data_[i]) & 0xffffffU) != 0 ? 1U : 0U;
        }
        return static_cast<double>(different) / static_cast<double>(count);
    }

private:
    static constexpr std::uint32_t kRows = 16;

    Display const& display_;
    std::size_t rowBytes_;
    std::uint32_t* data_ = nullptr;
    xcb_shm_seg_t segment_ = 0;
};

/// Reads image/png from the clipboard as soon as somebody offers it, in parts if need be.
class ClipboardReader {
public:
    explicit ClipboardReader(Display const& display) : display_(display) {
        auto* const connection = display.connection();
        window_ = xcb_generate_id(connection);
        std::uint32_t const events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(connection, 0, window_, display.root(), -10, -10, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, XCB_CW_EVENT_MASK, &events);
        clipboard_ = display.atom("CLIPBOARD");
        png_ = display.atom("image/png");
        property_ = display.atom("TROVEL_PROBE");
        incremental_ = display.atom("INCR");
        xcb_xfixes_select_selection_input(connection, window_, clipboard_,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    }

    /// Empties the clipboard and waits for the next owner.
    void arm() {
        xcb_set_selection_owner(display_.connection(), XCB_NONE, clipboard_, XCB_CURRENT_TIME);
        display_.roundTrip();
        armed_ = true;
        received_ = retryAt_ = 0;
        bytes_ = 0;
    }
    [[nodiscard]] bool isDone() const { return received_ > 0; }
    [[nodiscard]] double receivedAt() const { return received_; }
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

    void handle(xcb_generic_event_t const& event) {
        auto const type = event.response_type & 0x7f;
        if (type == display_.fixesEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
            auto const& notify =
                reinterpret_cast<xcb_xfixes_selection_notify_event_t const&>(event);
            if (armed_ && notify.owner != XCB_NONE && !isDone()) ask();
        } else if (type == XCB_SELECTION_NOTIFY && armed_) {
            auto const& notify = reinterpret_cast<xcb_selection_notify_event_t const&>(event);
            if (notify.property == XCB_NONE) {
                retryAt_ = nowMs() + 1; // some owners are not ready when they take the clipboard
            } else {
                takeProperty();
            }
        } else if (type == XCB_PROPERTY_NOTIFY && inParts_) {
            auto const& notify = reinterpret_cast<xcb_property_notify_event_t const&>(event);
            if (notify.atom == property_ && notify.state == XCB_PROPERTY_NEW_VALUE) takeProperty();
        }
    }
    void tick() {
        if (retryAt_ > 0 && nowMs() >= retryAt_) ask();
    }

private:
    void ask() {
        retryAt_ = 0;
        xcb_delete_property(display_.connection(), window_, property_);
        xcb_convert_selection(display_.connection(), window_, clipboard_, png_, property_,
                              XCB_CURRENT_TIME);
        display_.flush();
    }
    void takeProperty() {
        auto const cookie = xcb_get_property(display_.connection(), 1, window_, property_,
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, 1U << 28U);
        Reply<xcb_get_property_reply_t> const reply(
            xcb_get_property_reply(display_.connection(), cookie, nullptr));
        if (!reply || isDone()) return;
        if (reply->type == incremental_) {
            inParts_ = true;
            return;
        }
        auto const length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
        bytes_ += length;
        if (!inParts_ || length == 0 || endsPicture(reply.get(), length)) {
            received_ = nowMs();
            armed_ = inParts_ = false;
        }
    }
    // Some owners never send the empty part that ends a transfer, so the picture's own end counts.
    static bool endsPicture(xcb_get_property_reply_t const* reply, std::size_t length) {
        static constexpr std::string_view kEnd = "IEND\xae\x42\x60\x82";
        auto const* data = static_cast<char const*>(xcb_get_property_value(reply));
        return std::string_view(data, length).ends_with(kEnd);
    }

    Display const& display_;
    xcb_window_t window_ = 0;
    xcb_atom_t clipboard_ = 0;
    xcb_atom_t png_ = 0;
    xcb_atom_t property_ = 0;
    xcb_atom_t incremental_ = 0;
    bool armed_ = false;
    bool inParts_ = false;
    double received_ = 0;
    double retryAt_ = 0;
    std::size_t bytes_ = 0;
};

/// Waits for the first file that somebody has written and closed in a folder.
class FolderWatch {
public:
    explicit FolderWatch(std::string const& folder) : inotify_(inotify_init1(IN_CLOEXEC)) {
        if (inotify_add_watch(inotify_, folder.c_str(), IN_CLOSE_WRITE) < 0) {
            die("cannot watch " + folder);
        }
    }
    FolderWatch(FolderWatch const&) = delete;
    FolderWatch& operator=(FolderWatch const&) = delete;
    ~FolderWatch() { close(inotify_); }

    /// The time of it, or nothing after so many milliseconds.
    [[nodiscard]] std::optional<double> wait(int ms) const {
        pollfd descriptor{inotify_, POLLIN, 0};
        if (poll(&descriptor, 1, ms) != 1) return std::nullopt;
        return nowMs();
    }

private:
    int inotify_;
};

struct Drag {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
    int motions = 0;
    double ms = 0;
};

struct Options {
    std::string trigger;
    std::string confirm;
    std::string readyBy = "painted";
    std::optional<Drag> drag;
    std::string folder;
    bool readsClipboard = false;
    bool cancels = false;
    std::map<std::string, pid_t> processes;
};

/// One trigger and what follows it.
class Measurement {
public:
    Measurement(Display const& display, Options options)
        : display_(display), options_(std::move(options)), before_(display), current_(display),
          previous_(display), clipboard_(display) {
        if (!options_.folder.empty()) watch_.emplace(options_.folder);
        auto* const connection = display.connection();
        std::uint32_t const events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection, display.root(), XCB_CW_EVENT_MASK, &events);
        xcb_xfixes_select_cursor_input(connection, display.root(),
                                       XCB_XFIXES_CURSOR_NOTIFY_MASK_DISPLAY_CURSOR);
        damage_ = xcb_generate_id(connection);
        xcb_damage_create(connection, damage_, display.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        display.roundTrip();
        run(30);
    }

    void measure() {
        takeBase();
        if (options_.readsClipboard) clipboard_.arm();
        start_ = trigger();
        bool const isUp = waitForOverlay();
        report_.whole("ok", isUp ? 1 : 0);
        report_.number("mapped", since(mappedAt_));
        report_.number("cursor", since(cursorAt_));
        report_.number("painted", since(paintedAt_));
        report_.number("settled", since(damageTimes_.empty() ? 0 : damageTimes_.back()));
        if (isUp && options_.drag) drag(*options_.drag);
        if (isUp && options_.cancels) cancel();
        if (isUp && options_.readsClipboard) readClipboard();
        if (isUp && watch_) awaitFile();
        endCommand();
        report_.print();
    }

private:
    [[nodiscard]] double since(double time) const { return time > 0 ? time - start_ : -1; }

    void takeBase() {
        before_.read();
        previous_.copyFrom(before_);
        damageTimes_.clear();
        cursorAt_ = mappedAt_ = 0;
    }

    double trigger() {
        auto const colon = options_.trigger.find(':');
        auto const kind = options_.trigger.substr(0, colon);
        auto const what = options_.trigger.substr(colon + 1);
        if (kind == "key") return pressChord(what);
        if (kind == "command") return startCommand(what);
        auto const position = split(what, ',');
        display_.motion(std::stoi(position.at(0)), std::stoi(position.at(1)));
        display_.flush();
        run(150);
        takeBase();
        double const time = nowMs();
        display_.button(1, true);
        display_.button(1, false);
        display_.flush();
        return time;
    }

    // Keys go down 10 ms apart and up 60 ms after the last one, as a hand would do it.
    double pressChord(std::string const& chord) {
        held_.clear();
        auto const names = split(chord, '+');
        for (std::size_t i = 0; i < names.size(); ++i) {
            held_.push_back(display_.keycode(names[i]));
            if (i + 1 == names.size()) break;
            display_.key(held_.back(), true);
            display_.flush();
            run(10);
        }
        takeBaseTimes();
        double const time = nowMs();
        display_.key(held_.back(), true);
        display_.flush();
        releaseAt_ = time + 60;
        return time;
    }
    void takeBaseTimes() {
        damageTimes_.clear();
        cursorAt_ = mappedAt_ = 0;
    }

    double startCommand(std::string const& command) {
        double const time = nowMs();
        command_ = fork();
        if (command_ == 0) {
            setsid();
            int const null = open("/dev/null", O_RDWR);
            for (int const file : {0, 1, 2}) dup2(null, file);
            execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        return time;
    }
    void endCommand() const {
        if (command_ <= 0) return;
        waitMs(300);
        kill(-command_, SIGTERM);
        waitMs(30);
        kill(-command_, SIGKILL);
        waitpid(command_, nullptr, 0);
    }

    bool waitForOverlay() {
        double const end = start_ + kTimeoutMs;
        double seen = 0;
        while (nowMs() < end) {
            double const damagedAt = damageTimes_.empty() ? 0 : damageTimes_.back();
            run(damagedAt > seen ? 0.3 : 2);
            if (!damageTimes_.empty() && damageTimes_.back() > seen) {
                seen = damageTimes_.back();
                sample();
            }
            double const quietSince = std::max({changedAt_, cursorAt_, mappedAt_});
            if (readyAt() > 0 && nowMs() - quietSince > kSettleMs) return true;
        }
        return false;
    }
    /// When what was waited for happened; 0 before that.
    [[nodiscard]] double readyAt() const {
        if (options_.readyBy == "cursor") return cursorAt_;
        return options_.readyBy == "settled" ? mappedAt_ : paintedAt_;
    }
    void sample() {
        current_.read();
        // The time is taken after the sample: the server may have been painting while it waited.
        double const time = nowMs();
        if (paintedAt_ <= 0 && current_.differenceTo(before_) > 0.6) paintedAt_ = time;
        if (current_.differenceTo(previous_) > 0) {
            changedAt_ = time;
            previous_.copyFrom(current_);
        }
    }

    void drag(Drag const& drag) {
        display_.motion(drag.x0, drag.y0);
        display_.flush();
        run(150);
        auto const cpuBefore = cpuOfAll();
        display_.button(1, true);
        display_.flush();
        run(5);
        auto const firstDamage = damageTimes_.size();
        auto const motions = moveAlong(drag);
        run(250);
        reportLatency(motions, firstDamage);
        for (auto const& [name, cpu] : cpuOfAll()) {
            report_.number("drag_cpu_" + name, cpu - cpuBefore.at(name));
        }
        if (options_.readsClipboard) clipboard_.arm();
        releasedAt_ = nowMs();
        display_.button(1, false);
        display_.flush();
        if (!options_.confirm.empty()) {
            run(600);
            releasedAt_ = pressChord(options_.confirm);
        }
    }
    std::vector<double> moveAlong(Drag const& drag) {
        std::vector<double> times;
        double const begin = nowMs();
        for (int i = 1; i <= drag.motions; ++i) {
            run(begin + drag.ms * i / drag.motions - nowMs());
            display_.motion(drag.x0 + (drag.x1 - drag.x0) * i / drag.motions,
                            drag.y0 + (drag.y1 - drag.y0) * i / drag.motions);
            // Taken before the server is told: it may push this process aside to paint.
            times.push_back(nowMs());
            display_.flush();
        }
        return times;
    }
    void reportLatency(std::vector<double> const& motions, std::size_t firstDamage) {
        std::vector<double> lags;
        auto damage = damageTimes_.begin() + static_cast<std::ptrdiff_t>(firstDamage);
        for (double const time : motions) {
            damage =
                std::find_if(damage, damageTimes_.end(), [time](double at) { return at >= time; });
            if (damage == damageTimes_.end()) break;
            lags.push_back(*damage - time);
        }
        report_.whole("drag_updates", static_cast<long>(damageTimes_.size() - firstDamage));
        report_.number("drag_lag_median", median(lags));
        report_.number("drag_lag_p95", percentile95(lags));
    }
    [[nodiscard]] std::map<std::string, double> cpuOfAll() const {
        std::map<std::string, double> result;
        for (auto const& [name, process] : options_.processes) result[name] = cpuMs(process);
        return result;
    }

    void cancel() {
        for (int attempt = 0; attempt < 4; ++attempt) {
            pressChord("Escape");
            run(350);
            current_.read();
            if (current_.differenceTo(before_) < 0.001) return;
        }
    }

    void readClipboard() {
        double const from = releasedAt_ > 0 ? releasedAt_ : start_;
        double const end = nowMs() + kTimeoutMs;
        while (!clipboard_.isDone() && nowMs() < end) run(1);
        report_.number("received", clipboard_.isDone() ? clipboard_.receivedAt() - from : -1);
        report_.whole("received_bytes", static_cast<long>(clipboard_.bytes()));
    }

    void awaitFile() {
        auto const written = watch_->wait(static_cast<int>(kTimeoutMs));
        report_.number("written", written ? *written - releasedAt_ : -1);
    }

    void run(double ms) {
        double const until = nowMs() + ms;
        for (;;) {
            while (
                Reply<xcb_generic_event_t> const event{xcb_poll_for_event(display_.connection())}) {
                handle(*event);
            }
            if (releaseAt_ > 0 && nowMs() >= releaseAt_) releaseChord();
            clipboard_.tick();
            double left = until - nowMs();
            if (left <= 0) return;
            left = std::min(left, 1.0);
            pollfd descriptor{xcb_get_file_descriptor(display_.connection()), POLLIN, 0};
            timespec const time{0, static_cast<long>(left * 1e6)};
            ppoll(&descriptor, 1, &time, nullptr);
        }
    }
    void handle(xcb_generic_event_t const& event) {
        double const time = nowMs();
        auto const type = event.response_type & 0x7f;
        if (type == display_.damageEvent() + XCB_DAMAGE_NOTIFY) {
            xcb_damage_subtract(display_.connection(), damage_, XCB_NONE, XCB_NONE);
            display_.flush();
            damageTimes_.push_back(time);
        } else if (type == XCB_MAP_NOTIFY) {
            if (mappedAt_ <= 0) mappedAt_ = time;
        } else if (type == display_.fixesEvent() + XCB_XFIXES_CURSOR_NOTIFY) {
            if (cursorAt_ <= 0) cursorAt_ = time;
        }
        clipboard_.handle(event);
    }
    void releaseChord() {
        for (; !held_.empty(); held_.pop_back()) display_.key(held_.back(), false);
        releaseAt_ = 0;
        display_.flush();
    }

    static constexpr double kTimeoutMs = 8000;
    static constexpr double kSettleMs = 300;

    Display const& display_;
    Options options_;
    Rows before_;
    Rows current_;
    Rows previous_;
    ClipboardReader clipboard_;
    std::optional<FolderWatch> watch_;
    Report report_;
    xcb_damage_damage_t damage_ = 0;
    pid_t command_ = 0;
    std::vector<xcb_keycode_t> held_;
    std::vector<double> damageTimes_;
    double releaseAt_ = 0;
    double start_ = 0;
    double mappedAt_ = 0;
    double cursorAt_ = 0;
    double paintedAt_ = 0;
    double changedAt_ = 0;
    double releasedAt_ = 0;
};

/// Whether somebody else has grabbed the chord. The server is held meanwhile, so that the attempt
/// itself cannot get in the way of whoever grabs at the same moment.
bool isGrabbed(Display const& display, xcb_keycode_t keycode, std::uint16_t modifiers) {
    auto* const connection = display.connection();
    xcb_grab_server(connection);
    auto const cookie = xcb_grab_key_checked(connection, 0, display.root(), modifiers, keycode,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    Reply<xcb_generic_error_t> const error(xcb_request_check(connection, cookie));
    if (!error) xcb_ungrab_key(connection, keycode, display.root(), modifiers);
    xcb_ungrab_server(connection);
    display.flush();
    return error != nullptr;
}

/// Starts a program and clocks when the chord is grabbed.
int measureGrab(Display const& display, std::string const& chord, char** command) {
    std::uint16_t modifiers = 0;
    auto names = split(chord, '+');
    auto const keycode = display.keycode(names.back());
    names.pop_back();
    for (auto const& name : names) {
        if (name == "Ctrl") modifiers |= XCB_MOD_MASK_CONTROL;
        if (name == "Shift") modifiers |= XCB_MOD_MASK_SHIFT;
        if (name == "Alt") modifiers |= XCB_MOD_MASK_1;
    }
    if (isGrabbed(display, keycode, modifiers)) die("the chord is grabbed already");
    double const start = nowMs();
    pid_t const child = fork();
    if (child == 0) {
        execvp(command[0], command);
        _exit(127);
    }
    double grabbedAt = 0;
    while (grabbedAt <= 0 && nowMs() - start < 8000) {
        waitMs(0.5);
        if (isGrabbed(display, keycode, modifiers)) grabbedAt = nowMs();
    }
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    Report report;
    report.whole("ok", grabbedAt > 0 ? 1 : 0);
    report.number("grabbed", grabbedAt > 0 ? grabbedAt - start : -1);
    report.print();
    return 0;
}

Drag parseDrag(std::string const& text) {
    auto const parts = split(text, ',');
    if (parts.size() != 6) die("a drag is X0,Y0,X1,Y1,MOTIONS,MS");
    return {std::stoi(parts[0]), std::stoi(parts[1]), std::stoi(parts[2]),
            std::stoi(parts[3]), std::stoi(parts[4]), std::stod(parts[5])};
}

Options parseOptions(std::span<char*> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const name = arguments[i];
        if (name == "--cancel") {
            options.cancels = true;
            continue;
        }
        if (name == "--clipboard") {
            options.readsClipboard = true;
            continue;
        }
        if (i + 1 == arguments.size()) die(name + " needs a value");
        std::string const value = arguments[++i];
        if (name == "--trigger") {
            options.trigger = value;
        } else if (name == "--ready") {
            options.readyBy = value;
        } else if (name == "--confirm") {
            options.confirm = value;
        } else if (name == "--drag") {
            options.drag = parseDrag(value);
        } else if (name == "--file") {
            options.folder = value;
        } else if (name == "--cpu") {
            auto const parts = split(value, '=');
            options.processes[parts.at(0)] = std::stoi(parts.at(1));
        } else {
            die("unknown option " + name);
        }
    }
    return options;
}

} // namespace

int main(int count, char** values) {
    std::span<char*> arguments(values, static_cast<std::size_t>(count));
    if (arguments.size() < 2) die("usage: probe overlay|grabbed ...");
    Display const display;
    if (std::string_view(arguments[1]) == "grabbed" && arguments.size() > 5) {
        return measureGrab(display, arguments[3], values + 5);
    }
    // A tool that holds the X server blocks this client too; the alarm ends the measurement then.
    alarm(60);
    Measurement(display, parseOptions(arguments.subspan(2))).measure();
    return 0;
}
