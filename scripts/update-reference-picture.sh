#!/usr/bin/env bash
# Draws the reference record again into the picture the render test compares against.
# Run it when a change to the drawing is meant to change the picture, look at the new
# picture, and commit it with the change.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
"$ROOT/scripts/build.sh" >/dev/null
"$ROOT/build/bin/quillet-cli" render "$ROOT/tests/data/reference_record.txt" \
  --out "$ROOT/tests/data/reference_graph.png" --size 800x400
echo "wrote tests/data/reference_graph.png"
