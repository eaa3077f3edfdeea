#include "tests/linux/support/other_program.h"

#include "platform/linux/x11/xkb.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

namespace trovel {

namespace {

constexpr int kStepMilliseconds = 10;

pid_t start(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (auto& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    for (int const output : {STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    }
    pid_t process = -1;
    auto const failure =
        posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0 ? process : -1;
}

} // namespace

void PrintTo(SeenInput const& input, std::ostream* stream) {
    *stream << "type " << int{input.type} << " detail " << int{input.detail} << " state "
            << input.state;
}

OtherProgram::OtherProgram() : connection_(XcbConnection::open()) {}

xcb_window_t OtherProgram::open(WindowProfile const& profile) {
    auto* const connection = connection_->get();
    auto const window = xcb_generate_id(connection);
    std::uint32_t const values[] = {profile.isOverrideRedirect, XCB_EVENT_MASK_KEY_PRESS |
                                                                    XCB_EVENT_MASK_KEY_RELEASE |
                                                                    XCB_EVENT_MASK_BUTTON_PRESS |
                                                                    XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(
        connection, XCB_COPY_FROM_PARENT, window, connection_->root(),
        static_cast<std::int16_t>(profile.frame.x), static_cast<std::int16_t>(profile.frame.y),
        static_cast<std::uint16_t>(profile.frame.width),
        static_cast<std::uint16_t>(profile.frame.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    if (!profile.instance.empty() || !profile.className.empty()) {
        setText(window, "WM_CLASS", profile.instance + '\0' + profile.className + '\0');
    }
    if (!profile.gtkApplicationId.empty()) {
        setText(window, "_GTK_APPLICATION_ID", profile.gtkApplicationId);
    }
    if (profile.process != 0) {
        setNumbers(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {profile.process});
    }
    setAtoms(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_", profile.types);
    setAtoms(window, "_NET_WM_STATE", "_NET_WM_STATE_", profile.states);
    xcb_map_window(connection, window);
    sync();
    return window;
}

void OtherProgram::close(xcb_window_t window) {
    xcb_destroy_window(connection_->get(), window);
    sync();
}

void OtherProgram::setText(xcb_window_t window, std::string_view property, std::string_view bytes) {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window,
                        connection_->atom(property), XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
    sync();
}

void OtherProgram::setNumbers(xcb_window_t window, std::string_view property, xcb_atom_t type,
                              std::vector<std::uint32_t> const& numbers) {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window,
                        connection_->atom(property), type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
    sync();
}

void OtherProgram::setAtoms(xcb_window_t window, std::string_view property, std::string_view prefix,
                            std::vector<std::string> const& names) {
    if (names.empty()) return;
    std::vector<std::uint32_t> atoms;
    for (auto const& name : names) {
        atoms.push_back(connection_->atom(std::string(prefix).append(name)));
    }
    setNumbers(window, property, XCB_ATOM_ATOM, atoms);
}

void OtherProgram::focus(xcb_window_t window) {
    xcb_set_input_focus(connection_->get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    sync();
}

void OtherProgram::minimise(xcb_window_t window) {
    constexpr std::uint32_t kIconicState = 3; // ICCCM 4.1.4
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_->atom("WM_CHANGE_STATE");
    message.data.data32[0] = kIconicState;
    xcb_send_event(connection_->get(), 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<char const*>(&message));
    sync();
}

bool OtherProgram::isViewable(xcb_window_t window) {
    auto const attributes = connection_->reply<xcb_get_window_attributes_reply>(
        xcb_get_window_attributes(connection_->get(), window));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void OtherProgram::useLayoutGroup(std::uint8_t group) {
    constexpr std::uint8_t kLockGroup = 1;
    xcb_xkb_use_extension(connection_->get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    xcb_xkb_latch_lock_state(connection_->get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, kLockGroup, group,
                             0, 0, 0);
    sync();
}

void OtherProgram::sync() {
    static_cast<void>(
        connection_->reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection_->get())));
}

std::vector<SeenInput> OtherProgram::seenInput() {
    sync();
    std::vector<SeenInput> seen;
    auto const listening = connection_->addEventHandler([&](xcb_generic_event_t const& event) {
        auto const type = event.response_type; // with the mark of events that a client made up
        if (type < XCB_KEY_PRESS || type > XCB_BUTTON_RELEASE) return;
        auto const& key = reinterpret_cast<xcb_key_press_event_t const&>(event);
        seen.push_back({type, key.detail, key.state});
    });
    connection_->processEvents();
    return seen;
}

xcb_window_t OtherProgram::activeWindow() {
    auto const answer = connection_->reply<xcb_get_property_reply>(
        xcb_get_property(connection_->get(), 0, connection_->root(),
                         connection_->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1));
    if (!answer || answer->value_len != 1) return XCB_WINDOW_NONE;
    return *static_cast<xcb_window_t const*>(xcb_get_property_value(answer.get()));
}

bool OtherProgram::eventually(std::function<bool()> const& condition, int steps) {
    for (int step = 0; step < steps; ++step) {
        if (condition()) return true;
        poll(nullptr, 0, kStepMilliseconds);
    }
    return false;
}

WindowManagerTraces::WindowManagerTraces(OtherProgram& program)
    : program_(program), root_(program.connection().root()),
      self_(program.open({.isOverrideRedirect = true})) {
    for (auto const window : {root_, self_}) {
        program_.setNumbers(window, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {self_});
    }
    program_.setAtoms(root_, "_NET_SUPPORTED", "_NET_", {"CLIENT_LIST", "ACTIVE_WINDOW"});
    activate(XCB_WINDOW_NONE);
}

void WindowManagerTraces::list(std::vector<xcb_window_t> const& clients,
                               std::vector<xcb_window_t> const& stacking) {
    program_.setNumbers(root_, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, clients);
    program_.setNumbers(root_, "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, stacking);
}

void WindowManagerTraces::activate(xcb_window_t window) {
    program_.setNumbers(root_, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
}

void WindowManagerTraces::crash() {
    program_.close(self_);
}

Openbox::Openbox() : process_(start({"openbox", "--sm-disable"})) {
    // It gives windows the keyboard only when it has started altogether, which it does not
    // announce.
    OtherProgram program;
    constexpr int kStepsOfOneTry = 20;
    EXPECT_TRUE(OtherProgram::eventually([&] {
        auto const probe = program.open();
        auto const isReady = OtherProgram::eventually(
            [&] { return program.activeWindow() == probe; }, kStepsOfOneTry);
        program.close(probe);
        return isReady;
    }));
}

Openbox::~Openbox() {
    if (process_ <= 0) return;
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

bool run(std::vector<std::string> arguments) {
    auto const process = start(std::move(arguments));
    int status = 0;
    return process > 0 && waitpid(process, &status, 0) == process && status == 0;
}

} // namespace trovel
