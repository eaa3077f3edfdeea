"""What a bystander can see of an X desktop, and what only X shows: grabs and selections' owners."""

import contextlib

from PIL import Image
from Xlib import X, display as xdisplay, error
from Xlib.protocol import event

from ..driver import ALT, CONTROL, SHIFT, SUPER
from ..session import Observer

HOTKEY_MODIFIERS = X.ControlMask | X.ShiftMask
_MODIFIERS = {CONTROL: X.ControlMask, SHIFT: X.ShiftMask, ALT: X.Mod1Mask, SUPER: X.Mod4Mask}
_BUTTONS = X.Button1Mask | X.Button2Mask | X.Button3Mask | X.Button4Mask | X.Button5Mask
_ROWS_A_REQUEST = 256
_ADD_STATE, _FROM_A_PAGER = 1, 2
_SMALLEST_MENU = 60  # its height in pixels


class XObserver(Observer):
    """One connection to the X server; its windows are python-xlib's."""

    def __init__(self, display_name):
        self.display = xdisplay.Display(display_name)
        # A window may go away between two questions about it; that is an answer, not an error.
        self.display.set_error_handler(lambda *_: None)
        self.display.xfixes_query_version()
        self.root = self.display.screen().root

    def close(self):
        self.display.close()

    # Pixels

    def screenshot(self, rectangle=None):
        geometry = self.root.get_geometry()
        x, y, width, height = rectangle or (0, 0, geometry.width, geometry.height)
        picture = Image.new("RGB", (width, height))
        for top in range(0, height, _ROWS_A_REQUEST):
            rows = min(_ROWS_A_REQUEST, height - top)
            reply = self.root.get_image(x, y + top, width, rows, X.ZPixmap, 0xFFFFFFFF)
            strip = Image.frombytes("RGB", (width, rows), reply.data, "raw", "BGRX")
            picture.paste(strip, (0, top))
        return picture

    def cursor(self):
        image = self.display.xfixes_get_cursor_image(self.root)
        return (image.cursor_serial, image.width, image.height, tuple(image.cursor_image))

    # Windows

    def windows_of(self, pid):
        return [window for window in self._children() if self._pid_behind(window) == pid]

    def overlays_of(self, pid):
        found = []
        for window in self.windows_of(pid):
            try:
                if window.get_attributes().override_redirect:
                    geometry = window.get_geometry()
                    found.append((geometry.x, geometry.y, geometry.width, geometry.height))
            except error.XError:
                continue
        return sorted(found)

    def popups(self):
        width = self.root.get_geometry().width
        found = map(self._menu_rectangle, self.root.query_tree().children)
        return [rectangle for rectangle in found if rectangle and rectangle[2] < width]

    def managed_of(self, pid):
        return [window for window in self.client_list() if self._pid_behind(window) == pid]

    def client_list(self):
        return [self._window(number) for number in self._root_property("_NET_CLIENT_LIST")]

    def active_window(self):
        """A window manager names the window that it made active before keys go there."""
        value = self._root_property("_NET_ACTIVE_WINDOW")
        return value[0] if value and self._gets_keys(value[0]) else 0

    def _gets_keys(self, number):
        try:
            window = self.display.get_input_focus().focus
            while not isinstance(window, int) and window.id != number:
                window = window.query_tree().parent
        except error.XError:
            return False
        return not isinstance(window, int)

    def activate(self, window):
        self._ask_manager(window, "_NET_ACTIVE_WINDOW", [_FROM_A_PAGER, X.CurrentTime, 0, 0, 0])

    def fill_screen(self, window):
        state = self.atom("_NET_WM_STATE_FULLSCREEN")
        self._ask_manager(window, "_NET_WM_STATE", [_ADD_STATE, state, 0, _FROM_A_PAGER, 0])

    def close_window(self, window):
        self._ask_manager(window, "_NET_CLOSE_WINDOW", [X.CurrentTime, _FROM_A_PAGER, 0, 0, 0])

    def title(self, window):
        try:
            name = window.get_full_property(self.atom("_NET_WM_NAME"), X.AnyPropertyType)
            return (name.value if name else b"").decode(errors="replace")
        except error.XError:
            return ""

    def frame(self, window):
        try:
            geometry = window.get_geometry()
            corner = self.root.translate_coords(window, 0, 0)
        except error.XError:
            return None
        return (corner.x, corner.y, geometry.width, geometry.height)

    # Input

    def held_keys(self):
        return [8 * index + bit for index, byte in enumerate(self.display.query_keymap())
                for bit in range(8) if byte >> bit & 1]

    def held_buttons(self):
        return self.root.query_pointer().mask & _BUTTONS

    def is_keyboard_free(self):
        with self._server_to_itself():
            answer = self.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
            self.display.ungrab_keyboard(X.CurrentTime)
        return answer == X.GrabSuccess

    def is_pointer_free(self):
        with self._server_to_itself():
            answer = self.root.grab_pointer(False, 0, X.GrabModeAsync, X.GrabModeAsync, 0, 0,
                                            X.CurrentTime)
            self.display.ungrab_pointer(X.CurrentTime)
        return answer == X.GrabSuccess

    def is_hotkey(self, *keycodes):
        modifiers = sum(_MODIFIERS[keycode] for keycode in keycodes[:-1])
        return self.is_key_taken(keycodes[-1], modifiers)

    def is_key_taken(self, keycode, modifiers):
        """Whether a client has grabbed the key."""
        refused = error.CatchError(error.BadAccess)
        with self._server_to_itself():
            self.root.grab_key(keycode, modifiers, False, X.GrabModeAsync, X.GrabModeAsync, refused)
            self.display.sync()
            if not refused.get_error():
                self.root.ungrab_key(keycode, modifiers)
        return bool(refused.get_error())

    @contextlib.contextmanager
    def _server_to_itself(self):
        """For short grabs that ask whether others have grabbed: nobody runs into them."""
        self.display.grab_server()
        try:
            yield
        finally:
            self.display.ungrab_server()
            self.display.sync()

    # Selections and properties

    def selection_owner(self, name):
        return self.display.get_selection_owner(self.atom(name))

    def atom(self, name):
        return self.display.intern_atom(name)

    def window_manager_is_up(self):
        """Whether it manages windows: what is mapped between its first word and its first look at
        the windows that are there may stay unmanaged."""
        return bool(self._root_property("_NET_SUPPORTING_WM_CHECK")) and any(
            self.root.get_full_property(self.atom(name), X.AnyPropertyType)
            for name in ("_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW"))

    @staticmethod
    def _menu_rectangle(window):
        """The rectangle of `window`; None unless it looks like a menu."""
        try:
            attributes = window.get_attributes()
            geometry = window.get_geometry()
        except error.XError:
            return None
        is_menu = (attributes.override_redirect and attributes.map_state == X.IsViewable
                   and attributes.win_class == X.InputOutput and geometry.height >= _SMALLEST_MENU)
        return (geometry.x, geometry.y, geometry.width, geometry.height) if is_menu else None

    def _ask_manager(self, window, wish, numbers):
        message = event.ClientMessage(window=window, client_type=self.atom(wish),
                                      data=(32, numbers))
        self.root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.flush()

    def _children(self):
        found = []
        for window in self.root.query_tree().children:
            try:
                if window.get_attributes().map_state == X.IsViewable:
                    found.append(window)
            except error.XError:
                continue
        return found

    def _pid_behind(self, window):
        specification = [{"client": window.id, "mask": 2}]
        try:
            for answer in self.display.res_query_client_ids(specification).ids:
                if answer.value:
                    return answer.value[0]
        except error.XError:
            pass
        return None

    def _window(self, number):
        return self.display.create_resource_object("window", number)

    def _root_property(self, name):
        value = self.root.get_full_property(self.atom(name), X.AnyPropertyType)
        return list(value.value) if value else []
