"""A real desktop shell, headless, logged into by a user the test creates:
GNOME Shell 43 (Wayland, with the AppIndicator extension), XFCE 4.18 (X11,
xfwm4, its panel and its notification daemon) or KDE Plasma 5.27 (Wayland,
KWin, kded5 and plasmashell). The shipped app then runs in
that session as that user, with the stand-in engine at the app's fixed engine
path in a private mount namespace (tests/a11y/run-in-engine-root.sh).

The test itself runs as root: it creates the user, starts every process of
the session as that user, and reads the shell through the session bus (which
lets root in) and, on XFCE, through the accessibility bus.

Everything is ended by `Session.stop()`, also when a scenario fails."""

import json
import os
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

# The accessibility suite's harness, shared: how a skip is told to CTest, and
# waiting within a bound (it raises ShellError, the error of a session).
from harness import SKIP, Skip, read_display_number, wait_until  # noqa: E402,F401  (tst_shells imports them here)
from harness import HarnessError as ShellError  # noqa: E402


def users_lock():
    """Held while adding or deleting a user: useradd and userdel refuse to
    run while another holds the password files, and the shells' tests may
    start side by side."""
    import contextlib
    import fcntl

    @contextlib.contextmanager
    def held():
        with open("/tmp/zqb-shells-users.lock", "a") as f:
            fcntl.flock(f, fcntl.LOCK_EX)
            try:
                yield
            finally:
                fcntl.flock(f, fcntl.LOCK_UN)
    return held()


# A session bus like the desktop's own (it activates the desktop's services),
# which also lets the test (root) in to read the shell.
BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={path}</listen>
  <auth>EXTERNAL</auth>
  <standard_session_servicedirs/>
  <policy context="default">
    <allow user="{user}"/>
    <allow user="root"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

# The status item's menu as a person sees it: four entries, one a separator.
MENU_ENTRIES = ["Open ZQB Agent", "Check Connection", "-", "Quit ZQB Agent"]


