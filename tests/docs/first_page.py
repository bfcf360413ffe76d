#!/usr/bin/env python3
"""Does what the guide's first page says, with the keyboard and the mouse of a display, and looks at the screen after
each step: first_page.py PAGE VIEWER COMMAND. The screens of a failure stay beside the demonstration that it names."""
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 20.0  # seconds for what the page promises to show


def run(*words):
    return subprocess.run(words, check=True, capture_output=True, text=True).stdout


class Picture:
    """A part of the screen, with red, green and blue bytes row by row."""

    def __init__(self, x, y, width, height):
        self.width, self.height = width, height
        self.bytes = subprocess.run(
            ["ffmpeg", "-v", "error", "-f", "x11grab", "-draw_mouse", "0", "-video_size", f"{width}x{height}", "-i",
             f"{os.environ['DISPLAY']}+{x},{y}", "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"],
            check=True, capture_output=True).stdout

    def pixel(self, x, y):
        at = 3 * (y * self.width + x)
        return tuple(self.bytes[at:at + 3])

    def places(self, looks, left=0, top=0, right=None, bottom=None):
        """Where pixels look like that."""
        return [(x, y) for y in range(top, bottom or self.height) for x in range(left, right or self.width)
                if looks(*self.pixel(x, y))]

    def count(self, looks, *box):
        return len(self.places(looks, *box))

    def share(self, looks):
        """Of the pixels, by every seventh."""
        pixels = range(0, self.width * self.height, 7)
        return sum(looks(*self.bytes[3 * i:3 * i + 3]) for i in pixels) / len(pixels)

    def difference(self, other):
        """The share of the pixels that are not the same."""
        if self.bytes == other.bytes:
            return 0.0
        return sum(self.bytes[i:i + 3] != other.bytes[i:i + 3]
                   for i in range(0, len(self.bytes), 3)) / (self.width * self.height)


def yellow(red, green, blue):
    return red > 220 and green > 220 and blue < 40


def green(red, green, blue):
    return red < 40 and green > 220 and blue < 40


def cyan(red, green, blue):
    return red < 40 and green > 220 and blue > 220


def trail(red, green, blue):
    return red > 120 and green < 60 and blue < 60


def notice(red, green, blue):
    return red > 200 and 150 < green < 220 and 40 < blue < 120


def grey(red, green, blue):
    return red == green == blue and 20 <= red <= 200


