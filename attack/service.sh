#!/usr/bin/env bash
# What a hostile service, or whoever answers in its place, can do to the window: every row is one answer, with what the
# person saw, what was left, the memory it took (MB), the seconds, and for how long the window was frozen (ms). Needs a build
# with the target service_attack, in build/debug or in the folder KORVAN_BUILD. A row with "!" is one that should not be.
# ATTACK_ROW=TEXT tries only the rows that have it in their name.
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
build=${KORVAN_BUILD:-$root/build/debug}
cd "$build/tests/service_attack"
exec env QT_QPA_PLATFORM=offscreen "$root/lab/lab" run --build "$build" -- ./service_attack -silent "$@"
