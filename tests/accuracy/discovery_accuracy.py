#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when discovery finds fewer of real apps' known leftovers, or shows more of other apps'
files, than it did when these floors were set.

  discovery_accuracy.py QUENZO_CLI ACCURACY_DIR

ACCURACY_DIR holds leftovers.py and its fake Mac; when it is absent the check is skipped.
"""
import json
import os
import subprocess
import sys
import tempfile

# Floors reached by the discovery rules in docs/discovery.md; raise them when rules improve.
AT_LEAST = {"recall": 0.9336, "inScopeRecall": 0.9602}
AT_MOST = {"selectedOtherAppHits": 0, "unselectedOtherAppHits": 37}
SKIP = 77


def main():
    cli, folder = sys.argv[1], sys.argv[2]
    script = os.path.join(folder, "leftovers.py")
    if not os.path.isfile(script):
        print("skipped: no accuracy yardstick at %s" % folder)
        return SKIP
    with tempfile.TemporaryDirectory(prefix="quenzo-accuracy-") as work:
        run = subprocess.run([sys.executable, script, cli, "--work", work],
                             capture_output=True, text=True, timeout=1200)
    if run.returncode != 0:
        print(run.stdout, run.stderr)
        return 1
    figures = json.loads(run.stdout)
    print(json.dumps(figures, indent=1))
    failures = ["%s %s < %s" % (k, figures[k], v) for k, v in AT_LEAST.items() if figures[k] < v]
    failures += ["%s %s > %s" % (k, figures[k], v) for k, v in AT_MOST.items() if figures[k] > v]
    for failure in failures:
        print("fell back:", failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
