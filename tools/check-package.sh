#!/usr/bin/env bash
# Builds the packages and tries them out: their metadata, their manual pages, the program started
# from its desktop entry with an example, the type of its files. As root the .deb is installed on
# this system and removed again; otherwise it is unpacked and tried in place.
#     tools/check-package.sh [--built]      --built: with the packages that are in build/package
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

scratch=$(mktemp -d)
processes=()
installed= # whether this script has installed the package
clean_up()
{
    local process
    for process in "${processes[@]}"; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    [[ -z $installed ]] || purge >&2 || true
    rm -rf -- "$scratch"
}
trap clean_up EXIT

purge() { env DEBIAN_FRONTEND=noninteractive apt-get -q -y purge velmora-master; }

passed() { say "ok: $*"; }

# quietly WHAT COMMAND … fails, with what the command said, where it fails.
quietly()
{
    local what=$1 said
    shift
    said=$("$@" 2>&1) || fail "$said" "FAILED: $what"
    passed "$what"
}

# silently WHAT COMMAND … fails also where the command has anything to say.
silently()
{
    local what=$1 said
    shift
    if ! said=$("$@" 2>&1) || [[ -n $said ]]; then fail "$said" "FAILED: $what"; fi
    passed "$what"
}

# expect WHAT EXPECTED ACTUAL
expect()
{
    [[ $2 == "$3" ]] || fail "expected: $2" "actual:   $3" "FAILED: $1"
    passed "$1"
}

# within_seconds SECONDS COMMAND …: tries the command until it succeeds or the time is up.
within_seconds()
{
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.1
    done
}

check_metadata()
{
    local share=$1/share man
    silently "desktop entry" desktop-file-validate "$share/applications/velmora-master.desktop"
    quietly "AppStream metadata" appstreamcli validate --no-net \
        "$share/metainfo/com.velmora.velmora_master.metainfo.xml"
    silently "file type is well formed" xmllint --noout --nonet "$share/mime/packages/velmora-master.xml"
    quietly "bill of materials" python3 -m json.tool "$share/doc/velmora-master/velmora-master.cdx.json"
    ! grep -qF '*.json' "$share/mime/packages/velmora-master.xml" || fail "FAILED: claims *.json"
    for man in man1 es/man1; do
        man --warnings -E UTF-8 -l "$share/man/$man/velmora-master.1.gz" \
            >"$scratch/manual" 2>"$scratch/warnings"
        [[ ! -s $scratch/warnings ]] || fail "$(<"$scratch/warnings")" "FAILED: manual $man"
        grep -q -e --resumen "$scratch/manual" || fail "FAILED: manual $man does not render"
        passed "manual $man"
    done
}

check_lintian()
{
    local -a options=(--fail-on "error,warning")
    [[ $EUID -ne 0 ]] || options+=(--allow-root)
    quietly lintian lintian "${options[@]}" "$1"
}

# type_of FILE SHARE: the type of the file, as a desktop that has the data folder SHARE sees it.
type_of()
{
    XDG_DATA_HOME=$scratch/none XDG_DATA_DIRS=$2 gio info --attributes=standard::content-type "$1" |
        sed -n 's/^ *standard::content-type: //p'
}

check_file_type()
{
    local share=$1
    cp -- "$velmora_root/examples/concierto.rig" "$scratch/proyecto.rig"
    cp -- "$velmora_root/examples/concierto.rig" "$scratch/datos.json"
    expect "type of a project" application/x-velmora-rig "$(type_of "$scratch/proyecto.rig" "$share")"
    expect "type of other JSON files" application/json "$(type_of "$scratch/datos.json" "$share")"
}

start_display()
{
    mkfifo "$scratch/display"
    # Without a reset it stays ready between two programs; the first to come after one may be refused.
    Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp -noreset 3<>"$scratch/display" 2>/dev/null &
    processes+=($!)
    read -r -t 20 DISPLAY <"$scratch/display" || fail "FAILED: Xvfb does not start"
    export DISPLAY=:$DISPLAY
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM
}

windows_of() { xdotool search --onlyvisible --pid "$1" --name . 2>/dev/null; }

has_windows() { [[ $(windows_of "$2" | wc -l) -ge $1 ]]; }

# start PREFIX FILE: starts the program as its desktop entry does and sets $process.
start()
{
    local prefix=$1 command
    command=$(sed -n 's/^Exec=//p' "$prefix/share/applications/velmora-master.desktop" | head -n 1)
    [[ $command == "velmora-master %F" ]] || fail "FAILED: the desktop entry's command is $command"
    PATH=$prefix/bin:$PATH HOME=$scratch/home "${command%% *}" "$2" 2>"$scratch/said" &
    process=$!
    processes+=("$process")
    within_seconds 20 has_windows 1 "$process" || fail "$(<"$scratch/said")" "FAILED: no window"
}

