#!/usr/bin/env bash
# Builds resources/user_guide.html from docs/guide/user_guide.src.html, with pictures taken from
# the program itself off screen, and docs/screenshot.png, the picture of the whole window:
#     tools/guide.sh [FOLDER]       writes each picture into FOLDER as well, to look at
# The results are committed, so that building the program needs neither.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}"
lock_build
build pictures velmora_pictures
unlock_build

# Only what is told here decides how the window looks, not the desktop of the one who runs this.
env -u QT_SCALE_FACTOR -u QT_STYLE_OVERRIDE -u QT_FONT_DPI QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 \
    "$velmora_root/build/pictures/bin/velmora_pictures" "$velmora_root/docs/guide/user_guide.src.html" \
    "$velmora_root/resources/user_guide.html" "$velmora_root/docs/screenshot.png" "$@"
say "Written: resources/user_guide.html, docs/screenshot.png"
