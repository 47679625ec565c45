"""Speaking what is selected in other programs, with real ones as targets: the text that is spoken, the clipboard
before and after, where the focus ends up."""

import os
import random
import shutil
import signal
import subprocess
import time
import unittest

import harness
from harness import Scenario, WINDOWS, WineDesktop, wait_for, wine

ROWS = {"F3": 1, "F4": 2, "F5": 3, "F6": 4, "F7": 5}
SENTENCE = "The quick brown fox."
# How long the random scenario runs.
SECONDS = float(os.environ.get("VOXTREL_E2E_SECONDS", "20"))


class Editor:
    """An editor that shows a file; the whole text is selected by Ctrl+A."""

    def __init__(self, command, window_class, place=None):
        self.command = command
        self.window_class = window_class
        self.place = place

    def is_installed(self):
        return WINDOWS or shutil.which(self.command[0]) is not None

    def open(self, scenario, path):
        command = [*self.command, path]
        return scenario.open_program(wine(*command) if WINDOWS else command, self.window_class, self.place)


EDITORS = {
    # Beside each other, so that each can be clicked.
    "notepad": Editor([r"C:\windows\system32\notepad.exe"], "notepad.exe", (20, 420, 500, 400)),
    "wordpad": Editor([r"C:\Program Files\Windows NT\Accessories\wordpad.exe"], "wordpad.exe", (560, 420, 600, 400)),
} if WINDOWS else {
    "mousepad": Editor(["mousepad", "--disable-server"], "Mousepad"),
    "featherpad": Editor(["featherpad", "--standalone"], "FeatherPad"),
}


