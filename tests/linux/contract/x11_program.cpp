#include "tests/linux/contract/x11_program.h"

#include "platform/linux/x11/keymap.h"

namespace trovel {

namespace {

constexpr KeyCode kFirstModifierKey = 54; // right Command, to
constexpr KeyCode kLastModifierKey = 63;  // Function

} // namespace

X11Program::X11Program(std::string const& identity, Point position, Size size)
    : window_(xcb_generate_id(connection_->get())) {
    auto* const x = connection_->get();
    std::uint32_t const events = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, connection_->root(),
                      static_cast<std::int16_t>(position.x), static_cast<std::int16_t>(position.y),
                      static_cast<std::uint16_t>(size.width),
                      static_cast<std::uint16_t>(size.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    auto const wmClass = identity + '\0' + identity + '\0';
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
    xcb_map_window(x, window_);
    bringToFront();
}

void X11Program::bringToFront() {
    std::uint32_t const above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_->get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    EXPECT_TRUE(connection_->succeeded(xcb_set_input_focus_checked(
        connection_->get(), XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME)));
}

ProgramReport X11Program::report() {
    while (auto const event =
               XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(connection_->get()))) {
        note(*event);
    }
    return report_;
}

void X11Program::note(xcb_generic_event_t const& event) {
    if (eventType(event) == XCB_BUTTON_PRESS) {
        auto const& press = reinterpret_cast<xcb_button_press_event_t const&>(event);
        report_.clicks.push_back({static_cast<double>(press.root_x), //
                                  static_cast<double>(press.root_y)});
    } else if (eventType(event) == XCB_KEY_PRESS) {
        auto const& press = reinterpret_cast<xcb_key_press_event_t const&>(event);
        auto const key = Keymap::virtualKeyForKeycode(press.detail);
        if (!key || (*key >= kFirstModifierKey && *key <= kLastModifierKey)) return;
        if (*key == kKeyV && (press.state & XCB_MOD_MASK_CONTROL) != 0) {
            ++report_.pastes;
        } else {
            report_.keys.push_back(*key);
        }
    }
}

} // namespace trovel
