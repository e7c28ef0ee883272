#!/usr/bin/env python3
"""Lines and branches of the logic that one coverage run reached and another did not.

    python3 scripts/coverage-diff.py BEFORE.json AFTER.json

Both files are gcovr --json reports (scripts/coverage.sh writes one per run as
build-coverage/coverage.json). Prints each line or branch reached before and missed after,
then the totals; exits 1 when anything was lost.
"""
import json, sys


def load(path):
    out = {}
    for f in json.load(open(path))["files"]:
        lines = {}
        for l in f["lines"]:
            if l.get("gcovr/noncode"):
                continue
            n = l["line_number"]
            prev = lines.get(n, (0, []))
            branches = [b["count"] for b in l.get("branches", [])]
            if len(prev[1]) == len(branches):
                branches = [a + b for a, b in zip(prev[1], branches)]
            lines[n] = (prev[0] + l["count"], branches)
        out[f["file"]] = lines
    return out


before, after = load(sys.argv[1]), load(sys.argv[2])
lost_lines = lost_branches = 0
for name in sorted(before):
    for n, (count, branches) in sorted(before[name].items()):
        a_count, a_branches = after.get(name, {}).get(n, (0, []))
        if count > 0 and a_count == 0:
            lost_lines += 1
            print(f"line   {name}:{n}")
        for i, c in enumerate(branches):
            if c > 0 and (i >= len(a_branches) or a_branches[i] == 0):
                lost_branches += 1
                print(f"branch {name}:{n} #{i}")
print(f"lost: {lost_lines} lines, {lost_branches} branches")
sys.exit(1 if lost_lines or lost_branches else 0)