class SelectionScenario(Scenario):
    def setUp(self):
        super().setUp()
        if WINDOWS:
            self.wine_desktop = WineDesktop()
            self.addCleanup(self.wine_desktop.close)
        self.owners = []
        self.addCleanup(self.stop_owners)
        self.addCleanup(self.release, "Control_L", "Shift_L", "Shift_R", "Alt_L")
        self.copy("mine")

    # The user's hands.

    def xdotool(self, *arguments):
        return self.display.run("xdotool", *map(str, arguments)).decode().strip()

    def hold(self, *keys):
        for key in keys:
            self.xdotool("keydown", key)

    def release(self, *keys):
        for key in reversed(keys):
            self.xdotool("keyup", key)

    def press_hot_key(self, program, key, done):
        """Holds Ctrl and the key until done() is true, and waits until the program has seen them go up: two presses with
        no look at the keyboard between them are one."""
        self.hold("Control_L", key)
        try:
            return wait_for(done, f"what Ctrl+{key} does")
        finally:
            self.release("Control_L", key)
            wait_for(lambda: self.is_up(program, ROWS[key]), f"a look at {key} released")

    def is_up(self, program, row):
        return program.hot_keys().get(row) == "up"

    # The user's clipboard.

    def copy(self, text):
        owner = subprocess.Popen(["xclip", "-i", "-selection", "clipboard", "-quiet"], stdin=subprocess.PIPE,
                                 env=self.display.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        owner.stdin.write(text.encode())
        owner.stdin.close()
        self.owners.append(owner)
        wait_for(lambda: self.clipboard() == text, "the text on the clipboard")

    def clipboard(self):
        try:
            done = subprocess.run(["xclip", "-o", "-selection", "clipboard", "-t", "UTF8_STRING"],
                                  env=self.display.environment, capture_output=True, timeout=10)
        except subprocess.TimeoutExpired:
            return None
        return done.stdout.decode(errors="replace")

    def stop_owners(self):
        for owner in self.owners:
            owner.kill()
            owner.wait()

    def expect_clipboard(self, text):
        wait_for(lambda: self.clipboard() == text, f"{text[:40]!r} back on the clipboard, not {self.clipboard()!r}")

    # Other programs.

    def open_program(self, command, window_class, place=None):
        environment = self.home.environment(self.display.environment)
        environment["QT_QPA_PLATFORM"] = "xcb"
        process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   start_new_session=True)
        self.addCleanup(self.end_process, process)
        window = wait_for(lambda: self.visible_window(window_class), f"a window of {command[0]}")
        if place:
            wait_for(lambda: self.wine_desktop.ask("place", *place, self.title(window)) == "placed", "the window to move")
        self.bring_to_front(window)
        return process, window

    def end_process(self, process):
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()

    def visible_window(self, window_class):
        found = self.xdotool("search", "--onlyvisible", "--class", f"^{window_class}$").split()
        # The window with the title is the one to be used.
        named = [window for window in found if self.xdotool("getwindowname", window)]
        return int(named[-1]) if named else None

    def title(self, window):
        return self.xdotool("getwindowname", window)

    def is_in_front(self, window):
        if WINDOWS:
            return self.wine_desktop.ask("foreground") == self.title(window)
        active = self.xdotool("getactivewindow")
        return active and int(active) == window

    def expect_in_front(self, window):
        wait_for(lambda: self.is_in_front(window), "the window in front again")

    def bring_to_front(self, window):
        # Again and again: a request that is still under way takes its target to the front, too.
        def in_front():
            if WINDOWS:
                self.click_status_bar(window)
            else:
                self.xdotool("windowactivate", window)
            return self.is_in_front(window)
        wait_for(in_front, "the window in front")

    def click_status_bar(self, window):
        """Where a click changes nothing but which window is in front."""
        _, _, width, height, _, _ = next(found for found in self.display.windows() if found[0] == window)
        self.xdotool("mousemove", "--window", window, width // 2, height - 12, "click", 1)

    def write_file(self, text, name="note"):
        path = self.home.path(f"{name}.txt")
        with open(path, "w", encoding="utf-8", newline="\r\n" if WINDOWS else "\n") as file:
            file.write(text)
        return path

    def select_all(self, window):
        """Selects everything and makes sure of it by copying it once."""
        self.bring_to_front(window)
        self.copy("nothing yet")

        def copied():
            self.xdotool("key", "ctrl+a", "ctrl+c")
            return self.clipboard() != "nothing yet"
        wait_for(copied, "the selection")
        self.copy("mine")

    def first_editor(self):
        editor = next((editor for editor in EDITORS.values() if editor.is_installed()), None)
        if editor is None:
            self.skipTest("no editor is installed")
        return editor

    def open_first_editor(self, text):
        process, window = self.first_editor().open(self, self.write_file(text))
        self.select_all(window)
        return process, window

    def click_button(self, number):
        """One of the toolbar's five, counted from 1."""
        window, _, width, height, _, _ = wait_for(
            lambda: next((found for found in self.display.windows() if found[1] == "Voxtrel" and found[2] > 60
                          and self.display.is_viewable(found[0])), None), "the toolbar")
        self.xdotool("mousemove", "--window", window, (2 * number - 1) * width // 10, height // 2)
        self.xdotool("click", 1)

    # What the program said.

    def spoken(self, program):
        return [event["markup"] for event in program.events("speak")]

    def has_spoken(self, program, text, times=1):
        return sum(text in markup for markup in self.spoken(program)) >= times


class HotKey1(SelectionScenario):
    def test_speaks_the_selection_of_each_editor(self):
        for name, editor in EDITORS.items():
            if not editor.is_installed():
                continue
            with self.subTest(name):
                program = self.start_and_wait()
                process, window = editor.open(self, self.write_file(SENTENCE, name))
                self.select_all(window)
                self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE))
                self.expect_clipboard("mine")
                self.expect_in_front(window)
                program.wait_event("word", lambda event: event["text"].startswith("fox"))
                self.assertEqual(len(self.spoken(program)), 1, "a held key speaks once")
                self.end_process(process)
                program.kill()

    def test_speaks_again_when_pressed_again_and_with_shift_or_alt(self):
        program = self.start_and_wait()
        _, window = self.open_first_editor(SENTENCE)
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE, 1))
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE, 2))
        # Wine's menus open when Alt goes up, whatever was pressed in between.
        modifiers = ("Shift_L", "Shift_R") if WINDOWS else ("Shift_L", "Shift_R", "Alt_L")
        for count, modifier in enumerate(modifiers, start=3):
            self.hold(modifier)
            self.press_hot_key(program, "F3", lambda times=count: self.has_spoken(program, SENTENCE, times))
            self.release(modifier)
        self.expect_clipboard("mine")

    def test_the_clipboard_is_the_same_before_and_after(self):
        program = self.start_and_wait()
        _, window = self.open_first_editor(SENTENCE)
        texts = ["", "x", "two\nlines\n", "a smile \U0001F600, naïve, 漢字", "long " * 100_000]
        for count, text in enumerate(texts, start=1):
            with self.subTest(text=text[:20]):
                self.copy(text)
                self.bring_to_front(window)
                self.press_hot_key(program, "F3", lambda times=count: self.has_spoken(program, SENTENCE, times))
                self.expect_clipboard(text)

    def test_nothing_selected_speaks_nothing(self):
        program = self.start_and_wait()
        _, window = self.first_editor().open(self, self.write_file(""))
        self.hold("Control_L", "F3")
        # The request takes the clipboard from its owner, and gives the text back when it has found nothing.
        wait_for(lambda: self.owners[-1].poll() is not None, "the request to begin")
        wait_for(lambda: self.clipboard() == "mine", "the clipboard as it was")
        self.release("Control_L", "F3")
        self.copy("spoken instead")
        self.bring_to_front(window)
        self.press_hot_key(program, "F5", lambda: self.has_spoken(program, "spoken instead"))
        self.assertEqual(len(self.spoken(program)), 1)
        self.expect_clipboard("spoken instead")

    def test_a_program_that_hangs_costs_nothing_but_time(self):
        program = self.start_and_wait()
        process, window = self.open_first_editor(SENTENCE)
        process.send_signal(signal.SIGSTOP)
        self.hold("Control_L", "F3")
        wait_for(lambda: self.clipboard() == "mine", "the clipboard as it was")
        self.release("Control_L", "F3")
        self.expect_clipboard("mine")
        process.send_signal(signal.SIGCONT)
        self.bring_to_front(window)
        self.press_hot_key(program, "F5", lambda: self.has_spoken(program, "mine"))
        self.expect_clipboard("mine")

    def test_starts_and_speaks_while_another_program_hangs(self):
        process, window = self.open_first_editor(SENTENCE)
        process.send_signal(signal.SIGSTOP)
        # Not a hot key: Wine learns of keys from the program that has the focus.
        program = self.start_and_wait()
        self.assertEqual(self.call("--speak", "Hello there.")[0], 0)
        wait_for(lambda: self.has_spoken(program, "Hello there."), "the text to be spoken")
        process.send_signal(signal.SIGCONT)

    @unittest.skipIf(WINDOWS, "terminals of the other platform")
    def test_speaks_what_is_selected_in_a_terminal_and_types_nothing_there(self):
        if not shutil.which("xterm"):
            self.skipTest("no terminal is installed")
        program = self.start_and_wait()
        typed = self.home.path("typed")
        _, window = self.open_program(
            ["xterm", "-e", "sh", "-c", f"printf '{SENTENCE}'; stty raw; cat > {typed}"], "XTerm")

        def selected():
            # Three clicks take the line.
            self.xdotool("mousemove", "--window", window, 30, 8)
            self.xdotool("click", "--repeat", 3, "--delay", 50, 1)
            done = subprocess.run(["xclip", "-o", "-selection", "primary", "-t", "UTF8_STRING"],
                                  env=self.display.environment, capture_output=True, timeout=10)
            return SENTENCE in done.stdout.decode()
        wait_for(selected, "the selection")
        self.bring_to_front(window)
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE))
        self.expect_clipboard("mine")
        self.expect_in_front(window)
        with open(typed, "rb") as file:
            keys = file.read()
        # The hot key itself arrives there, as with any program that looks at the keyboard from outside.
        self.assertNotIn(b"\x03", keys)
        self.assertNotIn(b"[2;5~", keys)


