"""The shipped app driven through the accessibility bus, as a screen reader
user would drive it, on a private desktop per scenario.

Usage: tst_a11y.py TOOLS.json SCENARIO [x11|wayland]
Exit status: 0 passed, 1 failed, 77 skipped."""

import json
import os
import sys
import time
import traceback

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from a11y_desktop import SKIP, Desktop, DesktopError, Skip, wait_until  # noqa: E402
from harness import Failure, check, log  # noqa: E402

# Long enough for the app under AddressSanitizer on a busy two-core machine.
ACTION_TIMEOUT = 90


def invitation_of(desktop):
    result = desktop.run_engine("make-invitation")
    text = result.stdout.decode().strip()
    check(text.startswith("zqb-invite-v1."), "the stand-in engine made no invitation")
    return text


def enroll(desktop, window, A):
    """Pastes a fresh invitation into the masked field and enrolls."""
    invitation = invitation_of(desktop)
    window.find("panel", "Connect this computer", ACTION_TIMEOUT)
    window.set_text("password text", "One-time invitation", invitation)
    window.press("Enroll this computer", ACTION_TIMEOUT)
    window.wait_for(lambda: window.absent("panel", "Connect this computer"), ACTION_TIMEOUT,
                    "the connect box to go away after enrolling")
    window.find("label", "Connected", ACTION_TIMEOUT)
    check(any(run.startswith("enroll") for run in desktop.engine_runs()),
          "the engine was never asked to enroll")
    # The invitation is a secret: it went to the engine's standard input only.
    for name in os.listdir(desktop.dir):
        path = desktop.path(name)
        if os.path.isfile(path):
            with open(path, "rb") as f:
                check(invitation.encode() not in f.read(), "the invitation was written to " + name)
    return invitation


def enroll_beforehand(desktop):
    """Set-up for the scenarios that are not about enrolling: the engine is
    enrolled before the app starts, so each of them tests only its own case."""
    result = desktop.run_engine("enroll", "--invitation-stdin", stdin=invitation_of(desktop).encode())
    check(result.returncode == 0, "the stand-in engine refused to enroll")


def connected(window):
    window.find("label", "Connected", ACTION_TIMEOUT)


# ---------------------------------------------------------------- scenarios


def first_backup_without_a_mouse(desktop, window, A):
    """Enroll with a pasted invitation, add a folder in the folder dialog,
    back up, and see the notification on the notification server."""
    enroll(desktop, window, A)
    folder = desktop.path("folders", "Photos")
    os.makedirs(folder)
    with open(os.path.join(folder, "holiday.txt"), "w") as f:
        f.write("sunny\n" * 100)

    window.find("label", "No folders selected yet.", ACTION_TIMEOUT)
    window.press("Add folders…")
    dialog = wait_until(lambda: window.dialog("Choose folders ZQB should protect"),
                        ACTION_TIMEOUT, 0.2, "the folder dialog")
    log("folder dialog:", A.describe(dialog))
    # Type the folder's path into the dialog's name field, as a person would.
    field = wait_until(lambda: [o for o in window.all(dialog)
                                if A.role(o) in ("text", "editbar") and
                                A.has_state(o, A.S.EDITABLE)], 30, 0.2,
                       "the dialog's name field")[0]
    field.get_editable_text_iface().set_text_contents(folder)
    window.press_in(dialog, "Protect folders")
    window.wait_for(lambda: not window.dialog("Choose folders ZQB should protect"), 30,
                    "the folder dialog to close")
    window.find("label", folder, ACTION_TIMEOUT)
    check([b for b in window.find_all("push button") if A.name(b).startswith("Remove folder")],
          "the folder's row has no remove button")

    window.press("Back up now", ACTION_TIMEOUT)
    wait_until(desktop.notifications, ACTION_TIMEOUT * 2, 0.2, "a desktop notification")
    shown = desktop.notifications()
    log("notifications:", shown)
    check(shown[0][0] == "ZQB Agent" and shown[0][1] == "ZQB backup Recovery Ready",
          "the notification was %r" % (shown[0],))
    window.wait_for(lambda: window.value_beside("Latest backup result") == "Recovery Ready",
                    ACTION_TIMEOUT, "'Latest backup result' to read 'Recovery Ready'")
    runs = [run.split()[0] for run in desktop.engine_runs()]
    log("engine runs:", runs)
    chain = runs.index("configure")
    check(runs[chain:chain + 3] == ["configure", "configure-transfer", "backup-all"],
          "the backup was not saved then started: %s" % runs)
    settings = desktop.documents("configure")[-1]
    check(settings.get("sources") == [folder],
          "the engine was asked to protect %r" % settings.get("sources"))


