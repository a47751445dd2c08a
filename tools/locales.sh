#!/usr/bin/env bash
# Runs the tests under desktops that write a decimal comma:
#     tools/locales.sh [OPTION OF CTEST …]
# The locales are made for this in build/locales; the system's own stay as they are.
# VELMORA_PRESET chooses the build, as for ./test.sh.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}"
export LOCPATH=$velmora_root/build/locales
mkdir -p "$LOCPATH"
failed=()
for language in es_ES de_DE; do
    locale=$language.UTF-8
    if [[ ! -d $LOCPATH/$locale ]]; then
        rm -rf -- "$LOCPATH/unfinished"
        localedef --inputfile="$language" --charmap=UTF-8 "$LOCPATH/unfinished"
        mv -- "$LOCPATH/unfinished" "$LOCPATH/$locale"
    fi
    say "Tests under $locale"
    # A locale that cannot be loaded falls back to the point in silence; with
    # VELMORA_EXPECT_COMMA the test app.locale fails then.
    LC_ALL=$locale LANG=$locale VELMORA_EXPECT_COMMA=1 "$velmora_root/test.sh" "$@" || failed+=("$locale")
done
[[ ${#failed[@]} -eq 0 ]] || fail "Tests failed under ${failed[*]}"
say "All tests passed under es_ES.UTF-8 and de_DE.UTF-8"
