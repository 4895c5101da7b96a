#!/usr/bin/python3
"""pictures.py FOLDER [LOOK...]: pictures of the real windows on the X display $DISPLAY; run it under session.py.

Saves LOOK-small.png, LOOK-big.png, LOOK-general.png and LOOK-update.png for each look. A look is a theme (light, dark, contrast), a
font size in points, a scale and a reading direction (ltr, rtl), such as light-14-1.5-rtl. Without looks it takes the ones below.

$QUILLOW names the program, build/release/bin/quillow if it is not set. The pictures of the README and the guide: docs/guide/make_pictures.sh
"""
import os
import pathlib
import subprocess
import sys

import accessibility
import screen

HERE = pathlib.Path(__file__).resolve().parent
HOME = pathlib.Path(os.environ["HOME"])
CONFIG = pathlib.Path(os.environ["XDG_CONFIG_HOME"])
LOOKS = ["light-10-1-ltr", "light-14-1-ltr", "light-20-1-ltr", "dark-10-1-ltr", "dark-14-1.5-ltr", "contrast-14-1-ltr",
         "light-10-1.5-ltr", "light-10-2-ltr", "light-10-1-rtl", "light-20-1-rtl", "dark-14-1-rtl"]
DOCUMENT = "{\\rtf1\\ansi A few words.\\par}"
# Window, view and button: paper and text.
COLOURS = {"light": ("239,240,241", "255,255,255", "252,252,252", "35,38,41"),
           "dark": ("42,46,50", "27,30,32", "49,54,59", "252,252,252"),
           "contrast": ("0,0,0", "0,0,0", "0,0,0", "255,255,255")}


def make_documents():
    texts, papers = HOME / "Texts", HOME / "Papers"
    for folder in (texts, papers, HOME / "Letters" / "Letter.rtfd", HOME / "Web"):
        folder.mkdir(parents=True, exist_ok=True)
    documents = [papers / "thesis.rtf", HOME / "Letters" / "Letter.rtfd", papers / "scan.pdf", HOME / "Web" / "index.html"]
    documents[0].write_text(DOCUMENT)
    (documents[1] / "TXT.rtf").write_text(DOCUMENT)
    documents[2].write_bytes(b"")
    documents[3].write_text("<p>A few words.")
    subprocess.run([sys.executable, HERE / "presets.py", texts], check=True)
    return documents


def write_theme(theme, points):
    """Qt itself reads these settings on a KDE desktop."""
    window, view, button, text = COLOURS[theme]
    parts = [f"[General]\nfont=Sans Serif,{points},-1,5,50,0,0,0,0,0\nmenuFont=Sans Serif,{points},-1,5,50,0,0,0,0,0\n"]
    for name, paper in (("Window", window), ("View", view), ("Button", button), ("Tooltip", view)):
        parts.append(f"[Colors:{name}]\nBackgroundNormal={paper}\nForegroundNormal={text}\nForegroundInactive=128,128,128\n")
    parts.append("[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=255,255,255\n")
    CONFIG.mkdir(parents=True, exist_ok=True)
    (CONFIG / "kdeglobals").write_text("\n".join(parts))


class Program:
    def __init__(self, arguments, documents, **environment):
        program = os.environ.get("QUILLOW", HERE.parent.parent / "build/release/bin/quillow")
        self.process = subprocess.Popen([program, *arguments, *documents], env={**os.environ, **environment})
        self.window = screen.window("^Quillow$")
        self.accessible = accessibility.application("Quillow", self.process.pid)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(30)

    def wait_for_entries(self, count):
        log = accessibility.control(self.accessible, "text", "Message log")
        screen.until(lambda: accessibility.text_of(log).count("\n") >= count, f"{count} entries")

    def save(self, window, path):
        """Without the frame, once the picture is at rest. The pointer is elsewhere."""
        screen.pointer("mousemove", 0, 0)
        screen.settled_place(window)
        screen.save_settled_picture(screen.place_of(window), path)

    def disclose(self):
        before = screen.place_of(self.window).height
        accessibility.press(accessibility.control(self.accessible, "check box", "Message log"))
        screen.until(lambda: screen.place_of(self.window).height > before, "the log")

    def open_preferences(self):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window], check=True)
        screen.press_keys("ctrl+comma")
        return screen.window("^General")

    def show_update(self, window):
        accessibility.press(accessibility.control(self.accessible, "radio button", "Update"))
        screen.window("^Update")
        screen.settled_place(window)


def take(look, folder):
    theme, points, scale, direction = look.split("-")
    documents = make_documents()
    write_theme(theme, points)
    arguments = ["-reverse"] if direction == "rtl" else []
    with Program(arguments, documents, QT_SCALE_FACTOR=scale, XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5") as program:
        program.wait_for_entries(len(documents))
        program.save(program.window, folder / f"{look}-small.png")
        program.disclose()
        program.save(program.window, folder / f"{look}-big.png")
        preferences = program.open_preferences()
        program.save(preferences, folder / f"{look}-general.png")
        program.show_update(preferences)
        program.save(preferences, folder / f"{look}-update.png")
        accessibility.press(accessibility.control(program.accessible, "radio button", "General"))
    # The next look begins small and with an empty log.
    (HOME / "Library/Application Support/Quillow/Quillow.qwldat").unlink(missing_ok=True)


def main(arguments):
    folder = pathlib.Path(arguments[0])
    folder.mkdir(parents=True, exist_ok=True)
    for look in arguments[1:] or LOOKS:
        take(look, folder)


if __name__ == "__main__":
    main(sys.argv[1:])