class TextReader(SelectionScenario):
    def is_read(self, program, word):
        return any(word in event["text"] for event in program.events("utterance"))

    def test_f4_reads_the_selection_and_gives_the_focus_back(self):
        program = self.start_and_wait()
        _, window = self.open_first_editor(SENTENCE)
        self.press_hot_key(program, "F4", lambda: self.is_read(program, "quick"))
        self.expect_clipboard("mine")
        self.expect_in_front(window)

    def test_f6_reads_the_clipboard(self):
        program = self.start_and_wait()
        self.copy("Only on the clipboard.")
        self.press_hot_key(program, "F6", lambda: self.is_read(program, "clipboard"))
        self.expect_clipboard("Only on the clipboard.")


class Toolbar(SelectionScenario):
    def test_speak_button_speaks_the_selection_of_the_window_that_was_in_front(self):
        program = self.start_and_wait()
        _, window = self.open_first_editor(SENTENCE)
        program.wait_event("target", lambda event: event["window"] == window or WINDOWS)
        self.click_button(1)
        wait_for(lambda: self.has_spoken(program, SENTENCE), "the selection to be spoken")
        self.expect_clipboard("mine")
        self.expect_in_front(window)


class Browser(SelectionScenario):
    @unittest.skipIf(WINDOWS or not shutil.which("chromium"), "no browser is installed")
    def test_speaks_the_selection_of_a_web_page(self):
        program = self.start_and_wait()
        page = self.home.path("page.html")
        with open(page, "w", encoding="utf-8") as file:
            file.write(f"<title>page</title><p>{SENTENCE}</p>")
        _, window = self.open_program(
            ["chromium", "--no-sandbox", "--no-first-run", "--disable-gpu", "--password-store=basic",
             "--user-data-dir=" + self.home.path("browser"), "file://" + page], "Chromium")
        self.select_all(window)
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE))
        self.expect_clipboard("mine")
        self.expect_in_front(window)


