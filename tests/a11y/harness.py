"""What the desktop tests' harnesses share (the accessibility suite's own
private desktop here, the real shells' sessions in tests/shells and the
startup-settings test in tests/desktop): how a skip is told to CTest, how a
scenario fails and logs, and waiting for a condition within a bound."""

import os
import time

SKIP = 77  # what CTest is told a skipped scenario returns


class Skip(Exception):
    """This machine cannot run the scenario (a missing service, no namespaces)."""


class HarnessError(Exception):
    """The desktop or the app did not do what the test waited for."""


class Failure(Exception):
    """The scenario saw something a person would call wrong."""


def check(condition, message):
    if not condition:
        raise Failure(message)


def log(*parts):
    print(*parts, flush=True)


def wait_until(condition, timeout, interval=0.05, what="condition"):
    """Polls `condition` until it returns something true; that value is returned.
    Raises HarnessError naming `what` when `timeout` seconds pass first."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise HarnessError("timed out after %ss waiting for %s" % (timeout, what))
        time.sleep(interval)


def read_display_number(read_end, timeout=20):
    """The display Xvfb names on its -displayfd pipe (":N"), or None when it
    says nothing within `timeout` seconds. Closes `read_end`."""
    number = b""
    deadline = time.monotonic() + timeout
    while not number.endswith(b"\n") and time.monotonic() < deadline:
        chunk = os.read(read_end, 32)
        if not chunk:
            break
        number += chunk
    os.close(read_end)
    return ":" + number.decode().strip() if number.strip() else None
