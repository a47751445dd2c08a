#!/usr/bin/env bash
# Kills the program at random moments while it saves over an existing project, and takes the disk
# away from it: each time the file has to be the old project or the new one, whole, and a save that
# did not happen has to be told.
#     tools/kill-save.sh TIMES
# The full disk is a small tmpfs for root, a limit on the size of files for others. Where strace can
# be used, failing system calls are tried as well.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

times=${1:-500}
[[ $times =~ ^[1-9][0-9]*$ ]] || fail "usage: tools/kill-save.sh TIMES"
need_packages "${velmora_program_packages[@]}"
lock_build
build debug saver
unlock_build
saver=$velmora_root/build/debug/bin/saver
folder=$(mktemp -d)
disk=
leave()
{
    [[ -z $disk ]] || umount -- "$disk"
    rm -rf -- "$folder"
}
trap leave EXIT

"$saver" --old "$folder/old"
"$saver" --new "$folder/new"
cmp -s -- "$folder/old" "$folder/new" && fail "The two projects do not differ"

# expect FILE PROJECT …: the file is one of these projects, to the last byte.
expect()
{
    local file=$1 project
    shift
    for project in "$@"; do
        ! cmp -s -- "$file" "$folder/$project" || return 0
    done
    fail "$(wc -c <"$file") bytes that are none of: $*" "$situation"
}

# refuse COMMAND …: the save has to be told as failed, and leaves the old project.
refuse()
{
    local code=0
    "$@" >/dev/null 2>&1 || code=$?
    [[ $code -eq 1 ]] || fail "A failed save ended with $code" "$situation"
    expect "$file" old
    attempts=$((attempts + 1))
}

old_hits=0
for ((i = 1; i <= times; ++i)); do
    situation="killed for the ${i}th time"
    file=$folder/project.rig
    mkfifo "$folder/fifo"
    "$saver" "$file" >"$folder/fifo" &
    pid=$!
    read -r _ <"$folder/fifo"
    sleep "0.0$(printf '%04d' $((RANDOM % 400)))"
    kill -KILL "$pid"
    wait "$pid" 2>/dev/null || true
    expect "$file" old new
    ! cmp -s -- "$file" "$folder/old" || old_hits=$((old_hits + 1))
    rm -f -- "$folder/fifo" "$folder"/project.rig*
done

attempts=0
situation="no room on the disk"
if [[ $EUID -eq 0 ]] && mkdir "$folder/disk" && mount -t tmpfs -o size=512k tmpfs "$folder/disk" 2>/dev/null; then
    disk=$folder/disk
    file=$disk/project.rig
    cp -- "$folder/old" "$file"
    refuse "$saver" --new "$file"
    umount -- "$disk"
    disk=
fi
situation="a limit on the size of files"
file=$folder/limited.rig
cp -- "$folder/old" "$file"
for kilobytes in 0 1 100 200; do
    # shellcheck disable=SC2016  # the inner shell expands them
    refuse bash -c 'trap "" XFSZ; ulimit -f "$0"; exec "$1" --new "$2"' "$kilobytes" "$saver" "$file"
done

injected=0
if command -v strace >/dev/null && strace -o "$folder/trace" true 2>/dev/null; then
    for error in ENOSPC EIO EDQUOT; do
        for call in write rename,renameat,renameat2,link,linkat; do
            situation="$error of $call"
            refuse strace -f -o "$folder/trace" -e "trace=$call" -e "inject=$call:error=$error" "$saver" --new "$file"
            grep -q INJECTED "$folder/trace" || fail "Nothing was injected" "$situation"
            injected=$((injected + 1))
        done
    done
fi
printf 'Saving passed: killed %d times (%d old, %d new), %d failed saves told, %d of them injected\n' \
    "$times" "$old_hits" $((times - old_hits)) "$attempts" "$injected"
