#!/usr/bin/env bash
# Holds the rooms of the tree: reads the room table of README.md and fails on every include and every link that goes
# against it, with the line and the rule. A room may use only rooms of its own house on a lower floor: the client's
# floors are numbers, those of the programs beside it "helpers N"; "apart" may use every room, and no other room uses it;
# "names" may be used by all.
set -euo pipefail
cd "$(dirname "$0")/.."

# "FOLDER HOUSE FLOOR" for every folder of the table.
rooms=$(sed -n 's/^| \(helpers \)\?\([0-9]\|apart\|names\) | \(.*\) | .*/\1\2|\3/p' README.md | tr -d '`,' |
    while IFS='|' read -r floor folders; do
        for folder in $folders; do echo "${folder%/} ${floor% *} ${floor##* }"; done
    done)
[ "$(wc -l <<<"$rooms")" -gt 10 ] || { echo "check-rooms: README.md has no room table" >&2; exit 1; }

# "FILE:LINE HEADER" for every include of ours, and "FILE:LINE FOLDER/library" for every library of a room that another
# one links. The window's form counts as the controller's: no other room knows the window.
uses() {
    git grep -nE '^[[:space:]]*#[[:space:]]*(include|import)[[:space:]]*["<]' -- '*.cpp' '*.h' '*.mm' '*.in' |
        sed -E 's#^([^:]*:[0-9]+):[^"<]*["<]([^">]*)[">].*#\1 \2#; s# ui_Korvan\.h# controller/&#; s#/ u#/u#'
    git grep -nowE 'korvan_(helpers_)?[a-z0-9]+' -- '*/CMakeLists.txt' |
        sed -E 's#^([^:]*:[0-9]+):korvan_(helpers)_#\1 \2/#; s#^([^:]*:[0-9]+):korvan_#\1 #; s#$#/library#'
}

uses | awk -v rooms="$rooms" '
    # The longest folder of the table that holds the path.
    function roomOf(path) {
        while (sub(/\/[^\/]*$/, "", path))
            if (path in house) return path
        return ""
    }
    BEGIN {
        count = split(rooms, lines, "\n")
        for (i = 1; i <= count; i++) { split(lines[i], f, " "); house[f[1]] = f[2]; level[f[1]] = f[3] }
    }
    {
        file = $1; sub(/:.*/, "", file)
        if ($2 ~ /^\.\.?\//) { print $1 ": include from the top folder, not by " $2; bad = 1; next }
        from = roomOf(file); to = roomOf($2)
        if (to == "" || from == to || house[to] == "names") next
        if (from == "") { if ($2 !~ /library$/) { print $1 ": its folder is in no row of the room table"; bad = 1 }; next }
        if (house[from] == "apart") next
        if (house[to] == "apart") rule = to "/ stands apart"
        else if ((house[from] == "helpers") != (house[to] == "helpers"))
            rule = "the programs of helpers/ and the client share nothing but names"
        else if (level[to] < level[from]) next
        else rule = "floor " level[from] " may use only the floors below it, " to "/ is on floor " level[to]
        print $1 ": " from "/ may not use " $2 ": " rule; bad = 1
    }
    END { exit bad }'
