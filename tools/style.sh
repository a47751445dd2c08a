#!/usr/bin/env bash
# The house rules that neither compiler nor formatter knows, as plain greps:
#     tools/style.sh [FOLDER]       checks the project (or another folder laid out like it)
#     tools/style.sh --self-test    proves that each rule fires
# Needs nothing but the shell and GNU grep.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")

max_lines=320
findings=0

# report RULE: tells the lines on standard input as findings of that rule.
report()
{
    local rule=$1 line
    while IFS= read -r line; do
        printf '%s: %s\n' "$rule" "$line"
        findings=$((findings + 1))
    done
}

# files PATTERN …: the project's own files of these names, each ended by a zero byte. Golden files
# and fuzzing corpora are data: they are as they are.
files()
{
    local -a names=()
    local pattern
    for pattern in "$@"; do names+=(-o -name "$pattern"); done
    find . \( -path ./.git -o -path ./build -o -path './fuzz/corpus*' -o -path '*/golden' \) -prune \
        -o -type f \( "${names[@]:1}" \) -print0
}

# search GREP-OPTIONS FILE-NAMES …: what grep finds in the files of these names; nothing is no
# failure.
search()
{
    local options=$1 pattern=$2
    shift 2
    files "$@" | xargs -0 -r grep -nH "$options" -e "$pattern" -- || true
}

# As search, over line ends: tells the files alone.
search_across_lines()
{
    local pattern=$1
    shift
    files "$@" | xargs -0 -r grep -lzP -e "$pattern" -- || true
}

cxx=('*.cpp' '*.h')
scripts=('*.sh' run nightly '*.cmake' CMakeLists.txt)
texts=("${cxx[@]}" "${scripts[@]}" '*.md' '*.json' '*.rig' '*.html' '*.xml' '*.desktop' '*.qrc' '*.in' '.clang-*')

# What a room may not include: whatever stands right of it. The window's own files and reports live in
# src/io beside the plain ones, and main() beside the command line.
includes_run_left()
{
    not_included 'fields|canvas|io|ui|app' src/engine
    not_included 'canvas|io|ui|app' src/fields
    not_included 'io|ui|app' src/canvas
    not_included 'ui|app' src/io | grep -vE '^src/io/(MainWindow|Report|RecoveryDialog|SheetDialogs)[A-Za-z]*\.(cpp|h):' || true
    not_included 'ui' src/app | grep -v '^src/app/main\.cpp:' || true
    not_included 'app' src/ui
    grep -rnHE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"\.\.?/' src || true
}

not_included()
{
    [[ ! -d $2 ]] || grep -rnHE "^[[:space:]]*#[[:space:]]*include[[:space:]]*[\"<](\.\./)*($1)/" "$2" || true
}

# The accent of the whole program stands in one place, so that it is changed in one.
accent_stands_once()
{
    search -iE '#00BFFF|0x00, ?0xBF, ?0xFF|0, 191, 255' "${cxx[@]}" | grep '^\./src/' | grep -v '^\./src/fields/AccentColour\.h:' || true
}

# A style sheet is a named constant or made by a function of Styles, so that two widgets cannot
# drift apart.
style_sheets_have_names()
{
    search_across_lines 'setStyleSheet\(\s*(u8?|L)?(R?"|QStringLiteral|QLatin1String|QString(::from\w+)?\s*\(\s*(u8?)?")' "${cxx[@]}" |
        grep '^\./src/' | grep -v '^\./src/ui/Styles\.' || true
}

no_tabs() { search -P '\t' "${texts[@]}"; }

no_trailing_blanks() { search -P '[ \t\r]+$' "${texts[@]}"; }

# Upper-case Spanish "todo" is a word of the program's own texts; in a comment it is a left-over.
no_left_overs()
{
    search -P '(//|/\*|^\s*\*|#|<!--).*\b(TO''DO|FIX''ME|XX''X|HA''CK)\b' "${texts[@]}"
    search -P '\bq(De''bug|Cri''tical)\s*\(|std::(cerr|clog)\b.*de''bug' "${cxx[@]}" | grep '^\./src/' || true
}

# The second arg() would look for place holders in what the first one put in, and that may be a
# name from a file.
no_chained_arg()
{
    search_across_lines '\.arg(\((?:[^()]|(?1))*+\))\s*\.arg\(' "${cxx[@]}"
}

# These follow the desktop's language: on a Spanish one they read 8.4 as 8.
no_locale_numbers()
{
    search -P '\b(std::)?(sto(f|d|ld)|strto(f|d|ld)|ato(f|l|i)?|s?scanf|to_string|asprintf)\s*\(' "${cxx[@]}" |
        grep '^\./src/' || true
    search -P 'printf\s*\(.*%[-+ #0-9.*]*L?[aefgAEFG]' "${cxx[@]}"
}

# The oldest Qt that the program has to build with is asked for wherever Qt is asked for.
qt_version_is_named()
{
    search -P 'find_package\(\s*Qt(?!6 6\.4\b)' CMakeLists.txt '*.cmake'
    search -P '#\s*(el)?if.*\bQT_VERSION' "${cxx[@]}"
}

# A file of the program that grew beyond one subject's length is to be divided by subject; the
# tests of one subject may be longer.
files_are_short()
{
    local file lines
    find src -name '*.cpp' -o -name '*.h' | while IFS= read -r file; do
        lines=$(wc -l <"$file")
        [[ $lines -le $max_lines ]] || printf '%s: %d lines\n' "$file" "$lines"
    done
}

