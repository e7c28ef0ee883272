#!/usr/bin/env bash
# Line and branch coverage of the logic over the whole test run (logic, window and
# end-to-end tests), then the test count and the size of the tests against the code.
#
#   bash scripts/coverage.sh            # summary and one row per folder
#   bash scripts/coverage.sh --files    # one row per file as well
#
# Each run leaves its per-line report in build-coverage/coverage.json; scripts/coverage-diff.py
# lists what one run reached and another did not.
#
# Builds into build-coverage/ (g++ --coverage, no optimisation) and leaves build/ alone.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
cd "$ROOT"
bash scripts/install-deps.sh >/dev/null
JOBS=${JOBS:-$(nproc)}
BUILD=${COVERAGE_BUILD_DIR:-build-coverage}
LOGIC=(core hub log1 link measure profiles storage graph printing)
CODE=(cli sim app ui "${LOGIC[@]}")

cmake -S . -B "$BUILD" -DCMAKE_BUILD_TYPE=Debug -DQUILLET_BUILD_UI=ON \
  -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS="--coverage -O0" \
  -DCMAKE_EXE_LINKER_FLAGS="--coverage" >/dev/null
cmake --build "$BUILD" -j "$JOBS" >"$BUILD/build.log" 2>&1 || { tail -40 "$BUILD/build.log"; exit 1; }
find "$BUILD" -name '*.gcda' -delete
# Notes of sources deleted since an earlier build would only bring gcov warnings.
(cd "$BUILD" && find . -name '*.gcno') | while read -r notes; do
  source=$(echo "${notes#./}" | sed -E 's#^(.*/)?CMakeFiles/[^/]+\.dir/#\1#; s#\.gcno$##')
  if [ ! -f "$source" ]; then rm -f "$BUILD/$notes"; fi
done

echo "== tests"
set +e
QT_QPA_PLATFORM=offscreen ctest --test-dir "$BUILD" -j "$JOBS" --output-on-failure > "$BUILD/ctest.log" 2>&1
status=$?
set -e
grep -E "tests passed|tests failed" "$BUILD/ctest.log"
if [ $status -ne 0 ]; then
  sed -n '/The following tests FAILED/,$p' "$BUILD/ctest.log"
fi

filters=()
for d in "${LOGIC[@]}"; do filters+=(--filter "$d/"); done
gcovr_args=(--root "$ROOT" --object-directory "$BUILD" "${filters[@]}"
  --exclude-directories ".*/CMakeFiles/[0-9.]+/.*"
  --exclude-throw-branches --exclude-unreachable-branches)

echo
echo "== coverage of the logic (${LOGIC[*]})"
gcovr "${gcovr_args[@]}" --json-summary "$BUILD/coverage-summary.json" --json "$BUILD/coverage.json" --print-summary \
  | grep -E "^(lines|branches):"

python3 - "$BUILD/coverage-summary.json" "${1:-}" <<'EOF'
import json, sys
from collections import defaultdict
files = json.load(open(sys.argv[1]))["files"]
rows = defaultdict(lambda: [0, 0, 0, 0])
for f in files:
    r = rows[f["filename"].split("/")[0]]
    r[0] += f["line_covered"]; r[1] += f["line_total"]
    r[2] += f["branch_covered"]; r[3] += f["branch_total"]
def pct(a, b): return f"{100.0 * a / b:5.1f}%" if b else "    -"
def line(name, r):
    print(f"{name:<40} {r[0]:>6}/{r[1]:<6} {pct(r[0], r[1])}   {r[2]:>6}/{r[3]:<6} {pct(r[2], r[3])}")
print(f"{'folder':<40} {'lines':^20}   {'branches':^20}")
for name in sorted(rows):
    line(name + "/", rows[name])
if sys.argv[2] == "--files":
    print()
    print(f"{'file':<40} {'lines':^20}   {'branches':^20}")
    for f in sorted(files, key=lambda f: f["filename"]):
        line(f["filename"], [f["line_covered"], f["line_total"], f["branch_covered"], f["branch_total"]])
EOF

echo
echo "== size"
count() {  # total and non-blank lines of the .cpp/.h files under the folders given
  local list
  list=$(find "$@" \( -name '*.cpp' -o -name '*.h' \) -type f 2>/dev/null | sort)
  if [ -z "$list" ]; then echo "0 0"; return; fi
  # shellcheck disable=SC2086
  echo "$(cat $list | wc -l) $(cat $list | grep -cv '^[[:space:]]*$')"
}
existing=()
for d in "${CODE[@]}"; do [ -d "$d" ] && existing+=("$d"); done
read -r code_all code_nb <<<"$(count "${existing[@]}")"
read -r test_all test_nb <<<"$(count tests)"
tests_run=$(grep -oE "tests passed, [0-9]+ tests failed out of [0-9]+" "$BUILD/ctest.log" | grep -oE "[0-9]+$")
echo "tests run:  $tests_run"
printf "tests:      %6d lines (%d non-blank)\n" "$test_all" "$test_nb"
printf "code:       %6d lines (%d non-blank)   [%s]\n" "$code_all" "$code_nb" "${existing[*]}"
python3 -c "print(f'tests/code: {$test_all/$code_all:.0%} of the lines, {$test_nb/$code_nb:.0%} non-blank')"
exit $status
