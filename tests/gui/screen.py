"""Windows, pointer and pictures of the X display $DISPLAY, with xdotool, xwininfo and ImageMagick.

Everything waits for a condition; the limit only keeps a broken test from hanging.
"""
import collections
import re
import subprocess
import time

LIMIT_SECONDS = 60
MORE_THAN_A_SPECK = 150  # pixels
Place = collections.namedtuple("Place", "x y width height")


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def until(condition, what):
    """The first true value of condition()."""
    deadline = time.monotonic() + LIMIT_SECONDS
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {LIMIT_SECONDS} s: {what() if callable(what) else what}")
        time.sleep(0.05)


def find_window(title):
    """The id of the visible window whose title fits the regular expression, or None."""
    ids = output_of("xdotool", "search", "--onlyvisible", "--name", title).split()
    return ids[0].decode() if ids else None


def window(title):
    return until(lambda: find_window(title), f"window {title!r}")


def place_of(window_id):
    # Not with xdotool, which counts the decoration twice.
    text = output_of("xwininfo", "-id", window_id).decode()
    values = [re.search(label + r":\s+(-?\d+)", text) for label in
              ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
    return Place(*(int(value[1]) for value in values)) if all(values) else None


def move_window(window_id, x, y):
    """Moves a window and waits until it has stopped moving."""
    subprocess.run(["xdotool", "windowmove", window_id, str(x), str(y)])
    settled_place(window_id)


def settled_place(window_id):
    places = []

    def is_still():
        places.append(place_of(window_id))
        time.sleep(0.1)
        return len(places) > 3 and len(set(places[-4:])) == 1 and places[-1]

    return until(is_still, "window at rest")


def picture_of(place):
    """A hash of the pixels of the place."""
    crop = f"{place.width}x{place.height}+{place.x}+{place.y}"
    return output_of("import", "-silent", "-window", "root", "-crop", crop, "+repage", "-format", "%#", "info:")


def save_picture(place, path):
    crop = f"{place.width}x{place.height}+{place.x}+{place.y}"
    subprocess.run(["import", "-silent", "-window", "root", "-crop", crop, "+repage", path], check=True)


def settled_picture(place):
    """The hash of the place's pixels once they have stopped changing."""
    pictures = []

    def is_still():
        pictures.append(picture_of(place))
        time.sleep(0.2)
        return len(pictures) > 3 and len(set(pictures[-4:])) == 1 and pictures[-1]

    return until(is_still, "picture at rest")


def save_settled_picture(place, path):
    settled_picture(place)
    save_picture(place, path)


def shapes(*image):
    """The places of the white shapes in the picture that ImageMagick makes with these arguments; largest first."""
    text = output_of("convert", *image, "-define", "connected-components:verbose=true", "-define",
                     f"connected-components:area-threshold={MORE_THAN_A_SPECK}", "-connected-components", "8", "null:")
    found = []
    for line in text.decode().splitlines()[1:]:
        _, box, *_, colour = line.split()
        width, height, x, y = (int(n) for n in box.replace("x", "+").split("+"))
        if "255" in colour or "white" in colour:
            found.append(Place(x, y, width, height))
    return found


def pointer(*arguments):
    subprocess.run(["xdotool", *(str(a) for a in arguments)], check=True)


def press_keys(*keys):
    subprocess.run(["xdotool", "key", "--delay", "30", *keys], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)


def begin_drag(start, end):
    """Presses the button at start and moves to end in steps, as a user does."""
    pointer("mousemove", *start)
    time.sleep(0.1)
    pointer("mousedown", 1)
    time.sleep(0.1)
    steps = [(start[0] - d, start[1] + d // 3) for d in (3, 6, 10, 15, 22, 30)]
    steps += [(start[0] - 30 + (end[0] - start[0] + 30) * i // 12, start[1] + 10 + (end[1] - start[1] - 10) * i // 12)
              for i in range(1, 13)]
    for x, y in steps:
        pointer("mousemove", x, y)
        time.sleep(0.04)


def hover_until(end, condition, what):
    """Moves around the end point until the condition holds, because drag targets react to movements."""
    offset = [0]

    def moved():
        offset[0] = 1 - offset[0]
        pointer("mousemove", end[0] + offset[0], end[1])
        return condition()

    return until(moved, what)


def hover(end, seconds):
    """Moves around the end point for a while, to check that the target does not react."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        for offset in (1, 0):
            pointer("mousemove", end[0] + offset, end[1])
            time.sleep(0.05)
