"""Screen reading over the programs that come with Wine: the system's own controls on Windows."""

import os
import re

import harness
from harness import native, wine
from screen_scenario import ScreenReading


class Programs(ScreenReading):
    def open_window(self, window_class, *command):
        self.open_program(*wine(*command))
        return self.window(window_class)[:2]

    def wait_spoken_like(self, program, pattern):
        """Of texts that are other ones in each Wine."""
        program.wait_event("object", lambda event: re.fullmatch(pattern, event["text"].strip()))

    def test_tabs_boxes_and_lists_of_a_dialog(self):
        program = self.start_and_wait()
        x, y = origin = self.open_window("winecfg.exe", "winecfg")
        self.point_at_all(program, origin, [
            (235, 426, "OK push button"), (134, 341, "Add application... push button"), (330, 426, "Cancel push button"),
            (60, 59, "Application settings grouping"), (60, 153, "Default Settings list item"),
            (85, 16, "Drives page tab"), (169, 34, "Libraries page tab"), (60, 370, "Windows Version: static text")])
        self.move_to(x + 300, y + 372)
        self.wait_spoken_like(program, r"Windows Version: combo box Windows \w+")
        self.move_to(x + 263, y + 34)
        self.wait_spoken(program, "Graphics page tab")
        self.xdotool("click", 1)
        self.point_at_all(program, origin, [
            (140, 106, "Allow the window manager to decorate the windows check button checked"),
            (140, 145, "Emulate a virtual desktop check button not checked"), (45, 228, "0 slider"), (360, 227, "96 text")])

    def test_a_table_of_a_dialog(self):
        program = self.start_and_wait()
        x, y = origin = self.open_window("winecfg.exe", "winecfg")
        self.move_to(x + 85, y + 16)
        self.wait_spoken(program, "Drives page tab")
        self.xdotool("click", 1)
        self.point_at_all(program, origin, [
            (50, 102, "C: list item"), (135, 102, "../drive_c cell"), (145, 86, "Target folder column header"),
            (40, 387, "Show dot files check button not checked")])

    def test_the_tree_and_the_list_of_files(self):
        program = self.start_and_wait()
        folder = self.home.path("texts")
        os.mkdir(folder)
        for name in ("alpha.txt", "beta.txt"):
            with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                file.write("text")
        origin = self.open_window("explorer.exe", "explorer", native(folder))
        self.point_at_all(program, origin, [
            (56, 100, "My Computer outline item"), (196, 86, "alpha.txt list item"), (196, 103, "beta.txt list item"),
            (356, 103, "1 KB cell"), (446, 86, "txt file cell"), (236, 69, "File column header"),
            (426, 69, "Type column header"), (236, 47, "texts combo box")])

    def test_the_tree_and_the_status_bar_of_the_registry_editor(self):
        program = self.start_and_wait()
        origin = self.open_window("regedit.exe", "regedit")
        self.point_at_all(program, origin, [
            (116, 45, "HKEY_CLASSES_ROOT outline item"), (116, 75, "HKEY_LOCAL_MACHINE outline item"),
            (496, 29, "Type column header")])

    def test_the_tabs_and_the_status_bar_of_the_task_manager(self):
        program = self.start_and_wait()
        x, y = origin = self.open_window("taskmgr.exe", "taskmgr")
        self.point_at_all(program, origin, [
            (121, 34, "Processes page tab"), (199, 34, "Performance page tab"), (301, 66, "Status column header"),
            (361, 367, "New Task... push button")])
        self.move_to(x + 31, y + 410)
        self.wait_spoken_like(program, r"Processes: \d+ static text")

    def test_an_editor(self):
        program = self.start_and_wait()
        x, y = origin = self.open_window("notepad.exe", "notepad", native(self.note()))
        self.point_at_all(program, origin, [(30, 28, "The first line text"), (30, 44, "and the second text")])

    def test_an_editor_of_rich_texts(self):
        program = self.start_and_wait()
        origin = self.open_window("wordpad.exe", r"C:\Program Files\Windows NT\Accessories\wordpad.exe",
                                  native(self.note()))
        self.point_at_all(program, origin, [
            (56, 107, "The first line text"), (56, 121, "and the second text"), (76, 59, "Courier New combo box"),
            (56, 264, "RichEdit text static text")])

    def note(self):
        path = self.home.path("note.txt")
        with open(path, "w", encoding="utf-8", newline="\r\n") as file:
            file.write("The first line\nand the second\n")
        return path


if __name__ == "__main__":
    harness.main()
