#!/usr/bin/env bash
# Sets up, builds and runs every test, headless:
#   1. the regular build with warnings as errors,
#   2. the same suite under AddressSanitizer and UndefinedBehaviorSanitizer,
#   3. a short libFuzzer run of the status-document reader,
#   4. the Debian package: built, checked by lintian, installed and run.
# Ends non-zero when anything fails.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=$(nproc)

"$root/scripts/install-deps.sh" test

step() { printf '\n== %s\n' "$*"; }

step "Regular build (warnings are errors)"
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQB_WERROR=ON
cmake --build build/test -j "$jobs"
step "Tests"
# A test that fails is run once more before the run fails: the end-to-end
# scenarios start whole desktops side by side on two cores, and a second
# launch under ASan on Wayland was once seen to hang there. Both failures are
# printed, so a flake stays visible in the log.
(cd build/test && ctest --output-on-failure -j "$jobs" --repeat until-pass:2)

step "Sanitizer build (ASan + UBSan)"
cmake -S . -B build/sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZQB_WERROR=ON \
  -DZQB_SANITIZE=ON -DZQB_BUILD_BENCH=OFF
cmake --build build/sanitize -j "$jobs"
step "Tests under sanitizers"
(cd build/sanitize && ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest --output-on-failure -j "$jobs" \
  --repeat until-pass:2)

step "Fuzzing the status-document reader"
"$root/fuzz/run.sh" "${ZQB_FUZZ_SECONDS:-20}"

step "Debian package"
"$root/scripts/package.sh"
step "Package checks (lintian, install, run, purge)"
"$root/scripts/check-package.sh"

echo
echo "All tests passed."
