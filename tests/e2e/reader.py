"""What a screen reader learns of the application: what is showing, how it is told, and what is announced."""
import re
from dataclasses import dataclass, field

from desktop import Atspi, GLib, application_node, pump, wait_for

FOCUS_ONLY = {"SetFocus"}
# What holds other things or only moves the view, and so needs no name.
UNNAMED = {"scroll bar", "page tab list", "list", "panel", "frame", "application"}
CONTROLS = {"push button", "check box", "text", "page tab", "spin button", "combo box", "list", "list item",
            "radio button", "menu item", "check menu item", "radio menu item", "popup menu", "dialog", "alert", "panel",
            "scroll bar", "frame"}
MARKUP = re.compile(r"&(?:amp|lt|gt|\w(?!\w*;))|</?[a-z]", re.IGNORECASE)


@dataclass(eq=False)
class Element:
    node: Atspi.Accessible
    parent: "Element | None"
    role: str
    name: str
    description: str
    states: set
    interfaces: set
    place: Atspi.Rect
    children: list = field(default_factory=list)

    @property
    def text(self):
        return Atspi.Text.get_text(self.node, 0, -1) if "Text" in self.interfaces else ""

    @property
    def actions(self):
        if "Action" not in self.interfaces:
            return []
        return [Atspi.Action.get_action_name(self.node, i) for i in range(Atspi.Action.get_n_actions(self.node))]

    def labels(self, other):
        """Whether this is told to be the label of the other."""
        return any(relation.get_relation_type() == Atspi.RelationType.LABEL_FOR and relation.get_target(i) == other.node
                   for relation in self.node.get_relation_set() for i in range(relation.get_n_targets()))

    def inside(self, other):
        return self.parent is not None and (self.parent is other or self.parent.inside(other))

    def __str__(self):
        return f"{self.role} “{self.name}” [{', '.join(sorted(self.states))}]"


def read(node, parent=None):
    """The element and, below it, all that is showing or, as a row of a list, would be after scrolling."""
    node.clear_cache()
    states = {state.value_nick for state in node.get_state_set().get_states()}
    interfaces = set(node.get_interfaces())
    place = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN) if "Component" in interfaces else None
    element = Element(node, parent, node.get_role_name(), node.get_name(), node.get_description(), states, interfaces,
                      place)
    if "showing" in states:
        for index in range(node.get_child_count()):
            child = node.get_child_at_index(index)
            if child is None:
                raise LookupError(f"{element} lacks its child {index}")
            element.children.append(read(child, element))
    return element


def everything(element):
    """The element and all below it, in the order of reading."""
    if "showing" in element.states or element.role == "list item":
        yield element
        for child in element.children:
            yield from everything(child)


def screen(pid):
    """All that the program shows. Reads again when something goes away meanwhile."""
    def attempt():
        root = application_node(pid)
        try:
            elements = list(everything(read(root))) if root else []
        except (GLib.Error, LookupError):
            return None
        # A reader keeps to what must be answered first.
        over = [each for each in elements if "modal" in each.states or each.role == "popup menu"]
        return [each for each in elements if each is over[-1] or each.inside(over[-1])] if over else elements
    return wait_for("a screen that stands still", attempt)


def faults(elements, data=()):
    """What would leave a screen reader's user in the dark. The service's data may look like markup."""
    found = []
    for each in elements:
        works = set(each.actions) - FOCUS_ONLY or "focusable" in each.states
        value = each.node if "Value" in each.interfaces else None
        checks = {
            "has no name": works and not each.name and each.role not in UNNAMED,
            "is no control": (works or "focused" in each.states) and each.role not in CONTROLS,
            "is an image without a word": each.role in ("image", "icon") and not each.name,
            "shows but is not visible": "showing" in each.states and "visible" not in each.states,
            "is gone": bool(each.states & {"defunct", "invalid"}),
            "has the focus but cannot": "focused" in each.states and "focusable" not in each.states
            and "menu item" not in each.role,
            "says markup": MARKUP.search(each.name + each.description) and not any(
                text in each.name for text in data),
            "tells no value": each.role in ("combo box", "spin button") and not each.text,
            "has no range": each.role == "spin button" and not (
                value and Atspi.Value.get_minimum_value(value) <= Atspi.Value.get_current_value(value)
                <= Atspi.Value.get_maximum_value(value) != Atspi.Value.get_minimum_value(value)),
            "has no progress": each.role == "progress bar" and not value and "busy" not in each.states,
            # The toolkit tells a placeholder as the description, and readers pass over one that is the name.
            "says its name twice": each.name and (each.name == each.description and each.role != "text"
                                                  or each.text.startswith(each.name)),
            "has no heading": each.role == "panel" and each.name and "focused" not in each.states and not any(
                each.inside(other) or other.role == "heading" and other.labels(each)
                for other in elements if other.name == each.name),
        }
        found += [f"{each} {fault}" for fault, holds in checks.items() if holds]
    told = [each for each in elements if each.name]
    for before, after in zip(told, told[1:]):
        related = after.inside(before) or before.labels(after) or after.labels(before)
        if before.name == after.name and not related:
            found.append(f"{after} repeats {before}")
    leaves = [each for each in told if not each.children and each.place and each.place.height > 0
              and "showing" in each.states]
    for before, after in zip(leaves, leaves[1:]):
        if after.place.y + after.place.height <= before.place.y and window(after) is window(before):
            found.append(f"{after} is read after {before}, which stands below it")
    if len([each for each in elements if "focused" in each.states]) > 1:
        found.append("the focus is at several places")
    return found


def window(element):
    return element if element.parent is None or element.parent.role == "application" else window(element.parent)


class Announcements:
    """What the program announces while the block runs, as (kind, what it is about, whether that is showing)."""

    KINDS = ["object:state-changed", "object:property-change", "object:children-changed", "object:text-changed",
             "object:selection-changed", "object:visible-data-changed", "object:active-descendant-changed", "window"]

    def __init__(self, pid):
        self.pid, self.heard = pid, []
        self.listener = Atspi.EventListener.new(self._hear)

    def _hear(self, event):
        try:
            if event.source and event.source.get_process_id() == self.pid:
                self.heard.append((event.type, event.source.get_name(),
                                   event.source.get_state_set().contains(Atspi.StateType.SHOWING)))
        except GLib.Error:
            pass  # it has gone already

    def __enter__(self):
        for kind in self.KINDS:
            self.listener.register(kind)
        pump()
        return self

    def __exit__(self, *_):
        for kind in self.KINDS:
            self.listener.deregister(kind)
