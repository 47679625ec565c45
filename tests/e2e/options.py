"""The options dialog: every control changed, heard or seen, kept by OK and thrown away by Cancel; operated through
AT-SPI as a screen reader does it, and partly with the keyboard alone (more of that in options_by_keyboard.py)."""

import os
import re
import shutil
import time

import harness
from accessible import Window
from harness import Scenario, wait_for

TITLE = "Speech Options"


class OptionsScenario(Scenario):
    maxDiff = None

    def setUp(self):
        super().setUp()
        self.options = Window(TITLE)

    def start_with_options(self, *arguments, environment=None):
        program = self.start("--options", *arguments, environment=environment)
        program.wait_event("started")
        self.options.wait()
        return program

    def quit(self, program):
        self.assertEqual(self.call("--quit")[0], 0)
        code, errors = program.wait_end()
        self.assertEqual((code, errors), (0, ""))

    def settings_lines(self):
        """The stored values as key=value."""
        return [f"{key}={value}" for key, value in re.findall(r'^"(.*)" = "(.*)"$', self.home.settings(), re.M)]

    def focus_dialog(self):
        window = wait_for(lambda: self.display.run("xdotool", "search", "--onlyvisible", "--name",
                                                   f"^{TITLE}$").split(), "the dialog")[-1].decode()
        self.display.run("xdotool", "windowactivate", "--sync", window)

    def press(self, *keys):
        for key in keys:
            self.display.run("xdotool", "key", key)
            time.sleep(0.05)

    def type(self, text):
        self.display.run("xdotool", "type", text)

    def last_speak(self, program, count):
        """The markup of the count-th text that was spoken."""
        return wait_for(lambda: program.events("speak")[count - 1:count], f"text {count} to be spoken")[0]["markup"]


class Keeping(OptionsScenario):
    def change_everything(self):
        options = self.options
        options.choose("Size", "Normal")
        options.choose("Beyond this corner", "Bottom Left")
        options.show_page("Balloon")
        options.click("radio button", "The text")
        options.click("check box", "Disappear after speaking")
        options.click("check box", "Show each word as it is spoken")
        options.click("check box", "Take the size of the text")
        options.choose("Font", "DejaVu Sans")
        options.choose("Size", "18")
        options.show_page("Voice")
        options.choose("Voice", "Adult Female 1, US English")
        options.click("radio button", "Whisper")
        options.set_slider("Pitch", 180)
        options.set_slider("Speed", 120)
        options.set_slider("Volume", 40000)
        options.set_slider("Pause between words", 60)
        options.show_page("Hot Keys")
        options.click("check box", "Stop speaking")

    def check_everything(self, changed):
        """Whether the controls show what change_everything has set, or the defaults."""
        options = self.options
        self.assertEqual(options.chosen("Beyond this corner"), "Bottom Left" if changed else "Top Right")
        options.show_page("Balloon")
        self.assertEqual(options.is_checked("radio button", "The text"), changed)
        self.assertEqual(options.is_checked("check box", "Disappear after speaking"), not changed)
        self.assertEqual(options.is_checked("check box", "Show each word as it is spoken"), not changed)
        self.assertEqual(options.is_checked("check box", "Take the size of the text"), changed)
        self.assertEqual(options.chosen("Font"), "DejaVu Sans" if changed else "Arial")
        options.show_page("Voice")
        self.assertEqual(options.chosen("Voice"), "Adult Female 1, US English" if changed
                         else "Adult Male 1, US English")
        self.assertEqual(options.slider("Pitch"), 180 if changed else 150)
        self.assertEqual(options.slider("Speed"), 120 if changed else 150)
        self.assertEqual(options.slider("Volume"), 40000 if changed else 30000)
        self.assertEqual(options.slider("Pause between words"), 60 if changed else 0)
        # Saved when it is chosen, whatever becomes of the rest.
        self.assertTrue(options.is_checked("radio button", "Whisper"))
        options.show_page("Hot Keys")
        self.assertEqual(options.is_checked("check box", "Stop speaking"), not changed)

    def wait_size(self, pixels):
        wait_for(lambda: [w for w in self.display.windows()
                          if w[2:4] == (pixels, pixels) and self.display.is_viewable(w[0])],
                 f"a character of {pixels} pixels")

    def test_ok_keeps_every_change_over_a_restart(self):
        program = self.start_with_options()
        self.change_everything()
        self.wait_size(85)
        self.options.click("push button", "OK")
        self.options.wait_gone()
        self.quit(program)
        again = self.start_with_options()
        self.wait_size(85)
        self.check_everything(changed=True)
        self.options.show_page("Voice")
        self.options.click("push button", "Test the voice")
        self.assertTrue(self.last_speak(again, 1).startswith("\\Spd=120\\\\Pit=180\\\\Vol=40000\\"))
        self.quit(again)

    def test_cancel_leaves_the_store_alone_and_the_changes_in_force(self):
        program = self.start_with_options()
        self.change_everything()
        self.options.click("push button", "Cancel")
        self.options.wait_gone()
        self.call("--speak", "Still changed.")
        self.assertTrue(self.last_speak(program, 1).startswith("\\Spd=120\\\\Pit=180\\\\Vol=40000\\"))
        self.quit(program)
        again = self.start_with_options()
        self.wait_size(128)
        self.check_everything(changed=False)
        self.quit(again)

    def test_foreign_values_are_shown_as_far_as_they_go_and_kept(self):
        program = self.start_with_options()
        self.options.click("push button", "OK")
        self.options.wait_gone()
        self.quit(program)
        foreign = {"Agent_Size_IDX": "7", "Pitch": "9999", "Agent_Position_List_Index": "7.5",
                   "Agent_Balloon_Always": "-5", "Font": "No Such Font", "AgentVoice": "Nobody", "1key": "65"}
        text = self.home.settings()
        for key, value in foreign.items():
            text, count = re.subn(rf'^"{key}" = ".*"$', f'"{key}" = "{value}"', text, flags=re.M)
            self.assertEqual(count, 1)
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write(text)
        again = self.start_with_options()
        self.options.show_page("Balloon")
        self.assertEqual(self.options.chosen("Font"), "No Such Font")
        self.options.show_page("Voice")
        self.assertEqual(self.options.chosen("Voice"), "Nobody")
        self.options.show_page("Hot Keys")
        self.assertEqual(self.options.chosen("Key: Speak the selection"), "")
        self.options.click("push button", "OK")
        self.options.wait_gone()
        for key, value in foreign.items():
            self.assertIn(f"{key}={value}", self.settings_lines())
        self.quit(again)

    def test_program_that_ends_takes_the_dialog_with_it(self):
        self.quit(self.start_with_options())

    def test_second_request_brings_the_open_dialog_to_the_front(self):
        program = self.start_with_options()
        self.assertEqual(self.call("--options")[0], 0)
        program.wait_event("command", lambda event: event["text"] == "3:" and event["t"] > 0)
        Window("Voxtrel").click("push button", "Open Speech Properties Panel")
        found = self.display.run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$").split()
        self.assertEqual(len(found), 1)
        self.quit(program)


