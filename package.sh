#!/usr/bin/env bash
# Builds the packages of the program, a .deb and a .tar.gz, in build/package.
# Debian packages: those of run.sh, and dpkg-dev, file
set -euo pipefail
# shellcheck source=tools/lib.sh
. "$(dirname -- "$(readlink -f -- "$0")")/tools/lib.sh"

# Compiles as Debian does (stack protector, read-only relocations …), for the first configuration.
use_debian_flags()
{
    command -v dpkg-buildflags >/dev/null || return 0
    local flags
    # fixfilepath writes the folder into the flags, where a blank in its name breaks them
    flags=$(DEB_BUILD_MAINT_OPTIONS="hardening=+all reproducible=-fixfilepath" \
        DEB_CXXFLAGS_MAINT_STRIP=-g dpkg-buildflags --export=sh)
    eval "$flags"
}

# Dates inside the packages are that of the last commit: the same source gives the same bytes.
use_commit_date()
{
    [[ -z ${SOURCE_DATE_EPOCH:-} ]] || return 0
    SOURCE_DATE_EPOCH=$(git -C "$velmora_root" log -1 --format=%ct 2>/dev/null) || return 0
    export SOURCE_DATE_EPOCH
}

need_packages "${velmora_program_packages[@]}" dpkg-dev file
lock_build
use_debian_flags
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
