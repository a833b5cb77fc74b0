"""Reading and acting on the app's window through the accessibility bus, the
way a screen reader does: objects found by role and accessible name, their
states read, their actions performed, text set through the editable-text
interface. Nothing here reaches into the app's process."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from a11y_desktop import DesktopError, wait_until  # noqa: E402

S = Atspi.StateType


def role(obj):
    return obj.get_role_name()


def name(obj):
    return obj.get_name() or ""


def states(obj):
    return set(s.value_nick for s in obj.get_state_set().get_states())


def has_state(obj, state):
    return obj.get_state_set().contains(state)


def showing(obj):
    return has_state(obj, S.SHOWING)


def enabled(obj):
    return has_state(obj, S.ENABLED) and has_state(obj, S.SENSITIVE)


def checked(obj):
    return has_state(obj, S.CHECKED)


def focused(obj):
    return has_state(obj, S.FOCUSED)


def children(obj):
    return [obj.get_child_at_index(i) for i in range(obj.get_child_count())]


def text_of(obj):
    """The text an object shows (its Text interface), else its name."""
    text = obj.get_text_iface()
    if text is not None:
        return text.get_text(0, text.get_character_count())
    return name(obj)


def actions(obj):
    action = obj.get_action_iface()
    if action is None:
        return []
    return [action.get_action_name(i) for i in range(action.get_n_actions())]


def do_action(obj, wanted):
    action = obj.get_action_iface()
    names = actions(obj)
    if wanted not in names:
        raise DesktopError("%s %r offers no %s action (it offers %s)"
                           % (role(obj), name(obj), wanted, names))
    if not action.do_action(names.index(wanted)):
        raise DesktopError("%s %r refused its %s action" % (role(obj), name(obj), wanted))


def describe(obj):
    flags = []
    if not enabled(obj):
        flags.append("disabled")
    if has_state(obj, S.CHECKABLE) or role(obj) == "check box":
        flags.append("checked" if checked(obj) else "unchecked")
    return "%s %r%s" % (role(obj), name(obj), (" [" + ", ".join(flags) + "]") if flags else "")


class Window:
    """The app's one window as the accessibility bus shows it."""

    def __init__(self, desktop, timeout=60):
        self.desktop = desktop
        Atspi.init()
        self.app = wait_until(self._find_app, timeout, 0.25, "the app on the accessibility bus")
        self.frame = wait_until(lambda: self._frame(), timeout, 0.25, "the window 'ZQB Agent'")

    def _find_app(self):
        if self.desktop.app_exit_status() is not None:
            raise DesktopError("the app ended: " + self.desktop.tail("app.err"))
        root = Atspi.get_desktop(0)
        for app in children(root):
            try:
                # The accessibility bus knows the app by its name, "ZQB Agent".
                if app is not None and name(app) == "ZQB Agent":
                    return app
            except gi.repository.GLib.Error:
                continue
        return None

    def _frame(self):
        self.refresh()
        for child in children(self.app):
            if role(child) == "frame" and name(child) == "ZQB Agent" and showing(child):
                return child
        return None

    def refresh(self):
        """Forgets what libatspi cached, so the next read asks the app."""
        self.app.clear_cache()

    def all(self, root=None, showing_only=True):
        """Every object under `root` (the window by default), depth first,
        that is showing (unless `showing_only` is False)."""
        self.refresh()
        found = []

        def walk(obj):
            try:
                kids = children(obj)
            except GLib.Error:
                return  # it went away while being read (a closed dialog)
            for child in kids:
                try:
                    if child is None or (showing_only and not showing(child)):
                        continue
                except GLib.Error:
                    continue
                found.append(child)
                walk(child)

        walk(root or self.frame)
        return found

    def find_all(self, role_name, accessible_name=None, root=None, showing_only=True):
        return [obj for obj in self.all(root, showing_only)
                if role(obj) == role_name and
                (accessible_name is None or name(obj) == accessible_name)]

    def find(self, role_name, accessible_name, timeout=30, root=None, condition=None):
        """The one showing object of that role and name (waits for it)."""
        def look():
            try:
                matches = [obj for obj in self.find_all(role_name, accessible_name, root)
                           if condition is None or condition(obj)]
            except GLib.Error:
                return None  # an object went away while being read: look again
            return matches[0] if matches else None
        return wait_until(look, timeout, 0.2, "%s %r" % (role_name, accessible_name))

    def absent(self, role_name, accessible_name):
        return not self.find_all(role_name, accessible_name)

    def wait_for(self, condition, timeout=60, what="the window to change"):
        return wait_until(lambda: self._guard(condition), timeout, 0.2, what)

    def _guard(self, condition):
        if self.desktop.app_exit_status() is not None:
            raise DesktopError("the app ended: " + self.desktop.tail("app.err"))
        self.refresh()
        try:
            return condition()
        except GLib.Error:
            return None  # an object went away while being read: look again

    # ------------------------------------------------------------- actions

    def press(self, button_name, timeout=30):
        """Presses an enabled, showing button through its Press action."""
        button = self.find("push button", button_name, timeout, condition=enabled)
        do_action(button, "Press")
        return button

    def toggle(self, check_box_name, want=None, timeout=30):
        """Toggles a check box through its Toggle action; with `want`, only
        when it is not already in that state, then waits until it shows it."""
        box = self.find("check box", check_box_name, timeout, condition=enabled)
        if want is not None and checked(box) == want:
            return box
        before = checked(box)
        do_action(box, "Toggle")
        self.wait_for(lambda: checked(box) != before, 10, "%r to change" % check_box_name)
        return box

    def set_text(self, field_role, field_name, text, timeout=30):
        """Replaces a field's text through the editable-text interface."""
        field = self.find(field_role, field_name, timeout, condition=enabled)
        editable = field.get_editable_text_iface()
        if editable is None:
            raise DesktopError("%s %r is not editable" % (field_role, field_name))
        if not editable.set_text_contents(text):
            raise DesktopError("%s %r refused its new text" % (field_role, field_name))
        return field

    def choose(self, combo_name, entry, timeout=30):
        """Chooses `entry` in the choice list labelled `combo_name` from the
        keyboard, as a screen reader user does: Tab to the list, Home, then
        Down until it reads `entry`. (The list's entries offer no action that
        commits a choice.)"""
        combo = self.find_combo(combo_name, timeout)
        entries = [name(c) for lst in children(combo) if role(lst) == "list"
                   for c in children(lst)]
        if entry not in entries:
            raise DesktopError("choice list %r has no entry %r (it has %s)"
                               % (combo_name, entry, entries))
        focused_combo = self.tab_to(
            lambda obj: role(obj) == "combo box" and self.spoken_name(obj) == combo_name)
        del focused_combo
        self.desktop.key("Home")
        for _ in range(len(entries)):
            if self.wait_for(lambda: self.combo_value(combo_name), 10) == entry:
                break
            before = self.combo_value(combo_name)
            self.desktop.key("Down")
            self.wait_for(lambda: self.combo_value(combo_name) != before, 10,
                          "%r to move on from %r" % (combo_name, before))
        if self.combo_value(combo_name) != entry:
            raise DesktopError("choice list %r never showed %r" % (combo_name, entry))
        return combo

    def tab_to(self, wanted, limit=80):
        """Moves the keyboard focus with Tab until `wanted(focused object)`."""
        self.desktop.focus_window("ZQB Agent")
        for _ in range(limit):
            current = self.focused_object()
            if current is not None and wanted(current):
                return current
            before = current and (role(current), self.spoken_name(current))
            self.desktop.key("Tab")
            self.wait_for(lambda: self._moved(before), 10, "Tab to move the focus")
        raise DesktopError("Tab never reached the wanted control")

    def _moved(self, before):
        current = self.focused_object()
        return current is not None and (role(current), self.spoken_name(current)) != before

    def spoken_name(self, obj):
        """What a screen reader announces as the control's name: its
        accessible name, or for a choice list (whose name is its current
        entry) the label it is labelled by."""
        if role(obj) == "combo box":
            for relation in obj.get_relation_set():
                if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                    return text_of(relation.get_target(0))
            return ""
        return name(obj)

    CONTROL_ROLES = ("push button", "toggle button", "check box", "radio button", "combo box",
                     "text", "password text", "spin button", "slider", "link")

    def controls(self):
        """Every showing control of the window, in visual order: top to
        bottom, then left to right within a row."""
        found = [obj for obj in self.all() if role(obj) in self.CONTROL_ROLES]
        placed = []
        for obj in found:
            box = obj.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
            placed.append((box.y + box.height // 2, box.x, obj))
        placed.sort(key=lambda item: (item[0], item[1]))
        rows = []
        for middle, x, obj in placed:
            if rows and abs(rows[-1][0] - middle) <= 8:
                rows[-1][1].append((x, obj))
            else:
                rows.append((middle, [(x, obj)]))
        return [obj for _, row in rows for _, obj in sorted(row, key=lambda item: item[0])]

    def dialog(self, title):
        """A showing dialog of the app with that title, or None."""
        self.refresh()
        for child in children(self.app):
            if child is not None and role(child) in ("dialog", "file chooser", "frame") \
                    and name(child) == title and showing(child):
                return child
        return None

    def press_in(self, root, button_name, timeout=30):
        button = self.find("push button", button_name, timeout, root=root, condition=enabled)
        do_action(button, "Press")
        return button

    def find_combo(self, combo_name, timeout=30):
        """A choice list is named by its label: a relation from the label or
        its own accessible name (which Qt reports as the current entry)."""
        def look():
            for combo in self.find_all("combo box"):
                if combo_name in self.labels_of(combo):
                    return combo
            return None
        return wait_until(look, timeout, 0.2, "choice list %r" % combo_name)

    def labels_of(self, obj):
        labels = set()
        for relation in obj.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                for i in range(relation.get_n_targets()):
                    labels.add(text_of(relation.get_target(i)))
        description = obj.get_description() or ""
        if description:
            labels.add(description)
        return labels

    def combo_value(self, combo_name):
        return name(self.find_combo(combo_name))

    def value_beside(self, row_label):
        """The value of a "label: value" row of the connection section."""
        prefix = row_label + ": "
        for label in self.find_all("label"):
            if name(label).startswith(prefix):
                text = text_of(label)
                return text[len(prefix):] if text.startswith(prefix) else text
        return None

    def focused_object(self, root=None):
        # Any object may hold the focus (a selectable label does too).
        for obj in self.all(root):
            if focused(obj):
                return obj
        return None


def pause(seconds):
    """Only where nothing can be polled (letting a keystroke arrive)."""
    time.sleep(seconds)
