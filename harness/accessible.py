"""What the windows of a process say to a screen reader, one JSON object an element:
`python3 -m harness.accessible PID`; `... PID press NAME` does what the element of that name does.
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version comes first)

_STATES = {"selected": Atspi.StateType.SELECTED, "enabled": Atspi.StateType.ENABLED,
           "showing": Atspi.StateType.SHOWING}


def elements(element):
    """An element and everything in it, from the outside to the inside."""
    if element is None:
        return
    yield element
    for index in range(element.get_child_count()):
        yield from elements(element.get_child_at_index(index))


def description(element):
    states = element.get_state_set()
    box = element.get_extents(Atspi.CoordType.SCREEN) if element.get_component_iface() else None
    return {"name": element.get_name() or "", "role": element.get_role_name(),
            "description": element.get_description() or "",
            "frame": [box.x, box.y, box.width, box.height] if box else None,
            "states": [name for name, state in _STATES.items() if states.contains(state)]}


def application(pid):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        candidate = desktop.get_child_at_index(index)
        try:
            if candidate is not None and candidate.get_process_id() == pid:
                return candidate
        except GLib.Error:  # An application may end while it is asked.
            continue
    return None


def press(element):
    actions = element.get_action_iface()
    names = [actions.get_action_name(index) for index in range(actions.get_n_actions())]
    actions.do_action(names.index("Press"))


def main(pid, verb=None, name=None):
    for element in elements(application(int(pid))):
        if verb is None:
            print(json.dumps(description(element)))
        elif element.get_name() == name and element.get_action_iface():
            press(element)
            return


if __name__ == "__main__":
    main(*sys.argv[1:4])
