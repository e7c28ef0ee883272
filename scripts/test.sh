#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: the full build with the window
# and end-to-end tests, then the logic tests again under AddressSanitizer and UBSan.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
cd "$ROOT"
bash scripts/install-deps.sh
JOBS=${JOBS:-$(nproc)}

echo "== include directions (docs/architecture.md)"
bash scripts/check-layers.sh

echo "== build and test"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$JOBS"
QT_QPA_PLATFORM=offscreen ctest --test-dir build --output-on-failure -j "$JOBS"

echo "== logic tests under AddressSanitizer and UBSan"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DQUILLET_SANITIZE=ON -DQUILLET_BUILD_UI=OFF >/dev/null
cmake --build build-asan -j "$JOBS" --target quillet_tests
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --test-dir build-asan --output-on-failure -j "$JOBS"

echo "== fuzz targets, a short bounded run each (clang, AddressSanitizer and UBSan)"
JOBS="$JOBS" bash scripts/fuzz.sh "${FUZZ_SECONDS:-10}"
