"""What a screen reader learns of the application: what is showing, how it is told, and what is announced."""
import re

from desktop import Atspi, GLib, application_node, extents, pump, states, wait_for

# What holds other things or only moves the view, and so needs no name.
UNNAMED = {"scroll bar", "page tab list", "list", "panel", "frame", "application"}
CONTROLS = {"push button", "check box", "text", "page tab", "spin button", "combo box", "list", "list item",
            "radio button", "menu item", "check menu item", "radio menu item", "popup menu", "dialog", "alert", "panel",
            "scroll bar", "frame"}
MARKUP = re.compile(r"&(?:amp|lt|gt|\w(?!\w*;))|</?[a-z]", re.IGNORECASE)
UNFINISHED = re.compile(r"%\d|^[a-z_]+(\.[a-z_]+)+$")  # a placeholder, or the key of a text


class Element:
    """A node as it was when it was read and, if it was read deeply, all below it that is showing or, as a row of a
    list, would be after scrolling."""

    def __init__(self, node, parent=None, deep=True):
        self.node, self.parent, self.states = node, parent, states(node)
        self.role, self.name, self.description = node.get_role_name(), node.get_name(), node.get_description()
        interfaces = node.get_interfaces()
        self.place = extents(node) if "Component" in interfaces else None
        self.text = Atspi.Text.get_text(node, 0, -1) if "Text" in interfaces else ""
        self.actions = {Atspi.Action.get_action_name(node, i) for i in range(Atspi.Action.get_n_actions(node))} \
            if "Action" in interfaces else set()
        self.range = [read(node) for read in (Atspi.Value.get_minimum_value, Atspi.Value.get_current_value,
                                              Atspi.Value.get_maximum_value)] if "Value" in interfaces else []
        self.children = []
        if deep and "showing" in self.states:
            for index in range(node.get_child_count()):
                child = node.get_child_at_index(index)
                if child is None:
                    raise LookupError(f"{self} lacks its child {index}")
                self.children.append(Element(child, self))

    def everything(self):
        """The element and all below it, in the order of reading."""
        if "showing" in self.states or self.role == "list item":
            yield self
            for child in self.children:
                yield from child.everything()

    def above(self):
        return [self.parent, *self.parent.above()] if self.parent else []

    def window(self):
        return [self, *self.above()][-2:][0]

    def labels(self, other):
        """Whether this is told to be the label of the other."""
        return any(relation.get_relation_type() == Atspi.RelationType.LABEL_FOR and relation.get_target(i) == other.node
                   for relation in self.node.get_relation_set() for i in range(relation.get_n_targets()))

    def __str__(self):
        return f"{self.role} “{self.name}” [{', '.join(sorted(self.states))}]"


def with_those_above(node):
    parent = node.get_parent() if node.get_role_name() != "application" else None
    return Element(node, parent and with_those_above(parent), deep=False)


def screen(pid):
    """All that the program shows. Reads again when something goes away meanwhile."""
    def attempt():
        root = application_node(pid)
        try:
            elements = list(Element(root).everything()) if root else []
        except (GLib.Error, LookupError):
            return None
        # A reader keeps to what must be answered first.
        over = [each for each in elements if "modal" in each.states or each.role == "popup menu"]
        return [each for each in elements if not over or over[-1] in (each, *each.above())]
    return wait_for("a screen that stands still", attempt)


def faults(elements, data=()):
    """What would leave a screen reader's user in the dark. The service's data may look like markup."""
    found = []
    for each in elements:
        works = each.actions - {"SetFocus"} or "focusable" in each.states
        checks = {
            "has no name": works and not each.name and each.role not in UNNAMED,
            "is no control": (works or "focused" in each.states) and each.role not in CONTROLS,
            "is an image without a word": each.role in ("image", "icon") and not each.name,
            "shows but is not visible": "showing" in each.states and "visible" not in each.states,
            "is gone": each.states & {"defunct", "invalid"},
            "has the focus but cannot": "focused" in each.states and "focusable" not in each.states
            and "menu item" not in each.role,
            "says no text": any(map(UNFINISHED.search, (each.name, each.description, each.text))),
            "says markup": MARKUP.search(each.name + each.description) and not any(text in each.name for text in data),
            "tells no value": each.role in ("combo box", "spin button") and not each.text,
            "has no range": each.role == "spin button" and not (
                each.range and each.range[0] <= each.range[1] <= each.range[2] != each.range[0]),
            "has no progress": each.role == "progress bar" and not each.range and "busy" not in each.states,
            # The toolkit tells a placeholder as the description, and readers pass over one that is the name.
            "says its name twice": each.name and (each.name == each.description and each.role != "text"
                                                  or each.text.startswith(each.name)),
            "has no heading": each.role == "panel" and each.name and "focused" not in each.states and not any(
                other in each.above() or other.role == "heading" and other.labels(each)
                for other in elements if other.name == each.name),
        }
        found += [f"{each} {fault}" for fault, holds in checks.items() if holds]
    told = [each for each in elements if each.name]
    for before, after in zip(told, told[1:]):
        related = before in after.above() or before.labels(after) or after.labels(before)
        if before.name == after.name and not related:
            found.append(f"{after} repeats {before}")
    leaves = [each for each in told if not each.children and each.place and each.place.height > 0
              and "showing" in each.states]
    for before, after in zip(leaves, leaves[1:]):
        if after.place.y + after.place.height <= before.place.y and after.window() is before.window():
            found.append(f"{after} is read after {before}, which stands below it")
    if len([each for each in elements if "focused" in each.states]) > 1:
        found.append("the focus is at several places")
    return found


class Announcements:
    """What the program announces of what is showing while the block runs: names and nodes."""

    ALL = ["object:state-changed", "object:property-change", "object:children-changed", "object:text-changed",
           "object:selection-changed", "object:visible-data-changed", "object:active-descendant-changed", "window"]

    def __init__(self, pid, kinds=tuple(ALL)):
        self.pid, self.kinds, self.heard = pid, kinds, []
        self.listener = Atspi.EventListener.new(self._hear)

    def _hear(self, event):
        try:
            if event.source and event.source.get_process_id() == self.pid and "showing" in states(event.source):
                self.heard.append((event.source.get_name(), event.source))
        except GLib.Error:
            pass  # it has gone already

    def __enter__(self):
        for kind in self.kinds:
            self.listener.register(kind)
        pump()
        return self

    def __exit__(self, *_):
        for kind in self.kinds:
            self.listener.deregister(kind)
