#!/usr/bin/env bash
# Prints the reference record's graph page again into the picture the print test compares
# against (the PDF drawn by pdftoppm at 40 dpi). Run it when a change to the printout is
# meant to change the page, look at the new picture, and commit it with the change.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
"$ROOT/scripts/build.sh" >/dev/null
"$ROOT/build/bin/quillet-cli" print graph "$ROOT/tests/data/reference_record.txt" --out "$WORK/graph.pdf" --annotate
pdftoppm -png -r 40 -singlefile "$WORK/graph.pdf" "$WORK/page"
cp "$WORK/page.png" "$ROOT/tests/data/reference_print_graph.png"
echo "wrote tests/data/reference_print_graph.png"
