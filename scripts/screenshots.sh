#!/usr/bin/env bash
# Takes the README's screenshots of the window program on a private X server: the main
# window after a download from the logger emulator, a zoom rectangle being dragged, and
# the zoomed graph with the cursor readout. Writes docs/screenshots/*.png.
#
#   bash scripts/screenshots.sh            (after scripts/build.sh)
#
# Needs xvfb-run, xdotool and ImageMagick (scripts/install-deps.sh installs them).
# Exits non-zero with a message naming the step that failed; the logs of that run are
# kept and their path printed.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BIN=${QUILLET_BIN_DIR:-$ROOT/build/bin}
OUT=${QUILLET_SHOTS_DIR:-$ROOT/docs/screenshots}

fail() {
  echo "screenshots: $*" >&2
  # What the screen showed then, beside the logs.
  if [ -n "${WORK:-}" ] && [ -d "$WORK" ]; then import -window root "$WORK/failure.png" 2>/dev/null || true; fi
  exit 1
}

# ---- outside the X server: check what is needed, then run again under xvfb-run ----------
if [ -z "${QUILLET_SHOTS_ON_XVFB:-}" ]; then
  for tool in xvfb-run xdotool import convert; do
    command -v "$tool" >/dev/null || fail "$tool is missing (bash scripts/install-deps.sh installs it)"
  done
  for prog in quillet quillet-sim; do
    [ -x "$BIN/$prog" ] || fail "$BIN/$prog is not built (bash scripts/build.sh)"
  done
  # A screen larger than the window, so that nothing is cut off; no window manager, so
  # the window has no frame and a window grab is exactly the window.
  exec env QUILLET_SHOTS_ON_XVFB=1 xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
fi

# ---- on the X server ------------------------------------------------------------------
WIN_W=1000
WIN_H=700
WORK=$(mktemp -d "${TMPDIR:-/tmp}/quillet-shots.XXXXXX")
SIM_PID=""
APP_PID=""

cleanup() {
  local status=$?
  for pid in $APP_PID $SIM_PID; do
    if kill -0 "$pid" 2>/dev/null; then
      kill "$pid" 2>/dev/null || true
      for _ in $(seq 20); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
      kill -9 "$pid" 2>/dev/null || true
    fi
  done
  if [ "$status" -ne 0 ]; then
    echo "screenshots: logs of this run are in $WORK (sim.log, quillet.log)" >&2
  else
    rm -rf "$WORK"
  fi
}
trap cleanup EXIT

# Polls a command every 0.2 s until it succeeds; fails with the description after the
# given number of seconds, or at once if the window program has died.
wait_for() {
  local what=$1 seconds=$2
  shift 2
  local tries=$((seconds * 5))
  for _ in $(seq "$tries"); do
    if "$@"; then return 0; fi
    if [ -n "$APP_PID" ] && ! kill -0 "$APP_PID" 2>/dev/null; then
      fail "quillet ended while waiting for $what (see $WORK/quillet.log)"
    fi
    sleep 0.2
  done
  fail "timed out after ${seconds}s waiting for $what"
}

# The settings of a first run that chose English, COM 1 and the US date format; with
# them the program asks for no language and looks for the logger on COM 1 at once.
write_settings() {
  {
    printf '"[PORT etc]"\n"comm port = 1"\n"language = 1"\n"baud = 4800"\n'
    printf '"Fahrenheit = 0"\n"US Date Format = 1"\n"[probe data]"\n'
    for _ in $(seq 11); do printf ',,"",""\n'; done
    for _ in $(seq 62); do printf ',,,,,,,\n'; done
    printf '"","","","","","","",""\n'
  } >"$WORK/logger1.ini"
}

main_window() { xdotool search --all --onlyvisible --pid "$APP_PID" --name 'Software$' 2>/dev/null | head -1; }
dialog_named() { xdotool search --all --onlyvisible --pid "$APP_PID" --name "^$1\$" 2>/dev/null | head -1; }
has_window() { [ -n "$(main_window)" ]; }
has_dialog() { [ -n "$(dialog_named "$1")" ]; }
no_dialog() { [ -z "$(dialog_named "$1")" ]; }
sim_said() { grep -q -- "$1" "$WORK/sim.log"; }

# The graph surface, cut out of a grab of the window.
GRAPH_CROP="$((WIN_W - 20))x$((WIN_H * 55 / 100))+10+30"
graph_sum() {
  import -window "$WIN" "$WORK/probe.png" && convert "$WORK/probe.png" -crop "$GRAPH_CROP" +repage rgb:- | md5sum | cut -c1-32
}
# True when the graph surface differs from each given sum and has stopped changing.
LAST_SUM=""
graph_settled_away_from() {
  local now old
  now=$(graph_sum) || return 1
  local previous=$LAST_SUM
  LAST_SUM=$now
  for old in "$@"; do [ "$now" != "$old" ] || return 1; done
  [ "$now" = "$previous" ]
}

