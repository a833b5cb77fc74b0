"""The shipped app on the desktops people log into, each run headless with its
own shell: GNOME Shell 43 with the AppIndicator extension (Wayland), XFCE
4.18 (X11) and KDE Plasma 5.27 (Wayland). The tray icon, its menu, the
windows and the notifications are read from the shell itself; clicks and
keys are real input given to the shell.

Usage: tst_shells.py TOOLS.json gnome|xfce|plasma SCENARIO
Exit status: 0 passed, 1 failed, 77 skipped."""

import json
import os
import subprocess
import sys
import time
import traceback

here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, here)
sys.path.insert(0, os.path.join(os.path.dirname(here), "a11y"))

from shell_session import (MENU_ENTRIES, SKIP, GnomeSession, PlasmaSession,  # noqa: E402
                           ShellError, Skip, XfceSession, wait_until)
from harness import Failure, check, log  # noqa: E402

# Long enough for a busy two-core machine; every wait polls a condition.
ACTION_TIMEOUT = 60
FOLDER_PANEL = "Choose folders ZQB should protect"


# What a scenario found wrong that does not stop its next steps (a missing
# notification icon does not keep the window from coming forward): each is
# reported, and any one fails the scenario at its end.
findings = []


def expect(condition, message):
    if not condition:
        log("WRONG:", message)
        findings.append(message)


# ------------------------------------------------------------ what is seen


def pixels(png, box):
    """The RGBA pixels of `box` ({x, y, w, h}) in a screenshot."""
    result = subprocess.run(["convert", png, "-crop", "%dx%d+%d+%d" % (box["w"], box["h"],
                                                                       box["x"], box["y"]),
                             "+repage", "-depth", "8", "rgba:-"], capture_output=True, timeout=30)
    data = result.stdout
    return [tuple(data[i:i + 4]) for i in range(0, len(data) - 3, 4)]


def hue_saturation(r, g, b):
    import colorsys
    h, s, v = colorsys.rgb_to_hsv(r / 255, g / 255, b / 255)
    return h * 360, s * 255, v * 255


def saturated_tint(colours):
    """The tint of an icon on a light panel: its saturated pixels only."""
    return tint_of([(r, g, b, a) for r, g, b, a in colours
                    if hue_saturation(r, g, b)[1] >= 120])


def tint_of(colours):
    """The colour a person sees in an icon, named as the app's tints are:
    "green", "orange", "grey" (no clear hue) or "none" (nothing visible).
    Only the icon's own pixels count: the panel behind it is dark."""
    visible = [(r, g, b) for r, g, b, a in colours if a >= 128 and max(r, g, b) >= 90]
    if not visible:
        return "none"
    r = sum(p[0] for p in visible) / len(visible)
    g = sum(p[1] for p in visible) / len(visible)
    b = sum(p[2] for p in visible) / len(visible)
    hue, saturation, _ = hue_saturation(r, g, b)
    if saturation < 60:
        return "grey"
    if 15 <= hue <= 50:
        return "orange"
    if 80 <= hue <= 160:
        return "green"
    return "other hue %d" % hue


