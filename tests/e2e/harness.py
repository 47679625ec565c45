"""Drives the real program as a user would, on the display that tests/with-display gives, with a home folder of its
own and the program's trace to wait on. Through Wine when VOXTREL_E2E_PROGRAM names an .exe."""

import atexit
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import wave

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.environ.get("VOXTREL_E2E_PROGRAM", os.path.join(REPOSITORY, "build", "debug", "voxtrel"))
WINDOWS = PROGRAM.endswith(".exe")
# Wine's first start in a fresh prefix takes long on a busy machine.
PATIENCE = 120 if WINDOWS else 30


def wait_for(condition, what, seconds=PATIENCE):
    """The first true value of condition(), or a failure that says what was waited for."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds} s in vain for {what}")
        time.sleep(0.02)


class Display:
    """The display that the test was given, as a person and as the window manager see it."""

    def __init__(self):
        self.environment = dict(os.environ)

    def run(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True).stdout

    def windows(self):
        """The top windows as (id, name, width, height, x, y)."""
        found = []
        for line in self.run("xwininfo", "-root", "-tree").decode(errors="replace").splitlines():
            match = re.match(r"\s*(0x[0-9a-f]+) (?:\"(.*)\"|\(has no name\)):.*?(\d+)x(\d+)\+-?\d+\+-?\d+\s+"
                             r"\+(-?\d+)\+(-?\d+)$", line)
            if match:
                window, name, *numbers = match.groups()
                found.append((int(window, 16), name or "", *map(int, numbers)))
        return found

    def is_viewable(self, window):
        return b"IsViewable" in self.run("xwininfo", "-id", str(window))

    def screenshot(self, path):
        self.run("import", "-window", "root", path)


class Home:
    """A user's home folder, with the program's settings in it."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="voxtrel-e2e-")
        self.runtime = os.path.join(self.folder, "run")
        os.makedirs(self.runtime, mode=0o700)

    def environment(self, base):
        environment = dict(base, HOME=self.folder, XDG_CONFIG_HOME=os.path.join(self.folder, "config"),
                           XDG_RUNTIME_DIR=self.runtime)
        if WINDOWS:
            environment["HOME"] = os.environ["HOME"]
        return environment

    @property
    def settings_file(self):
        return os.path.join(self.folder, "config", "voxtrel", "settings")

    def settings(self):
        with open(self.settings_file, encoding="utf-8") as file:
            return file.read()

    def path(self, name):
        return os.path.join(self.folder, name)

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


def native(path):
    """The path as the program sees it."""
    return "Z:" + path.replace("/", "\\") if WINDOWS else path


class Voxtrel:
    """One run of the program."""

    def __init__(self, display, home, *arguments, environment=None):
        self.trace_file = tempfile.mktemp(prefix="trace-", dir=home.folder)
        self.recording = self.trace_file + ".wav"
        full = home.environment(display.environment)
        full["VOXTREL_RECORD"] = native(self.recording)
        full.update(environment or {})
        # A file, because a pipe ends only with the last program that was started from here.
        self.errors = open(self.trace_file + ".errors", "w+", encoding="utf-8", errors="replace")
        self.process = subprocess.Popen(
            command("--trace", native(self.trace_file), *arguments), env=full,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=self.errors, start_new_session=True)

    def events(self, name=None):
        try:
            with open(self.trace_file, encoding="utf-8") as file:
                lines = [line for line in file.read().split("\n")[:-1]]
        except FileNotFoundError:
            return []
        events = [json.loads(line) for line in lines]
        return [event for event in events if name is None or event["event"] == name]

    def hot_keys(self):
        """The rows that have fired so far, each "down" or "up" as the program saw it last."""
        return {event["number"]: "down" if event["down"] else "up" for event in self.events("hot-key")}

    def wait_event(self, name, matching=lambda event: True, seconds=PATIENCE):
        return wait_for(lambda: next((event for event in self.events(name) if matching(event)), None),
                        f"the event {name}", seconds)

    def wait_end(self, seconds=PATIENCE):
        """The exit code and what was written to standard error."""
        try:
            self.process.wait(timeout=seconds)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the program did not end within {seconds} s") from None
        self.errors.seek(0)
        return self.process.returncode, self.errors.read()

    def kill(self):
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self.errors.close()


