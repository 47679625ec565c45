"""The windows of the program as a screen reader finds and operates them, through AT-SPI."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  # the version must be named first

import harness  # noqa: E402


def attempt(operation, otherwise=None):
    """What the operation gives, or otherwise when the object has gone meanwhile."""
    try:
        return operation()
    except GLib.Error:
        return otherwise


def children(accessible):
    for index in range(attempt(accessible.get_child_count, 0)):
        child = attempt(lambda index=index: accessible.get_child_at_index(index))
        if child is not None:
            yield child


def below(accessible):
    for child in children(accessible):
        yield child
        yield from below(child)


def has_state(accessible, state):
    return attempt(lambda: accessible.get_state_set().contains(state), False)


def find(role=None, name=None, under=None):
    """The first object with that role and name, top down; None when there is none."""
    for accessible in below(under or Atspi.get_desktop(0)):
        if role in (None, attempt(accessible.get_role_name)) and name in (None, attempt(accessible.get_name)):
            return accessible
    return None


def place(accessible):
    """The middle of the object on the screen, in pixels; None while it is not to be seen."""
    box = attempt(lambda: accessible.get_extents(Atspi.CoordType.SCREEN))
    if not box or box.width <= 1 or not has_state(accessible, Atspi.StateType.SHOWING):
        return None
    return box.x + box.width // 2, box.y + box.height // 2


def has_focus(window):
    """Whether an object of the window has the keyboard."""
    return any(has_state(accessible, Atspi.StateType.FOCUSED) for accessible in below(window))


def text(accessible):
    return attempt(lambda: Atspi.Text.get_text(accessible, 0, -1))


def color_runs(accessible):
    """Every run of the text with a foreground colour other than black, as (first, end, "red,green,blue")."""
    length = Atspi.Text.get_character_count(accessible)
    runs, position = [], 0
    while position < length:
        attributes, first, end = Atspi.Text.get_attribute_run(accessible, position, False)
        color = attributes.get("fg-color", "0,0,0")
        if color != "0,0,0":
            runs.append((first, end, color))
        position = max(end, position + 1)
    return runs


class Window:
    """A window of the running program, by its title."""

    def __init__(self, title):
        self.title = title

    def find_frame(self):
        Atspi.Accessible.clear_cache(Atspi.get_desktop(0))
        for application in children(Atspi.get_desktop(0)):
            for frame in children(application):
                if attempt(frame.get_name) == self.title and has_state(frame, Atspi.StateType.SHOWING):
                    return frame
        return None

    def wait(self):
        harness.wait_for(self.find_frame, f"the window {self.title}")
        return self

    def wait_gone(self):
        harness.wait_for(lambda: self.find_frame() is None, f"the window {self.title} to go")

    def find(self, role, name):
        """The control of this role and name that is to be seen."""
        def look():
            frame = self.find_frame()
            if frame is None:
                return None
            return next((item for item in below(frame)
                         if attempt(item.get_role_name) == role and attempt(item.get_name) == name
                         and has_state(item, Atspi.StateType.SHOWING)), None)
        return harness.wait_for(look, f"the {role} {name}")

    def show_page(self, name):
        tab = self.find("page tab", name)
        Atspi.Selection.select_child(tab.get_parent(), tab.get_index_in_parent())
        harness.wait_for(lambda: has_state(self.find("page tab", name), Atspi.StateType.SELECTED), f"the page {name}")

    def click(self, role, name):
        item = self.find(role, name)
        harness.wait_for(lambda: has_state(item, Atspi.StateType.SENSITIVE), f"{name} to be enabled")
        Atspi.Action.do_action(item, 0)

    def choose(self, name, entry):
        """In a drop-down list."""
        box = self.find("combo box", name)
        harness.wait_for(lambda: has_state(box, Atspi.StateType.SENSITIVE), f"{name} to be enabled")
        entries = [attempt(item.get_name) for item in below(box) if attempt(item.get_role_name) == "menu item"]
        Atspi.Selection.select_child(box, entries.index(entry))

    def chosen(self, name):
        box = self.find("combo box", name)
        selected = Atspi.Selection.get_selected_child(box, 0)
        return attempt(selected.get_name, "") if selected else ""

    def set_slider(self, name, value):
        slider = self.find("slider", name)
        harness.wait_for(lambda: has_state(slider, Atspi.StateType.SENSITIVE), f"{name} to be enabled")
        Atspi.Value.set_current_value(slider, value)

    def slider(self, name):
        return Atspi.Value.get_current_value(self.find("slider", name))

    def type_into(self, name, text):
        Atspi.EditableText.set_text_contents(self.find("text", name), text)

    def text(self, name):
        return Atspi.Text.get_text(self.find("text", name), 0, -1)

    def is_checked(self, role, name):
        return has_state(self.find(role, name), Atspi.StateType.CHECKED)

    def focused(self):
        """The name of what has the focus and where it is; None while nothing has it."""
        frame = self.find_frame()
        item = next((item for item in below(frame) if has_state(item, Atspi.StateType.FOCUSED)), None) if frame else None
        return item and (attempt(item.get_name), place(item))

    def focused_name(self):
        focused = self.focused()
        return focused[0] if focused else ""
