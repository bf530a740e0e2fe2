#!/bin/sh
# Starts Korvan, with the rights of whoever starts it. The repair of the network must work without a screen.
[ "$*" != -reset ] || [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] || export QT_QPA_PLATFORM=offscreen
exec /opt/korvan/Korvan.app/Contents/MacOS/Korvan "$@"
