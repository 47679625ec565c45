"""The Text Reader as a person uses it: reading along with the voice, the keyboard alone, files of many kinds, the layout
that is found again."""

import array
import os
import re
import unittest
import wave

import accessible
import harness
from harness import Scenario, wait_for

WORD_COLOR = "65535,0,0"
STORY = "One two three four five six seven eight nine ten. Eleven twelve.\r\nThirteen fourteen.\r\n"
TWIPS_A_PIXEL = 15
SOUND_TOLERANCE = 0.12  # seconds; the program looks every 30 ms, the rest is the test's own machine


def unpack(number):
    """The 0-based place and the length of the word behind a bookmark number."""
    return number % 100000 - 1, number // 100000


def word_onsets(path, least_gap):
    """The times, in seconds, at which sound begins after a silence of at least least_gap seconds."""
    with wave.open(path) as file:
        rate = file.getframerate()
        samples = array.array("h", file.readframes(file.getnframes()))
    step = rate // 200
    loud = [max(map(abs, samples[i:i + step]), default=0) > 400 for i in range(0, len(samples), step)]
    onsets, silent_since = [], -least_gap
    for i, sounds in enumerate(loud):
        now = i * step / rate
        if sounds:
            if now - silent_since >= least_gap:
                onsets.append(now)
            silent_since = now
    return onsets


class ReaderScenario(Scenario):
    def write(self, name, data):
        path = self.home.path(name)
        with open(path, "wb") as file:
            file.write(data if isinstance(data, bytes) else data.encode())
        return path

    def store(self, **sections):
        """What the user has set before the program starts."""
        os.makedirs(os.path.dirname(self.home.settings_file), exist_ok=True)
        lines = ["Voxtrel settings 1", 'application "Orvella"']
        for section, values in sections.items():
            lines.append(f'section "{section}"')
            lines += [f'"{key}" = "{value}"' for key, value in values.items()]
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write("\n".join(lines + ["end", ""]))

    def open_reader(self, text, *arguments, name="story.txt"):
        program = self.start_and_wait(self.write(name, text), *arguments)
        self.window = wait_for(lambda: accessible.find("frame", "Text Reader"), "the Text Reader")
        self.box = wait_for(lambda: accessible.find("text", "Text", self.window), "the text box")
        wait_for(lambda: accessible.has_focus(self.window), "the keyboard in the Text Reader")
        return program

    def text(self):
        return accessible.text(self.box)

    def keys(self, *keys):
        self.display.run("xdotool", "key", "--clearmodifiers", *keys)

    def press(self, label):
        """Clicks on what has that name in the Text Reader once it stands still on the screen."""
        seen = []

        def at_rest():
            button = accessible.find(name=label, under=self.window)
            seen.append(button and accessible.place(button))
            return len(seen) > 1 and seen[-1] == seen[-2] and seen[-1]

        x, y = wait_for(at_rest, label)
        self.display.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def colored_words(self):
        return [self.text()[first:end] for first, end, color in accessible.color_runs(self.box) if color == WORD_COLOR]

    def wait_spoken(self, program, words):
        """Waits until the last text given to the voice holds exactly these words."""
        def spoken():
            utterances = program.events("utterance")
            return utterances and plain(utterances[-1]["text"]) == words
        wait_for(spoken, f'"{words}" to be spoken')


def plain(markup):
    """The words of a markup with bookmarks: what stands behind each."""
    words = [part.split("\\", 1)[1].strip() for part in markup.split("\\Mrk=")[1:-1]]
    return " ".join(word for word in words if word)


