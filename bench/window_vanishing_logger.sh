#!/usr/bin/env bash
# The window program under Xvfb against quillet-sim with a logger that goes silent for a
# minute every three minutes, for SECONDS (default 600): resident memory sampled every
# 10 s. Prints the samples and start-up, peak and end figures. Needs a built tree
# (quillet, quillet-sim) and Xvfb.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
SECONDS_TO_RUN=${1:-600}
BIN=${QUILLET_BIN:-$ROOT/build/bin}
WORK=$(mktemp -d)
PIDS=()
cleanup() { for p in "${PIDS[@]}"; do kill "$p" 2>/dev/null || true; done; rm -rf "$WORK"; }
trap cleanup EXIT
cd "$WORK"
{
  printf '"[PORT etc]"\n"comm port =  1"\n"language =  1"\n"baud =  1200"\n"Fahrenheit =  0"\n"US Date Format =  0"\n"[probe data]"\n'
  for _ in $(seq 11); do printf ',,"",""\n'; done
  for _ in $(seq 62); do printf ',,,,,,,\n'; done
  printf '"","","","","","","",""\n'
} > logger1.ini
DISPLAY_NUMBER=$((90 + RANDOM % 100))
Xvfb ":$DISPLAY_NUMBER" -screen 0 1280x1024x24 -nolisten tcp > /dev/null 2>&1 &
PIDS+=($!)
"$BIN/quillet-sim" --model 17 --signal sine --level 21 --amplitude 3 --elapsed 2h --link "$WORK/tty" \
  --silent-after 60s --silent-for 60s --silent-every 180s > sim.log 2>&1 &
PIDS+=($!)
sleep 1
DISPLAY=":$DISPLAY_NUMBER" QUILLET_COM1="$WORK/tty" "$BIN/quillet" > window.log 2>&1 &
WIN=$!
PIDS+=($WIN)
rss() { awk '/VmRSS/ {print $2}' "/proc/$WIN/status" 2>/dev/null || echo 0; }
start=$(date +%s)
: > rss.txt
while [ $(( $(date +%s) - start )) -lt "$SECONDS_TO_RUN" ]; do
  sleep 10
  kill -0 "$WIN" 2>/dev/null || { echo "the window program ended early"; cat window.log; exit 1; }
  r=$(rss)
  echo "$(( $(date +%s) - start )) s  RSS ${r} kB" | tee -a rss.txt
done
python3 - rss.txt <<'PY'
import sys
rows = [int(l.split()[3]) for l in open(sys.argv[1]) if l.strip()]
first = rows[min(2, len(rows) - 1)]  # after 30 s: start-up done
print(f"samples {len(rows)}; RSS at 30 s {first} kB, peak {max(rows)} kB, end {rows[-1]} kB, "
      f"growth after start-up {rows[-1] - first} kB")
PY