def tinted_spot(png, strip, solid=False):
    """The bounding box of the rightmost group of green or orange pixels in
    `strip` of a screenshot, or None. XFCE's default panel has the tray right
    of its window buttons (which show the window's icon, tinted too). With
    `solid`, only pixels whose four neighbours are tinted too count: text
    drawn with coloured subpixel edges (as Plasma's clock sometimes is) then
    does not pass for an icon."""
    tinted = set()
    for index, (r, g, b, a) in enumerate(pixels(png, strip)):
        hue, saturation, value = hue_saturation(r, g, b)
        if a >= 128 and saturation >= 120 and value >= 120 and \
                (15 <= hue <= 50 or 80 <= hue <= 160):
            tinted.add((strip["x"] + index % strip["w"], strip["y"] + index // strip["w"]))
    columns = {}
    for x, y in tinted:
        if not solid or all(p in tinted for p in ((x - 1, y), (x + 1, y), (x, y - 1), (x, y + 1))):
            columns.setdefault(x, []).append(y)
    if not columns:
        return None
    xs = sorted(columns)
    group = [xs[-1]]
    for x in reversed(xs[:-1]):
        if group[-1] - x > 3:
            break
        group.append(x)
    ys = [y for x in group for y in columns[x]]
    if len(ys) < 8:
        return None
    return {"x": min(group), "y": min(ys), "w": max(group) - min(group) + 1,
            "h": max(ys) - min(ys) + 1}


def window_titled(shell, title):
    # Qt names the app after a dialog's own title where the shell shows
    # titles as given ("Choose folders … — ZQB Agent").
    matches = [w for w in shell.windows() if w["rect"]["w"] > 0 and
               w["title"] in (title, title + " \u2014 ZQB Agent")]
    return matches[0] if matches else None


def centre(rect):
    return (rect["x"] + rect["w"] / 2, rect["y"] + rect["h"] / 2)


# ------------------------------------------------------ per-shell readings


class GnomeDriver:
    """What the test reads and does on GNOME Shell (through Eval)."""

    def __init__(self, shell):
        self.shell = shell

    def icon_in_panel(self):
        """The icon's place in the panel, once the shell shows it."""
        keys = self.shell.eval("zqb.indicators()")
        box = self.shell.tray_icon_box()
        # Not before the panel has laid the icon out: until then its size is
        # not a number (null once read as JSON).
        return box if keys and box and (box["w"] or 0) > 0 and box["x"] is not None else None

    def tinted_icon(self, name):
        box = self.icon_in_panel()
        if not box:
            return None
        shot = self.shell.screenshot(name)
        tint = tint_of(pixels(shot, box))
        return (box, tint) if tint in ("green", "orange") else None

    def menu_labels(self):
        return [i["label"] for i in self.shell.open_menu()]

    def choose(self, label):
        self.shell.choose_in_menu(label)

    def close_window(self, title):
        """The shell's own close (as its Alt+F4 and the overview's close button do)."""
        self.shell.eval("global.get_window_actors().map(a => a.meta_window)"
                        ".filter(w => w.get_title() === %s)"
                        ".forEach(w => w.delete(global.get_current_time())); true"
                        % json.dumps(title))

    def launch_from_desktop_entry(self):
        """The shell's own launcher, as the app grid starts an app: a launch
        carries the time of the click that asked for it. The click here is a
        real one (on the covering window, which keeps the focus); the launch
        then goes through the shell's app system with that click's time."""
        cover = window_titled(self.shell, "Covering window")
        before = self.shell.eval("global.display.get_last_user_time()")
        self.shell.click(cover["rect"]["x"] + cover["rect"]["w"] // 2,
                         cover["rect"]["y"] + cover["rect"]["h"] // 2)
        # The click reaches the shell through its input thread: under load it
        # may not be handled yet, and a launch timed before it would rightly
        # be refused the focus.
        clicked = wait_until(lambda: (lambda t: t if t != before else None)(
            self.shell.eval("global.display.get_last_user_time()")), ACTION_TIMEOUT, 0.05,
            "the shell to take the click on the covering window")
        launched = self.shell.eval(
            "(() => { const app = imports.gi.Shell.AppSystem.get_default()"
            ".lookup_app('zqb-agent.desktop'); if (!app) return false;"
            " app.launch(%d, -1, imports.gi.Shell.AppLaunchGpu.APP_PREF); return true; })()"
            % clicked)
        check(launched, "the shell does not know zqb-agent.desktop")

    def notification_from_app(self):
        for source in self.shell.notifications():
            for notification in source["notifications"]:
                if "Recovery Ready" in (notification["title"] or ""):
                    return source["title"], notification
        return None

    def screenshot_notifications(self, shot):
        """The shell's notification list, opened as a person opens it: a
        click on the clock."""
        box = self.shell.eval("zqb.box(Main.panel.statusArea.dateMenu)")
        self.shell.click(box["x"] + box["w"] // 2, box["y"] + box["h"] // 2)
        wait_until(lambda: self.shell.eval(
            "(() => { const m = Main.panel.statusArea.dateMenu.menu; const b = m._boxPointer;"
            " return m.isOpen && b.opacity === 255 && b.translation_y === 0; })()"),
            20, 0.1, "the notification list to open")
        self.shell.screenshot(shot)
        self.shell.eval("Main.panel.statusArea.dateMenu.menu.close(); true")

    def check_notification(self, found):
        app_name, notification = found
        log("notification in the shell's list:", app_name, notification)
        expect(app_name == "ZQB Agent", "the notification's source is %r, not 'ZQB Agent'"
               % app_name)
        expect(self.shell.icon_found(notification["icon"]),
              "the notification shows no icon of the app (%s)" % notification["icon"])


class XfceDriver:
    """What the test reads and does on XFCE (watcher, screen, xdotool,
    the panel's accessibility tree)."""

    PANEL = {"x": 0, "y": 0, "w": 1280, "h": 27}

    def __init__(self, shell):
        self.shell = shell
        self.menu = None

    def icon_in_panel(self):
        """The tray's own list: the watcher holds the app's item."""
        return self.shell.app_item()

    def tinted_icon(self, name):
        if not self.shell.app_item():
            return None
        shot = self.shell.screenshot(name)
        spot = tinted_spot(shot, self.PANEL)
        if not spot:
            return None
        check(spot["w"] <= 48 and spot["h"] <= 27,
              "more than one tinted thing in the panel: %s" % spot)
        return spot, tint_of(pixels(shot, spot))

    def _top_level_windows(self):
        return set(self.shell.xdotool("search", "--onlyvisible", "--maxdepth", "1",
                                      "--name", "").split())

    def _menu_window(self, before, spot):
        """A window the panel popped up at the icon: its menu."""
        for wid in self._top_level_windows() - before:
            geometry = self.shell.xdotool("getwindowgeometry", "--shell", wid)
            values = dict(line.split("=", 1) for line in geometry.split() if "=" in line)
            x, w, h = int(values["X"]), int(values["WIDTH"]), int(values["HEIGHT"])
            box = {"x": x, "y": int(values["Y"]), "w": w, "h": h}
            # Not the tooltip the hovered icon may show: a menu of four entries.
            if w >= 120 and h >= 70 and x <= spot["x"] + spot["w"] and x + w >= spot["x"] and \
                    self._drawn(box):
                self.menu_box = box
                return wid
        return None

    def _drawn(self, box):
        """Whether the menu's entries are on screen (its labels are light text
        on the dark theme), so keys given now go to a menu that is ready."""
        shot = self.shell.screenshot("shell-xfce-probe.png")
        light = sum(1 for r, g, b, a in pixels(shot, box) if min(r, g, b) >= 200)
        os.unlink(shot)
        return light >= 100

    def _shown_entries(self):
        """What the panel shows in the menu: the layout it read from the app's
        menu (GTK answers accessibility requests only from its own user, and
        the panel's popup menus are not in its accessibility tree)."""
        item = self.shell.app_item()
        service = item.split("/")[0]
        path = self.shell.item_property(item, "Menu")
        layout = self.shell.call(service, path, "com.canonical.dbusmenu", "GetLayout", "(iias)",
                                 (0, -1, []), "(u(ia{sv}av))")[1]
        entries = []
        for child in layout[2]:
            _, props, _ = child
            if props.get("visible", True):
                entries.append("-" if props.get("type") == "separator" else
                               props.get("label", "").replace("_", ""))
        return entries

    def _click_icon(self):
        spot = wait_until(lambda: self.tinted_icon("shell-xfce-probe.png"), ACTION_TIMEOUT, 0.5,
                          "the tinted icon in the panel")[0]
        os.unlink(os.path.join(self.shell.tools["screenshots"], "shell-xfce-probe.png"))
        before = self._top_level_windows()
        # XFCE's tray gives a left click to the app (it opens the window) and
        # opens the menu on a right click.
        self.shell.click(spot["x"] + spot["w"] // 2, spot["y"] + spot["h"] // 2, button=3)
        self.menu = wait_until(lambda: self._menu_window(before, spot), 20, 0.2,
                               "the panel to pop up the icon's menu")

    def menu_labels(self):
        self._click_icon()
        return self._shown_entries()

    def choose(self, label):
        if not self.menu or not self._menu_still_open():
            self._click_icon()
        entries = self._shown_entries()
        if label not in entries:
            raise Failure("no %r in the menu: %s" % (label, entries))
        # A real click on the entry, found on screen: the menu's lines of
        # text, top to bottom, are its entries other than separators.
        lines = self._text_lines()
        labels = [e for e in entries if e != "-"]
        check(len(lines) == len(labels), "the menu on screen has %d lines of text for the "
              "entries %s" % (len(lines), labels))
        top, bottom = lines[labels.index(label)]
        self.shell.click(self.menu_box["x"] + self.menu_box["w"] // 3, (top + bottom) // 2)
        self.menu = None

    def _menu_still_open(self):
        return self.menu in self._top_level_windows()

    @staticmethod
    def _is_text(r, g, b):
        return min(r, g, b) >= 200  # light text on XFCE's dark menu

    def _text_lines(self):
        """The (top, bottom) of each line of text in the open menu."""
        shot = self.shell.screenshot("shell-%s-probe.png" % self.shell.name)
        box = self.menu_box
        rows = set()
        for index, (r, g, b, a) in enumerate(pixels(shot, box)):
            if self._is_text(r, g, b):
                rows.add(box["y"] + index // box["w"])
        os.unlink(shot)
        lines = []
        for y in sorted(rows):
            if lines and y - lines[-1][1] <= 3:
                lines[-1][1] = y
            else:
                lines.append([y, y])
        return [tuple(line) for line in lines]

    def close_window(self, title):
        window = window_titled(self.shell, title)
        if window:
            # xfwm4's own close key, as real key presses to the active window
            # (keys sent to a named window would be synthetic events).
            self.shell.xdotool("windowactivate", "--sync", window["id"])
            self.shell.xdotool("key", "alt+F4")

    def launch_from_desktop_entry(self):
        """XFCE's launcher for a desktop entry (as its menu and panel use it)."""
        entry = self.shell.path("home", ".local", "share", "applications", "zqb-agent.desktop")
        self.shell.spawn("launch", ["exo-open", entry])

    def notification_from_app(self):
        for call in self.shell.notify_calls():
            if "Recovery Ready" in call:
                return call
        return None

    def screenshot_notifications(self, shot):
        self.shell.screenshot(shot)  # xfce4-notifyd's bubble, top right

    def check_notification(self, call):
        log("Notify call seen by the notification server:\n" + call[:1500])
        strings = [line.strip()[len("string "):].strip('"') for line in call.split("\n")
                   if line.strip().startswith("string ")]
        expect(strings and strings[0] == "ZQB Agent",
              "the notification's app name is %r, not 'ZQB Agent'" % (strings[:1],))
        app_icon = strings[1] if len(strings) > 1 else ""
        has_image = '"image-data"' in call or '"image-path"' in call
        icon_found = self.shell.icon_found(("file:" if app_icon.startswith("/") else "themed:")
                                           + app_icon) if app_icon else False
        expect(has_image or icon_found,
              "the notification names icon %r, which the desktop cannot find, and carries "
              "no image" % app_icon)


class PlasmaDriver(XfceDriver):
    """What the test reads and does on Plasma: the watcher, KWin's list of
    windows (through a KWin script), KWin's screenshots, the notification
    calls; and a real pointer and keyboard (KWin's fake-input device)."""

    # The tray's end of Plasma's default panel, along the bottom: right of
    # the task manager (whose launchers have green icons of their own).
    TRAY = {"x": 1000, "y": 756, "w": 240, "h": 44}
    # The application launcher's button, at the panel's left end.
    LAUNCHER_BUTTON = (20, 778)

    def __init__(self, shell):
        super().__init__(shell)
        self.last_spot = None

    def tinted_icon(self, name):
        if not self.shell.app_item():
            return None
        shot = self.shell.screenshot(name)
        spot = tinted_spot(shot, self.TRAY, solid=True)
        # Plasma grows a new tray icon into place: it counts once it stands
        # still (the same in two screenshots in a row).
        settled, self.last_spot = spot is not None and spot == self.last_spot, spot
        if not settled:
            return None
        return spot, saturated_tint(pixels(shot, spot))

    def _popups(self):
        return [w for w in self.shell.windows() if w["popup"]]

    def _click_icon(self):
        spot = wait_until(lambda: self.tinted_icon("shell-plasma-probe.png"), ACTION_TIMEOUT, 0.5,
                          "the tinted icon in the panel")[0]
        os.unlink(os.path.join(self.shell.tools["screenshots"], "shell-plasma-probe.png"))
        wait_until(lambda: not self._popups(), 20, 0.1, "the last popup to close")
        # Plasma's tray gives a left click to the app (it opens the window)
        # and opens the item's menu, in a popup of its own, on a right click.
        self.shell.click(spot["x"] + spot["w"] // 2, spot["y"] + spot["h"] // 2, button=3)
        menu = wait_until(lambda: [w for w in self._popups() if w["rect"]["w"] >= 120 and
                                   w["rect"]["h"] >= 70 and self._drawn(w["rect"])],
                          20, 0.2, "Plasma to pop up the icon's menu")[0]
        self.menu = menu

    def _drawn(self, frame):
        """Whether the menu's entries are on screen (dark text on the light
        theme), so clicks given now go to a menu that is ready. Its frame's
        rounded corners show what lies behind: a few pixels along its edges
        do not count."""
        inset = 5
        self.menu_box = {"x": frame["x"] + inset, "y": frame["y"] + inset,
                         "w": frame["w"] - 2 * inset, "h": frame["h"] - 2 * inset}
        return len(self._text_lines()) > 0

    def _menu_still_open(self):
        return bool(self._popups())

    @staticmethod
    def _is_text(r, g, b):
        return max(r, g, b) <= 100  # dark text on Plasma's light menu

    def close_window(self, title):
        """KWin's own close key, as real key presses to the active window."""
        wait_until(lambda: (window_titled(self.shell, title) or {}).get("focus"), ACTION_TIMEOUT,
                   0.2, "%r to be the active window" % title)
        self.shell.press_keys("alt", "f4")

    def launch_from_desktop_entry(self):
        """Plasma's application launcher, as a person uses it: a click on its
        button, the app's name typed, Enter. Plasma starts the desktop entry
        with an activation token of its own (the launcher is the shell)."""
        wait_until(lambda: not self._popups(), 20, 0.1, "the last popup to close")
        self.shell.click(*self.LAUNCHER_BUTTON)
        launcher = wait_until(lambda: [w for w in self.shell.windows() if w["focus"] and
                                       w["app"] == "org.kde.plasmashell" and
                                       w["parent"] == "Plasma" and not w["popup"]],
                              ACTION_TIMEOUT, 0.1, "the application launcher to open")[0]
        self.shell.type_text("zqb")
        wait_until(lambda: self._first_result_highlighted(launcher["rect"]), ACTION_TIMEOUT, 0.1,
                   "the launcher to list the app for 'zqb'")
        self.shell.press_keys("enter")

    def _first_result_highlighted(self, box):
        """Whether the launcher shows search results: the first one is then
        highlighted across the launcher's whole width, under its search
        field (the favourites it opens with are highlighted in its side bar
        only)."""
        shot = self.shell.screenshot("shell-plasma-probe.png")
        top = {"x": box["x"], "y": box["y"], "w": box["w"], "h": min(box["h"], 150)}
        colours = pixels(shot, top)
        os.unlink(shot)
        for y in range(top["h"]):
            row = colours[y * top["w"]:(y + 1) * top["w"]]
            if sum(1 for r, g, b, a in row if b - r >= 30) >= 0.9 * top["w"]:
                return True
        return False

    def screenshot_notifications(self, shot):
        """Plasma's bubble for the notification, once it is on screen: a
        window of the shell's besides its desktop and its panel."""
        bubble = wait_until(lambda: [w for w in self.shell.windows()
                                     if w["app"] == "org.kde.plasmashell" and not w["popup"] and
                                     not w["title"].startswith("Desktop @") and
                                     w["rect"]["y"] + w["rect"]["h"] < self.TRAY["y"]],
                            ACTION_TIMEOUT, 0.2, "Plasma's notification bubble")
        log("Plasma's notification bubble:", bubble)
        self.shell.screenshot(shot)


# ------------------------------------------------------------ the scenarios


def driver_for(shell):
    if isinstance(shell, GnomeSession):
        return GnomeDriver(shell)
    if isinstance(shell, PlasmaSession):
        return PlasmaDriver(shell)
    return XfceDriver(shell)


def start(shell, tray_host_first):
    if isinstance(shell, GnomeSession):
        shell.start(indicators=tray_host_first)
    elif isinstance(shell, PlasmaSession):
        shell.start(tray_host=tray_host_first)
    else:
        shell.start(panel=tray_host_first)


def start_tray_host(shell):
    if isinstance(shell, GnomeSession):
        shell.enable_tray_host()
    elif isinstance(shell, PlasmaSession):
        shell.start_tray_host()
    else:
        shell.start_panel()


def icon_tinted_in_panel(shell, driver, shot):
    """The icon shows in the shell's panel and, once the first status has
    arrived, in the status's tint (connected: green)."""
    wait_until(driver.icon_in_panel, ACTION_TIMEOUT, 0.25, "the app's icon in the shell's panel")
    log("the shell lists the icon; the watcher holds", shell.registered_items())
    spot, tint = wait_until(lambda: driver.tinted_icon(shot), ACTION_TIMEOUT, 0.5,
                            "the icon in the panel to take the first status's tint")
    log("icon at", spot, "tint", tint)
    check(tint == "green", "a connected engine's icon shows %s, not green" % tint)
    # What a screen reader says for the icon, and what the panel lists it as.
    title = shell.item_property(shell.app_item(), "Title")
    expect(title == "ZQB Agent", "the tray item's title is %r, not 'ZQB Agent'" % title)


def menu_shows_four_entries(shell, driver, shot):
    labels = driver.menu_labels()
    shell.screenshot(shot)
    log("menu opened by a click on the icon:", labels)
    check(labels == MENU_ENTRIES, "the icon's menu shows %s, not %s" % (labels, MENU_ENTRIES))


def open_from_menu(shell, driver):
    driver.choose("Open ZQB Agent")
    window = wait_until(lambda: window_titled(shell, "ZQB Agent"), ACTION_TIMEOUT, 0.2,
                        "the window after 'Open ZQB Agent'")
    wait_until(lambda: (window_titled(shell, "ZQB Agent") or {}).get("focus"), ACTION_TIMEOUT,
               0.2, "the window to have the focus after 'Open ZQB Agent'")
    return window


def quit_from_menu(shell, driver):
    item = shell.app_item()
    driver.choose("Quit ZQB Agent")
    wait_until(lambda: not shell.app_running(), ACTION_TIMEOUT, 0.2,
               "the app to end after 'Quit ZQB Agent'")
    check(shell.app.returncode == 0, "the app ended with status %s" % shell.app.returncode)
    wait_until(lambda: item not in shell.registered_items(), ACTION_TIMEOUT, 0.2,
               "the icon to leave the tray after the app ended")


class Accessible:
    """The app's window through the accessibility bus (the test's hands on
    its buttons, as a screen reader's)."""

    def __init__(self, shell):
        self.shell = shell

    def app_exit_status(self):
        return self.shell.app.poll()

    def tail(self, name):
        return self.shell.tail(name)


def app_window(shell):
    import a11y_access as A

    class Window(A.Window):
        def _find_app(self):
            # The app names itself "ZQB Agent" (older builds: its program name).
            self.desktop.shell.require_app()
            for app in A.children(A.Atspi.get_desktop(0)):
                try:
                    if app is not None and A.name(app) in ("ZQB Agent", "zqb-agent",
                                                           "zqb-agent-app"):
                        return app
                except A.GLib.Error:
                    continue
            return None

    return Window(Accessible(shell), ACTION_TIMEOUT)


def back_up_and_see_notification(shell, driver, shot):
    window = app_window(shell)
    window.press("Back up now", ACTION_TIMEOUT)
    found = wait_until(driver.notification_from_app, ACTION_TIMEOUT * 2, 0.25,
                       "the completed backup's notification in the shell")
    driver.screenshot_notifications(shot)
    driver.check_notification(found)
    return window


def cover_window(shell):
    """Another app's window over the app's: a plain GTK window."""
    script = ("import gi; gi.require_version('Gtk', '3.0'); from gi.repository import GLib, Gtk;"
              "GLib.set_prgname('covering-window');"
              "w = Gtk.Window(title='Covering window'); w.set_default_size(1000, 700);"
              "w.connect('destroy', Gtk.main_quit); w.show_all(); Gtk.main()")
    env = dict(shell.env)
    env["GDK_BACKEND"] = "x11" if isinstance(shell, XfceSession) else "wayland"
    shell.spawn("cover", ["/usr/bin/python3", "-c", script], env=env)
    wait_until(lambda: (window_titled(shell, "Covering window") or {}).get("focus"),
               ACTION_TIMEOUT, 0.2, "the covering window to take the focus")


def relaunch_brings_window_forward(shell, driver, shot):
    cover_window(shell)
    check(not window_titled(shell, "ZQB Agent")["focus"], "the app's window kept the focus")
    driver.launch_from_desktop_entry()
    try:
        wait_until(lambda: (window_titled(shell, "ZQB Agent") or {}).get("focus"),
                   ACTION_TIMEOUT, 0.2, "the app's window to come forward with the focus")
    except ShellError:
        expect(False, "launching the app again from its desktop entry left its window "
               "covered: %s" % [(w["title"], w["focus"]) for w in shell.windows()])
    shell.screenshot(shot)
    check(shell.app_running(), "launching again ended the running app")


def folder_panel_centred(shell, window, A):
    window.press("Add folders…", ACTION_TIMEOUT)
    panel = wait_until(lambda: window_titled(shell, FOLDER_PANEL), ACTION_TIMEOUT, 0.2,
                       "the folder panel")
    main = window_titled(shell, "ZQB Agent")
    log("window", main["rect"], "folder panel", panel["rect"], "parent", panel["parent"])
    expect(panel["parent"] is not None and window_titled(shell, "ZQB Agent")["title"] ==
           panel["parent"],
           "the folder panel's parent is %r, not the window" % panel["parent"])
    # GNOME under Wayland centres it only as a modal dialog, which the app
    # tells it through GNOME's own protocol (Qt does not).
    folder_panel_over_window(panel, main)
    shell.screenshot("shell-%s-folder-panel.png" % shell.name)
    dialog = wait_until(lambda: window.dialog(FOLDER_PANEL), ACTION_TIMEOUT, 0.2,
                        "the folder panel on the accessibility bus")
    window.press_in(dialog, "Cancel")
    wait_until(lambda: not window_titled(shell, FOLDER_PANEL), ACTION_TIMEOUT, 0.2,
               "the folder panel to close")


def folder_panel_over_window(panel, main):
    (px, py), (mx, my) = centre(panel["rect"]), centre(main["rect"])
    expect(abs(px - mx) <= 8, "the folder panel is not centred over the window: its centre "
          "is at x=%d, the window's at x=%d" % (px, mx))
    expect(main["rect"]["y"] <= py <= main["rect"]["y"] + main["rect"]["h"],
          "the folder panel is not over the window: %s and %s" % (panel["rect"], main["rect"]))


def after_the_shell(shell, driver, prefix):
    """The shell is up first; the app is then started from its launcher."""
    shell.enroll_with_folder()
    shell.start_app()
    wait_until(lambda: window_titled(shell, "ZQB Agent"), ACTION_TIMEOUT, 0.2,
               "the app's window at start")
    icon_tinted_in_panel(shell, driver, prefix + "panel.png")
    # Closed by the shell's own close: the app stays in the tray.
    driver.close_window("ZQB Agent")
    wait_until(lambda: not window_titled(shell, "ZQB Agent"), ACTION_TIMEOUT, 0.2,
               "the window to close")
    check(shell.app_running(), "closing the window ended the app")
    menu_shows_four_entries(shell, driver, prefix + "menu.png")
    open_from_menu(shell, driver)
    import a11y_access as A
    window = back_up_and_see_notification(shell, driver, prefix + "notification.png")
    relaunch_brings_window_forward(shell, driver, prefix + "window.png")
    folder_panel_centred(shell, window, A)
    quit_from_menu(shell, driver)


def tray_host_after_the_app(shell, driver, prefix):
    """As at login: the app starts in the background before the tray host."""
    shell.enroll_with_folder()
    shell.start_app("--background")
    wait_until(lambda: any(r.startswith("ui-status") for r in shell.engine_runs()),
               ACTION_TIMEOUT, 0.2, "the app's first status read")
    check(not shell.has_name("org.kde.StatusNotifierWatcher"), "a tray host is already up")
    start_tray_host(shell)
    icon_tinted_in_panel(shell, driver, prefix + "login-panel.png")
    menu_shows_four_entries(shell, driver, prefix + "login-menu.png")
    open_from_menu(shell, driver)
    quit_from_menu(shell, driver)


SCENARIOS = {
    "afterTheShell": (after_the_shell, True),
    "trayHostAfterTheApp": (tray_host_after_the_app, False),
}
SHELLS = {"gnome": GnomeSession, "xfce": XfceSession, "plasma": PlasmaSession}


def main(argv):
    if len(argv) < 4 or argv[2] not in SHELLS or argv[3] not in SCENARIOS:
        print(__doc__, file=sys.stderr)
        return 2
    with open(argv[1]) as f:
        tools = json.load(f)
    if os.getuid() != 0:
        log("SKIP: the shells run as a user the test creates, which needs root")
        return SKIP
    scenario, tray_host_first = SCENARIOS[argv[3]]
    started = time.monotonic()
    shell = None
    failed = True
    try:
        shell = SHELLS[argv[2]](tools)
        # Installed before the user logs in, as a package installs it.
        shell.install_desktop_entry()
        start(shell, tray_host_first)
        log("%s is up after %.1f s" % (argv[2], time.monotonic() - started))
        scenario(shell, driver_for(shell), "shell-%s-" % argv[2])
        if findings:
            raise Failure("; ".join(findings))
        failed = False
        log("PASS %s %s (%.1f s)" % (argv[2], argv[3], time.monotonic() - started))
        return 0
    except Skip as reason:
        failed = False
        log("SKIP", reason)
        return SKIP
    except (Failure, ShellError, AssertionError) as problem:
        log("FAIL %s %s: %s" % (argv[2], argv[3], problem))
        traceback.print_exc()
        return 1
    finally:
        if shell is not None:
            if failed:
                log("engine runs:", shell.engine_runs())
                log("app's standard error:\n" + shell.tail("app.err"))
            shell.stop()


if __name__ == "__main__":
    sys.exit(main(sys.argv))
