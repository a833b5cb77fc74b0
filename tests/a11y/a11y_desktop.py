"""One private desktop per scenario: a session bus of its own, a display
server, the accessibility bus with its registry, a real notification server
that records what it shows, and a tray host; then the shipped app on it.

Everything is started by `Desktop.start(kind)` and ended by `Desktop.stop()`,
also when a scenario fails halfway. `kind` names the display server; only
"x11" (Xvfb) exists today, and a Wayland desktop is one more branch of
`_start_display`."""

import os
import shutil
import signal
import subprocess
import tempfile
import time

# A desktop that fails the scenario raises DesktopError (wait_until's own).
from harness import SKIP, Skip, read_display_number, wait_until  # noqa: E402,F401  (the suite's names)
from harness import HarnessError as DesktopError  # noqa: E402


BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={run}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Desktop:
    def __init__(self, tools):
        """`tools`: paths of the programs the desktop needs (see CMakeLists.txt):
        app, engine_path, wrapper, engine_sim, sni_host, dunstrc, launcher."""
        self.tools = tools
        self.dir = tempfile.mkdtemp(prefix="zqb-a11y-")
        self.processes = []  # (name, Popen), stopped in reverse order
        self.app = None
        self.env = None
        for name in ("run", "state", "home", "config", "cache", "data", "folders", "documents"):
            os.makedirs(self.path(name), exist_ok=True)
        os.chmod(self.path("run"), 0o700)

    def path(self, *names):
        return os.path.join(self.dir, *names)

    # ------------------------------------------------------------------ start

    def start(self, kind="x11"):
        env = dict(os.environ)
        for name in ("DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY",
                     "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DESKTOP_SESSION",
                     "QT_QPA_PLATFORMTHEME", "SESSION_MANAGER", "AT_SPI_BUS_ADDRESS",
                     "ZQB_E2E_HANG_COMMAND", "ZQB_E2E_STATUS_DOCUMENT", "NO_AT_BRIDGE"):
            env.pop(name, None)
        env.update({
            "XDG_RUNTIME_DIR": self.path("run"),
            "XDG_CONFIG_HOME": self.path("config"),
            "XDG_CACHE_HOME": self.path("cache"),
            "XDG_DATA_HOME": self.path("data"),
            "LC_ALL": "C.UTF-8",
            "ZQB_SIM_STATE": self.path("state"),
            "ZQB_SIM_SPEED": "100",
            "ZQB_E2E_ENGINE_LOG": self.path("engine-runs.log"),
            "ZQB_E2E_DOCUMENT_DIR": self.path("documents"),
            "ZQB_E2E_NOTIFY_LOG": self.path("notifications.log"),
        })
        self.env = env
        self._start_bus()
        self._start_display(kind)
        self._start_accessibility_bus()
        self._start_notifications()
        self._start_tray()
        # This process reads the window through the accessibility bus too.
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.env["DBUS_SESSION_BUS_ADDRESS"]
        os.environ["DISPLAY"] = self.env.get("DISPLAY", "")
        os.environ.pop("AT_SPI_BUS_ADDRESS", None)

    def _spawn(self, name, argv, **kwargs):
        out = open(self.path(name + ".out"), "ab")
        err = open(self.path(name + ".err"), "ab")
        kwargs.setdefault("stdout", out)
        process = subprocess.Popen(argv, env=self.env, stdin=subprocess.DEVNULL,
                                   stderr=err, start_new_session=True, **kwargs)
        self.processes.append((name, process))
        return process

    def _start_bus(self):
        config = self.path("session.conf")
        with open(config, "w") as f:
            f.write(BUS_CONFIG.format(run=self.path("run")))
        # A bus that activates nothing: every service on it is one started here.
        bus = self._spawn("dbus", ["dbus-daemon", "--config-file=" + config, "--nofork",
                                   "--print-address"], stdout=subprocess.PIPE)
        address = bus.stdout.readline().decode().strip()
        if not address:
            raise DesktopError("dbus-daemon printed no address")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address

    def _start_display(self, kind):
        if kind == "x11":
            read_end, write_end = os.pipe()
            self._spawn("xvfb", ["Xvfb", "-displayfd", str(write_end), "-screen", "0",
                                 "1280x1024x24", "-nolisten", "tcp", "-noreset"],
                        pass_fds=(write_end,))
            os.close(write_end)
            display = read_display_number(read_end)
            if not display:
                raise DesktopError("Xvfb did not start: " + self.tail("xvfb.err"))
            self.env["DISPLAY"] = display
            self.env["QT_QPA_PLATFORM"] = "xcb"
            self.env["XDG_SESSION_TYPE"] = "x11"
        else:
            raise Skip("no %s desktop in this suite yet" % kind)

    def _start_accessibility_bus(self):
        launcher = self.tools["bus_launcher"]
        self._spawn("at-spi", [launcher, "--launch-immediately"])
        self.wait_for_bus_name("org.a11y.Bus", 20)
        # Qt's bridge speaks on the accessibility bus only when asked to: a
        # desktop with a screen reader running asks the same way.
        self.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.env["QT_ACCESSIBILITY"] = "1"

    def _start_notifications(self):
        self._spawn("dunst", ["dunst", "-config", self.tools["dunstrc"]])
        self.wait_for_bus_name("org.freedesktop.Notifications", 20)

    def _start_tray(self):
        self._spawn("tray", [self.tools["sni_host"]])
        self.wait_for_bus_name("org.kde.StatusNotifierWatcher", 20)

    def bus_names(self):
        result = subprocess.run(
            ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
             "/org/freedesktop/DBus", "org.freedesktop.DBus.ListNames"],
            env=self.env, capture_output=True, text=True, timeout=10)
        return result.stdout

    def wait_for_bus_name(self, name, timeout):
        wait_until(lambda: '"%s"' % name in self.bus_names(), timeout, 0.1,
                   "%s on the session bus" % name)

    # -------------------------------------------------------------------- app

    def start_app(self, extra_env=None):
        """Runs the shipped app with the test's engine at its fixed engine path."""
        env = dict(self.env)
        env.update(extra_env or {})
        saved, self.env = self.env, env
        try:
            self.app = self._spawn("app", [
                self.tools["launcher"], self.tools["engine_path"], self.tools["wrapper"],
                self.dir, self.tools["app"]], cwd=self.dir)
        finally:
            self.env = saved
        return self.app

    def app_exit_status(self):
        return None if self.app is None else self.app.poll()

    # ------------------------------------------------------------ observation

    def tail(self, name, size=3000):
        try:
            with open(self.path(name), "rb") as f:
                return f.read()[-size:].decode(errors="replace")
        except OSError:
            return ""

    def engine_runs(self):
        """The arguments of each engine run, oldest first."""
        text = self.tail("engine-runs.log", 10 ** 7)
        return [line for line in text.split("\n") if line]

    def documents(self, command):
        """The documents the engine received on standard input with `command`
        ("configure" or "configure-transfer"), oldest first."""
        import json
        found = []
        for name in sorted(os.listdir(self.path("documents"))):
            if name.split("-", 1)[1] == command + ".json":
                with open(self.path("documents", name), "rb") as f:
                    try:
                        found.append(json.loads(f.read()))
                    except ValueError:
                        # The engine wrapper is still writing it: not received yet.
                        break
        return found

    def notifications(self):
        """(app name, summary, body) per notification the server has shown."""
        text = self.tail("notifications.log", 10 ** 6)
        return [tuple(line.split("\t")) for line in text.split("\n") if line]

    def run_engine(self, *arguments, stdin=b""):
        """Runs the stand-in engine on the app's engine state (test set-up only)."""
        return subprocess.run([self.tools["engine_sim"], *arguments, "--state", self.path("state")],
                              env=self.env, input=stdin, capture_output=True, timeout=60)

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.env, capture_output=True,
                              text=True, timeout=30)

    def key(self, *keys):
        """Real keystrokes to whichever window has the keyboard focus."""
        self.xdotool("key", "--delay", "50", *keys)

    def focus_window(self, title):
        ids = self.xdotool("search", "--name", "^%s$" % title).stdout.split()
        if not ids:
            raise DesktopError("no window titled %r" % title)
        # No window manager here: the test gives the window the focus.
        self.xdotool("windowfocus", "--sync", ids[0])

    # ------------------------------------------------------------------- stop

    def stop(self, keep=False):
        for name, process in reversed(self.processes):
            if process.poll() is None:
                try:
                    os.killpg(process.pid, signal.SIGTERM)
                except ProcessLookupError:
                    pass
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    try:
                        os.killpg(process.pid, signal.SIGKILL)
                    except ProcessLookupError:
                        pass
                    process.wait(5)
            if process.stdout:
                process.stdout.close()
        self.processes = []
        if keep or os.environ.get("ZQB_A11Y_KEEP"):
            print("kept the desktop's files in", self.dir)
        else:
            # The engine's root was mounted in the app's own mount namespace,
            # which ended with it: only plain files are left here.
            shutil.rmtree(self.dir, ignore_errors=True)

