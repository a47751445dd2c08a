#!/bin/sh
# Draws every raster icon of the program from the SVG sources in resources/:
# the window icon icono-app.ico and the PNG icons of the packages.
# The results are committed, so that building needs neither rsvg-convert nor icotool.
# Debian packages: librsvg2-bin icoutils
set -eu

resources=$(cd "$(dirname "$0")/../resources" && pwd)
icons=$resources/icons
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# draw SOURCE SIZE FILE
draw() {
    rsvg-convert --width "$2" --height "$2" --output "$3" "$1"
}

for size in 16 24 32 48 64 128 256; do
    app=$resources/icono-app.svg
    [ "$size" -gt 32 ] || app=$resources/icono-app-small.svg
    folder=$icons/${size}x${size}
    mkdir -p "$folder"
    draw "$app" "$size" "$folder/velmora-master.png"
    draw "$resources/tipo-rig.svg" "$size" "$folder/application-x-velmora-rig.png"
    cp "$folder/velmora-master.png" "$scratch/$size.png"
done

cd "$scratch"
# the largest one is kept as PNG inside the icon file: as a bitmap it alone would be 256 KiB
icotool --create --output="$resources/icono-app.ico" \
    16.png 24.png 32.png 48.png 64.png 128.png --raw=256.png
