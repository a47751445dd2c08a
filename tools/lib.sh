# shellcheck shell=bash
# shellcheck disable=SC2034  # the lists of packages are for the scripts that source this
# What the project's scripts share: source it, do not run it. Works with bash 4 and later.
#
# Everything told to the user goes to standard error, so that what a program prints
# (./run.sh --resumen …) stays clean on standard output.

velmora_root=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." >/dev/null && pwd)

# The packages, as Debian 12 and Ubuntu 24.04 name them.
# Build and use of the program. Without the colour font the emoji of the buttons are boxes; the
# translations put Qt's own buttons and dialogs into Spanish.
velmora_program_packages=(
    cmake g++ ninja-build qt6-base-dev libgl-dev
    fonts-dejavu-core fonts-noto-color-emoji xdg-utils qt6-translations-l10n
)
# Besides these, the tests (locales: the sources of the languages they are run under; util-linux: to be
# two users in one folder; strace: calls that fail; bsdutils: a terminal that nobody types on;
# python3-jsonschema: the documents that the program prints; poppler-utils: the PDF that it writes). The
# last two only make their build quicker, and serve where they are found.
velmora_test_packages=(
    locales bash-completion strace util-linux bsdutils python3-jsonschema poppler-utils ccache lld
)
# Besides these, what reads the window as a screen reader does.
velmora_reader_packages=(xvfb openbox dbus at-spi2-core python3-gi gir1.2-atspi-2.0)
# Besides these, the benchmarks.
velmora_bench_packages=(libbenchmark-dev xvfb xauth)
# Besides these, what is built with clang; its runtime is what counts and what watches.
velmora_clang_packages=(clang-14 libclang-rt-14-dev)
# Besides these, the checks of the source. The versions are those that the code is laid out for.
velmora_check_packages=(clang-format-14 clang-tidy-14 shellcheck)

say() { printf '%s\n' "$*" >&2; }

fail()
{
    printf '%s\n' "$@" >&2
    exit 1
}

# Prints those of the packages named that are not installed, one a line; fails where there is no
# package database to ask.
missing_packages()
{
    command -v dpkg-query >/dev/null || return 1
    local installed package
    # An unknown package makes dpkg-query fail and say so; that is one more missing package.
    installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        grep -qxF "installed $package" <<<"$installed" || printf '%s\n' "$package"
    done
}

# Runs a command as root: as it is for root, through sudo for anybody else.
as_root()
{
    if [[ $EUID -eq 0 ]]; then "$@"; else sudo -- "$@"; fi
}

install_packages()
{
    local -a apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)
    # A list that cannot be refreshed may still do: what counts is whether the installation works.
    as_root "${apt[@]}" update </dev/null >&2 || true
    as_root "${apt[@]}" install --no-install-recommends "$@" </dev/null >&2
}

# Sees to it that the packages named are installed, or ends the script with their names.
# VELMORA_SKIP_INSTALL=1 leaves that to the user: for systems with other package managers.
need_packages()
{
    [[ ${VELMORA_SKIP_INSTALL:-} != 1 ]] || return 0
    local list
    local -a missing
    if ! list=$(missing_packages "$@") || ! command -v apt-get >/dev/null; then
        fail "This system has no apt-get, so nothing was installed. Needed, as Debian 12 names them:" \
            "    $*" \
            "Once you have installed what your system calls these, run again with VELMORA_SKIP_INSTALL=1."
    fi
    [[ -n $list ]] || return 0
    mapfile -t missing <<<"$list"
    if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
        fail "Some packages are missing, and only root can install them (there is no sudo). As root:" \
            "    apt-get install ${missing[*]}"
    fi
    say "Installing: ${missing[*]}"
    install_packages "${missing[@]}" || fail "These packages could not be installed:" "    ${missing[*]}"
}

# One script at a time in a build folder: a second one waits for the first.
lock_build()
{
    mkdir -p "$velmora_root/build"
    command -v flock >/dev/null || return 0
    exec 9>"$velmora_root/build/.lock"
    flock 9
}

unlock_build()
{
    exec 9>&-
}

# Configures build/PRESET where that is due: the first time, after a change of the presets, after
# a failure, and after the folder was moved (CMake refuses to go on in another place).
configure()
{
    local preset=$1 build=$velmora_root/build/$1
    local stamp=$build/.configured cache=$build/CMakeCache.txt
    if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$velmora_root" "$cache"; then
        rm -rf -- "$build"
    fi
    [[ ! -f $stamp || $velmora_root/CMakePresets.json -nt $stamp ]] || return 0
    say "Configuring build/$preset"
    rm -f -- "$stamp"
    (cd -- "$velmora_root" && cmake --preset "$preset") >&2 && touch -- "$stamp"
}

# Builds TARGET (all when not named) of PRESET; says nothing when nothing changed.
build()
{
    local preset=$1 target=${2:-all}
    configure "$preset" || fail "The configuration of build/$preset failed."
    local folder=$velmora_root/build/$preset
    ! ninja -C "$folder" -n "$target" 2>/dev/null | grep -qF "no work to do" || return 0
    say "Building build/$preset"
    ninja -C "$folder" "$target" >&2 || fail "The build in build/$preset failed."
}

# Configures PRESET and makes what moc and rcc make of the sources, which include it: enough for a
# tool that reads the code.
generate()
{
    configure "$1" || fail "The configuration of build/$1 failed."
    local folder=$velmora_root/build/$1
    ninja -C "$folder" build.ninja >/dev/null || fail "The configuration of build/$1 failed."
    local -a made
    mapfile -t made < <(ninja -C "$folder" -t targets all | sed -nE 's,^([^/:]+_autogen|tests/moc/[^:]+): .*,\1,p')
    ninja -C "$folder" "${made[@]}" >"$folder/generate.log" || fail "moc failed (build/$1/generate.log)."
}

# The project's own C++ files, and its shell scripts, each ended by a zero byte; to be called in
# the root.
cxx_files()
{
    local -a folders
    mapfile -t folders < <(ls -d src tests benchmarks fuzz tools 2>/dev/null)
    find "${folders[@]}" -type f \( -name '*.cpp' -o -name '*.h' \) -print0
}

shell_files()
{
    find . \( -path ./.git -o -path ./build \) -prune -o -type f \
        \( -name '*.sh' -o -path './.ci/*' \) -print0
}
