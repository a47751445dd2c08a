# shellcheck shell=sh
# Source it before starting the program. A browser that was installed as a snap is confined: it
# sees neither the system's temporary folder nor hidden folders, and a report written there would
# open as "file not found". In that case alone TMPDIR, and with it the place of the reports,
# becomes a folder of the user's that only the user can read.

# Succeeds if the desktop entry named $1 (firefox_firefox.desktop) is one of a snap.
velmora_entry_is_snap()
{
    [ -n "$1" ] || return 1
    (
        IFS=:
        set -f
        for folder in ${XDG_DATA_HOME:-$HOME/.local/share} \
            ${XDG_DATA_DIRS:-/usr/local/share:/usr/share} /var/lib/snapd/desktop; do
            entry=$folder/applications/$1
            [ -f "$entry" ] || continue
            grep -qE '^(X-SnapInstanceName=|Exec=.*/snap/bin/)' "$entry"
            exit
        done
        exit 1
    )
}

# Succeeds if the default browser is a snap.
velmora_browser_is_snap()
{
    command -v snap >/dev/null || return 1
    command -v xdg-settings >/dev/null || return 1
    velmora_entry_is_snap "$(xdg-settings get default-web-browser 2>/dev/null)"
}

# Succeeds if TMPDIR is already where a confined browser can read.
velmora_tmpdir_is_readable()
{
    case ${TMPDIR-} in
    "$HOME"/.*) return 1 ;;
    "$HOME"/?*) return 0 ;;
    *) return 1 ;;
    esac
}

velmora_reports_for_confined_browser()
{
    [ -n "${HOME-}" ] || return 0
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] || return 0
    ! velmora_tmpdir_is_readable || return 0
    velmora_browser_is_snap || return 0
    velmora_reports="$HOME/Velmora Master/informes"
    # Where the folder cannot be made, the reports stay where they always are.
    if mkdir -p -- "$velmora_reports" 2>/dev/null && chmod 700 -- "$velmora_reports" 2>/dev/null; then
        TMPDIR=$velmora_reports
        export TMPDIR
    fi
    unset velmora_reports
}
