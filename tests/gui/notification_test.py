#!/usr/bin/env python3
"""Notifications about batches, against a notification server on the session's bus; run under session.py."""
import os
import subprocess
import sys
import unittest

import screen
from life_test import LifeTest

SERVICE, OBJECT = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
INTERFACE = """<node><interface name="org.freedesktop.Notifications">
<method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/><arg type="a{sv}" direction="in"/>
<arg type="i" direction="in"/><arg type="u" direction="out"/></method>
<method name="CloseNotification"><arg type="u" direction="in"/></method>
<signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
</interface></node>"""
ID = 7


def serve():
    """A notification server. Prints a line for each call, and presses "Show" for each line of its input."""
    from gi.repository import Gio, GLib

    def called(connection, sender, path, interface, method, arguments, invocation):
        values = arguments.unpack()
        if method == "Notify":
            print(method, values[1], values[3], values[4], ",".join(values[5][1::2]), sep="|", flush=True)
            invocation.return_value(GLib.Variant("(u)", (ID,)))
        else:
            print(method, *values, sep="|", flush=True)
            invocation.return_value(None)

    def pressed(*_):
        if not sys.stdin.readline():
            loop.quit()
        bus.emit_signal(None, OBJECT, SERVICE, "ActionInvoked", GLib.Variant("(us)", (ID, "show")))
        return True

    loop = GLib.MainLoop()
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.register_object(OBJECT, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], called)
    Gio.bus_own_name_on_connection(bus, SERVICE, Gio.BusNameOwnerFlags.NONE, lambda *_: print("ready", flush=True), None)
    GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, pressed)
    loop.run()


class Notifications(LifeTest):
    def setUp(self):
        super().setUp()
        self.server = self.start(sys.executable, __file__, "--serve", stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.server.stdin.close)
        self.assertEqual(self.server.stdout.readline(), "ready\n")

    def cover(self):
        """Gives another window, over the program's, the focus."""
        other = self.start(os.environ["DRAG_SOURCE"], "--title", "cover", stdout=subprocess.PIPE, text=True)
        other.stdout.readline()
        cover = screen.window("^cover$")
        subprocess.run(["xdotool", "windowactivate", "--sync", cover])
        screen.until(lambda: self.active_window() == cover, "another window in front")
        return cover

    def test_a_batch_in_the_background_is_told_once_and_show_raises_the_window(self):
        good, bad = self.document("good.rtf", "one"), self.papers / "bad.pdf"
        bad.write_bytes(b"")
        self.start_program()
        # A drop leaves the focus with the file manager.
        self.drag("link", self.uri(good), self.uri(bad), expect="link")
        self.wait_for_log(self.converted(good), self.no_text(bad))
        self.assertEqual(self.server.stdout.readline(), "Notify|0|1 document converted|1 not converted|Show,Show\n")
        self.assertNotEqual(self.active_window(), self.window)
        print("press", file=self.server.stdin, flush=True)
        screen.until(lambda: self.active_window() == self.window, "window in front")
        self.assertEqual(self.server.stdout.readline(), f"CloseNotification|{ID}\n")

    def test_a_batch_in_the_foreground_is_not_told(self):
        first, second, last = (self.document(name + ".rtf", name) for name in ("first", "second", "last"))
        # The documents of a start, and of a later start, which brings the window to the front.
        self.start_program(first)
        self.wait_for_log(self.converted(first))
        screen.until(lambda: self.active_window() == self.window, "window in front")
        self.cover()
        self.assertEqual(self.start_again(second), (0, ""))
        self.wait_for_log(self.converted(first), self.converted(second))
        screen.until(lambda: self.active_window() == self.window, "window in front")
        # One that is told shows that the others were not just late.
        self.drag("link", self.uri(last), self.uri(first), expect="link")
        self.assertEqual(self.server.stdout.readline(), "Notify|0|2 documents converted||Show,Show\n")


if __name__ == "__main__":
    if sys.argv[1:] == ["--serve"]:
        serve()
    else:
        unittest.main(verbosity=2)