def command(*arguments):
    return (wine(PROGRAM) if WINDOWS else [PROGRAM]) + list(arguments)


def wine(*arguments):
    return [os.path.join(REPOSITORY, "packaging", "windows", "wine"), os.environ["VOXTREL_WINE_HOME"], *arguments]


class WineHome:
    """Keeps Wine's own programs running from the first test to the last: each start of them takes seconds, and they
    would hold on to the files of the program that they were started for."""

    sitter = None

    @classmethod
    def open(cls):
        cls.sitter = subprocess.Popen(wine("cmd.exe"), stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL)
        # The next program finds a desktop at once.
        subprocess.run(wine("cmd.exe", "/c", "exit"), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=PATIENCE)

    @classmethod
    def close(cls):
        subprocess.run(["wineserver", "--kill"], env=dict(os.environ, WINEPREFIX=os.environ["VOXTREL_WINE_HOME"]))
        cls.sitter.communicate()


class WineDesktop:
    """A desktop of Wine's own in one window, with task bar and tray: its windows, the keys and the focus are Wine's
    alone, as on Windows, where the window manager would have a word in it otherwise."""

    @staticmethod
    def use():
        """For the Wine home of this run, before its first program."""
        os.environ["VOXTREL_WINE_HOME"] += "-desktop"
        for arguments in (["Explorer", "/v", "Desktop", "/d", "shell"],
                          [r"Explorer\Desktops", "/v", "shell", "/d", "1280x1024"]):
            subprocess.run(wine("reg.exe", "add", "HKCU\\Software\\Wine\\" + arguments[0], *arguments[1:], "/f"),
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, timeout=PATIENCE, check=True)
        # What runs already has another desktop.
        subprocess.run(["wineserver", "--kill"], env=dict(os.environ, WINEPREFIX=os.environ["VOXTREL_WINE_HOME"]))

    def __init__(self):
        # After programs were killed, Wine tells the others neither what is copied nor, always, what is clicked.
        WineHome.close()
        WineHome.open()
        self.probe = subprocess.Popen(
            wine(os.path.join(os.environ["VOXTREL_E2E_PROGRAMS"], "voxtrel_desktop_probe.exe")),
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, encoding="utf-8")

    def ask(self, *command):
        self.probe.stdin.write(" ".join(map(str, command)) + "\n")
        self.probe.stdin.flush()
        return self.probe.stdout.readline().rstrip("\r\n")

    def close(self):
        self.probe.communicate()


def sound_level(path):
    """The loudest sample of a WAV file, 0 to 1, and its length in seconds."""
    with wave.open(path) as file:
        frames = file.readframes(file.getnframes())
        samples = memoryview(frames).cast("h")
        return max((abs(sample) for sample in samples), default=0) / 32768, file.getnframes() / file.getframerate()


class Scenario(unittest.TestCase):
    """A test with a home of its own; what it starts is gone afterwards."""

    def setUp(self):
        self.display = Display()
        self.home = Home()
        self.addCleanup(self.home.remove)

    def start(self, *arguments, environment=None):
        program = Voxtrel(self.display, self.home, *arguments, environment=environment)
        self.addCleanup(program.kill)
        return program

    def start_and_wait(self, *arguments, environment=None):
        program = self.start(*arguments, environment=environment)
        program.wait_event("started")
        return program

    def call(self, *arguments, stdin=None, seconds=PATIENCE):
        """Runs the program to its end: exit code, output, errors."""
        # Files, because a pipe ends only with the last program that was started from here.
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run(command(*arguments), env=self.home.environment(self.display.environment), input=stdin,
                                  stdout=output, stderr=errors, timeout=seconds)
            output.seek(0)
            errors.seek(0)
            return done.returncode, output.read(), errors.read().decode(errors="replace")


def main(wine_desktop=False):
    if WINDOWS:
        if wine_desktop:
            WineDesktop.use()
        WineHome.open()
        atexit.register(WineHome.close)
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[1:])
