#!/usr/bin/env bash
# Runs all tests in a build that counts, prints what they execute of the program, and fails below
# what is promised: src/engine and src/io all lines and 95 % of the branches, the whole of src
# 95 % of the lines.
#     tools/coverage.sh [OPTION OF CTEST …]
# build/coverage/html shows it line by line.
# The counting is clang's, which counts the decisions that the source holds. gcc's counts the jumps
# of the machine code instead, most of which nobody wrote: the ends of texts that live for one
# statement, the ways that only an exception takes.
# One kind is left that nobody wrote either: a switch that names every value of its type counts the
# value that is none of them.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_test_packages[@]}" \
    "${velmora_clang_packages[@]}" llvm-14
lock_build
build coverage
unlock_build
folder=$velmora_root/build/coverage

# Each process leaves its own counts, so that tests may run side by side and start the program.
rm -rf -- "$folder/profiles" "$folder/html"
LLVM_PROFILE_FILE=$folder/profiles/%p-%m.profraw ctest --test-dir "$folder" --output-on-failure \
    --no-tests=error --parallel "$(nproc)" "$@" || fail "Coverage failed: the tests do not pass"
llvm-profdata-14 merge -sparse -o "$folder/profile" "$folder"/profiles/*.profraw

# The program holds all of src, and a function counts wherever a test ran it, by its name. What moc
# and rcc make is not ours.
cd -- "$velmora_root"
options=("$folder/bin/velmora-master" "-instr-profile=$folder/profile"
    '-ignore-filename-regex=_autogen/|/qrc_')
llvm-cov-14 show "${options[@]}" -format=html -show-branches=count -output-dir="$folder/html"
llvm-cov-14 report "${options[@]}" -show-region-summary=false -show-branch-summary >"$folder/report.txt"

# A line of the report: the file; then functions, lines and branches, each as number, missed and percent.
awk '
    function percent(what)
    {
        return all[what] ? 100 * (all[what] - missed[what]) / all[what] : 100
    }
    function add(group)
    {
        all[group ".lines"] += $5
        missed[group ".lines"] += $6
        all[group ".branches"] += $8
        missed[group ".branches"] += $9
    }
    function row(group)
    {
        printf "%-28s", group
        cells(group ".lines")
        cells(group ".branches")
        print ""
    }
    function cells(what)
    {
        if (all[what]) printf "%10d %8d %7.2f%%", all[what], missed[what], percent(what)
        else printf "%10d %8d %8s", 0, 0, "-"
    }
    # Cut off, not rounded: what is told as 100 % is all of it.
    function told(what) { return sprintf("%.1f %%", int(10 * percent(what)) / 10) }
    BEGIN {
        printf "%-28s%10s %8s %8s%10s %8s %8s\n", "src/", "Lines", "Missed", "", "Branches", "Missed", ""
    }
    $1 ~ /\.(cpp|h)$/ { add($1); row($1); add("all") }
    $1 ~ /^(engine|io)\// { add("engine and io") }
    END {
        row("engine and io")
        row("all")
        passed = all["engine and io.lines"] && !missed["engine and io.lines"] \
            && percent("engine and io.branches") >= 95 && percent("all.lines") >= 95
        printf "Coverage %s: engine and io %s of lines (100 %% needed) and %s of branches (95 %% needed), ", \
            passed ? "passed" : "failed", told("engine and io.lines"), told("engine and io.branches")
        printf "all %s of lines (95 %% needed)\n", told("all.lines")
        exit !passed
    }' "$folder/report.txt"
