"""What the scenarios of screen reading have in common: settings, real windows under the pointer, and what is heard."""

import json
import os
import re
import signal
import subprocess

import harness
from harness import Scenario, WINDOWS, native, wait_for, wine

BUILD = os.path.dirname(harness.PROGRAM) if not WINDOWS else os.path.dirname(os.path.dirname(harness.PROGRAM))
SAMPLE_WINDOW = os.path.join(BUILD, "tests", "voxtrel_sample_window" + (".exe" if WINDOWS else ""))

# Everything that is known of these is spoken.
ROLES = ["push button", "button", "label", "static", "check box", "radio button", "toggle button", "text", "entry",
         "password text", "slider", "spin button", "spin box", "progress bar", "combo box", "table cell", "list item",
         "page tab", "menu", "menu item", "check menu item", "grouping", "link", "heading", "frame", "static text",
         "check button", "outline item", "cell", "column header", "table column header"]

# What the toolkit of the sample window calls its kinds of controls.
KINDS = {"button": "push button", "label": "static text", "check box": "check button",
         "toggle button": "check button", "password text": "text"} if WINDOWS else {
             "button": "push button", "list item": "table cell"}

REGISTRY = r"HKEY_CURRENT_USER\Software\Voxtrel Settings\Orvella"

# The server's line for a place where nothing speaks, or a program that does not answer.
NOTHING = "object\t\t\t\t-"


