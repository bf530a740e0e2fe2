#!/usr/bin/env bash
# Builds the Debian package and runs its tests, those of the label "package" included, which scripts/test.sh leaves
# out: they install the package on a clean Debian of this release, made by debootstrap. Takes minutes, and the network at
# the first run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target korvan_bundle package_test
(cd build/release && cpack -G DEB >/dev/null)
ctest --preset release -R '^package_'
