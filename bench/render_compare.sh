#!/usr/bin/env bash
# Whole processes drawing the same 16384-sample record into a 1200x600 PNG, side by side:
# quillet-cli render, gnuplot (png and pngcairo terminals) and matplotlib (Agg). Prints
# the median of each and how many times longer each takes than quillet-cli.
# Usage: bench/render_compare.sh [RUNS]   (needs a built tree with quillet-cli)
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
CLI=${QUILLET_CLI:-$ROOT/build/bin/quillet-cli}
RUNS=${1:-30}
PY=/usr/bin/python3
[ -x "$CLI" ] || { echo "render_compare: $CLI is not built" >&2; exit 1; }
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cd "$WORK"

# A cellar thermometer read every minute for eleven days: a daily swing, a slow drift,
# sensor noise at 0.01 degrees and a door left open for an hour. The record file is
# written as the program writes it (CRLF, quoted header texts, tab-separated samples);
# the plain file holds the same samples as two columns.
"$PY" - <<'PY'
import math, random
random.seed(11)
n, start, minute = 16384, 46000.25, 1 / 1440
rows = []
for i in range(1, n + 1):
    t = start + (i - 1) * minute
    v = 12 + 2.5 * math.sin(2 * math.pi * (t - start)) + 0.15 * (t - start) + random.gauss(0, 0.08)
    if 6000 < i <= 6060:
        v += 4 * (1 - math.exp(-(i - 6000) / 12))
    rows.append((f"{t:.8f}".rstrip("0").rstrip("."), f"{v:.2f}"))
head = ['"loggerfile"', '"rev02"', str(n), '"Cellar, north wall"', '""', '""', '""', '""', '""',
        '""', "1", "4711", '"degC"']
with open("rec.txt", "w", newline="") as f:
    f.write("\r\n".join(head + [f"{t}\t{v}" for t, v in rows]) + "\r\n")
with open("data.dat", "w") as f:
    f.write("".join(f"{t} {v}\n" for t, v in rows))
PY

# The same picture each time: a titled line graph with a grid and labelled axes.
for term in png pngcairo; do
  cat > "$term.gp" <<GP
set terminal $term size 1200,600
set output "$WORK/$term.png"
set title "Cellar, north wall"
set ylabel "degC"
set grid
set xtics 1
plot "$WORK/data.dat" using 1:2 with lines linecolor rgb "red" notitle
GP
done
cat > mpl.py <<PY
import numpy as np
import matplotlib.pyplot as plt
d = np.loadtxt("$WORK/data.dat")
fig, ax = plt.subplots(figsize=(12, 6), dpi=100)
ax.plot(d[:, 0], d[:, 1], color="red", linewidth=1)
ax.set_title("Cellar, north wall")
ax.set_ylabel("degC")
ax.grid(True)
fig.savefig("$WORK/mpl.png")
PY

export MPLBACKEND=Agg
NAMES=(quillet-cli gnuplot-png gnuplot-pngcairo matplotlib-agg)
CMDS=("$CLI render $WORK/rec.txt --out $WORK/quillet.png"
      "gnuplot $WORK/png.gp"
      "gnuplot $WORK/pngcairo.gp"
      "$PY $WORK/mpl.py")
# Each must work before it is timed.
for c in "${CMDS[@]}"; do $c > /dev/null 2> check.err || { cat check.err >&2; exit 1; }; done

if command -v hyperfine > /dev/null; then
  args=()
  for i in "${!NAMES[@]}"; do args+=(-n "${NAMES[$i]}" "${CMDS[$i]}"); done
  hyperfine --style basic --shell=none --warmup 3 --runs "$RUNS" --export-json times.json "${args[@]}" > hyperfine.txt 2>&1
  "$PY" - <<'PY' > medians.txt
import json
for r in json.load(open("times.json"))["results"]:
    print(r["command"], r["median"] * 1000)
PY
else
  # No hyperfine: a plain loop, one warm-up run each.
  : > medians.txt
  for i in "${!NAMES[@]}"; do
    ${CMDS[$i]} > /dev/null 2>&1
    for _ in $(seq "$RUNS"); do
      s=$(date +%s%N); ${CMDS[$i]} > /dev/null 2>&1; e=$(date +%s%N)
      echo $(( e - s ))
    done | sort -n | awk -v name="${NAMES[$i]}" '{ a[NR] = $1 } END {
      m = (NR % 2) ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2; print name, m / 1e6 }' >> medians.txt
  done
fi

"$PY" - "$WORK" <<'PY'
import struct, sys
work = sys.argv[1]
files = {"quillet-cli": "quillet.png", "gnuplot-png": "png.png", "gnuplot-pngcairo": "pngcairo.png",
         "matplotlib-agg": "mpl.png"}
targets = {"quillet-cli": "under 15 ms", "gnuplot-png": ">= 1.5x", "gnuplot-pngcairo": ">= 3x",
           "matplotlib-agg": ">= 20x"}
med = dict((n, float(m)) for n, m in (l.split() for l in open(f"{work}/medians.txt")))
base = med["quillet-cli"]
print(f"{'program':<18} {'median ms':>9} {'x quillet-cli':>13}  {'picture':>9}  target")
for name, ms in med.items():
    with open(f"{work}/{files[name]}", "rb") as f:
        w, h = struct.unpack(">II", f.read(24)[16:24])
    ok = ms < 15 if name == "quillet-cli" else ms / base >= float(targets[name][3:-1])
    print(f"{name:<18} {ms:9.1f} {ms / base:13.2f}  {w:>4}x{h:<4}  {targets[name]}: {'met' if ok else 'MISSED'}")
PY
