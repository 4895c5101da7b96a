"""The program as assistive tools see it, over AT-SPI."""
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

import screen  # noqa: E402

# Roles of controls that a user must be able to tell by name.
NAMED_ROLES = {"push button", "toggle button", "check box", "text", "combo box", "menu item", "menu", "entry", "radio button",
               "spin button", "check menu item"}


def application(name, process=None):
    """The application with this name, and with this process id if it is given."""
    def found():
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child and child.get_name() == name and process in (None, child.get_process_id()):
                return child
        return None

    return screen.until(found, f"accessible application {name!r}")


def walk(node):
    yield node
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child:
            yield from walk(child)


def find(root, role, name):
    """The first node of the role whose name begins with name, or None."""
    try:
        for node in walk(root):
            if node.get_role_name() == role and (node.get_name() or "").startswith(name):
                return node
    except GLib.Error:  # a node went away while it was being read
        pass
    return None


def control(root, role, name):
    return screen.until(lambda: find(root, role, name), f"{role} {name!r}")


def text_of(node):
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


def is_showing(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def is_checked(node):
    return node.get_state_set().contains(Atspi.StateType.CHECKED)


def press(node):
    Atspi.Action.do_action(node, 0)
