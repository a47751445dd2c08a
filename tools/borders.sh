#!/usr/bin/env bash
# Proves with nm what docs/architecture.md says of the rooms, on the libraries of a build:
#     tools/borders.sh [BUILD]      build/debug when not named
# - No library asks for a name that only a library on its right has.
# - Only the facade, the window's own sources and the canvas widget touch the current project.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=${1:-$here/../build/debug}
libraries=(velmora_engine velmora_fields velmora_canvas velmora_io velmora_batch velmora)
# What may name a datum of LoadLogic. The statics are inline: who reads one has a copy of its name.
holders='^(LoadLogic|MainWindow\w*|TrussView\w*|mocs_compilation)\.cpp\.o$'
findings=0

archive() { printf '%s/src/lib%s.a' "$build" "$1"; }

finding()
{
    printf '%s\n' "$1"
    findings=$((findings + 1))
}

# Names of the project's own classes and namespaces that are defined, or asked for, in a library.
defined() { nm -C --defined-only -A "$1" 2>/dev/null | sed -n 's/^.* [TVWBDRu] //p' | sort -u; }
wanted() { nm -C --undefined-only -A "$1" 2>/dev/null | sed -n 's/^.* U //p' | sort -u; }

for ((i = 0; i < ${#libraries[@]}; ++i)); do
    [[ -f $(archive "${libraries[i]}") ]] || { printf 'no %s\n' "$(archive "${libraries[i]}")"; exit 1; }
    known=$(for ((j = 0; j <= i; ++j)); do defined "$(archive "${libraries[j]}")"; done | sort -u)
    for ((j = i + 1; j < ${#libraries[@]}; ++j)); do
        foreign=$(comm -12 <(wanted "$(archive "${libraries[i]}")") <(defined "$(archive "${libraries[j]}")") |
            comm -23 - <(printf '%s\n' "$known"))
        [[ -z $foreign ]] || finding "${libraries[i]} needs of ${libraries[j]}: ${foreign//$'\n'/, }"
    done
done

data='LoadLogic::(TrussLength|TrussSelfWeight|Limit_CPL|Screen_\w+|Bumper_\w+|TrussStress_Percentage|LED_TotalWeight|isUnstable|MotorList|ActiveLoads|NextLoadId|NextGroupId)$'
for library in "${libraries[@]}"; do
    while IFS= read -r object; do
        [[ $object =~ $holders ]] || finding "$library: $object touches the current project"
    done < <(nm -C -A "$(archive "$library")" 2>/dev/null | grep -E " $data" | cut -d: -f2 | sort -u)
done

if [[ $findings -gt 0 ]]; then
    printf 'Borders: %d findings\n' "$findings"
    exit 1
fi
printf 'Borders: no findings\n'
