#!/usr/bin/env bash
# Installs what is missing, builds, starts the logger emulator on a pseudo-terminal and
# starts Quillet with COM 1 pointing at it. Without a display it shows the same work
# through quillet-cli instead: live readings, a download with progress, the graph as PNG. Options after -- go to the emulator, e.g.
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
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  QUILLET_COM1="$LINK" "$ROOT/build/bin/quillet"
  exit 0
fi

# No screen to show a window on: the same work through the command line, with the files
# it makes left in the demo folder.
CLI="$ROOT/build/bin/quillet-cli"
echo
echo "No display here, so the window program is not started; quillet-cli does the same work."
echo "With a display (or under ssh -X), the same command opens the window on the emulator."
echo
echo "== three live readings (time, value, unit)"
"$CLI" live --port "$LINK" --count 3
echo
echo "== downloading the logger's memory (progress on the way)"
"$CLI" download --port "$LINK" --out "$RUN_DIR/demo-record.txt" --raw "$RUN_DIR/demo"
echo
echo "== the graph of the record, as the window draws it"
"$CLI" render "$RUN_DIR/demo-record.txt" --out "$RUN_DIR/demo-graph.png" --size 1200x600
echo
echo "Files in $RUN_DIR:"
echo "  demo-record.txt   the record (open it in Quillet, or in a spreadsheet: tab separated from line 14)"
echo "  demo-graph.png    its graph"
echo "  demo.header.bin, demo.block.bin   the logger's raw header and memory"