def status_reads(desktop):
    return sum(1 for run in desktop.engine_runs() if run.startswith("ui-status"))


def edit_every_control(window, A):
    allow = "Allow backup on metered networks"
    metered = "Treat the current network as metered"
    window.toggle("Back up selected folders automatically", want=True)
    window.choose("Run every", "12 hours")
    window.set_text("text", "Skip patterns", "node_modules, *.tmp, <b>cache &amp;")
    window.toggle("Pause encrypted transfers", want=True)
    window.choose("Bandwidth limit", "25 Mbps")
    window.toggle(metered, want=True)
    window.wait_for(lambda: A.enabled(window.find("check box", allow)), 10,
                    "%r to be enabled once the network is metered" % allow)
    window.toggle(allow, want=True)
    # Back to unmetered: the permission greys out and keeps its value.
    window.toggle(metered, want=False)
    window.wait_for(lambda: not A.enabled(window.find("check box", allow)), 10,
                    "%r to grey out on an unmetered network" % allow)
    check(A.checked(window.find("check box", allow)), "%r lost its value while greyed" % allow)



def settings_reach_the_engine(desktop, window, A):
    """Every editable control, changed through its accessibility actions,
    reaches the engine's documents on "Save settings"; the metered rule
    holds on the way."""
    connected(window)
    allow = "Allow backup on metered networks"
    metered = "Treat the current network as metered"
    check(not A.enabled(window.find("check box", allow)),
          "%r is enabled on an unmetered network" % allow)

    # A periodic refresh shows the engine's saved values again, dropping
    # unsaved edits (as it should); when one lands among the edits, they are
    # made again, so the save below carries all of them.
    for attempt in range(4):
        refreshes = status_reads(desktop)
        edit_every_control(window, A)
        if status_reads(desktop) == refreshes:
            break
        log("a periodic refresh came between the edits; editing again")

    window.press("Save settings", ACTION_TIMEOUT)
    wait_until(lambda: desktop.documents("configure-transfer"), ACTION_TIMEOUT, 0.2,
               "the transfer policy to reach the engine")
    settings = desktop.documents("configure")[-1]
    policy = desktop.documents("configure-transfer")[-1]
    log("settings document:", json.dumps(settings))
    log("transfer document:", json.dumps(policy))
    check(settings.get("enabled") is True, "schedule not switched on: %r" % settings)
    check(settings.get("intervalMinutes") == 720, "interval not 12 hours: %r" % settings)
    # The app keeps skip patterns sorted and unique, as the engine lists them.
    check(settings.get("exclusions") == ["*.tmp", "<b>cache &amp;", "node_modules"],
          "skip patterns not as typed: %r" % settings)
    check(policy.get("paused") is True, "transfers not paused: %r" % policy)
    check(policy.get("bandwidthLimitKibPerSecond") == 3200, "bandwidth not 25 Mbps: %r" % policy)
    check(policy.get("currentNetworkMetered") is False, "network not unmetered: %r" % policy)
    check(policy.get("allowMeteredNetwork") is True,
          "the greyed permission was not kept: %r" % policy)

    # After the save the window shows what the engine saved.
    # Polled: the refresh after the save lands when the engine has answered.
    window.wait_for(lambda: window.combo_value("Run every") == "12 hours" and
                    window.combo_value("Bandwidth limit") == "25 Mbps" and
                    A.checked(window.find("check box", "Pause encrypted transfers")) and
                    A.text_of(window.find("text", "Skip patterns")) ==
                    "*.tmp, <b>cache &amp;, node_modules", ACTION_TIMEOUT,
                    "the saved values (choices, pause, skip patterns) to show after the refresh")


MARKUP = {
    "agentVersion": "<b>2.0</b> &amp;",
    "message": "Engine says <i>x</i> &lt;",
    "lastError": "failed: &lt;disk&gt; <font color=red>full</font>",
    "serviceVersion": "<u>3.1</u>",
    "folder": "/srv/<u>Docs</u> & <b>more</b>",
}


