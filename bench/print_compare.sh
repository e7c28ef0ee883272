#!/usr/bin/env bash
# Whole processes printing a 16384-sample record to PDF: quillet-cli print data (33 pages)
# side by side with the same rows through enscript into ps2pdf, interleaved; then
# quillet-cli print graph and the size of its PDF. Prints medians and the ratio.
# Usage: bench/print_compare.sh [RUNS]   (needs a built quillet-cli; enscript, ghostscript)
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
CLI=${QUILLET_CLI:-$ROOT/build/bin/quillet-cli}
RUNS=${1:-10}
[ -x "$CLI" ] || { echo "print_compare: $CLI is not built" >&2; exit 1; }
command -v enscript >/dev/null && command -v ps2pdf >/dev/null ||
  { echo "print_compare: needs enscript and ghostscript" >&2; exit 1; }
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cd "$WORK"

# A cellar thermometer read every minute for eleven days, as the program writes records.
/usr/bin/python3 - <<'PY'
import math, random
random.seed(11)
n, start = 16384, 46000.25
rows = []
for i in range(1, n + 1):
    t = start + (i - 1) / 1440
    v = 12 + 2.5 * math.sin(2 * math.pi * (t - start)) + 0.15 * (t - start) + random.gauss(0, 0.08)
    rows.append((f"{t:.8f}", f"{v:.2f}"))
head = ['"loggerfile"', '"rev02"', str(n), '"Cellar, north wall"', '""', '""', '""', '""', '""',
        '""', "1", "4711", '"degC"']
with open("rec.txt", "w", newline="") as f:
    f.write("\r\n".join(head + [f"{t}\t{v}" for t, v in rows]) + "\r\n")
PY
# The same rows as plain text for the peer: the table as quillet-cli lays it out.
"$CLI" print data rec.txt --out table.pdf
pdftotext -layout table.pdf rows.txt

ms() { local s e; s=$(date +%s%N); "$@" >/dev/null 2>&1; e=$(date +%s%N); echo $(( (e - s) / 1000000 )); }
: > q.txt; : > p.txt; : > g.txt
for _ in $(seq "$RUNS"); do
  ms "$CLI" print data rec.txt --out data.pdf >> q.txt
  ms sh -c 'enscript -q -B -f Courier5 -r -p - rows.txt | ps2pdf - peer.pdf' >> p.txt
  ms "$CLI" print graph rec.txt --out graph.pdf >> g.txt
done
med() { sort -n "$1" | awk '{a[NR]=$1} END {print (NR % 2 ? a[(NR+1)/2] : (a[NR/2] + a[NR/2+1]) / 2)}'; }
Q=$(med q.txt); P=$(med p.txt); G=$(med g.txt)
echo "print data, 16384 samples, $(pdfinfo data.pdf | awk '/^Pages/ {print $2}') pages: ${Q} ms (median of $RUNS)"
echo "enscript | ps2pdf, same rows, $(pdfinfo peer.pdf | awk '/^Pages/ {print $2}') pages: ${P} ms"
awk -v q="$Q" -v p="$P" 'BEGIN {printf "peer takes %.2f times as long\n", p / q}'
echo "print graph, 16384 samples: ${G} ms, PDF $(stat -c %s graph.pdf) bytes"
