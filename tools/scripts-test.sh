#!/usr/bin/env bash
# shellcheck disable=SC2016  # what stands in single quotes is for the shells that the tests start
# Tests of the shell scripts themselves, with stand-ins for the commands of the system that they
# call. Prints one line a test and ends with their number.
set -uo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
root=$(dirname -- "$here")
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
passed=0
failed=0

# verify NAME COMMAND …: one test; the command says by its exit code whether it holds.
verify()
{
    local name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        printf 'PASS   : %s\n' "$name"
    else
        failed=$((failed + 1))
        printf 'FAIL!  : %s\n' "$name"
    fi
}

# stand_in FOLDER NAME TEXT: a command that does what the text says.
stand_in()
{
    mkdir -p "$1"
    printf '#!/bin/sh\n%s\n' "$3" >"$1/$2"
    chmod +x "$1/$2"
}

# ---- The folder of the reports where the default browser is confined

# tmpdir_with HOME-FOLDER BROWSER-ENTRY [NAME=VALUE …]: the TMPDIR that the program would get.
tmpdir_with()
{
    local home=$1 entry=$2
    shift 2
    stand_in "$scratch/browser" xdg-settings "echo $entry"
    stand_in "$scratch/browser" snap ':'
    env -u TMPDIR -u WAYLAND_DISPLAY -u XDG_DATA_HOME HOME="$home" DISPLAY=:7 \
        XDG_DATA_DIRS="$scratch/share" PATH="$scratch/browser:$PATH" "$@" \
        sh -c '. "$0" && velmora_reports_for_confined_browser && printf "%s" "${TMPDIR-unset}"' \
        "$root/packaging/confined-browser.sh"
}

test_confined_browser()
{
    local home="$scratch/home of a rigger"
    local reports="$home/Velmora Master/informes"
    mkdir -p "$home" "$scratch/share/applications"
    printf '[Desktop Entry]\nX-SnapInstanceName=firefox\n' \
        >"$scratch/share/applications/firefox_firefox.desktop"
    printf '[Desktop Entry]\nExec=env A=b /snap/bin/chromium %%U\n' \
        >"$scratch/share/applications/chromium_chromium.desktop"
    printf '[Desktop Entry]\nExec=/usr/lib/firefox/firefox %%u\n' \
        >"$scratch/share/applications/firefox.desktop"

    is() { [[ $(tmpdir_with "$home" "${@:2}") == "$1" ]]; }
    verify packagedBrowser_leavesTheFolderAlone is unset firefox.desktop
    verify unknownBrowser_leavesTheFolderAlone is unset missing.desktop
    verify noBrowser_leavesTheFolderAlone is unset ''
    verify noDisplay_leavesTheFolderAlone is unset firefox_firefox.desktop DISPLAY=
    verify nothingNeeded_makesNoFolder test ! -e "$home/Velmora Master"
    verify snapBrowser_getsAFolderOfTheUsers is "$reports" firefox_firefox.desktop
    verify snapBrowser_onWayland is "$reports" firefox_firefox.desktop DISPLAY= WAYLAND_DISPLAY=w
    verify snapBrowser_knownByItsCommand is "$reports" chromium_chromium.desktop
    verify reports_areForTheUserAlone test "$(stat -c %a -- "$reports")" = 700
    verify folderInSystemTmp_isReplaced is "$reports" firefox_firefox.desktop TMPDIR=/var/tmp
    verify hiddenFolder_isReplaced is "$reports" firefox_firefox.desktop TMPDIR="$home/.cache"
    verify readableFolder_isKept is "$home/tmp" firefox_firefox.desktop TMPDIR="$home/tmp"
    verify homeThatCannotBeWritten_isNoFailure \
        eval '[[ $(tmpdir_with /proc/1 firefox_firefox.desktop) == unset ]]'
}

# ---- Installing what is missing

# needs FOLDER-OF-STAND-INS [NAME=VALUE …]: runs need_packages for three packages there, with no
# other commands than the stand-ins and the shell's own tools; output and exit code in $told, $code.
needs()
{
    local commands=$1 tool
    shift
    for tool in bash readlink dirname grep env; do
        ln -sf -- "$(command -v "$tool")" "$commands/$tool"
    done
    told=$(env "$@" PATH="$commands" bash -c \
        'source "$0/tools/lib.sh" && need_packages cmake qt6-base-dev libgl-dev && echo went on' \
        "$root" 2>&1)
    code=$?
}

test_installing()
{
    local told code
    local database='echo installed cmake; echo not-installed libgl-dev; echo config-files qt6-base-dev; exit 1'
    local whole='echo installed cmake; echo installed libgl-dev; echo installed qt6-base-dev'

    stand_in "$scratch/all" dpkg-query "$whole"
    stand_in "$scratch/all" apt-get 'echo "apt-get called"'
    needs "$scratch/all"
    verify nothingMissing_installsNothing test "$code:$told" = "0:went on"

    stand_in "$scratch/some" dpkg-query "$database"
    stand_in "$scratch/some" apt-get 'echo "$@"'
    stand_in "$scratch/some" sudo 'shift; echo through sudo; "$@"'
    needs "$scratch/some"
    verify missingOnes_areInstalled \
        grep -q -- 'install --no-install-recommends qt6-base-dev libgl-dev$' <<<"$told"
    verify afterInstalling_goesOn test "$code" = 0

    stand_in "$scratch/some" apt-get 'exit 100'
    needs "$scratch/some"
    verify failedInstallation_stops test "$code" = 1
    verify failedInstallation_namesThePackages grep -q 'qt6-base-dev libgl-dev' <<<"$told"

    mkdir -p "$scratch/other"
    needs "$scratch/other"
    verify otherSystem_stops test "$code" = 1
    verify otherSystem_namesThePackages grep -q 'cmake qt6-base-dev libgl-dev' <<<"$told"
    needs "$scratch/other" VELMORA_SKIP_INSTALL=1
    verify ownPackages_areTrusted test "$code:$told" = "0:went on"

    [[ $EUID -eq 0 ]] && command -v setpriv >/dev/null || return 0
    # As somebody else than root, who sees the stand-ins but may install nothing.
    chmod 755 "$scratch"
    as_nobody()
    {
        told=$(setpriv --reuid=65534 --regid=65534 --clear-groups env PATH="$1" bash -c \
            'source /dev/stdin && need_packages cmake qt6-base-dev libgl-dev && echo went on' \
            <"$root/tools/lib.sh" 2>&1)
        code=$?
    }
    stand_in "$scratch/some" apt-get 'echo "$@"'
    as_nobody "$scratch/some"
    verify notRoot_goesThroughSudo grep -q 'through sudo' <<<"$told"
    rm "$scratch/some/sudo"
    as_nobody "$scratch/some"
    verify notRootWithoutSudo_stops test "$code" = 1
    verify notRootWithoutSudo_namesTheCommand \
        grep -q 'apt-get install qt6-base-dev libgl-dev' <<<"$told"
}

test_confined_browser
test_installing
printf 'Totals: %d passed, %d failed\n' "$passed" "$failed"
[[ $failed -eq 0 ]]