class Viewer:
    def __init__(self, program, arguments, tree):
        environment = dict(os.environ, PELSAR_DATA=tree + "/data/", SORVANE_NO_SETTINGS="1", LIBGL_ALWAYS_SOFTWARE="1")
        self.process = subprocess.Popen([program, *arguments], env=environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        self.window = run("timeout", "60", "xdotool", "search", "--sync", "--onlyvisible", "--pid",
                          str(self.process.pid), "--name", "^new_sorvane$").split()[-1]
        shape = dict(line.split("=") for line in
                     run("xdotool", "getwindowgeometry", "--shell", self.window).splitlines())
        self.x, self.y, self.width, self.height = (int(shape[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))
        run("xdotool", "windowfocus", "--sync", self.window)
        whole = self.screen()
        frame = whole.pixel(2, self.height // 2)  # the window's background, which frames the view
        def ends(place, ahead, end):
            while place != end and whole.pixel(*ahead(place)) != frame:
                place += 1 if end > place else -1
            return place
        middle = self.height // 2
        self.left = next(x for x in range(2, self.width) if whole.pixel(x, middle) != frame)
        self.top = ends(middle, lambda y: (self.left + 3, y), 0) + 1
        self.bottom = ends(middle, lambda y: (self.left + 3, y), self.height - 1)
        self.right = ends(self.width // 2, lambda x: (x, self.top + 3), self.width - 1)

    def screen(self):
        return Picture(self.x, self.y, self.width, self.height)

    def view(self):
        return Picture(self.x + self.left, self.y + self.top, self.right - self.left, self.bottom - self.top)

    def controls(self):
        return Picture(self.x, self.y + self.bottom, self.width, self.height - self.bottom)

    def key(self, *names):
        run("xdotool", "key", "--delay", "50", *names)

    def click(self, x, y, *options):
        run("xdotool", "mousemove", "--sync", str(self.x + x), str(self.y + y), "click", *options, "1")

    def click_view(self, x, y, *options):
        self.click(self.left + x, self.top + y, *options)

    def choose(self, menu, entry):
        """The menus' titles are told apart by the gaps between them, which are wider than a blank."""
        bar = Picture(self.x, self.y + 2, self.width, 14)
        columns = sorted({x for x, _ in bar.places(lambda red, *_: red < 120)})
        titles = [x for i, x in enumerate(columns) if i == 0 or x - columns[i - 1] > 8]
        self.click(titles[menu] + 6, 8)
        time.sleep(0.5)
        self.key(*["Down"] * entry, "Return")

    def windows(self):
        return set(run("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)).split())

    def answer(self, ask, text):
        """Types the name into the file dialog that opens, and accepts it."""
        known = self.windows()
        ask()
        dialogs = set()
        for _ in range(40):  # a menu that was open may still close
            before, dialogs = dialogs, self.windows() - known
            if dialogs and dialogs == before:
                break
            time.sleep(0.5)
        for _ in range(5):  # a dialog that is still being set up loses letters
            subprocess.run(["xdotool", "windowfocus", dialogs.pop()], check=True)
            time.sleep(0.5)
            self.key("ctrl+a")
            run("xdotool", "type", "--delay", "20", text)
            self.key("Return")
            time.sleep(1.5)
            dialogs = self.windows() - known
            if not dialogs:
                run("xdotool", "windowfocus", self.window)
                return
        sys.exit(f"the file dialog does not take {text}")


class Walk:
    """The page's steps, by their bold words. Each quotes sentences of the page and does and sees what they say."""

    def __init__(self, page, program, command):
        with open(page, encoding="utf-8") as file:
            self.text = " ".join(re.sub(r"\]\([^)]*\)|[\[*`]", "", file.read()).split())
        with open(page, encoding="utf-8") as file:
            self.headings = re.findall(r"^\*\*([^*]+)\.\*\*", file.read(), re.MULTILINE)
        self.program, self.folder = program, tempfile.mkdtemp()
        self.tree = os.path.join(self.folder, "demonstration")
        run(command, "demo", self.tree)
        self.viewer = None

    def says(self, sentence):
        if sentence not in self.text:
            sys.exit(f"the page does not say: {sentence}")
        print("-", sentence, flush=True)

    def see(self, what, holds):
        """Looks until it holds."""
        end = time.monotonic() + PATIENCE
        while not holds():
            if time.monotonic() > end:
                picture = os.path.join(self.folder, "failure.png")
                run("ffmpeg", "-v", "error", "-y", "-f", "x11grab", "-i", os.environ["DISPLAY"], "-frames:v", "1", picture)
                sys.exit(f"not seen: {what}; the screen is {picture}")
            time.sleep(0.2)

    def start_it(self):
        self.says("PELSAR_DATA=/usr/share/sorvane/demonstration/data/ new_sorvane "
                  "/usr/share/sorvane/demonstration/ETXYZ.OUT.")
        files = sorted(glob.glob(self.tree + "/ETXYZ.OUT.*"))
        self.viewer = Viewer(self.program, files, self.tree)
        self.says("The view opens on the missile of turn, the first of four engagements.")
        assert [os.path.basename(name) for name in files][0] == "ETXYZ.OUT.turn" and len(files) == 4
        self.see("the missile", lambda: self.body_in_the_middle(300))
        self.says("vague, the second, names data that does not exist; the view says so, and a click on the words closes "
                  "them.")
        self.see("the notice", lambda: self.viewer.view().count(notice) > 300)
        x, y = self.viewer.view().places(notice)[0]
        self.viewer.click_view(x + 3, y + 3)
        self.see("the notice closed", lambda: self.viewer.view().count(notice) == 0)

    def body_in_the_middle(self, least):
        view = self.viewer.view()
        x, y = view.width // 2, view.height // 2
        return view.count(lambda *colour: grey(*colour) and colour[0] > 25, x - 60, y - 60, x + 60, y) > least

    def see_all_of_it(self):
        self.says("Press 5: the camera goes to where all of turn is in the picture.")
        before = self.viewer.view()
        self.viewer.key("5")
        self.see("another picture", lambda: self.viewer.view().difference(before) > 0.02)

    def show_the_ground(self):
        self.says("Choose View → Show Terrain: a valley in the infrared, the slopes that face the sun brighter than the "
                  "others.")
        self.viewer.choose(3, 3)
        self.see("the ground", lambda: self.viewer.view().share(grey) > 0.8)

    def play_it(self):
        viewer = self.viewer
        self.says("Press Space, or the button with the triangle, and again to pause.")
        viewer.key("space")
        self.see("the clock run", lambda: viewer.controls().difference(self.moments(0.3)) > 0.0005)
        viewer.key("space")
        time.sleep(0.5)
        assert viewer.controls().difference(self.moments(0.5)) == 0.0, "paused"
        triangle = viewer.controls().places(lambda red, green, blue: green > red + 60 and green > blue + 60)
        x, y = triangle[len(triangle) // 2]
        viewer.click(x, viewer.bottom + y)
        self.see("the clock run", lambda: viewer.controls().difference(self.moments(0.3)) > 0.0005)
        viewer.click(x, viewer.bottom + y)
        self.says("A click on the slider's groove goes to any time.")
        viewer.click(int(0.95 * viewer.width), viewer.bottom + y)
        self.says("The yellow line is the missile's path, the green one the aircraft's, and burning flares leave red "
                  "trails.")
        self.see("the paths", lambda: min(viewer.view().count(yellow), viewer.view().count(green)) > 300 and
                 viewer.view().count(trail) > 10)
        self.says("The other engagements are there, too; X hides them, and shows them again.")
        self.see("the cyan path of weave", lambda: viewer.view().count(cyan) > 100)
        viewer.key("x")
        self.see("no cyan path", lambda: viewer.view().count(cyan) == 0)
        viewer.key("End")
        self.see("all of turn", lambda: self.fits(viewer.view(), yellow) and self.fits(viewer.view(), green))

    def moments(self, seconds):
        before = self.viewer.controls()
        time.sleep(seconds)
        return before

    @staticmethod
    def fits(view, looks):
        places = view.places(looks)
        return places and all(3 < x < view.width - 4 and 3 < y < view.height - 4 for x, y in places)

    def ride_along(self):
        viewer = self.viewer
        viewer.click(int(0.7 * viewer.width), viewer.bottom + viewer.controls().height // 2)
        self.says("3 follows the aircraft over the ground, 1 the missile; 2 looks through its seeker, and 4 stays where "
                  "the camera is.")
        for name in "3", "1":
            viewer.key(name)
            self.see("the body", lambda: self.body_in_the_middle(300))
            self.see("ground in a third of the picture", lambda: viewer.view().share(grey) >= 0.3)
        viewer.key("2")
        ring = lambda *colour: colour == (178, 178, 178) or colour == (179, 179, 179)
        self.see("the seeker's circle", lambda: viewer.view().count(ring) > 500)
        viewer.key("3", "4")
        time.sleep(1.0)
        before = viewer.view()
        viewer.key(*["Right"] * 5)
        time.sleep(1.0)
        assert viewer.view().difference(before) < 0.25, "the camera stays"
        self.says("Right and Left go from sample to sample.")
        clock = viewer.controls()
        viewer.key("Right")
        self.see("another time", lambda: viewer.controls().difference(clock) > 0.0)
        viewer.key("Left")
        self.see("the time before", lambda: viewer.controls().difference(clock) == 0.0)
        self.says("C goes to the closest approach and says how close that is; H shows the numbers of the moment.")
        viewer.key("3", "c")
        self.see("the words", lambda: viewer.view().count(notice, 0, 0, None, 40) > 60)
        before = viewer.view()
        viewer.key("h")
        self.see("the numbers", lambda: viewer.view().difference(before) > 0.01)
        viewer.key("h")

    def look_around(self):
        viewer = self.viewer
        self.says("Behind 1 and 3, drag in the picture with the left button, come closer with the wheel, and double "
                  "click to start over.")
        viewer.key("Home", "3")
        time.sleep(1.5)
        start = viewer.view()
        x, y = str(viewer.x + viewer.left + 300), str(viewer.y + viewer.top + 300)
        run("xdotool", "mousemove", "--sync", x, y, "mousedown", "1", "mousemove_relative", "--sync", "150", "40",
            "mouseup", "1")
        self.see("another side", lambda: viewer.view().difference(start) > 0.1)
        turned = viewer.view()
        run("xdotool", "click", "--repeat", "3", "--delay", "100", "4")
        self.see("it nearer", lambda: viewer.view().difference(turned) > 0.05)
        viewer.click_view(300, 300, "--repeat", "2", "--delay", "60")
        self.see("the start", lambda: viewer.view().difference(start) == 0.0)

    def see_a_miss(self):
        viewer = self.viewer
        self.says("Page Down follows the next engagement. Two further on is veer, whose missile goes for a flare; reading "
                  "an engagement tells how.")
        viewer.key("Next", "Next", "3", "c")
        time.sleep(1.0)
        self.see("ground under veer", lambda: viewer.view().share(grey) >= 0.3)
        viewer.key("5", "End")
        self.see("its paths and flares", lambda: self.fits(viewer.view(), yellow) and self.fits(viewer.view(), green) and
                 viewer.view().count(trail) > 10)

    def take_something_home(self):
        viewer = self.viewer
        self.says("F12 saves a picture. Ctrl+R, or the button Record, asks where and records a movie until Ctrl+R is "
                  "pressed again")
        picture, movie = (os.path.join(self.folder, name) for name in ("home.png", "home.avi"))
        viewer.answer(lambda: viewer.key("F12"), picture)
        self.see("the picture's file", lambda: os.path.exists(picture) and os.path.getsize(picture) > 10000)
        viewer.answer(lambda: viewer.key("Home", "ctrl+r"), movie)
        time.sleep(2.0)
        viewer.key("ctrl+r")
        self.see("the movie's frames", lambda: os.path.exists(movie) and int(run(
            "ffprobe", "-v", "error", "-count_frames", "-show_entries", "stream=nb_read_frames", "-of", "csv=p=0",
            movie).strip() or 0) > 5)

    def open_your_own(self):
        viewer = self.viewer
        self.says("When a file does not show up, the view says why")
        wrong = os.path.join(self.folder, "wrong.txt")
        with open(wrong, "w", encoding="utf-8") as file:
            file.write("nothing\n")
        viewer.answer(lambda: viewer.choose(1, 1), wrong)
        self.see("the reason", lambda: viewer.view().count(notice, 0, 40) > 100)
        self.says("Every other key: F1.")
        count = len(viewer.windows())
        viewer.key("F1")
        self.see("the keys", lambda: len(viewer.windows()) > count)

    def go(self):
        for heading in self.headings:
            print(heading, flush=True)
            getattr(self, heading.lower().replace(" ", "_"))()
        self.viewer.key("ctrl+c")
        assert self.viewer.process.wait(PATIENCE) == 0
        shutil.rmtree(self.folder)


if __name__ == "__main__":
    walk = Walk(*sys.argv[1:])
    try:
        walk.go()
    finally:
        if walk.viewer and walk.viewer.process.poll() is None:
            walk.viewer.process.kill()
