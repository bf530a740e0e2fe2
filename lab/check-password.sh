#!/usr/bin/env bash
# Password check of the server Password-1: $1 is a file with the name and the password on two lines.
{ read -r name && read -r password; } <"$1"
exec grep -q -x -F -e "$name"$'\t'"$password" "$LAB_DIR/users"
