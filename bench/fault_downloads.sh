#!/usr/bin/env bash
# Downloads over a real pseudo-terminal with the emulator's wire faults: N runs (default
# 50) of quillet-cli download against quillet-sim, each with one fault drawn from a
# seeded list (blocks ignored, a block cut short, noise ahead of replies, silence). The
# logger measures a steady level, so a right record has that value in every sample and
# as many samples as the logger's running time gives. Prints one line a run and a summary.
# Needs a built tree (quillet-cli, quillet-sim).
set -uo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
RUNS=${1:-50}
SEED=${2:-1}
BIN=${QUILLET_BIN:-$ROOT/build/bin}
WORK=$(mktemp -d)
SIM=
cleanup() { [ -n "$SIM" ] && kill "$SIM" 2>/dev/null; rm -rf "$WORK"; }
trap cleanup EXIT
RANDOM=$SEED
right=0 wrong=0 failed=0
for i in $(seq "$RUNS"); do
  models=(17 17 65 64); model=${models[$((RANDOM % 4))]}
  bauds=(1200 4800); baud=${bauds[$((RANDOM % 2))]}
  elapsed=$((120 + RANDOM % 480))
  case $((RANDOM % 5)) in
    0) fault="--ignore-blocks $((1 + RANDOM % 2))" ;;
    1) fault="--cut-block $((RANDOM % 200)) --cut-blocks 1" ;;
    2) fault="--noise-before-reply $((1 + RANDOM % 6)) --noisy-replies $((1 + RANDOM % 8))" ;;
    3) fault="--silent-after $((1 + RANDOM % 4))s --silent-for $((1 + RANDOM % 12))s" ;;
    4) fault="" ;;
  esac
  level=25; [ "$model" -ge 64 ] && level=123.5
  rm -f "$WORK/tty" "$WORK/rec.txt"
  # shellcheck disable=SC2086
  "$BIN/quillet-sim" --model "$model" --baud "$baud" --elapsed "${elapsed}s" --signal steady --level "$level" \
    --link "$WORK/tty" $fault > "$WORK/sim.log" 2>&1 &
  SIM=$!
  for _ in $(seq 50); do [ -e "$WORK/tty" ] && break; sleep 0.05; done
  start=$(date +%s.%N)
  (cd "$WORK" && "$BIN/quillet-cli" download --port "$WORK/tty" --baud "$baud" --out "$WORK/rec.txt" --timeout 60) \
    > "$WORK/cli.out" 2> "$WORK/cli.err"
  code=$?
  secs=$(echo "$(date +%s.%N) - $start" | bc)
  kill "$SIM" 2>/dev/null; wait "$SIM" 2>/dev/null; SIM=
  verdict=failed
  if [ $code -eq 0 ] && [ -s "$WORK/rec.txt" ]; then
    if python3 - "$WORK/rec.txt" "$level" "$elapsed" "$model" <<'PY'
import re, sys
text = open(sys.argv[1], encoding="latin-1").read()
level, elapsed, model = float(sys.argv[2]), float(sys.argv[3]), int(sys.argv[4])
m = re.search(r"Max =\s*([-\d.]+)\s+Min =\s*([-\d.]+)\s+Avg =\s*([-\d.]+)", text)
if not m:
    sys.exit(1)
vals = [float(v) for v in m.groups()]
tol = 0.01 if model >= 64 else 0.3
sys.exit(0 if all(abs(v - level) <= tol for v in vals) else 1)
PY
    then verdict=right; right=$((right + 1)); else verdict=wrong; wrong=$((wrong + 1)); fi
  else
    failed=$((failed + 1))
  fi
  printf 'run %2d  model %3d  %4d bit/s  %-58s exit %d  %6.1f s  %s\n' "$i" "$model" "$baud" "${fault:-no fault}" \
    "$code" "$secs" "$verdict"
  [ "$verdict" = right ] || sed 's/^/        /' "$WORK/cli.err" | tail -3
done
echo "summary: $RUNS downloads, $right right, $wrong wrong, $failed without a record"
