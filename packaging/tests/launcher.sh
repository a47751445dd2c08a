#!/usr/bin/env bash
# The launcher finds its program through links, hands over every argument, and moves the
# temporary folder only where the default browser is a snap.
set -euo pipefail

packaging=$(cd -- "$(dirname -- "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
program="$scratch/a prefix/lib/velmora-master"
mkdir -p "$program" "$scratch/a prefix/bin" "$scratch/home" "$scratch/tools" \
    "$scratch/data/applications"
cp "$packaging/launcher" "$packaging/confined-browser.sh" "$program"
ln -s ../lib/velmora-master/launcher "$scratch/a prefix/bin/velmora-master"
ln -s "$scratch/a prefix/bin/velmora-master" "$scratch/second link"
cat >"$program/velmora-master" <<'PROGRAM'
#!/bin/sh
printf 'TMPDIR=%s\n' "${TMPDIR-}"
printf '<%s>\n' "$@"
PROGRAM
printf '#!/bin/sh\n' >"$scratch/tools/snap"
# shellcheck disable=SC2016 # the variable is for the tool that is written
printf '#!/bin/sh\necho "$DEFAULT_BROWSER"\n' >"$scratch/tools/xdg-settings"
chmod +x "$program/velmora-master" "$scratch/tools/"*
printf '[Desktop Entry]\nExec=env A=b /snap/bin/firefox %%u\n' \
    >"$scratch/data/applications/firefox_firefox.desktop"
printf '[Desktop Entry]\nExec=/usr/bin/chromium %%U\n' >"$scratch/data/applications/chromium.desktop"

# launch BROWSER ARGUMENT… runs the launcher where BROWSER is the default one.
launch()
{
    local browser=$1
    shift
    env -u TMPDIR HOME="$scratch/home" DISPLAY=:0 DEFAULT_BROWSER="$browser" \
        XDG_DATA_HOME="$scratch/none" XDG_DATA_DIRS="$scratch/data" \
        PATH="$scratch/tools:$PATH" "$scratch/second link" "$@"
}

# expect WHAT EXPECTED ACTUAL
expect()
{
    [[ $2 == "$3" ]] && return
    printf '%s\n  expected: %q\n  actual:   %q\n' "$1" "$2" "$3" >&2
    exit 1
}

expect "arguments arrive as they are" $'TMPDIR=\n<--resumen>\n<a  b\'"$c.rig>\n<>' \
    "$(launch chromium.desktop --resumen "a  b'\"\$c.rig" "")"
expect "an unconfined browser leaves no folder behind" "" "$(ls -A "$scratch/home")"

reports="$scratch/home/Velmora Master/informes"
expect "a snap moves the temporary folder" "TMPDIR=$reports" \
    "$(launch firefox_firefox.desktop x | head -n 1)"
expect "only the user can read it" 700 "$(stat -c %a "$reports")"
expect "a browser without an entry is no snap" "TMPDIR=" "$(launch missing.desktop x | head -n 1)"
