#!/usr/bin/env bash
# A full 32766-byte block at 4800 bit/s through quillet-cli download against quillet-sim:
# wall time of the block phase (acknowledge of "T" to the unfolded record) against the
# time the bytes need on the wire (bytes x 11 bits / speed), and the whole download.
# Needs a built tree (scripts/build.sh). Takes about a minute and a half.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
WORK=$(mktemp -d)
# A two-byte logger with 16384 slots, thinned twice: the whole memory is asked for, and
# the receive buffer's 32766 bytes are what comes.
"$ROOT/build/bin/quillet-sim" --model 64 --memory 4 --baud 4800 --elapsed 10h --signal sine \
  --link "$WORK/tty" > /dev/null 2>&1 &
SIM=$!
trap 'kill $SIM 2>/dev/null; rm -rf "$WORK"' EXIT
for _ in $(seq 50); do [ -e "$WORK/tty" ] && break; sleep 0.1; done
start=$(date +%s.%N)
"$ROOT/build/bin/quillet-cli" download --port "$WORK/tty" --baud 4800 --out "$WORK/rec.txt" 2> "$WORK/err.txt"
end=$(date +%s.%N)
cat "$WORK/err.txt" | grep -v downloading
python3 - "$WORK/err.txt" "$start" "$end" <<'PY'
import re, sys
text = open(sys.argv[1]).read()
m = re.search(r"block of (\d+) bytes in ([\d.]+) s, on the wire ([\d.]+) s; whole download ([\d.]+) s", text)
if not m:
    sys.exit("no block timing in the output")
size, block, wire, whole = int(m[1]), float(m[2]), float(m[3]), float(m[4])
print(f"block bytes      {size}")
print(f"block phase      {block:.3f} s")
print(f"wire time        {wire:.3f} s  ({size} x 11 / 4800)")
print(f"ratio            {block / wire:.4f}  (target under 1.02)")
print(f"whole download   {whole:.3f} s  = wire {wire:.3f} s + {whole - wire:.3f} s of protocol ticks and header")
print(f"whole process    {float(sys.argv[3]) - float(sys.argv[2]):.3f} s  (with finding the logger)")
PY
