#!/usr/bin/env bash
# Stress run under ThreadSanitizer: the whole command catalogue from four agent threads while
# remote support is switched on and off, session codes are asked for and the agent's session
# changes state. Any sanitizer report, failed expectation or watchdog expiry fails the check.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-stress"
jobs="$(nproc 2>/dev/null || echo 2)"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNORVANE_SANITIZE=thread >/dev/null
cmake --build "$build" -j "$jobs" --target stress_tests

# halt_on_error: the first report ends the process with a failure status. The ctest run keeps
# every case in its own process, as all the project's suites do.
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1${TSAN_OPTIONS:+ $TSAN_OPTIONS}"
cd "$build"
ctest --output-on-failure --no-tests=error -R '^CatalogueStressTest\.'
