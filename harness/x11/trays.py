"""Panels with a place for status icons, and the menus that open there."""

import os

from Xlib import X, error

from ..driver import LEFT
from ..waiting import stays_true, wait_until

_TRAY_HEIGHT = 32
_XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="20"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""


class SystemTray:
    """trayer, which has the System Tray protocol alone, in the top right corner."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._process = desktop.processes.start(
            "trayer", "trayer", "--edge", "top", "--align", "right", "--widthtype", "pixel",
            "--width", "200", "--height", _TRAY_HEIGHT)
        wait_until(lambda: desktop.observer.selection_owner("_NET_SYSTEM_TRAY_S0"), "the tray")

    def close(self):
        self._desktop.processes.stop(self._process)
        wait_until(lambda: not self._desktop.observer.selection_owner("_NET_SYSTEM_TRAY_S0"),
                   "the tray is gone")

    def wait_for_icon(self, name=None):
        """The middle of the icon that was put into the tray, or of the one of that name."""
        return wait_until(lambda: self._icon(name), "the icon is in the tray")

    def wait_for_no_icon(self):
        wait_until(lambda: not self._icon(), "the icon is gone")

    def open_menu(self, button=LEFT):
        """Clicks on the icon; returns the rectangle of the menu that opens."""
        self._desktop.driver.click(self.wait_for_icon(), button)
        return self._desktop.observer.wait_for_menu()

    def _icon(self, name=None):
        observer = self._desktop.observer
        for window in _descendants(observer.root):
            try:
                if not window.get_full_property(observer.atom("_XEMBED_INFO"), X.AnyPropertyType):
                    continue
                if name not in (None, observer.title(window)):
                    continue
                geometry = window.get_geometry()
                at = window.translate_coords(observer.root, 0, 0)
                is_in_panel = -at.y < _TRAY_HEIGHT and geometry.width > 8
                if is_in_panel and window.get_attributes().map_state == X.IsViewable:
                    return (-at.x + geometry.width // 2, -at.y + geometry.height // 2)
            except error.XError:
                continue
        return None


class NotifierHost:
    """xfce4-panel, which shows icons of the StatusNotifierItem protocol and their menus, in the top
    left corner. Needs a desktop with a bus."""

    def __init__(self, desktop):
        self._desktop = desktop
        folder = os.path.join(desktop.folder, "config", "xfce4", "xfconf",
                              "xfce-perchannel-xml")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "xfce4-panel.xml"), "w", encoding="utf-8") as settings:
            settings.write(_XFCE_PANEL)
        self._process = desktop.processes.start("panel", "xfce4-panel", "--disable-wm-check")
        wait_until(lambda: desktop.observer.selection_owner("_NET_SYSTEM_TRAY_S0"), "the panel")

    def close(self):
        self._desktop.processes.stop(self._process)
        wait_until(lambda: not self._desktop.observer.selection_owner("_NET_SYSTEM_TRAY_S0"),
                   "the panel is gone")

    def wait_for_icon(self):
        """The middle of the icon, which is the only dark thing in the panel."""
        wait_until(self._has_icon, "the icon is in the panel")
        return (12, 16)

    def wait_for_no_icon(self):
        wait_until(lambda: not self._has_icon(), "the icon is gone")

    def open_menu(self, button=LEFT):
        """Clicks on the icon; returns the rectangle of the menu that opens. The panel forgets a
        click as long as it has not fetched the menu of a new icon, so there may be a second."""
        popups = self._desktop.observer.popups
        self._desktop.driver.click(self.wait_for_icon(), button)
        if stays_true(lambda: not popups(), 2):
            self._desktop.driver.click(self.wait_for_icon(), button)
        return self._desktop.observer.wait_for_menu()

    def _has_icon(self):
        picture = self._desktop.observer.screenshot((0, 0, 24, 32)).convert("L")
        darkest, lightest = picture.getextrema()
        return darkest < 100 and lightest > 200


def _descendants(window):
    try:
        children = window.query_tree().children
    except error.XError:
        return
    for child in children:
        yield child
        yield from _descendants(child)