class Session:
    """What every shell's session shares: the user, the buses, the app."""

    name = "shell"

    def __init__(self, tools):
        self.tools = tools
        self.dir = tempfile.mkdtemp(prefix="zqb-%s-" % self.name)
        os.chmod(self.dir, 0o755)
        self.processes = []  # (name, Popen), ended in reverse order
        self.app = None
        self.user = None
        self._make_user()
        self.env = self._base_env()

    # ------------------------------------------------------------------ user

    def _make_user(self):
        # A name of its own per test, so scenarios can run side by side.
        self.user = "zqb%s%x" % (self.name[:5], os.getpid())
        home = self.path("home")
        with users_lock():
            result = subprocess.run(["useradd", "--create-home", "--home-dir", home,
                                     "--shell", "/bin/sh", "--user-group", self.user],
                                    capture_output=True, text=True)
        if result.returncode != 0:
            raise ShellError("could not create the session's user: " + result.stderr.strip())
        entry = pwd.getpwnam(self.user)
        self.uid, self.gid = entry.pw_uid, entry.pw_gid
        for name in ("run", "state", "folders", "shots", "bin"):
            self.make_dir(name)
        os.chmod(self.path("run"), 0o700)

    def make_dir(self, *names):
        path = self.path(*names)
        os.makedirs(path, exist_ok=True)
        os.chown(path, self.uid, self.gid)
        return path

    def write_file(self, path, text, mode=0o644):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w") as f:
            f.write(text)
        os.chmod(path, mode)
        # Everything under the home belongs to the user, folders included.
        home = self.path("home")
        node = path
        while node.startswith(home):
            os.chown(node, self.uid, self.gid)
            node = os.path.dirname(node)

    def path(self, *names):
        return os.path.join(self.dir, *names)

    def _base_env(self):
        run = self.path("run")
        return {
            "HOME": self.path("home"),
            "USER": self.user,
            "LOGNAME": self.user,
            "SHELL": "/bin/sh",
            "PATH": self.path("bin") + ":/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "LC_ALL": "C.UTF-8",
            "XDG_RUNTIME_DIR": run,
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=" + os.path.join(run, "bus"),
            "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=" + os.path.join(run, "fake-system-bus"),
        }

    # ------------------------------------------------------------- processes

    def as_user(self, argv, env=None):
        """`argv` run as the session's user with exactly `env` (default: the session's)."""
        env = self.env if env is None else env
        return ["setpriv", "--reuid=%d" % self.uid, "--regid=%d" % self.gid, "--init-groups",
                "env", "-i"] + ["%s=%s" % item for item in sorted(env.items())] + list(argv)

    def spawn(self, name, argv, env=None, as_root=False, **kwargs):
        out = open(self.path(name + ".out"), "ab")
        err = open(self.path(name + ".err"), "ab")
        kwargs.setdefault("stdout", out)
        kwargs.setdefault("stdin", subprocess.DEVNULL)
        command = argv if as_root else self.as_user(argv, env)
        process = subprocess.Popen(command, stderr=err,
                                   start_new_session=True, cwd=self.dir, **kwargs)
        self.processes.append((name, process))
        return process

    def run(self, argv, env=None, timeout=30, **kwargs):
        return subprocess.run(self.as_user(argv, env), capture_output=True, timeout=timeout,
                              cwd=self.dir, **kwargs)

    def tail(self, name, size=3000):
        try:
            with open(self.path(name), "rb") as f:
                return f.read()[-size:].decode(errors="replace")
        except OSError:
            return ""

    def require_alive(self, name):
        for label, process in self.processes:
            if label == name and process.poll() is not None:
                raise ShellError("%s ended at start-up (status %s): %s"
                                 % (name, process.returncode, self.tail(name + ".err")))

    # ----------------------------------------------------------------- buses

    def start_buses(self):
        config = self.path("session-bus.conf")
        with open(config, "w") as f:
            f.write(BUS_CONFIG.format(path=self.path("run", "bus"), user=self.user))
        self.spawn("dbus", ["dbus-daemon", "--config-file=" + config, "--nofork"])
        # No system bus answers on this machine; some shells need one.
        self.spawn("system-bus", ["dbus-daemon", "--session", "--nofork",
                                  "--address=" + self.env["DBUS_SYSTEM_BUS_ADDRESS"]])
        wait_until(lambda: os.path.exists(self.path("run", "bus")) and
                   os.path.exists(self.path("run", "fake-system-bus")), 20, 0.05,
                   "the session's buses")
        self.require_alive("dbus")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.env["DBUS_SESSION_BUS_ADDRESS"]
        from gi.repository import Gio
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.env["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    def call(self, destination, path, interface, method, signature=None, args=None,
             reply=None, timeout_ms=30000):
        from gi.repository import GLib
        parameters = GLib.Variant(signature, args) if signature else None
        result = self.bus.call_sync(destination, path, interface, method, parameters,
                                    GLib.VariantType(reply) if reply else None, 0, timeout_ms,
                                    None)
        return result.unpack() if result is not None else None

    def bus_names(self):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "ListNames", reply="(as)")[0]

    def has_name(self, name):
        return name in self.bus_names()

    def wait_for_name(self, name, timeout, what=None):
        wait_until(lambda: self.has_name(name), timeout, 0.1, what or name + " on the session bus")

    def registered_items(self):
        """What the tray host's watcher holds: the shell's own list of tray items."""
        from gi.repository import GLib
        if not self.has_name("org.kde.StatusNotifierWatcher"):
            return []
        try:
            return self.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                             "org.freedesktop.DBus.Properties", "Get", "(ss)",
                             ("org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems"),
                             "(v)")[0]
        except GLib.Error:
            return []

    def item_property(self, item, name):
        """A property of a registered tray item: "service/path", "service@/path"
        (as GNOME's extension lists them) or "service"."""
        if "@" in item:
            service, path = item.split("@", 1)
        else:
            service, slash, path = item.partition("/")
            path = slash + path if path else "/StatusNotifierItem"
        return self.call(service, path,
                         "org.freedesktop.DBus.Properties", "Get", "(ss)",
                         ("org.kde.StatusNotifierItem", name), "(v)")[0]

    def start_recording_notifications(self):
        """dbus-monitor, as the user, on what reaches the notification server."""
        self.spawn("notify-monitor", ["dbus-monitor", "--session",
                                      "type='method_call',interface='org.freedesktop.Notifications',"
                                      "member='Notify'"])

    def notify_calls(self):
        """Each Notify call seen: the text dbus-monitor printed for it."""
        text = self.tail("notify-monitor.out", 10 ** 7)
        calls = text.split("method call ")[1:]
        return [c for c in calls if "member=Notify" in c]


    # ------------------------------------------------------------------- app

    def app_env(self):
        env = dict(self.env)
        env.update({
            "ZQB_SIM_STATE": self.path("state"),
            "ZQB_SIM_SPEED": "100",
            "ZQB_E2E_ENGINE_LOG": self.path("state", "engine-runs.log"),
            # Lets the test press the window's buttons as a screen reader does.
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        })
        return env

    def install_desktop_entry(self):
        """The app's launcher entry where the desktop finds a user's apps, and
        the program on the session's PATH, as an installation puts them. The
        icon is left out: the app runs from its build tree, as the demo does."""
        with open(self.tools["desktop_entry"]) as f:
            entry = f.read()
        self.write_file(self.path("home", ".local", "share", "applications", "zqb-agent.desktop"),
                        entry)
        os.symlink(self.tools["app"], self.path("bin", "zqb-agent-app"))

    def enroll_with_folder(self):
        """Set-up, not under test: the engine is enrolled and protects one
        small folder, so "Back Up Now" completes a backup."""
        invitation = self.engine("make-invitation").stdout.strip()
        if not invitation.startswith(b"zqb-invite-v1."):
            raise ShellError("the stand-in engine made no invitation")
        if self.engine("enroll", "--invitation-stdin", stdin=invitation).returncode != 0:
            raise ShellError("the stand-in engine refused to enroll")
        folder = self.make_dir("folders", "Photos")
        with open(os.path.join(folder, "holiday.txt"), "w") as f:
            f.write("sunny\n" * 100)
        settings = {"schema": "zqb.agent-settings.v1", "enabled": False,
                    "intervalMinutes": 1440, "sources": [folder],
                    "exclusions": []}
        result = self.engine("configure", "--json-stdin", stdin=json.dumps(settings).encode())
        if result.returncode != 0:
            raise ShellError("the stand-in engine refused the settings: %s" % result.stderr)

    def engine(self, *arguments, stdin=b""):
        return self.run([self.tools["engine_sim"], *arguments, "--state", self.path("state")],
                        env=self.app_env(), input=stdin, timeout=60)

    def start_app(self, *arguments):
        """The shipped app, as the session's user, with the test's engine at
        its fixed engine path (only in the app's own mount namespace)."""
        command = [self.tools["launcher"], self.tools["engine_path"], self.tools["wrapper"],
                   self.dir] + self.as_user([self.tools["app"], *arguments], self.app_env())
        self.app = self.spawn("app", command, as_root=True)
        return self.app

    def app_running(self):
        return self.app is not None and self.app.poll() is None

    def require_app(self):
        if self.app is not None and self.app.poll() is not None:
            raise ShellError("the app ended (status %s): %s"
                             % (self.app.returncode, self.tail("app.err")))

    def engine_runs(self):
        return [line for line in self.tail(os.path.join("state", "engine-runs.log"), 10 ** 6)
                .split("\n") if line]

    def app_item(self):
        """The app's entry in the watcher, or None."""
        self.require_app()
        for item in self.registered_items():
            try:
                if self.item_property(item, "Title") == "ZQB Agent" or \
                        self.item_property(item, "Id") in ("ZQB Agent", "zqb-agent"):
                    return item
            except Exception:  # an item that went away while being read
                continue
        return None

    def icon_found(self, icon):
        """Whether the desktop can show `icon`: an image, an existing file,
        or a name its icon themes hold (the fallback "dialog-information",
        which the shell shows for a notification without an icon, is none)."""
        if not icon:
            return False
        kind, _, value = icon.partition(":")
        if kind == "image":
            return True
        if kind == "file":
            return os.path.exists(value)
        for name in value.split(","):
            if name in ("dialog-information", "") or name.endswith("-symbolic"):
                continue
            for root in ("/usr/share/icons", "/usr/local/share/icons",
                         self.path("home", ".local", "share", "icons")):
                for dirpath, _, files in os.walk(root):
                    if any(f.rsplit(".", 1)[0] == name for f in files):
                        return True
        return False

    def screenshot_into(self, source, name):
        """Copies a screenshot into the build's screenshots/ folder."""
        os.makedirs(self.tools["screenshots"], exist_ok=True)
        target = os.path.join(self.tools["screenshots"], name)
        shutil.copyfile(source, target)
        return target

    # ------------------------------------------------------------------ stop

    def stop(self):
        for name, process in reversed(self.processes):
            if process.poll() is None:
                try:
                    os.killpg(process.pid, signal.SIGTERM)
                except (ProcessLookupError, PermissionError):
                    pass
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    try:
                        os.killpg(process.pid, signal.SIGKILL)
                    except (ProcessLookupError, PermissionError):
                        pass
                    process.wait(5)
        self.processes = []
        # What the session's services started on their own (bus activation)
        # runs as the session's user, whom only this test has: end those too.
        for pid in self._user_processes():
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        try:
            wait_until(lambda: not self._user_processes(), 10, 0.05,
                       "the session user's processes to end")
        except ShellError as problem:
            print("cleaning up:", problem)
        with users_lock():
            subprocess.run(["userdel", self.user], capture_output=True)
        if os.environ.get("ZQB_SHELLS_KEEP"):
            print("kept the session's files in", self.dir)
        else:
            shutil.rmtree(self.dir, ignore_errors=True)

    def _user_processes(self):
        found = []
        for entry in os.listdir("/proc"):
            if entry.isdigit():
                try:
                    if os.stat("/proc/" + entry).st_uid == self.uid:
                        found.append(int(entry))
                except OSError:
                    pass
        return found


