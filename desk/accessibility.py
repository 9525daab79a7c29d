"""The program as the desktop's accessibility interface tells it: controls by name, what they show, where."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ROLE = Atspi.Role
LISTS = ROLE.TABLE, ROLE.LIST, ROLE.TREE, ROLE.TREE_TABLE
scale = 1  # of the first display: pixels to a unit


class Tree:
    """The windows of one process."""

    def __init__(self, process_id):
        Atspi.init()
        self._process_id = process_id
        self._application = None

    def _app(self):
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass
        if self._application is None:
            desktop = Atspi.get_desktop(0)
            desktop.clear_cache()
            for child in _children(desktop):
                if child.get_process_id() == self._process_id:
                    child.set_cache_mask(Atspi.Cache.NONE)
                    self._application = child
        return self._application

    def window(self, title):
        app = self._app()
        return next((w for w in _children(app) if w.get_name() == title), None) if app is not None else None

    def control(self, window_title, name):
        """The control of that name, which it carries as its description."""
        window = self.window(window_title)
        parts = _parts(window, (*LISTS, ROLE.MENU_BAR)) if window is not None else ()
        return next((part for part in parts if part.get_description() == name), None)


def _children(accessible):
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is not None:
            yield child


def _parts(accessible, closed):
    """The controls below, from the top, but for what lies in those of the closed roles."""
    for child in _children(accessible):
        yield child
        if child.get_role() not in closed:
            yield from _parts(child, closed)


def named(accessible, text):
    """The first control below that shows that text."""
    return next((part for part in _parts(accessible, LISTS) if part.get_name() == text), None)


def of_role(accessible, role):
    """The first control below of that role."""
    return next((part for part in _parts(accessible, LISTS) if part.get_role() == role), None)


def centre(control):
    x, y, width, height = area(control)
    return x + width // 2, y + height // 2


def text(control):
    return control.get_name()


def area(control):
    """(x, y, width, height) on the screen"""
    box = Atspi.Component.get_extents(control, Atspi.CoordType.SCREEN)
    return scale * box.x, scale * box.y, scale * box.width, scale * box.height


def cell(table, row, column):
    return Atspi.Table.get_accessible_at(table, row, column)


def number(control):
    return Atspi.Value.get_current_value(control)


def _has(state):
    return lambda control: control.get_state_set().contains(state)


enabled = _has(Atspi.StateType.ENABLED)
showing = _has(Atspi.StateType.SHOWING)
selected = _has(Atspi.StateType.SELECTED)
checked = _has(Atspi.StateType.CHECKED)  # ticked, or pressed by the program


def act(control):
    """What an assistive tool does for a click, whatever window stands in front."""
    Atspi.Action.do_action(control, 0)


def content(field):
    """What stands in a text field."""
    return Atspi.Text.get_text(field, 0, -1)


def write(control, content):
    Atspi.EditableText.set_text_contents(control, content)
