"""What a screen reader is told about the windows on the display."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


class Gone(Exception):
    """The object has gone, or its program does not answer."""


def guarded(function, *arguments):
    try:
        return function(*arguments)
    except GLib.Error as error:
        raise Gone(str(error)) from None


def children(accessible):
    for i in range(guarded(accessible.get_child_count)):
        child = guarded(accessible.get_child_at_index, i)
        if child is not None:
            yield child


def descendants(accessible):
    yield accessible
    for child in children(accessible):
        yield from descendants(child)


def find(role=None, name=None, under=None):
    """The first object with that role and name, top down; None when there is none."""
    try:
        for accessible in descendants(under or Atspi.get_desktop(0)):
            if role in (None, accessible.get_role_name()) and name in (None, accessible.get_name()):
                return accessible
    except Gone:
        pass
    return None


def place(accessible):
    """The middle of the object on the screen, in pixels; None while it is not to be seen."""
    if not guarded(accessible.get_state_set).contains(Atspi.StateType.SHOWING):
        return None
    box = guarded(accessible.get_extents, Atspi.CoordType.SCREEN)
    return (box.x + box.width // 2, box.y + box.height // 2) if box.width > 1 else None


def has_focus(window):
    """Whether an object of the window has the keyboard."""
    try:
        return any(guarded(accessible.get_state_set).contains(Atspi.StateType.FOCUSED) for accessible in descendants(window))
    except Gone:
        return False


def text(accessible):
    return accessible.get_text(0, -1) if hasattr(accessible, "get_text") else None


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
