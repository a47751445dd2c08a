#!/usr/bin/env bash
# Builds the packages of the program, a .deb and a .tar.gz, in build/package.
# Debian packages: those of run.sh, and dpkg-dev, file
set -euo pipefail
# shellcheck source=tools/lib.sh
. "$(dirname -- "$(readlink -f -- "$0")")/tools/lib.sh"

# Dates inside the packages are that of the last commit: the same source gives the same bytes.
use_commit_date()
{
    [[ -z ${SOURCE_DATE_EPOCH:-} ]] || return 0
    SOURCE_DATE_EPOCH=$(git -C "$velmora_root" log -1 --format=%ct 2>/dev/null) || return 0
    export SOURCE_DATE_EPOCH
}

need_packages "${velmora_program_packages[@]}" dpkg-dev file
lock_build
use_commit_date
build package

generators="DEB;TGZ"
if ! command -v dpkg-shlibdeps >/dev/null; then
    say "Without dpkg-shlibdeps there is no .deb package."
    generators=TGZ
fi
cd -- "$velmora_root/build/package"
rm -f -- ./velmora-master[-_]*.deb ./velmora-master[-_]*.tar.gz
umask 022
cpack -G "$generators" >&2 || fail "The packages could not be made."
rm -rf -- _CPack_Packages
find "$PWD" -maxdepth 1 -name 'velmora-master[-_]*.deb' -o -maxdepth 1 -name 'velmora-master[-_]*.tar.gz'
