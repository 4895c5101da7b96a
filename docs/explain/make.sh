#!/bin/sh
# Remakes the pictures of docs/engine-pdf.md beside this script, with the program that tools/build.sh built.
#   docs/explain/make.sh [PRESET]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
top=$(dirname "$(dirname "$here")")
convert=$top/build/${1:-release}/bin/quillow-convert

"$convert" --explain 1 "$top/samples/village-letter.pdf" -o "$here/columns.svg"
"$convert" --explain 1 "$top/samples/thesis-page.pdf" -o "$here/table.svg"
"$convert" --explain 1 "$top/samples/will-hebrew-arabic.pdf" -o "$here/right-to-left.svg"