class Hearing(OptionsScenario):
    def test_test_buttons_silence_and_speak_at_once(self):
        program = self.start_with_options()
        self.call("--speak", "one two three four five six seven eight nine ten eleven twelve thirteen")
        program.wait_event("word")
        self.options.show_page("Voice")
        begun = time.monotonic()
        self.options.click("push button", "Test the voice")
        program.wait_event("utterance", lambda event: "new voice" in event["text"])
        self.assertLess(time.monotonic() - begun, 2)
        self.assertFalse([event for event in program.events("word") if event["text"].startswith("thirteen")])
        self.quit(program)

    def test_size_and_place_are_seen_at_once(self):
        program = self.start_with_options()
        self.options.choose("Size", "Small")
        program.wait_event("animation", lambda event: event["text"].lower() == "getattention")
        wait_for(lambda: [w for w in self.display.windows() if w[2:] == (50, 50, 100, 100)], "a small character")
        self.options.click("check box", "Keep the character off the screen")
        wait_for(lambda: not [w for w in self.display.windows()
                              if w[2:4] == (50, 50) and self.display.is_viewable(w[0])], "the character to go")
        self.options.click("check box", "Keep the character off the screen")
        wait_for(lambda: [w for w in self.display.windows()
                          if w[2:] == (50, 50, 100, 100) and self.display.is_viewable(w[0])], "the character back")
        self.quit(program)

    def test_hot_key_in_use_is_refused_aloud(self):
        program = self.start_with_options()
        self.options.show_page("Hot Keys")
        self.options.choose("Key: Speak the clipboard", "F4")
        self.assertIn("This hot key is already in use. Please choose another", self.last_speak(program, 1))
        wait_for(lambda: self.options.chosen("Key: Speak the clipboard") == "F5", "the list to go back")
        self.options.choose("Key: Speak the clipboard", "F9")
        wait_for(lambda: "3key=120" in self.settings_lines(), "the key to be saved")
        self.quit(program)

    def test_pronunciation_is_heard_as_typed_and_used_afterwards(self):
        program = self.start_with_options()
        self.options.show_page("Pronunciations")
        self.options.type_into("Written", "Voxtrel")
        self.options.type_into("Spoken", "vocks trell")
        self.options.click("push button", "Hear")
        program.wait_event("utterance", lambda event: event["text"].endswith(" vocks trell"))
        self.options.click("push button", "Save")
        wait_for(lambda: "Voxtrel=vocks trell" in self.settings_lines(), "the pronunciation to be stored")
        self.options.click("push button", "Cancel")
        self.call("--speak", "Now voxtrel speaks")
        self.assertIn('\\map="vocks trell"="voxtrel"\\', self.last_speak(program, 1))
        self.quit(program)


