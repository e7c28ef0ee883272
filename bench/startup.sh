#!/usr/bin/env bash
# Start-up to first paint of the main window and resident memory then, under the
# offscreen platform: median of N runs (default 10). Needs a built tree (scripts/build.sh).
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
RUNS=${1:-10}
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cd "$WORK"
# A settings file with a language chosen, so no dialog stands in the way.
{
  printf '"[PORT etc]"\n"comm port =  1"\n"language =  1"\n"baud =  1200"\n"Fahrenheit =  0"\n"US Date Format =  1"\n"[probe data]"\n'
  for _ in $(seq 11); do printf ',,"",""\n'; done
  for _ in $(seq 62); do printf ',,,,,,,\n'; done
  printf '"","","","","","","",""\n'
} > logger1.ini
"$ROOT/build/bin/quillet-sim" --model 17 --link "$WORK/tty" > /dev/null 2>&1 &
SIM=$!
trap 'kill $SIM 2>/dev/null; rm -rf "$WORK"' EXIT
sleep 0.3
for i in $(seq "$RUNS"); do
  start=$(date +%s%N)
  line=$(QT_QPA_PLATFORM=offscreen QUILLET_COM1="$WORK/tty" QUILLET_EXIT_AFTER_FIRST_PAINT=1 "$ROOT/build/bin/quillet")
  end=$(date +%s%N)
  echo "$line wall_ms=$(( (end - start) / 1000000 ))"
done | tee "$WORK/runs.txt"
python3 - "$WORK/runs.txt" <<'PY'
import sys, statistics, re
rows = [dict(kv.split("=") for kv in l.split()) for l in open(sys.argv[1]) if l.strip()]
med = lambda k: statistics.median(float(r[k]) for r in rows)
print(f"median of {len(rows)}: first paint {med('first_paint_ms'):.1f} ms in-process, "
      f"{med('wall_ms'):.0f} ms whole process; resident {med('rss_kib')/1024:.1f} MiB")
PY
