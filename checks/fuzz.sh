#!/usr/bin/env bash
# Fuzzing with libFuzzer: builds the fuzz targets of fuzz/ with clang under the Address and
# UndefinedBehavior sanitizers (in build-fuzz/), then runs each target for a bounded time from a
# copy of its seed corpus (fuzz/corpus/<target>/), so the repository's corpora stay as they are.
# Any crash, leak, sanitizer report or hang fails the check; the failing input is kept in
# build-fuzz/artifacts/.
#   NORVANE_FUZZ_SECONDS   fuzzing time per target (default 45)
set -euo pipefail

# shellcheck source=lib/packages.bash
source "$(dirname "${BASH_SOURCE[0]}")/lib/packages.bash"

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-fuzz"
artifacts="$build/artifacts"
jobs="$(nproc 2>/dev/null || echo 2)"
seconds="${NORVANE_FUZZ_SECONDS:-45}"
# One input that takes this long counts as a hang (the simulated TV runs time fast).
input_timeout=25
targets=(commands tracks identity script)
work=""

# clang with its libFuzzer runtime (Debian packages it in libclang-rt-14-dev), and what the
# project's build configuration looks for.
packages=(clang-14 libclang-rt-14-dev "${build_packages[@]}")


install_packages() {
  install_missing_packages fuzz "${packages[@]}"
}

build_targets() {
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
    "-DNORVANE_SANITIZE=address;undefined" -DNORVANE_FUZZ=ON >/dev/null
  cmake --build "$build" -j "$jobs" --target fuzzers
}

# libFuzzer's final statistics line `stat::<name>: <value>` of a log.
final_stat() {
  sed -n "s/^stat::$1: *//p" "$2" | tail -n 1
}

# Seconds, with one decimal, between two `date +%s%N` readings.
elapsed() {
  awk -v ns="$(($2 - $1))" 'BEGIN { printf "%.1f", ns / 1e9 }'
}

# Runs one target; prints its time and executions. Fails on any finding.
fuzz_target() {
  local target="$1" log started ended status=0
  log="$work/$target.log"
  cp -R "$root/fuzz/corpus/$target" "$work/corpus-$target"
  started="$(date +%s%N)"
  ASAN_OPTIONS="detect_leaks=1" \
  UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1" \
    "$build/fuzz/fuzz_$target" "-max_total_time=$seconds" "-timeout=$input_timeout" \
    -print_final_stats=1 -close_fd_mask=1 "-artifact_prefix=$artifacts/$target-" \
    "$work/corpus-$target" >"$log" 2>&1 || status=$?
  ended="$(date +%s%N)"
  # A report that did not stop the run (a recovered one, or one from the exit) still counts.
  if [ "$status" -eq 0 ] && grep -qE 'Sanitizer|runtime error:|ERROR: libFuzzer' "$log"; then
    status=1
  fi
  printf 'fuzz: %-9s %6s s  %9s executions  %6s exec/s  %s new inputs\n' "$target" \
    "$(elapsed "$started" "$ended")" "$(final_stat number_of_executed_units "$log")" \
    "$(final_stat average_exec_per_sec "$log")" "$(final_stat new_units_added "$log")"
  if [ "$status" -ne 0 ]; then
    echo "fuzz: $target FAILED (status $status); the end of its log:" >&2
    tail -n 60 "$log" >&2
    echo "fuzz: failing inputs, if any, are in $artifacts/" >&2
    return 1
  fi
}

main() {
  local check_started="$SECONDS" failed=0
  install_packages
  build_targets
  mkdir -p "$artifacts"
  work="$(mktemp -d "${TMPDIR:-/tmp}/norvane-fuzz-XXXXXX")"
  trap 'rm -rf "$work"' EXIT
  for target in "${targets[@]}"; do
    fuzz_target "$target" || failed=1
  done
  echo "fuzz: whole check $((SECONDS - check_started)) s"
  return "$failed"
}

main "$@"
