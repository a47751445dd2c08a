#!/usr/bin/env bash
# Kills the program at random moments while it saves over an existing project, and takes the disk
# away from it: each time the file has to be the old project or the new one, whole, and a save that
# did not happen has to be told. Both ways of saving are tried: a file of one name is replaced, a
# file of two names is written in place, where a copy has to be whole whenever the file is not.
#     tools/kill-save.sh TIMES
# The full disk is a small tmpfs for root, a limit on the size of files for others. The calls that
# fail are strace's: without it, or where it may not trace, this ends with an error.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

times=${1:-500}
[[ $times =~ ^[1-9][0-9]*$ ]] || fail "usage: tools/kill-save.sh TIMES"
need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}"
command -v strace >/dev/null || fail "strace is missing: saving cannot be tested without it."
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
strace -o "$folder/trace" true || fail "strace may not trace here: saving cannot be tested."

"$saver" --old "$folder/old"
"$saver" --new "$folder/new"
cmp -s -- "$folder/old" "$folder/new" && fail "The two projects do not differ"
old_size=$(wc -c <"$folder/old")
[[ $(wc -c <"$folder/new") -gt $((old_size + 16384)) ]] || fail "The new project is not the larger one"
# Where copies of what is written in place go.
export XDG_DATA_HOME=$folder/home

# is FILE PROJECT …: the file is one of these projects, to the last byte.
is()
{
    local file=$1 project
    shift
    for project in "$@"; do
        ! cmp -s -- "$file" "$folder/$project" || return 0
    done
    return 1
}

# expect FILE PROJECT …: the same, or the script ends.
expect()
{
    is "$@" || fail "$(wc -c <"$1") bytes that are none of: ${*:2}" "$situation"
}

# Prints the names of the copies that are there, one a line.
copies()
{
    [[ ! -d $XDG_DATA_HOME ]] || find "$XDG_DATA_HOME" -type f
}

# expect_copy PROJECT …: one of the copies is one of these projects.
expect_copy()
{
    local copy
    while IFS= read -r copy; do
        ! is "$copy" "$@" || return 0
    done < <(copies)
    fail "No copy is one of: $*" "$situation"
}

# lay_out WAY FOLDER: an old project in FOLDER as $file, to be saved in this way.
lay_out()
{
    file=$2/project.rig
    rm -rf -- "$XDG_DATA_HOME" "$file" "$2/second.rig" "$2"/.velmora-*
    cp -- "$folder/old" "$file"
    [[ $1 == replaced ]] || ln -- "$file" "$2/second.rig"
}

# fails COMMAND …: the save has to be told as failed.
fails()
{
    local code=0
    "$@" >/dev/null 2>&1 || code=$?
    [[ $code -eq 1 ]] || fail "A failed save ended with $code" "$situation"
    attempts=$((attempts + 1))
}

# refuse COMMAND …: besides, it leaves the old project and nothing else.
refuse()
{
    fails "$@"
    expect "$file" old
    [[ -z $(copies) ]] || fail "A copy was left behind" "$situation"
}

attempts=0
old_hits=0
copy_hits=0
work=$folder/work
mkdir -- "$work"
ways=(replaced "in place")
for ((i = 1; i <= times; ++i)); do
    way=${ways[i % 2]}
    situation="$way, killed for the ${i}th time"
    lay_out "$way" "$work"
    mkfifo "$folder/fifo"
    "$saver" "$file" >"$folder/fifo" &
    pid=$!
    read -r _ <"$folder/fifo"
    sleep "0.0$(printf '%04d' $((RANDOM % 400)))"
    kill -KILL "$pid"
    wait "$pid" 2>/dev/null || true
    if [[ $way == "in place" ]] && ! is "$file" old new; then
        expect_copy old new
        copy_hits=$((copy_hits + 1))
    else
        expect "$file" old new
        ! is "$file" old || old_hits=$((old_hits + 1))
    fi
    rm -f -- "$folder/fifo"
done

for way in "${ways[@]}"; do
    situation="$way, no room on the disk"
    mkdir -p -- "$folder/disk"
    if [[ $EUID -eq 0 ]] &&
        mount -t tmpfs -o "size=$((old_size / 1024 + 8))k" tmpfs "$folder/disk" 2>/dev/null; then
        disk=$folder/disk
        lay_out "$way" "$disk"
        refuse "$saver" --new "$file"
        umount -- "$disk"
        disk=
    fi
    lay_out "$way" "$work"
    for kilobytes in 0 1 100 200 $((old_size / 1024 + 1)); do
        situation="$way, no file larger than $kilobytes kB"
        # shellcheck disable=SC2016  # the inner shell expands them
        refuse bash -c 'trap "" XFSZ; ulimit -f "$0"; exec "$1" --new "$2"' "$kilobytes" "$saver" "$file"
    done
done

# The calls of one save, in their order.
trace()
{
    strace -f -o "$folder/trace" -e trace=write,fdatasync,fsync,close "$saver" --new "$file"
}

# after SYNC CALL: the first CALL after the SYNCth sync of a file, counted among all of its kind.
after()
{
    awk -v sync="$1" -v call="$2" '
        $2 ~ "^fdatasync" { ++syncs }
        $2 ~ "^" call { if (++count && syncs >= sync) { print count; exit } }' "$folder/trace"
}

# inject CALL WHEN COMMAND …: refuse or fails, for a save whose calls, from WHEN on if there is a plus
# at its end, get each of the errors that a disk, a stick and a quota give.
injected=0
inject()
{
    local call=$1 when=$2 error
    shift 2
    for error in ENOSPC EIO EDQUOT; do
        situation="$way, $error of $call, $when"
        lay_out "$way" "$work"
        "$@" strace -f -o "$folder/trace" -e "trace=$call" -e "inject=$call:error=$error:when=$when" \
            "$saver" --new "$file"
        grep -q INJECTED "$folder/trace" || fail "Nothing was injected" "$situation"
        injected=$((injected + 1))
    done
}

way=replaced
lay_out "$way" "$work"
trace
closing=$(after 1 close)
inject write 1+ refuse
inject fdatasync,fsync 1+ refuse
inject close "$closing" refuse
inject rename,renameat,renameat2,link,linkat 1+ refuse
# Only the folder is left to be synced: the file is new by then.
inject fsync 1+ fails
expect "$file" new

way="in place"
lay_out "$way" "$work"
trace
copy_closing=$(after 1 close)
writing=$(after 1 write)
closing=$(after 2 close)
inject write 1+ refuse
inject write "$writing" refuse
inject fdatasync 1+ refuse
inject fdatasync 2 refuse
inject fsync 1+ refuse
inject close "$copy_closing+" refuse
inject close "$closing" refuse
# What cannot be restored either is in the copy.
for call in write:$writing fdatasync:2 close:$closing; do
    inject "${call%:*}" "${call#*:}+" fails
    expect_copy old
done

printf 'Saving passed: killed %d times (%d old, %d new, %d in the copy), %d failed saves told, %d of them injected\n' \
    "$times" "$old_hits" $((times - old_hits - copy_hits)) "$copy_hits" "$attempts" "$injected"