class ClipboardHotKeys(SelectionScenario):
    def test_f5_speaks_the_clipboard(self):
        program = self.start_and_wait()
        self.copy("From the clipboard.")
        self.press_hot_key(program, "F5", lambda: self.has_spoken(program, "From the clipboard."))
        self.expect_clipboard("From the clipboard.")

    def test_f7_silences(self):
        program = self.start_and_wait()
        self.copy("word " * 200)
        self.press_hot_key(program, "F5", lambda: program.events("word"))
        self.press_hot_key(program, "F7", lambda: any(
            event["text"].startswith("Speak") for event in program.events("request-complete")))


class TheEnd(SelectionScenario):
    @unittest.skipIf(WINDOWS, "the system keeps it there, and this display sees it only while a Wine program runs")
    def test_the_clipboard_outlives_the_program(self):
        program = self.start_and_wait()
        editor, _ = self.open_first_editor(SENTENCE)
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE))
        self.expect_clipboard("mine")
        self.end_process(editor)
        self.assertEqual(self.call("--quit")[0], 0)
        program.wait_end()
        self.expect_clipboard("mine")


class RandomUse(SelectionScenario):
    def test_nothing_is_lost_and_nothing_sticks(self):
        chance = random.Random(1)
        program = self.start_and_wait()
        windows = []
        mine = "mine"
        for name, editor in EDITORS.items():
            if editor.is_installed():
                # A file for each: an editor asks questions when its file is written again.
                _, window = editor.open(self, self.write_file(SENTENCE, name))
                self.select_all(window)
                windows.append(window)
        if not windows:
            self.skipTest("no editor is installed")
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            self.bring_to_front(chance.choice(windows))
            if chance.random() < 0.3:
                # Speaks the selection, or stops.
                self.click_button(chance.choice([1, 3]))
                self.expect_clipboard(mine)
            keys = chance.sample(["F3", "F5", "F7"], chance.randint(1, 2))
            modifiers = ["Control_L"] + chance.choice([[], [], ["Shift_L"]])
            self.hold(*modifiers, *keys)
            if chance.random() < 0.5:
                time.sleep(chance.random() / 2)
            self.release(*modifiers, *keys)
            self.expect_clipboard(mine)
            if chance.random() < 0.3:
                mine = f"mine {chance.random()}"
                self.copy(mine)
        wait_for(lambda: "down" not in program.hot_keys().values(), "a look at all keys released")
        count = sum(SENTENCE in markup for markup in self.spoken(program))
        self.bring_to_front(windows[0])
        self.press_hot_key(program, "F3", lambda: self.has_spoken(program, SENTENCE, count + 1))
        self.expect_clipboard(mine)


if __name__ == "__main__":
    harness.main(wine_desktop=True)
