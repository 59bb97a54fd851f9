"""The window as assistive technology finds it: a tree of elements with roles, names and interfaces."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 10  # seconds
PAUSE = 50  # milliseconds
State = Atspi.StateType


def pause():
    """Lets a moment pass, and takes in what programs tell meanwhile."""
    over = []
    GLib.timeout_add(PAUSE, lambda: over.append(True))
    while not over:
        GLib.MainContext.default().iteration(True)


def until(look, patience=PATIENCE):
    """What `look` returns once that is something; None when it never is."""
    deadline = time.monotonic() + patience
    while True:
        try:
            found = look()
        except GLib.Error:  # the tree changed under the look
            found = None
        if found or time.monotonic() > deadline:
            return found or None
        pause()


def application(process):
    def look():
        desktop = Atspi.get_desktop(0)
        # The cache of earlier reads does not have new programs.
        desktop.clear_cache()
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child and child.get_process_id() == process and child.get_child_count() > 0:
                return child
        return None

    return until(look)


def elements(root, depth=0):
    """The element and all below it as they are now, each with its depth."""
    if depth == 0:
        root.clear_cache()
    yield root, depth
    for i in range(root.get_child_count()):
        child = root.get_child_at_index(i)
        if child:
            yield from elements(child, depth + 1)


def has(element, state):
    return element.get_state_set().contains(state)


def role(element):
    return element.get_role_name()


def is_shown(element):
    return has(element, State.SHOWING) and has(element, State.VISIBLE)


def actions(element):
    if "Action" not in element.get_interfaces():
        return []
    count = Atspi.Action.get_n_actions(element)
    return [Atspi.Action.get_action_name(element, i) for i in range(count)]


def act(element, name):
    return Atspi.Action.do_action(element, actions(element).index(name))


def values(element):
    """Lowest, current and highest value; None without the interface."""
    if "Value" not in element.get_interfaces():
        return None
    return (
        Atspi.Value.get_minimum_value(element),
        Atspi.Value.get_current_value(element),
        Atspi.Value.get_maximum_value(element),
    )


def is_labelled(element):
    relations = element.get_relation_set()
    return any(r.get_relation_type() == Atspi.RelationType.LABELLED_BY for r in relations)


def place(element):
    """Left, top, width and height on the screen."""
    rect = Atspi.Component.get_extents(element, Atspi.CoordType.SCREEN)
    return rect.x, rect.y, rect.width, rect.height