class ScreenReading(Scenario):
    def setUp(self):
        super().setUp()
        self.switch_on(ROLES)
        height = int(self.xdotool("getdisplaygeometry").split()[1])
        self.move_to(1, height - 1)

    def switch_on(self, roles):
        self.write_settings(*(f'"{role} " = "name,role,value,"' for role in roles))

    def write_settings(self, *role_table, on=True):
        # The character stands out of the way.
        sections = {"Agent": ['"Top" = "850"', '"Left" = "1100"'], "speech": [f'"usescreenreading" = "{on}"'],
                    "ScreenReadingRoles": role_table}
        if WINDOWS:
            self.write_registry(sections)
            return
        os.makedirs(os.path.dirname(self.home.settings_file), exist_ok=True)
        lines = ["Voxtrel settings 1", 'application "Orvella"']
        for name, values in sections.items():
            lines += [f'section "{name}"', *values]
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write("\n".join([*lines, "end", ""]))

    def choice(self, role):
        """What the role table says of the role now."""
        if not WINDOWS:
            found = re.search(f'"{role}" = "(.*)"', self.home.settings())
            return found and found[1]
        told = subprocess.run(wine("reg", "query", REGISTRY + r"\ScreenReadingRoles", "/v", role), stdout=subprocess.PIPE,
                              stdin=subprocess.DEVNULL, timeout=harness.PATIENCE).stdout.decode()
        found = re.search(r"REG_SZ\s+(.*?)\s*$", told)
        return found and found[1]

    def write_registry(self, sections):
        lines = ["REGEDIT4", "", f"[-{REGISTRY}]", ""]
        for name, values in sections.items():
            lines += [f"[{REGISTRY}\\{name}]", *(value.replace('" = "', '"="') for value in values), ""]
        path = self.home.path("settings.reg")
        with open(path, "w", encoding="ascii", newline="\r\n") as file:
            file.write("\n".join(lines))
        subprocess.run(wine("regedit", "/S", native(path)), check=True, timeout=harness.PATIENCE)

    def xdotool(self, *arguments):
        return self.display.run("xdotool", *map(str, arguments)).decode().strip()

    def move_to(self, x, y):
        self.xdotool("mousemove", x, y)

    def open_program(self, *command, environment=None):
        full = self.home.environment(self.display.environment)
        full.update(QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", **(environment or {}))
        process = subprocess.Popen(command, env=full, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   start_new_session=True)
        self.addCleanup(self.end_process, process)
        return process

    def end_process(self, process):
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()

    def window(self, window_class):
        """Where the window with the title stands: x, y, width, height."""
        def find():
            found = self.xdotool("search", "--onlyvisible", "--class", f"^{window_class}$").split()
            return next((window for window in found if self.xdotool("getwindowname", window)), None)
        window = wait_for(find, f"a window of {window_class}")
        self.xdotool("windowactivate", "--sync", window)
        about = self.display.run("xwininfo", "-id", window).decode()
        return tuple(int(re.search(rf"{what}:\s+(-?\d+)", about)[1])
                     for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def sample_window(self, environment=None):
        """The window with one of each control, and its objects."""
        path = self.home.path("objects")
        process = self.open_program(*(wine(SAMPLE_WINDOW) if WINDOWS else [SAMPLE_WINDOW]), native(path),
                                    environment=environment)
        wait_for(lambda: os.path.exists(path), "the sample window")
        with open(path, encoding="utf-8") as file:
            return process, [json.loads(line) for line in file]

    def wait_spoken(self, program, text, since=0):
        """Waits until that text is what an object gave, and its markup is spoken."""
        def spoken():
            return next((event for event in program.events("object")[since:] if event["text"].strip() == text.strip()),
                        None)
        try:
            event = wait_for(spoken, f"{text!r}")
        except AssertionError as error:
            heard = [event["text"] for event in program.events("object")[since:]]
            raise AssertionError(f"{error}; heard: {heard}") from None
        words = re.findall("[A-Za-z]+", text)
        program.wait_event("speak", lambda speak: all(word in speak["markup"] for word in words))
        return event

    def point_at(self, program, thing, since=0):
        """Moves to an object of the sample window and waits until it is spoken as what it is."""
        self.move_to(thing["x"], thing["y"])
        return self.wait_spoken(program, self.description(thing), since)

    def point_at_all(self, program, origin, places):
        """The same for (x, y, text) in the window that begins at the origin."""
        for x, y, text in places:
            with self.subTest(text):
                self.move_to(origin[0] + x, origin[1] + y)
                self.wait_spoken(program, text)

    def description(self, thing):
        return f"{thing['name']} {KINDS.get(thing['kind'], thing['kind'])} {thing['value']}"

    def server_lines(self, program):
        return [event["text"] for event in program.events("server")]

    def wait_server_line(self, program, line, since=0):
        wait_for(lambda: line in self.server_lines(program)[since:], f"{line!r} from the server")

    def wait_looked_again(self, program):
        """Until the server, which looks again and again, has found nothing new for a while, and the program has heard
        so: it gives a sign of life after each second of silence."""
        heard = self.server_lines(program).count("alive")
        wait_for(lambda: self.server_lines(program).count("alive") >= heard + 2, "two signs of life of the server")

    def wait_for_ticks(self, program, text):
        """Until the program has spoken what it was told, which takes it some ticks of screen reading."""
        self.assertEqual(self.call("--speak", text)[0], 0)
        program.wait_event("utterance", lambda event: text in event["text"])

    def server_processes(self, program):
        if WINDOWS:
            # Nobody's child here; of this Wine home only.
            return [process for process in map(int, filter(str.isdigit, os.listdir("/proc")))
                    if self.is_server_of_this_home(process)]
        children = self.display.run("ps", "-o", "pid=,comm=", "--ppid", str(program.process.pid)).decode()
        return [int(line.split()[0]) for line in children.splitlines() if "ovaccserver" in line]

    def is_server_of_this_home(self, process):
        try:
            with open(f"/proc/{process}/comm", encoding="utf-8") as name, open(f"/proc/{process}/environ", "rb") as all_:
                return (name.read().strip() == "ovaccserver.exe" and
                        f"WINEPREFIX={os.path.realpath(os.environ['VOXTREL_WINE_HOME'])}".encode() in all_.read())
        except OSError:
            return False
