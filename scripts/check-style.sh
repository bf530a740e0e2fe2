#!/usr/bin/env bash
# Checks the formatting (clang-format) and the static checks (clang-tidy) of all C++ sources against a finished debug
# build. Takes the files to check; all of them unless given.
set -euo pipefail
cd "$(dirname "$0")/.."

files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run --Werror "${files[@]}"
# Without the library's own checks, which throw nothing and look as if they did.
printf '%s\n' "${files[@]}" | grep '\.cpp$' |
    xargs -r -n 4 -P "$(nproc)" clang-tidy --quiet -p build/debug --extra-arg=-U_GLIBCXX_DEBUG \
    2> >(grep -v ' warnings generated' >&2)