# X grabs leave the pointer out; an arrow is drawn where it stands so that the readout
# and the rectangle's corner have something to refer to.
shoot() {
  local name=$1 px=${2:-} py=${3:-}
  import -window "$WIN" "$WORK/$name" || fail "could not grab the window for $name"
  if [ -n "$px" ]; then
    convert "$WORK/$name" -fill black -stroke white -strokewidth 1 \
      -draw "polygon $px,$py $px,$((py + 17)) $((px + 4)),$((py + 13)) $((px + 7)),$((py + 20)) $((px + 10)),$((py + 19)) $((px + 7)),$((py + 12)) $((px + 12)),$((py + 12))" \
      "$WORK/$name" || fail "could not draw the pointer on $name"
  fi
  cp "$WORK/$name" "$OUT/$name"
  echo "screenshots: wrote $OUT/$name"
}

mkdir -p "$OUT"
write_settings

# The logger: a model 17 at 4800 bit/s that has recorded a sine for six hours; the
# smallest memory keeps the download to a few seconds.
"$BIN/quillet-sim" --model 17 --baud 4800 --elapsed 6h --signal sine --period 1h --memory 0 --verbose \
  --link "$WORK/ttyLOGGER" >"$WORK/sim.out" 2>"$WORK/sim.log" &
SIM_PID=$!
wait_for "the logger emulator's terminal" 10 test -s "$WORK/sim.out"

(cd "$WORK" && exec env QUILLET_COM1="$WORK/ttyLOGGER" QUILLET_WINDOW_GEOMETRY="${WIN_W}x${WIN_H}+0+0" \
  "$BIN/quillet" >"$WORK/quillet.log" 2>&1) &
APP_PID=$!
wait_for "the main window" 20 has_window
WIN=$(main_window)
# Park the pointer off the window: the readout only follows it over the graph.
xdotool mousemove 1200 1000

# Found: the live reading has read the logger's header.
wait_for "the logger to be found on COM 1" 30 sim_said "command R, reply"
sleep 1
START_SUM=$(graph_sum) || fail "could not grab the window"

# Download: a click on its place in the menu bar, then the clock dialog's OK (Return).
xdotool mousemove --window "$WIN" 141 8 click 1
xdotool mousemove 1200 1000
wait_for "the clock dialog" 10 has_dialog "Set Date and Time"
CLOCK=$(dialog_named "Set Date and Time")
# The dialog is given the keyboard first; should a Return be lost all the same, it is
# sent again while the dialog stays.
for _ in 1 2 3 4 5; do
  sleep 0.5
  timeout 5 xdotool windowfocus --sync "$CLOCK" 2>/dev/null || true
  xdotool key Return
  for _ in $(seq 10); do no_dialog "Set Date and Time" && break 2; sleep 0.2; done
done
no_dialog "Set Date and Time" || fail "the clock dialog did not take OK (Return)"
wait_for "the logger to send its memory" 20 sim_said "command T, reply"
wait_for "the downloaded graph" 60 graph_settled_away_from "$START_SUM"
FULL_SUM=$LAST_SUM
shoot main-window.png

# In a 1000x700 window the plot spans x 157..891 and y 87..376. Drag from about 4:10 am
# and 25.5 degrees to about 7:00 am and 17 degrees; a drag that selected nothing would
# leave the full graph, and the wait for the zoomed one would fail.
X0=345 Y0=105 X1=612 Y1=322
xdotool mousemove --window "$WIN" "$X0" "$Y0"
sleep 0.3
xdotool mousedown 1
for step in 1 2 3 4 5 6; do
  xdotool mousemove --window "$WIN" $((X0 + (X1 - X0) * step / 6)) $((Y0 + (Y1 - Y0) * step / 6))
  sleep 0.1
done
LAST_SUM=""
wait_for "the zoom rectangle" 10 graph_settled_away_from "$FULL_SUM"
DRAG_SUM=$LAST_SUM
shoot zoom-drag.png "$X1" "$Y1"
xdotool mouseup 1
LAST_SUM=""
wait_for "the zoomed graph" 20 graph_settled_away_from "$FULL_SUM" "$DRAG_SUM"

# The readout follows the pointer with no button held.
RX=520 RY=200
xdotool mousemove --window "$WIN" $((RX - 5)) $((RY - 5))
sleep 0.3
xdotool mousemove --window "$WIN" "$RX" "$RY"
sleep 1
shoot zoomed-readout.png "$RX" "$RY"
