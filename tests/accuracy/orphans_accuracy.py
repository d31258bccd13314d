#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""How well `quenzo-cli orphans` finds what deleted apps left behind.

  orphans_accuracy.py QUENZO_CLI ACCURACY_DIR [--seeds 1,2,3] [--deleted 30]

ACCURACY_DIR holds mac.json (a fake Mac of real apps, each with the files it is known to leave
behind) and fakemac.py, which lays it out. For each seed the apps are shuffled and the bundles of
the first --deleted removed; every other app (at least 30) stays installed. `orphans --json` must
then list at least 85 % of the deleted apps' known leftover paths that lie directly in a folder
the search lists (an item equal to a path or containing it counts; a path also known for an
installed app is that app's), and no item that is, holds or lies inside a known leftover of any
installed app.
Exit 0 passes, 1 fails, 77 when ACCURACY_DIR is missing (CTest reports the test as skipped).
"""
import argparse
import json
import os
import random
import shutil
import subprocess
import sys
import tempfile

RECALL_GOAL = 0.85
# The folders the search lists, one level deep (as shared/accuracy/leftovers.py counts them):
# a leftover elsewhere (/usr/local/bin, ~/Library/Arduino15) is out of its reach by design.
SCANNED = {"~/Library/" + x for x in [
    "Application Support", "Containers", "Group Containers", "Application Scripts", "Preferences",
    "Preferences/ByHost", "Caches", "Caches/com.apple.nsurlsessiond/Downloads", "HTTPStorages",
    "Cookies", "WebKit", "Saved Application State",
    "Application Support/com.apple.sharedfilelist/"
    "com.apple.LSSharedFileList.ApplicationRecentDocuments", "Logs", "Logs/DiagnosticReports",
    "Logs/DiagnosticReports/Retired", "Application Support/CrashReporter", "Internet Plug-Ins",
    "PreferencePanes", "Services", "Screen Savers", "LaunchAgents"]} | {"/Library/" + x for x in [
        "Application Support", "Preferences", "Caches", "Logs", "Logs/DiagnosticReports",
        "PrivilegedHelperTools", "Internet Plug-Ins", "PreferencePanes", "Screen Savers",
        "LaunchAgents", "LaunchDaemons"]} | {"/private/var/db/receipts", "~", "~/.config"}


def related(a, b):
    return a == b or a.startswith(b + "/") or b.startswith(a + "/")


def mac_path(path, root, home):
    if path == home or path.startswith(home + "/"):
        return "~" + path[len(home):]
    return path[len(root):] if path.startswith(root + "/") else path


def check(cli, fakemac, manifest, seed, deleted_count, work):
    keys = sorted(manifest["leftovers"])
    random.Random(seed).shuffle(keys)
    deleted = keys[:deleted_count]
    installed = keys[deleted_count:]
    root = os.path.join(work, "mac-%d" % seed)
    fakemac.build(manifest, root)
    home = os.path.join(root, "Users", manifest.get("user", "alice"))
    for key in deleted:
        shutil.rmtree(root + manifest["leftovers"][key]["app"])
    run = subprocess.run([cli, "orphans", "--json", "--root", root, "--home", home],
                         capture_output=True, text=True, timeout=600)
    if run.returncode != 0:
        sys.exit("orphans failed (%d): %s" % (run.returncode, run.stderr[-500:]))
    listed = [mac_path(item["path"], root, home)
              for group in json.loads(run.stdout)["groups"] for item in group["items"]]
    installed_paths = {p for key in installed for p in manifest["leftovers"][key]["paths"]}
    wanted = sorted(p for p in {p for key in deleted for p in manifest["leftovers"][key]["paths"]}
                    - installed_paths if os.path.dirname(p) in SCANNED)
    found = [p for p in wanted if any(p == f or p.startswith(f + "/") for f in listed)]
    wrong = sorted({f for f in listed for p in installed_paths if related(f, p)})
    recall = len(found) / len(wanted) if wanted else 1.0
    print(json.dumps({"seed": seed, "deletedPaths": len(wanted), "found": len(found),
                      "recall": round(recall, 4), "installedAppItemsListed": wrong,
                      "missed": [p for p in wanted if p not in found]}, indent=1))
    shutil.rmtree(root, ignore_errors=True)
    return recall >= RECALL_GOAL and not wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("cli")
    parser.add_argument("accuracy")
    parser.add_argument("--seeds", default="1,2,3")
    parser.add_argument("--deleted", type=int, default=30)
    args = parser.parse_args()
    manifest_path = os.path.join(args.accuracy, "mac.json")
    if not os.path.isfile(manifest_path):
        print("skipped: %s not found" % manifest_path)
        return 77
    sys.path.insert(0, os.path.abspath(args.accuracy))
    import fakemac  # noqa: E402  (lives beside mac.json)
    manifest = json.load(open(manifest_path))
    work = tempfile.mkdtemp(prefix="quenzo-orphans-")
    try:
        results = [check(os.path.abspath(args.cli), fakemac, manifest, int(seed), args.deleted, work)
                   for seed in args.seeds.split(",")]
    finally:
        shutil.rmtree(work, ignore_errors=True)
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
