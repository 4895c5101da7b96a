#!/usr/bin/env bash
# make.sh [FOLDER]: draws the icons of every size as PNG into FOLDER, by default beside the drawings. Sizes up to 24 have a drawing
# of their own with fewer lines.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
folder=${1:-$here}
for size in 16 22 24 32 48 64 128 256 512; do
    drawing=org.quillow.Quillow.svg
    [ "$size" -gt 24 ] || drawing=small.svg
    rsvg-convert --width "$size" --height "$size" --output "$folder/$size.png" "$here/$drawing"
done
