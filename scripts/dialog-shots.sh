#!/usr/bin/env bash
# Screenshots of the main window and of every dialog, in each language, as a user sees
# them: on a private X server (Xvfb) with a window manager (IceWM, which honours the
# window hints, so a dialog shows only its close box), so frames and title bars show. Writes OUT/<language>/<name>.png and an index, OUT/index.html.
#
#   bash scripts/dialog-shots.sh                 all eight languages
#   bash scripts/dialog-shots.sh 1 2             English and German only
#
# OUT is docs/screenshots/languages unless QUILLET_SHOTS_DIR names another folder. Needs
# a build (scripts/build.sh) and xvfb-run, icewm, xdotool and ImageMagick
# (scripts/install-deps.sh installs them). A script for people, not a test: a dialog that
# does not come up is reported and skipped.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BIN=${QUILLET_BIN_DIR:-$ROOT/build/bin}
OUT=${QUILLET_SHOTS_DIR:-$ROOT/docs/screenshots/languages}
CODES=(en de fr es it pt nl pl)

if [ -z "${QUILLET_SHOTS_ON_XVFB:-}" ]; then
  for tool in xvfb-run icewm xdotool import; do
    command -v "$tool" >/dev/null || { echo "dialog-shots: $tool is missing (bash scripts/install-deps.sh)" >&2; exit 1; }
  done
  for prog in quillet quillet-sim; do
    [ -x "$BIN/$prog" ] || { echo "dialog-shots: $BIN/$prog is not built (bash scripts/build.sh)" >&2; exit 1; }
  done
  exec env QUILLET_SHOTS_ON_XVFB=1 xvfb-run -a -s "-screen 0 1280x900x24" bash "$0" "$@"
fi

WORK=$(mktemp -d "${TMPDIR:-/tmp}/quillet-dialogs.XXXXXX")
PIDS=()
cleanup() {
  for pid in "${PIDS[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$WORK"
}
trap cleanup EXIT

icewm >/dev/null 2>&1 &
PIDS+=($!)
sleep 2

# Settings of an installation that chose language $1, COM 1, 4800 bit/s.
write_settings() {
  {
    printf '"[PORT etc]"\n"comm port = 1"\n"language = %s"\n"baud = 4800"\n' "$1"
    printf '"Fahrenheit = 0"\n"US Date Format = 0"\n"[probe data]"\n'
    for _ in $(seq 11); do printf ',,"",""\n'; done
    for _ in $(seq 62); do printf ',,,,,,,\n'; done
    printf '"","","","","","","",""\n'
  } >"$2/logger1.ini"
}

# One run of the program against a fresh emulated logger: $1 language, $2 shot name,
# $3 emulator model ("none": no logger, COM 1 names no device), $4 QUILLET_TRIGGER, $5 seconds until the shot, $6 keys to press
# on the way ("at:key" pairs, seconds from the start).
shot() {
  local language=$1 name=$2 model=$3 trigger=$4 wait=$5 keys=${6:-}
  local run="$WORK/run-$language-$name"
  mkdir -p "$run"
  write_settings "$language" "$run"
  local sim=""
  if [ "$model" != none ]; then
    "$BIN/quillet-sim" --model "$model" --baud 4800 --elapsed 20m --signal sine --period 10m --memory 0 \
      --link "$run/tty" >"$run/sim.out" 2>"$run/sim.log" &
    sim=$!
    PIDS+=("$sim")
    for _ in $(seq 50); do [ -s "$run/sim.out" ] && break; sleep 0.1; done
  fi
  (cd "$run" && exec env QUILLET_COM1="$run/tty" QUILLET_WINDOW_GEOMETRY="1100x760+60+40" QUILLET_TRIGGER="$trigger" \
    "$BIN/quillet" >"$run/quillet.log" 2>&1) &
  local app=$!
  PIDS+=("$app")
  local elapsed=0
  for step in $keys; do
    local at=${step%%:*} key=${step#*:}
    sleep $((at - elapsed)); elapsed=$at
    xdotool key --clearmodifiers "$key" || true
  done
  sleep $((wait - elapsed))
  local dir="$OUT/${CODES[$((language - 1))]}"
  mkdir -p "$dir"
  local win
  win=$(xdotool getactivewindow 2>/dev/null || true)
  if [ -n "$win" ] && import -frame -window "$win" "$dir/$name.png" 2>/dev/null; then
    echo "dialog-shots: $dir/$name.png"
  else
    echo "dialog-shots: no window for $name in language $language (see $run/quillet.log)" >&2
  fi
  kill "$app" $sim 2>/dev/null || true
  wait "$app" $sim 2>/dev/null || true
}

languages=("$@")
[ ${#languages[@]} -gt 0 ] || languages=(1 2 3 4 5 6 7 8)
mkdir -p "$OUT"
for L in "${languages[@]}"; do
  shot "$L" main-window 17 "" 5
  # The port dialog comes up by itself after the message that COM 1 cannot be opened.
  shot "$L" port-message none "" 3
  shot "$L" port none "" 5 "3:Return"
  shot "$L" language 17 "mnuLang@2500" 4
  shot "$L" about 17 "mnuHelpAbout@2500" 4
  shot "$L" time-set 17 "mnuSetTime@2500" 4
  shot "$L" help 17 "mnuHelpCont@2500" 4
  shot "$L" probes 16 "func01@4000" 6
  shot "$L" profile-420 17 "mnu420sca@2500" 4
  shot "$L" profile-100mv 17 "mnu100sca@2500" 4
  shot "$L" profile-10v 17 "mnu10sca@2500" 4
  # A downloaded record: the clock dialog takes Return, then Annotate opens Describe.
  shot "$L" describe 17 "mnuDownload@2500,Command3@9000" 11 "4:Return"
  shot "$L" graph 17 "mnuDownload@2500" 9 "4:Return"
done

# An index page to look at them all at once.
{
  echo '<html><head><meta charset="utf-8"><title>Quillet dialogs by language</title></head><body>'
  for L in "${languages[@]}"; do
    code=${CODES[$((L - 1))]}
    echo "<h2>$code</h2>"
    for f in "$OUT/$code"/*.png; do
      [ -e "$f" ] && echo "<a href=\"$code/$(basename "$f")\"><img src=\"$code/$(basename "$f")\" width=\"320\"></a>"
    done
  done
  echo '</body></html>'
} >"$OUT/index.html"
echo "dialog-shots: index in $OUT/index.html"
