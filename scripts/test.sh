#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests but those of the label "package", which take minutes
# (scripts/test-package.sh). Takes a preset name (debug unless given).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-debug}

scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -LE package
