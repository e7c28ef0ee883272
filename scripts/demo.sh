#!/usr/bin/env bash
# Installs what is missing, builds, starts the logger emulator on a pseudo-terminal and
# starts Quillet with COM 1 pointing at it. Options after -- go to the emulator, e.g.
#   scripts/demo.sh -- --model 64 --baud 4800 --elapsed 3d
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
bash "$ROOT/scripts/install-deps.sh"
bash "$ROOT/scripts/build.sh"
if [ "${1:-}" = "--" ]; then shift; fi
SIM_ARGS=("$@")
if [ ${#SIM_ARGS[@]} -eq 0 ]; then SIM_ARGS=(--model 17 --baud 1200 --signal sine --elapsed 2h); fi

RUN_DIR=${QUILLET_DEMO_DIR:-$HOME/.quillet-demo}   # logger1.ini lives here between runs
mkdir -p "$RUN_DIR"
LINK="$RUN_DIR/ttyQUILLET1"
"$ROOT/build/bin/quillet-sim" "${SIM_ARGS[@]}" --link "$LINK" > "$RUN_DIR/sim.out" 2>"$RUN_DIR/sim.log" &
SIM_PID=$!
trap 'kill $SIM_PID 2>/dev/null || true' EXIT
for _ in $(seq 50); do [ -e "$LINK" ] && break; sleep 0.1; done
echo "logger emulator on $(head -1 "$RUN_DIR/sim.out") (linked at $LINK)"
cd "$RUN_DIR"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "no display: running under xvfb-run"
  QUILLET_COM1="$LINK" xvfb-run -a "$ROOT/build/bin/quillet"
else
  QUILLET_COM1="$LINK" "$ROOT/build/bin/quillet"
fi
