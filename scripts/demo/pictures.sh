#!/usr/bin/env bash
# pictures.sh FOLDER [LANGUAGE...]: walks all pages, statuses, menus and boxes, light and dark, in English, German and
# Persian, as on desktops at 100, 150 and 200 %, and leaves pictures in FOLDER/SCALE-LANGUAGE-LOOK/. On your display for
# somebody who watches, with $PAUSE or 1000 milliseconds for each; without one on a screen of 1366 x 768, as fast as it
# goes.
set -euo pipefail
folder=$(realpath -m "$1")
shift
[ $# -gt 0 ] || set -- en de fa
cd "$(dirname "$0")/../.."

cmake --preset release >/dev/null
cmake --build --preset release --target picture_tour >/dev/null
if [ -z "${DISPLAY:-}" ]; then
    exec env SCREEN_SIZE=1366x768 scripts/with-screen.sh env PAUSE=150 "$0" "$folder" "$@"
fi
for scale in 1 1.5 2; do
    for language; do
        for look in light dark; do
            echo "$scale $language $look"
            QT_SCALE_FACTOR=$scale build/release/demo/tour/picture_tour "$folder/$scale-$language-$look" "$language" \
                "$look" "${PAUSE:-1000}" >/dev/null
        done
    done
done
