"""make_pictures.py SAMPLES OUTPUT: drives the program in $QUILLOW under session.py and takes the pictures of the guide and the README."""
import os
import pathlib
import shutil
import subprocess
import sys

import accessibility
import screen

SAMPLES, OUTPUT = (pathlib.Path(argument) for argument in sys.argv[1:])
HOME = pathlib.Path(os.environ["HOME"])
WIDTH = 720  # of the main window: long names in one line
GUI = pathlib.Path(screen.__file__).parent
TITLE_BAR = 20  # pixels above the contents


def picture(window, name):
    """The window at rest, with its title bar, as OUTPUT/name."""
    screen.pointer("mousemove", 2, 2)
    place = screen.settled_place(window)
    screen.save_settled_picture(place._replace(y=place.y - TITLE_BAR, height=place.height + TITLE_BAR), str(OUTPUT / name))


def join(pictures, name):
    """OUTPUT/name: the pictures one below another."""
    subprocess.run(["convert", *(OUTPUT / picture for picture in pictures), "-background", "white", "-gravity", "north", "-splice", "0x14",
                    "-append", "-chop", "0x14", "-strip", OUTPUT / name], check=True)


def with_documents():
    """Documents of several kinds, one of them without text."""
    papers = HOME / "Papers"
    papers.mkdir()
    for sample, name in (("thesis-page.pdf", "thesis.pdf"), ("poem-greek.htm", "poem.htm"), ("offer-german.rtf", "offer.rtf")):
        shutil.copy(SAMPLES / sample, papers / name)
    shutil.copytree(SAMPLES / "field-notes.rtfd", papers / "field-notes.rtfd")
    (papers / "scan.pdf").write_bytes(b"%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                                      b"2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                                      b"3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>endobj\ntrailer<</Root 1 0 R>>\n")
    return [papers / name for name in ("thesis.pdf", "field-notes.rtfd", "scan.pdf", "poem.htm", "offer.rtf")]


def main():
    (HOME / "Texts").mkdir()
    subprocess.run([sys.executable, GUI / "presets.py", HOME / "Texts"], check=True)
    program = subprocess.Popen([os.environ["QUILLOW"], *with_documents()])
    try:
        window = screen.window("^Quillow$")
        root = accessibility.application("Quillow")
        screen.until(lambda: (HOME / "Texts/offer.txt").exists(), "texts")
        screen.move_window(window, 60, 60)
        screen.pointer("windowsize", "--sync", window, WIDTH, screen.place_of(window).height)
        picture(window, "window-small.png")
        screen.pointer("windowactivate", "--sync", window)
        screen.press_keys("ctrl+l")
        screen.until(lambda: screen.place_of(window).height > 500, "big window")
        picture(window, "window-big.png")
        screen.press_keys("ctrl+comma")
        preferences = screen.window("^General")
        screen.move_window(preferences, 60, 60)
        picture(preferences, "preferences-general.png")
        accessibility.press(accessibility.control(root, "radio button", "Update"))
        picture(screen.window("^Update"), "preferences-update.png")
        join(["window-small.png", "window-big.png"], "window.png")
        join(["preferences-general.png", "preferences-update.png"], "preferences.png")
    finally:
        program.terminate()
        program.wait()


main()