def markup_shows_literally(desktop, window, A):
    """Text from the engine that looks like markup is shown as written."""
    connected(window)
    status = json.loads(desktop.run_engine("ui-status").stdout)
    status["agentVersion"] = MARKUP["agentVersion"]
    runtime = status["runtime"]
    runtime["message"] = MARKUP["message"]
    runtime["lastError"] = MARKUP["lastError"]
    runtime["serviceVersion"] = MARKUP["serviceVersion"]
    runtime["latestAgentVersion"] = MARKUP["agentVersion"]
    status["settings"]["sources"] = [MARKUP["folder"]]
    document = desktop.path("scripted-status.json")
    with open(document, "w") as f:
        json.dump(status, f)
    # From now on the engine prints this document, as a scripted engine would.
    window.press("Check connection", ACTION_TIMEOUT)
    window.wait_for(lambda: window.value_beside("Agent version") not in (None, "1.0.0"),
                    ACTION_TIMEOUT, "the scripted status to show")
    expected = [
        ("label", "ZQB Agent " + MARKUP["agentVersion"]),
        ("label", MARKUP["message"]),
        ("label", MARKUP["lastError"]),
        ("label", MARKUP["folder"]),
    ]
    for role_name, text in expected:
        matches = [o for o in window.find_all(role_name) if A.text_of(o) == text]
        log("%s %r: %s" % (role_name, text, "shown" if matches else "MISSING"))
        check(matches, "%s %r is not shown literally; labels are %s"
              % (role_name, text, [A.text_of(o) for o in window.find_all("label")]))
        check(all(A.name(o) == text for o in matches),
              "%r is announced as %r" % (text, [A.name(o) for o in matches]))
    for row, text in (("Agent version", MARKUP["agentVersion"]),
                      ("Service version", MARKUP["serviceVersion"]),
                      ("Latest compatible agent", MARKUP["agentVersion"])):
        shown = window.value_beside(row)
        log("row %r: %r" % (row, shown))
        check(shown == text, "row %r shows %r, not %r" % (row, shown, text))


def every_control_named_and_reachable(desktop, window, A):
    """Every control has a role and a name a person understands, and Tab
    reaches each of them once, in the order they appear on screen."""
    connected(window)
    controls = window.controls()
    check(controls, "the window shows no controls")
    log("controls, in visual order:")
    nameless = []
    for obj in controls:
        label = window.spoken_name(obj)
        log("  %s %r%s" % (A.role(obj), label, "" if A.enabled(obj) else " (disabled)"))
        if not label.strip():
            nameless.append(A.describe(obj))
    check(not nameless, "controls without a name: %s" % nameless)

    desktop.focus_window("ZQB Agent")
    wanted = [(A.role(o), window.spoken_name(o)) for o in controls if A.enabled(o)]
    reached = []
    for _ in range(len(wanted) * 2 + 4):
        desktop.xdotool("key", "Tab")
        current = window.wait_for(window.focused_object, 10, "an object to take the focus")
        key = (A.role(current), window.spoken_name(current))
        if reached and key == reached[0]:
            break
        reached.append(key)
    log("Tab order:")
    for role_name, label in reached:
        log("  %s %r" % (role_name, label))
    missing = [c for c in wanted if c not in reached]
    check(not missing, "Tab never reaches: %s" % missing)
    order = [c for c in reached if c in wanted]
    # Tab goes round in a cycle; the walk may start anywhere in it.
    if wanted and wanted[0] in order:
        start = order.index(wanted[0])
        order = order[start:] + order[:start]
    check(order == wanted, "Tab order differs from the visual order:\n  tab:    %s\n  screen: %s"
          % (order, wanted))


SCENARIOS = {
    "firstBackupWithoutAMouse": first_backup_without_a_mouse,
    "settingsReachTheEngine": settings_reach_the_engine,
    "markupShowsLiterally": markup_shows_literally,
    "everyControlNamedAndReachable": every_control_named_and_reachable,
}


def main(argv):
    if len(argv) < 3 or argv[2] not in SCENARIOS:
        print(__doc__, "scenarios:", ", ".join(SCENARIOS), file=sys.stderr)
        return 2
    with open(argv[1]) as f:
        tools = json.load(f)
    kind = argv[3] if len(argv) > 3 else "x11"
    desktop = Desktop(tools)
    started = time.monotonic()
    failed = True
    try:
        desktop.start(kind)
        extra = {}
        if argv[2] != "firstBackupWithoutAMouse":
            enroll_beforehand(desktop)
        if argv[2] == "markupShowsLiterally":
            extra["ZQB_E2E_STATUS_DOCUMENT"] = desktop.path("scripted-status.json")
        desktop.start_app(extra)
        import a11y_access as A
        window = A.Window(desktop, ACTION_TIMEOUT)
        SCENARIOS[argv[2]](desktop, window, A)
        failed = False
        log("PASS %s (%.1f s)" % (argv[2], time.monotonic() - started))
        return 0
    except Skip as reason:
        failed = False
        log("SKIP", reason)
        return SKIP
    except (Failure, DesktopError, AssertionError) as problem:
        log("FAIL %s: %s" % (argv[2], problem))
        traceback.print_exc()
        return 1
    finally:
        if failed:
            log("engine runs:", desktop.engine_runs())
            log("notifications:", desktop.notifications())
            log("app's standard error:\n" + desktop.tail("app.err"))
        desktop.stop()


if __name__ == "__main__":
    sys.exit(main(sys.argv))