stop()
{
    kill "$1"
    wait "$1" 2>/dev/null || true
}

# The program opens an example in one window and goes on running; of a broken project it complains
# in a second window, so the files do arrive.
check_program()
{
    local prefix=$1 process window
    start "$prefix" "$scratch/proyecto.rig"
    expect "program lies beside its guide" "$prefix/lib/velmora-master" \
        "$(dirname -- "$(readlink -- "/proc/$process/exe")")"
    [[ -f $prefix/lib/velmora-master/user_guide.html ]] || fail "FAILED: there is no guide"
    sleep 2
    kill -0 "$process" 2>/dev/null || fail "$(<"$scratch/said")" "FAILED: the program ended"
    window=$(windows_of "$process")
    expect "one window" "Velmora Master v2.0 - Engineering Structural Simulation" \
        "$(xdotool getwindowname "$window")"
    expect "window class of the desktop entry" \
        "$(sed -n 's/^StartupWMClass=//p' "$prefix/share/applications/velmora-master.desktop")" \
        "$(xprop -id "$window" WM_CLASS | sed 's/.*"\(.*\)"$/\1/')"
    stop "$process"

    echo "no project" >"$scratch/roto.rig"
    start "$prefix" "$scratch/roto.rig"
    within_seconds 20 has_windows 2 "$process" || fail "FAILED: no complaint about a broken project"
    passed "a broken project is told of"
    stop "$process"

    quietly "figures without a display" env -u DISPLAY "$prefix/bin/velmora-master" --resumen \
        "$scratch/proyecto.rig"
}

is_installed() { [[ $(dpkg-query -W -f '${db:Status-Status}' velmora-master 2>/dev/null) == installed ]]; }

# Whatever --help tells of is in the manuals and is completed.
check_options()
{
    local prefix=$1 option man
    local -a options
    mapfile -t options < <("$prefix/bin/velmora-master" --help | grep -oE -e '--[a-z]+' | sort -u)
    [[ ${#options[@]} -ge 6 ]] || fail "FAILED: --help names no options"
    for option in "${options[@]}"; do
        for man in man1 es/man1; do
            MANWIDTH=200 man -l "$prefix/share/man/$man/velmora-master.1.gz" | grep -qwF -e "$option" ||
                fail "FAILED: $option is not in the manual $man"
        done
        grep -qwF -e "$option" "$prefix/share/bash-completion/completions/velmora-master" ||
            fail "FAILED: $option is not completed"
    done
    passed "options in manuals and completion"
}

check_installed()
{
    local package=$1 left
    ! is_installed || fail "velmora-master is installed on this system: left as it is."
    installed=yes
    quietly "installing" install_packages "$package"
    dpkg -L velmora-master | sort >"$scratch/files"
    check_program /usr
    check_options /usr
    check_file_type /usr/share
    expect "found as a command" /usr/bin/velmora-master "$(command -v velmora-master)"
    quietly "removing" purge
    installed=
    left=$(find /usr /etc /var/lib -xdev -ipath '*velmora*' -not -path '/var/lib/apt/*' \
        -not -path "$velmora_root/*" 2>/dev/null || true)
    expect "nothing is left" "" "$left"
}

# check_unpacked FOLDER: what is in FOLDER works from where it is.
check_unpacked()
{
    local prefix=$1
    check_metadata "$prefix"
    quietly "data base of types" update-mime-database "$prefix/share/mime"
    check_file_type "$prefix/share:/usr/share"
    check_program "$prefix"
    check_options "$prefix"
}

need_packages "${velmora_program_packages[@]}" desktop-file-utils appstream libxml2-utils man-db \
    lintian python3 xvfb xdotool x11-utils shared-mime-info libglib2.0-bin
[[ ${1:-} == --built ]] || "$velmora_root/package.sh"
packages=$velmora_root/build/package
deb=("$packages"/velmora-master_*.deb)
archive=("$packages"/velmora-master-*.tar.gz)
mkdir -- "$scratch/home" "$scratch/unpacked" "$scratch/root"
start_display
quietly "hardening" "$velmora_root/tools/hardening.sh" "$packages/bin/velmora-master" \
    "$packages/compile_commands.json"

say "--- ${archive[0]##*/}"
tar -xzf "${archive[0]}" -C "$scratch/unpacked" --strip-components=1
check_unpacked "$scratch/unpacked"

say "--- ${deb[0]##*/}"
check_lintian "${deb[0]}"
dpkg-deb -x "${deb[0]}" "$scratch/root"
if [[ $EUID -eq 0 ]]; then
    check_metadata "$scratch/root/usr"
    check_installed "${deb[0]}"
else
    check_unpacked "$scratch/root/usr"
fi
say "The packages hold."