check()
{
    report includes-run-left < <(includes_run_left)
    report accent-stands-once < <(accent_stands_once)
    report style-sheets-have-names < <(style_sheets_have_names)
    report no-tabs < <(no_tabs)
    report no-trailing-blanks < <(no_trailing_blanks)
    report no-left-overs < <(no_left_overs)
    report no-chained-arg < <(no_chained_arg)
    report no-locale-numbers < <(no_locale_numbers)
    report qt-version-is-named < <(qt_version_is_named)
    report files-are-short < <(files_are_short)
    if [[ $findings -gt 0 ]]; then
        printf 'Style: %d findings\n' "$findings"
        return 1
    fi
    printf 'Style: no findings\n'
}

# expect RULE FILE TEXT: with this text in this file, the rule has to find something, and no other
# rule may; with RULE "none", no rule may.
expect()
{
    local rule=$1 file=$2 text=$3 folder rules
    folder=$(mktemp -d)
    mkdir -p "$folder/$(dirname -- "$file")" "$folder/src"
    printf '%b\n' "$text" >"$folder/$file"
    rules=$("$here/style.sh" "$folder" | grep -v '^Style:' | cut -d: -f1 | sort -u || true)
    rm -rf -- "$folder"
    [[ ${rules:-none} == "$rule" ]] && return
    printf 'Self-test: %s with "%s": expected %s, got %s\n' "$file" "$text" "$rule" "${rules:-none}"
    return 1
}

self_test()
{
    local bad=0 many
    many=$(printf 'int a;\\n%.0s' $(seq $((max_lines + 1))))
    while IFS='|' read -r rule file text; do
        expect "$rule" "$file" "$text" || bad=$((bad + 1))
    done <<'CASES'
none|src/engine/A.cpp|#include "engine/A.h"
none|src/io/MainWindowA.cpp|#include "ui/MainWindow.h"\n#include "engine/A.h"
none|src/ui/A.cpp|#include "io/ProjectFile.h"
none|src/app/main.cpp|#include "ui/MainWindow.h"
accent-stands-once|src/ui/A.cpp|const auto a = u"#00bfff"_s;
none|src/fields/AccentColour.h|#define ACCENT_COLOUR u"#00BFFF"
includes-run-left|src/engine/A.cpp|#include "canvas/TrussView.h"
includes-run-left|src/engine/A.h|#include "app/A.h"
includes-run-left|src/canvas/A.h|#  include "ui/MainWindow.h"
includes-run-left|src/fields/A.cpp|#include "canvas/TrussView.h"
includes-run-left|src/io/A.cpp|#include "ui/MainWindow.h"
includes-run-left|src/io/A.cpp|#include "app/Batch.h"
includes-run-left|src/app/A.cpp|#include "ui/MainWindow.h"
includes-run-left|src/ui/A.cpp|#include "app/Batch.h"
includes-run-left|src/io/A.cpp|#include "../engine/A.h"
style-sheets-have-names|src/ui/A.cpp|a->setStyleSheet(u"color: red"_s);
style-sheets-have-names|src/canvas/A.cpp|a->setStyleSheet("color: red");
style-sheets-have-names|src/app/A.cpp|a->setStyleSheet(\n    QStringLiteral("color: red"));
style-sheets-have-names|src/app/A.cpp|a->setStyleSheet(QString("color: %1").arg(b));
none|src/ui/A.cpp|a->setStyleSheet(Styles::warning);
none|src/ui/Styles.cpp|a->setStyleSheet(u"color: red"_s);
none|tests/ui/A.cpp|a->setStyleSheet(u"color: red"_s);
no-tabs|src/ui/A.cpp|int\ta;
no-tabs|README.md|a\tb
no-trailing-blanks|src/ui/A.cpp|int a;\x20
no-trailing-blanks|CMakeLists.txt|project(a)\r
none|tests/io/golden/report.html|a \tb\x20
no-left-overs|src/ui/A.cpp|// TO\x44O: later
no-left-overs|run.sh|# FIX\x4dE
no-left-overs|src/ui/A.cpp|    qDe\x62ug() << a;
none|src/ui/A.cpp|const auto text = u"BORRAR TO\x44O"_s;
no-chained-arg|src/ui/A.cpp|a = text.arg(b).arg(c);
no-chained-arg|src/ui/A.cpp|a = text.arg(f(b, g(c)))\n    .arg(d);
none|src/ui/A.cpp|f(text.arg(b), text.arg(c), text.arg(b, c));
no-locale-numbers|src/io/A.cpp|float a = std::stof(b);
no-locale-numbers|src/io/A.cpp|double a = strtod(b, nullptr);
no-locale-numbers|src/io/A.cpp|auto a = std::to_string(1.0F);
no-locale-numbers|src/io/A.cpp|std::printf("%.2f", a);
no-locale-numbers|tests/io/A.cpp|std::printf("%d %g", a, b);
none|src/io/A.cpp|std::printf("%d%s", a, b);
qt-version-is-named|CMakeLists.txt|find_package(Qt6 REQUIRED COMPONENTS Core)
qt-version-is-named|tests/CMakeLists.txt|find_package(Qt6 6.5 REQUIRED COMPONENTS Test)
qt-version-is-named|src/ui/A.cpp|#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
none|CMakeLists.txt|find_package(Qt6 6.4 REQUIRED COMPONENTS Core)
CASES
    expect files-are-short src/ui/A.cpp "$many" || bad=$((bad + 1))
    if [[ $bad -gt 0 ]]; then
        printf 'Self-test of the style rules: %d failed\n' "$bad"
        return 1
    fi
    printf 'Self-test of the style rules: every rule fires\n'
}

case ${1:-} in
--self-test) self_test ;;
*)
    cd -- "${1:-$here/..}"
    check
    ;;
esac
