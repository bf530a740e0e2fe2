#!/usr/bin/env bash
# Checks the translations of languages/*.ts: that they hold the texts of the sources, all of them and no others, that
# each is translated, and that placeholders, markup, mnemonics and line ends are the source's. With --update it first
# takes new texts in, for a translator, and old ones out. The engine's texts are not translated: the program looks for
# words in them.
set -euo pipefail
cd "$(dirname "$0")/.."

# takeTexts FILE.ts...: brings the files up to the sources.
takeTexts() {
    lupdate -silent -I . -no-obsolete -locations none -source-language en ui controller app account platform -ts "$@"
}

files=(languages/*.ts)
[ "${1-}" != --update ] || takeTexts "${files[@]}"
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT
cp "${files[@]}" "$copies"
takeTexts "$copies"/*.ts
failed=0
changes=$(diff -r -U 1 languages "$copies" | grep -v '^Only in languages' || true)
if [ -n "$changes" ]; then
    echo "$changes"
    echo "check-languages: texts have changed: scripts/check-languages.sh --update, then translate them" >&2
    failed=1
fi
awk '
    # What stands between the tags of that name.
    function inside(record, tag) {
        if (!match(record, "<" tag "[^>]*>")) return ""
        record = substr(record, RSTART + RLENGTH)
        return substr(record, 1, index(record, "</" tag ">") - 1)
    }
    # All matches of the expression, in an order of their own.
    function all(text, expression,    found, count, i, j, one) {
        count = 0
        while (match(text, expression)) {
            one = substr(text, RSTART, RLENGTH)
            for (i = count++; i > 0 && found[i] > one; i--) found[i + 1] = found[i]
            found[i + 1] = one
            text = substr(text, RSTART + RLENGTH)
        }
        one = ""
        for (i = 1; i <= count; i++) one = one " " found[i]
        return one
    }
    function complain(what) {
        print FILENAME ": " what ": \"" source "\" is \"" translation "\""
        bad = 1
    }
    BEGIN { RS = "</message>" }
    /<message/ {
        source = inside($0, "source"); translation = inside($0, "translation")
        if (translation == "") complain("not translated")
        else if ($0 ~ /<translation type=/) complain("not finished")
        else if (all(source, "%L?[0-9n]") != all(translation, "%L?[0-9n]")) complain("other placeholders")
        else if (all(source, "&lt;/?[a-z]+") != all(translation, "&lt;/?[a-z]+")) complain("other markup")
        else if (gsub(/&amp;[^ ]/, "&", source) != gsub(/&amp;[^ ]/, "&", translation)) complain("other mnemonics")
        else if ((source ~ /\n$/) != (translation ~ /\n$/)) complain("another end of the line")
    }
    END { exit bad }' languages/*.ts || failed=1
exit "$failed"