class KeyboardAlone(OptionsScenario):
    def test_pronunciations_by_keyboard(self):
        program = self.start_with_options()
        self.focus_dialog()
        self.press("ctrl+Next", "ctrl+Next", "ctrl+Next", "alt+i")
        self.type("SQL")
        self.press("Tab")
        self.type("sequel")
        self.press("alt+e")
        program.wait_event("utterance", lambda event: event["text"].endswith(" sequel"))
        self.press("alt+k", "Return")
        wait_for(lambda: "SQL=sequel" in self.settings_lines(), "the pronunciation to be stored")
        self.press("alt+w", "Home", "space")
        wait_for(lambda: self.options.text("Spoken") == "sequel", "the entry in the boxes")
        self.press("alt+d")
        wait_for(lambda: "SQL=sequel" not in self.settings_lines(), "the pronunciation to be deleted")
        self.press("Escape")
        self.options.wait_gone()
        self.quit(program)

    def test_word_list_chooses_an_entry_only_by_a_key_in_it(self):
        program = self.start_with_options()
        self.focus_dialog()
        self.press("ctrl+Next", "ctrl+Next", "ctrl+Next", "alt+i")
        self.type("SQL")
        self.press("Tab")
        self.type("sequel")
        self.press("Return")
        wait_for(lambda: "SQL=sequel" in self.settings_lines(), "the pronunciation to be stored")
        self.options.type_into("Written", "half a wo")
        self.press("alt+w")
        wait_for(lambda: self.options.focused_name() == "Words in the list", "the list to get the focus")
        self.assertEqual(self.options.text("Written"), "half a wo")
        self.press("Down")
        wait_for(lambda: self.options.text("Written") == "SQL", "the entry in the boxes")
        self.press("Escape")
        self.options.wait_gone()
        self.quit(program)

    def after_tab(self):
        """The name of what has the focus next; empty for a drop-down list and the tabs, which tell of no focus."""
        before = self.options.focused()
        self.press("Tab")
        # From one that tells of no focus to the next nothing is seen to change.
        wait_for(lambda: self.options.focused() != before or before is None, "the focus to move")
        return self.options.focused_name()

    def reached_from(self, *keys):
        """The names of all that Tab reaches from where the keys lead to, until it comes round."""
        self.press(*keys)
        names = [self.options.focused_name()]
        while names[-1] != "Cancel" and len(names) < 30:
            names.append(self.after_tab())
        self.press(*["shift+Tab"] * 3)  # back into the page
        return [name for name in names if name]

    def test_tab_goes_through_every_page_and_the_buttons(self):
        buttons = ["Help", "OK", "Cancel"]
        program = self.start_with_options()
        self.focus_dialog()
        self.assertEqual(self.reached_from("alt+c"), ["Keep the character off the screen", "Say a short text",
                                                      "Say a longer text", *buttons])
        self.assertEqual(self.reached_from("ctrl+Next"), [
            "The text, but nothing for a single word", "Disappear after speaking", "Show each word as it is spoken",
            "Take the size of the text", *buttons])
        self.assertEqual(self.reached_from("ctrl+Next"), ["Normal", "Pitch", "Speed", "Volume",
                                                          "Pause between words", "Test the voice", *buttons])
        self.press("ctrl+Next", "alt+i")
        self.type("SQL")
        self.press("Tab")
        self.type("sequel")
        self.assertEqual(self.reached_from("Tab"), ["Hear", "Save", "New", "Import...", "Words in the list", *buttons])
        self.assertEqual(self.reached_from("ctrl+Next")[:2], ["Speak the selection",
                                                              "Read the selection in the Text Reader"])
        self.assertEqual(self.reached_from("ctrl+Next"), ["I would like to use Screen Reading",
                                                          "Select items which you would like to be read",
                                                          "Read Basic Text", "Read Extra Information", *buttons])
        # What is switched on later is reached, too.
        self.options.click("check box", "I would like to use Screen Reading")
        self.assertEqual(self.reached_from("Tab"), ["Details...", *buttons])
        self.quit(program)