class ReadingAlong(ReaderScenario):
    def test_each_word_is_marked_when_it_is_heard(self):
        # With a pause between the words every one of them begins after a silence in the recording.
        self.store(speech={"interwordpause": "350"})
        program = self.open_reader(STORY)
        shown = []

        def watch():
            before = len(program.events("bookmark"))
            marked = self.colored_words()
            bookmarks = program.events("bookmark")
            if before == len(bookmarks) and before:
                shown.append((bookmarks[-1]["number"], marked))
            return any(event["number"] == 999999999 for event in bookmarks)

        wait_for(watch, "the end of the story")
        wait_for(lambda: program.events("request-complete"), "the end of the request")
        for number, marked in shown:
            if number != 999999999:
                first, length = unpack(number)
                self.assertEqual(marked, [STORY[first:first + length].strip()])
        heard = word_onsets(program.recording, 0.3)
        words = [event["t"] / 1000 for event in program.events("bookmark") if event["number"] != 999999999]
        self.assertEqual(len(words), len(heard))
        for place, (mark, sound) in enumerate(zip(words, heard)):
            self.assertAlmostEqual(mark - words[0], sound - heard[0], delta=SOUND_TOLERANCE, msg=f"word {place}")

    def test_keyboard_alone_walks_by_sentence_stops_and_closes(self):
        program = self.open_reader("First one here. Second one there. Third one last.\n")
        self.keys("Down")
        self.wait_spoken(program, "First one here.")
        self.keys("Right")
        self.wait_spoken(program, "Second one there.")
        self.keys("Right")
        self.wait_spoken(program, "Third one last.")
        self.keys("Left")
        self.wait_spoken(program, "Second one there.")
        self.keys("Up")
        self.keys("Escape")
        wait_for(lambda: not accessible.find("frame", "Text Reader"), "the Text Reader to close")
        self.assertIsNone(program.process.poll())

    def test_word_mode_walks_by_word(self):
        self.store(TextReader={"ReadMode": "word"})
        program = self.open_reader("Alpha beta gamma.\n")
        self.keys("Down")
        self.wait_spoken(program, "Alpha")
        self.keys("Right")
        self.wait_spoken(program, "beta")

    def test_pause_keeps_the_place_and_goes_on(self):
        program = self.open_reader("Seven bridges cross the river, and each of them has another colour.\n")
        program.wait_event("bookmark", lambda event: unpack(event["number"])[0] >= 14)
        self.press("Pause")
        wait_for(lambda: program.events("request-complete"), "silence")
        paused_at = program.events("bookmark")[-1]["number"]
        before = len(program.events("bookmark"))
        self.press("Pause")
        wait_for(lambda: len(program.events("bookmark")) > before, "the voice to go on")
        again = program.events("bookmark")[before]["number"]
        self.assertLessEqual(unpack(again)[0], unpack(paused_at)[0])
        self.assertGreaterEqual(unpack(again)[0], 6)

    def test_typing_while_the_voice_reads_keeps_the_mark_on_its_word(self):
        program = self.open_reader("A slow and steady walk along the wide and quiet river.\n")
        program.wait_event("bookmark", lambda event: unpack(event["number"])[0] >= 2)
        self.press("Text")
        self.keys("ctrl+Home", "x", "y")
        wait_for(lambda: self.text().startswith("xy"), "what was typed")
        program.wait_event("bookmark", lambda event: unpack(event["number"])[0] >= 18)
        self.assertIn(self.colored_words(), ([word] for word in self.text().split()))


class Files(ReaderScenario):
    def test_text_of_many_encodings_is_shown_right(self):
        text = "Größe, naïve, 12 £.\nEnde"
        for name, data in (("utf8", text.encode()), ("utf8-mark", text.encode("utf-8-sig")),
                           ("utf16", text.encode("utf-16")), ("utf16-be", text.encode("utf-16-be")),
                           ("utf16-le", text.encode("utf-16-le")), ("latin", text.encode("cp1252")),
                           ("mac", text.replace("\n", "\r").encode()), ("dos", text.replace("\n", "\r\n").encode())):
            with self.subTest(name):
                program = self.open_reader(data, name=name + ".txt")
                wait_for(lambda: self.text() == text, f"the text, and not {self.text()!r}")
                self.call("--quit")
                program.wait_end()

    def test_binary_file_on_the_command_line_is_an_error(self):
        code, _, errors = self.call(self.write("picture.txt", bytes(range(256)) * 40))
        self.assertEqual(code, 2)
        self.assertIn("picture.txt", errors)

    def test_file_of_the_open_dialog_replaces_the_text_and_a_binary_one_does_not(self):
        self.open_reader("Before.")
        self.choose(self.write("next.txt", "After the dialog."))
        wait_for(lambda: self.text() == "After the dialog.", "the text of the chosen file")
        self.choose(self.write("picture.txt", bytes(range(256)) * 40))
        wait_for(lambda: accessible.find("alert"), "a message")
        self.keys("Return")
        wait_for(lambda: not accessible.find("alert"), "the message to go")
        wait_for(lambda: self.text() == "After the dialog.", "the text from before")

    def choose(self, path):
        self.press("Open text")
        wait_for(lambda: accessible.find("file chooser"), "the dialog")
        self.display.run("xdotool", "type", "--delay", "5", path)
        self.keys("Return")
        wait_for(lambda: not accessible.find("file chooser"), "the dialog to go")


class Layout(ReaderScenario):
    def reader_window(self):
        return next((w for w in self.display.windows() if w[1] == "Text Reader"), None)

    def test_place_size_and_mode_are_found_again_after_a_kill(self):
        program = self.open_reader(STORY)
        window = wait_for(self.reader_window, "the window")
        self.display.run("xdotool", "windowsize", "--sync", str(window[0]), "700", "420")
        self.display.run("xdotool", "windowmove", "--sync", str(window[0]), "260", "180")
        wait_for(lambda: self.reader_window()[2:4] == (700, 420), "the new size")
        place = self.reader_window()[2:]
        wait_for(lambda: "WindowWidth" in self.home.settings(), "the layout to be kept")
        wait_for(lambda: self.kept("WindowLeft") == str(260 * TWIPS_A_PIXEL), "the place to be kept")
        program.kill()
        self.open_reader(STORY)
        wait_for(lambda: self.reader_window() and self.reader_window()[2:] == place,
                 f"the window at {place}, and not {self.reader_window()}")

    def kept(self, key):
        found = re.search(f'"{key}" = "(.*)"', self.home.settings())
        return found and found[1]


if __name__ == "__main__":
    harness.main()
