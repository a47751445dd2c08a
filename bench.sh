#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and holds the program's speed against its
# targets:
#     ./bench.sh [--quick] [OPTION OF GOOGLE BENCHMARK …]
# Prints the table that docs/performance.md explains; ends with 1 where a target is missed.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
# shellcheck source=tools/lib.sh
source "$here/tools/lib.sh"

need_packages "${velmora_program_packages[@]}" "${velmora_bench_packages[@]}"
lock_build
build benchmarks velmora-bench
unlock_build
# The first picture is timed on an X server of its own: nobody's desktop flickers, and what every
# window costs there is in the figures of the empty window too.
exec xvfb-run --auto-servernum "$velmora_root/build/benchmarks/bin/velmora-bench" "$@"