class Opening(OptionsScenario):
    def test_right_click_on_the_character_offers_the_options(self):
        program = self.start_and_wait()
        wait_for(lambda: [w for w in self.display.windows()
                          if w[2:] == (128, 128, 100, 100) and self.display.is_viewable(w[0])], "the character")
        program.wait_event("request-complete", lambda event: event["text"] == "Show")
        self.display.run("xdotool", "mousemove", "164", "170", "click", "3")
        # The menu takes keys once it is there: a window that begins at the pointer.
        wait_for(lambda: [w for w in self.display.windows() if 140 < w[4] < 180 and 150 < w[5] < 190
                          and self.display.is_viewable(w[0])], "the menu")
        self.press("Down", "Return")
        self.options.wait()
        self.quit(program)

    def test_ten_thousand_pronunciations_are_listed_quickly(self):
        os.makedirs(os.path.dirname(self.home.settings_file))
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write('Voxtrel settings 1\napplication "Orvella"\nsection "modify"\n')
            file.writelines(f'"word{i}" = "sound {i}"\n' for i in range(10000))
            file.write("end\n")
        program = self.start_and_wait()
        begun = time.monotonic()
        self.assertEqual(self.call("--options")[0], 0)
        self.options.wait()
        seconds = time.monotonic() - begun
        print(f"opened in {seconds:.2f} s ...", end=" ")
        self.assertLess(seconds, 5)
        self.quit(program)


class ChangingTheCharacter(OptionsScenario):
    def setUp(self):
        super().setUp()
        # A program folder of its own, with a second character.
        folder = os.path.dirname(harness.PROGRAM)
        self.folder = self.home.path("program")
        for part in ("characters", "strings", "icons"):
            shutil.copytree(os.path.join(folder, part), os.path.join(self.folder, part))
        characters = os.path.join(self.folder, "characters")
        shutil.copy(os.path.join(characters, "genie.acs"), os.path.join(characters, "robin.acs"))
        self.addCleanup(setattr, harness, "PROGRAM", harness.PROGRAM)
        harness.PROGRAM = shutil.copy(harness.PROGRAM, self.folder)

    def test_new_character_stands_where_the_old_one_stood_and_everything_is_saved(self):
        program = self.start_with_options()
        program.wait_event("request-complete", lambda event: event["text"] == "Show")
        # A hand takes its time.
        self.display.run("xdotool", "mousemove", "164", "170", "mousedown", "1", "sleep", "0.3", "mousemove", "264",
                         "320", "sleep", "0.3", "mouseup", "1")
        wait_for(lambda: [w for w in self.display.windows() if w[2:] == (128, 128, 200, 250)], "the dragged character")
        self.options.show_page("Voice")
        self.options.set_slider("Speed", 200)
        self.options.show_page("Character")
        self.options.choose("Character", "robin")
        wait_for(lambda: "FavouriteAgent=robin" in self.settings_lines(), "the settings")
        self.options.click("push button", "Cancel")
        for line in ("Speed=200", "Left=200", "Top=250"):
            self.assertIn(line, self.settings_lines())
        wait_for(lambda: [w for w in self.display.windows()
                          if w[2:] == (128, 128, 200, 250) and self.display.is_viewable(w[0])], "the new character")
        self.quit(program)


class Help(OptionsScenario):
    def test_help_opens_the_manual_in_the_browser(self):
        opened = self.home.path("opened")
        applications = self.home.path("data/applications")
        os.makedirs(applications)
        with open(os.path.join(applications, "browser.desktop"), "w", encoding="utf-8") as file:
            file.write(f"[Desktop Entry]\nType=Application\nName=Browser\nExec=sh -c 'echo \"$0\" > {opened}' %u\n"
                       "MimeType=text/html;\n")
        with open(os.path.join(applications, "mimeapps.list"), "w", encoding="utf-8") as file:
            file.write("[Default Applications]\ntext/html=browser.desktop\n")
        program = self.start_with_options(environment={"XDG_DATA_HOME": self.home.path("data")})
        self.options.click("push button", "Help")
        wait_for(lambda: os.path.exists(opened) and os.path.getsize(opened) > 0, "the browser")
        with open(opened, encoding="utf-8") as file:
            self.assertTrue(file.read().strip().endswith("/Help/manual.html"))
        self.quit(program)


if __name__ == "__main__":
    harness.main()
