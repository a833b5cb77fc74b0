#!/usr/bin/env python3
"""Checks that every translation file holds every text of the app.

Usage: check_translations.py LUPDATE SOURCE_ROOT TS_FILE...

Runs lupdate over the app's sources into a copy of each .ts file (the file
itself is left alone) and fails, naming the texts, when lupdate had to add a
text the file did not have, or when a text in the file is still unfinished.
A new English text in the code therefore fails here until
scripts/update-translations.sh has added it and a translator has translated it.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

SOURCE_FOLDERS = ["src/model", "src/ui", "src/app"]


def entries(path):
    """(context, source, finished) for every current message of a .ts file."""
    result = []
    for context in ET.parse(path).getroot().iter("context"):
        name = context.findtext("name")
        for message in context.iter("message"):
            translation = message.find("translation")
            kind = translation.get("type") if translation is not None else None
            if kind in ("obsolete", "vanished"):
                continue
            result.append((name, message.findtext("source"), kind != "unfinished"))
    return result


def main():
    lupdate, root, ts_files = sys.argv[1], sys.argv[2], sys.argv[3:]
    if not ts_files:
        print("no translation files given")
        return 1
    failures = 0
    with tempfile.TemporaryDirectory() as scratch:
        for ts in ts_files:
            copy = os.path.join(scratch, os.path.basename(ts))
            shutil.copyfile(ts, copy)
            run = subprocess.run(
                [lupdate, "-locations", "none", "-no-obsolete"]
                + [os.path.join(root, f) for f in SOURCE_FOLDERS]
                + ["-ts", copy],
                capture_output=True, text=True)
            if run.returncode != 0:
                print(f"{ts}: lupdate failed:\n{run.stdout}{run.stderr}")
                failures += 1
                continue
            warnings = [l for l in run.stderr.splitlines() if "warning" in l.lower()]
            before = {(c, s) for c, s, _ in entries(ts)}
            after = entries(copy)
            missing = [(c, s) for c, s, _ in after if (c, s) not in before]
            unfinished = [(c, s) for c, s, done in after if not done and (c, s) in before]
            name = os.path.basename(ts)
            for c, s in missing:
                print(f"{name}: missing text [{c}] {s!r}")
            for c, s in unfinished:
                print(f"{name}: unfinished text [{c}] {s!r}")
            for w in warnings:
                print(f"{name}: lupdate: {w}")
            if missing or unfinished or warnings:
                failures += 1
            else:
                print(f"{name}: {len(after)} texts, all translated")
    if failures:
        print(f"\n{failures} translation file(s) out of date: run "
              "scripts/update-translations.sh, then translate the new texts.")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