# ---------------------------------------------------------------------- GNOME

APPINDICATOR = "ubuntu-appindicators@ubuntu.com"

# Functions the test defines once in the shell (through Eval) to read it and
# to give it real input: a Clutter virtual pointer, as a mouse would.
GNOME_HELPERS = r"""
const { Clutter, GLib, Gio } = imports.gi;
const Main = imports.ui.main;
globalThis.zqb = {
    pointer: null,
    click(x, y) {
        if (!this.pointer)
            this.pointer = Clutter.get_default_backend().get_default_seat()
                .create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
        const now = () => GLib.get_monotonic_time();
        this.pointer.notify_absolute_motion(now(), x, y);
        this.pointer.notify_button(now(), Clutter.BUTTON_PRIMARY, Clutter.ButtonState.PRESSED);
        this.pointer.notify_button(now(), Clutter.BUTTON_PRIMARY, Clutter.ButtonState.RELEASED);
        return true;
    },
    box(actor) {
        const [x, y] = actor.get_transformed_position();
        const [w, h] = actor.get_transformed_size();
        return { x: Math.round(x), y: Math.round(y), w: Math.round(w), h: Math.round(h) };
    },
    indicators() {
        return Object.keys(Main.panel.statusArea).filter(k => k.startsWith('appindicator'));
    },
    indicator() {
        for (const key of this.indicators()) {
            const indicator = Main.panel.statusArea[key];
            const item = indicator._indicator;
            if (item && (item.title === 'ZQB Agent' || item.id === 'ZQB Agent' ||
                         item.id === 'zqb-agent'))
                return indicator;
        }
        return null;
    },
    menuClosed() {
        // Closed and gone from the screen: a click while the menu still fades
        // out is taken by the closing menu, not by the icon.
        const indicator = this.indicator();
        if (!indicator || indicator.menu.isOpen)
            return false;
        const box = indicator.menu._boxPointer;
        return !box || !box.visible;
    },
    // What happened to the icon and its menu, newest last: presses and
    // releases as the indicator got them, and each opening and closing of the
    // menu with the code that closed it.
    events: [],
    watch() {
        const indicator = this.indicator();
        if (!indicator || indicator._zqbWatched)
            return;
        indicator._zqbWatched = true;
        const ms = () => Math.round(GLib.get_monotonic_time() / 1000);
        const note = text => { this.events.push(`${ms()} ${text}`); this.events = this.events.slice(-20); };
        for (const signal of ['button-press-event', 'button-release-event']) {
            indicator.connect(signal, (_actor, event) => {
                note(`${signal} button ${event.get_button()} time ${event.get_time()}`);
                return Clutter.EVENT_PROPAGATE;
            });
        }
        indicator.menu.connect('open-state-changed', (_menu, open) => {
            note(open ? 'menu opened' : 'menu closed by ' +
                new Error().stack.split('\n').slice(1, 7).join(' < '));
        });
    },
    menuState() {
        const indicator = this.indicator();
        if (!indicator)
            return 'no indicator';
        const box = indicator.menu._boxPointer;
        return JSON.stringify({ open: indicator.menu.isOpen, visible: box && box.visible,
            opacity: box && box.opacity, tx: box && box.translation_x,
            ty: box && box.translation_y, items: indicator.menu._getMenuItems().length,
            grab: global.stage.get_grab_actor() ? String(global.stage.get_grab_actor()) : null,
            focus: global.display.focus_window ? global.display.focus_window.get_title() : null,
            activation: indicator._indicator.supportsActivation, clicks: indicator._clickCount,
            lastClick: indicator._lastClickTime, waiting: indicator._waitDoubleClickId || 0,
            now: global.get_current_time() });
    },
    menuItems() {
        const indicator = this.indicator();
        if (!indicator || !indicator.menu.isOpen)
            return null;
        // Not while the menu slides and fades in: its entries are not where
        // they will be.
        const box = indicator.menu._boxPointer;
        if (box && (box.opacity !== 255 || box.translation_x !== 0 || box.translation_y !== 0))
            return null;
        return indicator.menu._getMenuItems().filter(i => i.visible).map(i => ({
            label: i instanceof imports.ui.popupMenu.PopupSeparatorMenuItem ? '-'
                : (i.label ? i.label.text : ''),
            box: this.box(i),
        }));
    },
    windows() {
        // Only windows on screen: a window is listed before the shell has
        // placed and shown it.
        return global.get_window_actors().filter(a => a.mapped && a.visible)
            .map(a => a.meta_window).map(w => {
            const r = w.get_frame_rect();
            const parent = w.get_transient_for();
            return {
                title: w.get_title(), app: w.get_gtk_application_id() || w.get_wm_class(),
                focus: w.has_focus(), minimized: w.minimized, showing: w.showing_on_its_workspace(),
                rect: { x: r.x, y: r.y, w: r.width, h: r.height },
                parent: parent ? parent.get_title() : null, user_time: w.get_user_time(),
            };
        });
    },
    stack() {
        const windows = global.get_window_actors().map(a => a.meta_window);
        return global.display.sort_windows_by_stacking(windows).map(w => w.get_title());
    },
    notifications() {
        return Main.messageTray.getSources().map(s => ({
            title: s.title,
            notifications: s.notifications.map(n => {
                const g = n.gicon;
                let icon = null;
                if (g instanceof Gio.ThemedIcon)
                    icon = 'themed:' + g.get_names().join(',');
                else if (g instanceof Gio.FileIcon)
                    icon = 'file:' + g.get_file().get_path();
                else if (g)
                    icon = 'image:' + g.constructor.name;
                return { title: n.title, body: n.bannerBodyText, icon };
            }),
        }));
    },
};
true
"""


