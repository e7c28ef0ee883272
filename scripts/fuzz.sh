#!/usr/bin/env bash
# Builds the libFuzzer harnesses of tests/fuzz with clang (AddressSanitizer and UBSan) in
# build-fuzz/ and runs each for SECONDS (default 60) on a copy of its checked-in corpus,
# with the dictionary of its format. A crash leaves its input in build-fuzz/findings/ and
# fails the script; each target's executions are printed at the end.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
cd "$ROOT"
SECONDS_PER_TARGET=${1:-60}
# Leak checks after each input that keeps memory cost most of a long run's time:
# FUZZ_DETECT_LEAKS=0 leaves them to the short runs.
LEAKS=${FUZZ_DETECT_LEAKS:-1}
JOBS=${JOBS:-2}
TARGETS=(record_file settings loglang probes profile header_block serial)
# FUZZ_TARGETS="a b" runs only those, so two runs can share the machine's cores.
[ -n "${FUZZ_TARGETS:-}" ] && read -r -a TARGETS <<<"$FUZZ_TARGETS"
# The harnesses that start a whole program write its files in a fresh folder per input:
# on a memory file system their flushes cost nothing.
if [ -z "${TEST_TMPDIR:-}" ] && [ -w /dev/shm ]; then export TEST_TMPDIR=/dev/shm; fi

# -O1 with line tables: quick to build, and the stacks of a finding still name the lines.
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only" -DQUILLET_FUZZ=ON \
  -DQUILLET_BUILD_UI=OFF -DQUILLET_BUILD_TESTS=OFF >/dev/null
cmake --build build-fuzz -j "$JOBS" --target $(printf '%s_fuzz ' "${TARGETS[@]}") >/dev/null

mkdir -p build-fuzz/findings
failed=0
summary=()
for t in "${TARGETS[@]}"; do
  work=build-fuzz/corpus/$t
  mkdir -p "$work"
  cp -n tests/fuzz/corpus/$t/* "$work"/ 2>/dev/null || true
  dict=()
  [ -f tests/fuzz/dict/$t.dict ] && dict=(-dict=tests/fuzz/dict/$t.dict)
  log=build-fuzz/findings/$t.log
  echo "== $t for ${SECONDS_PER_TARGET} s"
  if UBSAN_OPTIONS=print_stacktrace=1 \
      build-fuzz/bin/${t}_fuzz -max_total_time="$SECONDS_PER_TARGET" -detect_leaks="$LEAKS" -timeout=20 -rss_limit_mb=2048 \
      -artifact_prefix=build-fuzz/findings/${t}- -print_final_stats=1 "${dict[@]}" "$work" >"$log" 2>&1; then
    status=ok
  else
    status=FAILED
    failed=1
    tail -40 "$log"
  fi
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
  summary+=("$(printf '%-13s %12s executions  %s' "$t" "$runs" "$status")")
done
printf '%s\n' "${summary[@]}"
exit $failed