class GnomeSession(Session):
    name = "gnome"
    socket = "zqb-gnome"
    last_icon_click = None  # time.monotonic() of the test's last click on the icon

    def start(self, indicators=True):
        """The shell, as at login. With `indicators` false, the AppIndicator
        extension (the tray host) stays off until `enable_tray_host()`."""
        if not shutil.which("gnome-shell") or not shutil.which("gjs"):
            raise ShellError("GNOME session needs gnome-shell and gjs, which are not installed "
                             "(scripts/install-deps.sh test)")
        if not os.path.isdir("/usr/share/gnome-shell/extensions/" + APPINDICATOR):
            raise ShellError("GNOME session needs the AppIndicator extension %s "
                             "(gnome-shell-extension-appindicator), which is not installed"
                             % APPINDICATOR)
        self.start_buses()
        self.env.update({
            "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": "GNOME",
            "XDG_SESSION_DESKTOP": "gnome",
            "WAYLAND_DISPLAY": self.socket,
            "LIBGL_ALWAYS_SOFTWARE": "1",
        })
        enabled = "['%s']" % APPINDICATOR if indicators else "@as []"
        result = self.run(["gsettings", "set", "org.gnome.shell", "enabled-extensions", enabled])
        if result.returncode != 0:
            raise ShellError("gsettings could not set the shell's extensions: %s"
                             % result.stderr.decode().strip())
        # Nothing to welcome a new user with: no tour, no overview at start.
        self.run(["gsettings", "set", "org.gnome.shell", "welcome-dialog-last-shown-version",
                  "'99.0'"])
        self.spawn("gnome-shell", ["gnome-shell", "--headless", "--wayland", "--unsafe-mode",
                                   "--no-x11", "--wayland-display=" + self.socket,
                                   "--virtual-monitor", "1280x800"])
        try:
            wait_until(self._shell_ready, 60, 0.2, "GNOME Shell to answer org.gnome.Shell.Eval")
        except ShellError as problem:
            self.require_alive("gnome-shell")
            raise ShellError("%s; the shell said: %s" % (problem, self.tail("gnome-shell.err")))
        self.eval(GNOME_HELPERS)
        self.eval("Main.overview.hide(); true")
        wait_until(lambda: self.eval("!Main.overview.visible && !Main.overview.animationInProgress"),
                   20, 0.1, "the overview to close")
        if indicators:
            self.wait_for_tray_host()

    def _shell_ready(self):
        self.require_alive("gnome-shell")
        if not self.has_name("org.gnome.Shell"):
            return False
        try:
            return self.eval("!Main.layoutManager._startingUp")
        except ShellError:
            return False

    def eval(self, script):
        """Runs `script` in the shell; returns its value (JSON)."""
        from gi.repository import GLib
        try:
            ok, value = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "Eval",
                                  "(s)", (script,), "(bs)")
        except GLib.Error as error:
            raise ShellError("Eval failed: %s" % error.message)
        if not ok:
            raise ShellError("the shell could not run %r: %s" % (script[:80], value))
        return json.loads(value) if value else None

    def enable_tray_host(self):
        self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Extensions",
                  "EnableExtension", "(s)", (APPINDICATOR,), "(b)")
        self.wait_for_tray_host()

    def wait_for_tray_host(self):
        wait_until(lambda: self.has_name("org.kde.StatusNotifierWatcher"), 30, 0.1,
                   "the AppIndicator extension's watcher (is %s installed?)" % APPINDICATOR)

    def screenshot(self, name):
        target = self.path("shots", name)
        self.call("org.gnome.Shell", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot",
                  "Screenshot", "(bbs)", (False, False, target), "(bs)")
        return self.screenshot_into(target, name)

    def click(self, x, y):
        self.eval("zqb.click(%d, %d)" % (x, y))

    # What the person sees, read from the shell.

    def tray_icon_box(self):
        self.require_app()
        return self.eval("(() => { const i = zqb.indicator(); return i ? zqb.box(i) : null; })()")

    def open_menu(self):
        box = wait_until(self.tray_icon_box, 30, 0.1, "the icon in the panel")
        wait_until(lambda: self.eval("zqb.menuClosed()"), 20, 0.1,
                   "the icon's last menu to close")
        # Two clicks on the icon within the double-click time are a double
        # click to the shell, which activates the app instead of opening the
        # menu. A person's next click on the icon comes later than that; the
        # test's can come sooner (open, choose, open again), so it waits.
        if self.last_icon_click is not None:
            apart = self.eval("imports.gi.Clutter.Settings.get_default().double_click_time")
            time.sleep(max(0.0, self.last_icon_click + apart / 1000 + 0.05 - time.monotonic()))
        self.eval("zqb.watch()")
        self.click(box["x"] + box["w"] // 2, box["y"] + box["h"] // 2)
        self.last_icon_click = time.monotonic()
        try:
            return wait_until(lambda: self.eval("zqb.menuItems()"), 20, 0.1,
                              "the icon's menu to open")
        except ShellError as error:
            raise ShellError("%s (clicked at %s; menu %s; events %s)"
                             % (error, box, self.eval("zqb.menuState()"),
                                self.eval("zqb.events")))

    def choose_in_menu(self, label):
        items = self.eval("zqb.menuItems()") or self.open_menu()
        chosen = [i for i in items if i["label"] == label]
        if not chosen:
            raise ShellError("no %r in the menu: %s" % (label, [i["label"] for i in items]))
        box = chosen[0]["box"]
        self.click(box["x"] + box["w"] // 2, box["y"] + box["h"] // 2)

    def windows(self):
        return self.eval("zqb.windows()")

    def notifications(self):
        return self.eval("zqb.notifications()")


# ----------------------------------------------------------------------- XFCE

XFCE_NOTIFYD = "/usr/lib/x86_64-linux-gnu/xfce4/notifyd/xfce4-notifyd"
XFCE_PANEL_DEFAULTS = "/etc/xdg/xfce4/panel/default.xml"


class XfceSession(Session):
    name = "xfce"

    def start(self, panel=True):
        """Xvfb, xfwm4, xfce4-notifyd and (unless `panel` is false, for a login
        where the app comes first) the panel with its tray."""
        for program in ("Xvfb", "xfwm4", "xfce4-panel", XFCE_NOTIFYD, "xdotool", "import"):
            if not shutil.which(program):
                raise ShellError("XFCE session needs %s, which is not installed "
                                 "(scripts/install-deps.sh test)" % program)
        self.start_buses()
        self.env.update({"XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "XFCE",
                         "XDG_SESSION_DESKTOP": "xfce", "DESKTOP_SESSION": "xfce"})
        # The panel asks a new user which layout to use unless it finds one.
        with open(XFCE_PANEL_DEFAULTS) as f:
            self.write_file(self.path("home", ".config", "xfce4", "xfconf",
                                      "xfce-perchannel-xml", "xfce4-panel.xml"), f.read())
        self._start_display()
        self.spawn("xfwm4", ["xfwm4", "--compositor=off"])
        wait_until(self._window_manager_running, 30, 0.1, "xfwm4 to manage the screen")
        self.spawn("notifyd", [XFCE_NOTIFYD])
        self.wait_for_name("org.freedesktop.Notifications", 30, "xfce4-notifyd on the session bus")
        self.start_recording_notifications()
        if panel:
            self.start_panel()

    def _start_display(self):
        read_end, write_end = os.pipe()
        self.spawn("xvfb", ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24",
                            "-nolisten", "tcp", "-noreset"], as_root=True, pass_fds=(write_end,))
        os.close(write_end)
        display = read_display_number(read_end)
        if not display:
            raise ShellError("Xvfb did not start: " + self.tail("xvfb.err"))
        self.env["DISPLAY"] = display
        # The test reads the panel through the accessibility bus on this display.
        os.environ["DISPLAY"] = self.env["DISPLAY"]

    def _window_manager_running(self):
        self.require_alive("xfwm4")
        result = self.x(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"])
        return b"window id" in result.stdout

    def start_panel(self):
        self.spawn("panel", ["xfce4-panel"])
        wait_until(lambda: self.has_name("org.kde.StatusNotifierWatcher"), 30, 0.1,
                   "the panel's tray (its StatusNotifierWatcher)")

    def x(self, argv, timeout=30):
        return self.run(argv, timeout=timeout)

    def xdotool(self, *arguments):
        return self.x(["xdotool", *arguments]).stdout.decode()

    def screenshot(self, name):
        target = self.path("shots", name)
        result = self.x(["import", "-window", "root", target])
        if result.returncode != 0:
            raise ShellError("import could not take a screenshot: %s" % result.stderr.decode())
        return self.screenshot_into(target, name)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", "--sync", str(x), str(y), "click", str(button))

    def windows(self):
        """The managed windows as xfwm4 lists them: title, geometry, parent."""
        active = self.xdotool("getactivewindow").strip()
        found = []
        for wid in self.xdotool("search", "--onlyvisible", "--name", ".").split():
            title = self.xdotool("getwindowname", wid).strip()
            geometry = self.xdotool("getwindowgeometry", "--shell", wid)
            values = dict(line.split("=", 1) for line in geometry.split() if "=" in line)
            transient = self.x(["xprop", "-id", wid, "WM_TRANSIENT_FOR"]).stdout.decode()
            parent = None
            if "window id #" in transient:
                parent_id = int(transient.split("#")[1].split()[0], 16)
                parent = self.xdotool("getwindowname", str(parent_id)).strip()
            found.append({"id": wid, "title": title, "focus": wid == active,
                          "rect": {"x": int(values.get("X", 0)), "y": int(values.get("Y", 0)),
                                   "w": int(values.get("WIDTH", 0)),
                                   "h": int(values.get("HEIGHT", 0))},
                          "parent": parent})
        return found


# ---------------------------------------------------------------- KDE Plasma

class PlasmaSession(Session):
    name = "plasma"
    socket = "zqb-plasma"

    def start(self, tray_host=True):
        """KWin (Wayland, virtual output), then kded5 (which holds the tray's
        StatusNotifierWatcher) and plasmashell, unless `tray_host` is false
        (a login where the app comes first: `start_tray_host()` then)."""
        for program in ("kwin_wayland", "kded5", "plasmashell"):
            if not shutil.which(program):
                raise ShellError("Plasma session needs %s, which is not installed "
                                 "(scripts/test-plasma.sh installs Plasma)" % program)
        # plasmashell starts no desktop without the desktop shell package, and
        # the application launcher (the relaunch check's) needs kitemmodels.
        for needed, package in (("/usr/share/plasma/shells/org.kde.plasma.desktop",
                                 "plasma-desktop"),
                                ("/usr/lib/x86_64-linux-gnu/qt5/qml/org/kde/kitemmodels",
                                 "qml-module-org-kde-kitemmodels")):
            if not os.path.exists(needed):
                raise ShellError("Plasma session needs %s, which is not installed (%s)"
                                 % (needed, package))
        self.start_buses()
        self.env.update({
            "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "KDE",
            "XDG_SESSION_DESKTOP": "KDE", "DESKTOP_SESSION": "plasmawayland",
            "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
            "KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1", "QT_QPA_PLATFORM": "wayland",
            "LIBGL_ALWAYS_SOFTWARE": "1",
        })
        # Debian's binary carries a file capability this machine's bounding set
        # may lack (exec then fails); a copy without it, under the same name
        # (KWin finds its platform plugins by it), runs the same compositor.
        self._allow_fake_input()
        kwin = self.path("bin", "kwin_wayland")
        shutil.copyfile(shutil.which("kwin_wayland"), kwin)
        os.chmod(kwin, 0o755)
        kwin_env = dict(self.env)
        # What the test's KWin scripts print (their answers) goes to KWin's log.
        kwin_env["QT_LOGGING_RULES"] = "kwin_scripting.debug=true"
        self.spawn("kwin", [kwin, "--virtual", "--xwayland", "--no-lockscreen", "--width", "1280",
                            "--height", "800", "--socket", self.socket], env=kwin_env)
        wait_until(lambda: self.require_alive("kwin") or
                   os.path.exists(self.path("run", self.socket)), 60, 0.1,
                   "KWin's Wayland socket")
        self.env["WAYLAND_DISPLAY"] = self.socket
        wait_until(lambda: self.require_alive("kwin") or self.has_name("org.kde.KWin"), 60, 0.1,
                   "KWin on the session bus")
        # Services the bus starts later (kactivitymanagerd) need the display.
        result = self.run(["dbus-update-activation-environment", "WAYLAND_DISPLAY",
                           "QT_QPA_PLATFORM", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE",
                           "KDE_FULL_SESSION", "KDE_SESSION_VERSION", "LIBGL_ALWAYS_SOFTWARE"])
        if result.returncode != 0:
            raise ShellError("dbus-update-activation-environment failed: %s"
                             % result.stderr.decode())
        self._start_fake_input()
        if tray_host:
            self.start_tray_host()

    def _allow_fake_input(self):
        """KWin gives its fake-input interface only to a program whose desktop
        entry asks for it: the test's pointer gets one, as a remote-input
        tool installed on the system would."""
        if not self.tools.get("fake_input"):
            raise ShellError("the Plasma tests need zqb-shells-fake-input "
                             "(configure with ZQB_TEST_PLASMA=ON)")
        self.write_file(self.path("home", ".local", "share", "applications",
                                  "zqb-shells-fake-input.desktop"),
                        "[Desktop Entry]\nType=Application\nName=ZQB shell tests' pointer\n"
                        "Exec=%s\nNoDisplay=true\n"
                        "X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input\n"
                        % os.path.realpath(self.tools["fake_input"]))
        result = self.run(["kbuildsycoca5", "--noincremental"], timeout=120)
        if result.returncode != 0:
            raise ShellError("kbuildsycoca5 failed: %s" % result.stderr.decode())

    def _start_fake_input(self):
        self.fake_input = self.spawn("fake-input", [self.tools["fake_input"]],
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        answer = self.fake_input.stdout.readline().decode().strip()
        if answer != "ready":
            raise ShellError("KWin gave the test no pointer: %s" % self.tail("fake-input.err"))

    def input(self, command):
        """One fake-input command (see FakeInput.c), once KWin has taken it."""
        self.fake_input.stdin.write((command + "\n").encode())
        self.fake_input.stdin.flush()
        answer = self.fake_input.stdout.readline().decode().strip()
        if answer != "ok":
            raise ShellError("the pointer did not take %r: %r %s"
                             % (command, answer, self.tail("fake-input.err")))

    BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}  # Linux's BTN_LEFT, BTN_MIDDLE, BTN_RIGHT

    def click(self, x, y, button=1):
        self.input("move %d %d" % (x, y))
        self.input("button %d 1" % self.BUTTONS[button])
        self.input("button %d 0" % self.BUTTONS[button])

    def start_tray_host(self):
        """kded5 with the watcher, then the shell with its tray and its
        notification server."""
        self.spawn("kded", ["kded5"])
        wait_until(lambda: self.require_alive("kded") or
                   self.has_name("org.kde.StatusNotifierWatcher"), 60, 0.1,
                   "kded5's StatusNotifierWatcher")
        # The launcher's search also offers to switch to a running window of
        # the same name; off here, so its one match for the app's name is the
        # app's desktop entry (what the relaunch check starts).
        self.write_file(self.path("home", ".config", "krunnerrc"),
                        "[Plugins]\nwindowsEnabled=false\n")
        self.spawn("plasmashell", ["plasmashell", "--no-respawn"])
        wait_until(lambda: self.require_alive("plasmashell") or
                   self.has_name("org.freedesktop.Notifications"), 90, 0.2,
                   "plasmashell's notification server on the session bus")
        self.start_recording_notifications()

    def screenshot(self, name):
        """The whole workspace through KWin's screenshot interface, as PNG."""
        from gi.repository import Gio, GLib
        read_end, write_end = os.pipe()
        fds = Gio.UnixFDList.new()
        index = fds.append(write_end)
        os.close(write_end)
        reply, _ = self.bus.call_with_unix_fd_list_sync(
            "org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2",
            "CaptureWorkspace", GLib.Variant("(a{sv}h)", ({}, index)),
            GLib.VariantType("(a{sv})"), 0, 30000, fds, None)
        fds = None
        data = b""
        while True:
            chunk = os.read(read_end, 1 << 20)
            if not chunk:
                break
            data += chunk
        os.close(read_end)
        info = reply.unpack()[0]
        raw = self.path("shots", name + ".raw")
        with open(raw, "wb") as f:
            f.write(data)
        target = self.path("shots", name)
        # QImage's ARGB32 in memory order: blue, green, red, alpha.
        result = subprocess.run(["convert", "-size", "%dx%d" % (info["width"], info["height"]),
                                 "-depth", "8", "bgra:" + raw, target], capture_output=True)
        if result.returncode != 0:
            raise ShellError("convert failed: %s" % result.stderr.decode())
        return self.screenshot_into(target, name)

    # KWin's own list of windows, read by a script KWin runs: each window's
    # caption, frame, whether it is the active one and its transient parent.
    WINDOWS_SCRIPT = """
print('ZQB-WINDOWS %d ' + JSON.stringify(workspace.clientList().map(c => ({
    title: c.caption, app: String(c.resourceClass), focus: c.active, popup: c.popupWindow,
    rect: {x: c.frameGeometry.x, y: c.frameGeometry.y,
           w: c.frameGeometry.width, h: c.frameGeometry.height},
    parent: c.transientFor ? c.transientFor.caption : null}))));
"""

    def windows(self):
        """The windows KWin manages (the shell's own included), as KWin sees
        them. A script is loaded and run through KWin's scripting interface;
        its answer comes back in KWin's log, marked with a number of its own."""
        self.scripts_run = getattr(self, "scripts_run", 0) + 1
        marker = "ZQB-WINDOWS %d " % self.scripts_run
        script = self.path("shots", "windows-%d.js" % self.scripts_run)
        with open(script, "w") as f:
            f.write(self.WINDOWS_SCRIPT % self.scripts_run)
        os.chmod(script, 0o644)
        plugin = "zqb-windows-%d" % self.scripts_run
        number = self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", "loadScript",
                           "(ss)", (script, plugin), "(i)")[0]
        self.call("org.kde.KWin", "/%d" % number, "org.kde.kwin.Script", "run")
        try:
            line = wait_until(lambda: [line for line in self.tail("kwin.err", 10 ** 6).split("\n")
                                       if marker in line], 20, 0.02, "KWin's list of windows")
        finally:
            self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", "unloadScript",
                      "(s)", (plugin,), "(b)")
            os.unlink(script)
        return json.loads(line[0].split(marker, 1)[1])

    KEYS = {"alt": 56, "f4": 62, "enter": 28, "escape": 1}  # Linux key codes

    def press_keys(self, *names):
        """A chord of keys, as a keyboard gives it: pressed in order, released
        in reverse. Letters are typed one by one."""
        codes = []
        for name in names:
            codes.append(self.KEYS.get(name) or self.LETTERS[name])
        for code in codes:
            self.input("key %d 1" % code)
        for code in reversed(codes):
            self.input("key %d 0" % code)

    LETTERS = dict(zip("qwertyuiop", range(16, 26)))
    LETTERS.update(zip("asdfghjkl", range(30, 39)))
    LETTERS.update(zip("zxcvbnm", range(44, 51)))

    def type_text(self, text):
        for letter in text:
            self.press_keys(letter)
