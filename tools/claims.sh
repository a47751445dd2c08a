#!/usr/bin/env bash
# Holds what headers and pages claim against the files: links, the source files that headers name,
# and a comment on each public name:
#     tools/claims.sh               checks the project
#     tools/claims.sh --self-test   proves that each claim is checked
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")

# expect FINDING FILE TEXT: a project with this text in this file has exactly this finding.
expect()
{
    local finding=$1 file=$2 text=$3 folder found
    folder=$(mktemp -d)
    mkdir -p "$folder/src/ui" "$folder/docs"
    printf 'void A::a()\n' >"$folder/src/ui/A.cpp"
    printf '# One heading\n' >"$folder/docs/page.md"
    printf '%b\n' "$text" >"$folder/$file"
    found=$(python3 "$here/claims.py" "$folder" | grep -v '^Claims:' || true)
    rm -rf -- "$folder"
    [[ $found == "$finding" ]] && return
    printf 'Self-test: "%s" in %s: expected "%s", got "%s"\n' "$text" "$file" "$finding" "$found"
    return 1
}

self_test()
{
    expect '' docs/b.md '[a](page.md#one-heading) [b](https://example.org)'
    expect 'docs/b.md: no none.md' docs/b.md '[a](none.md)'
    expect 'docs/b.md: no heading #two' docs/b.md '[a](page.md#two)'
    expect '' src/ui/A.h 'class A\n{\nprivate: // things (A.cpp)\n    void a();\n};'
    expect 'src/ui/A.h:4: b is not in A.cpp' src/ui/A.h 'class A\n{\nprivate: // things (A.cpp)\n    void b();\n};'
    expect '' src/ui/A.h 'class A\n{\npublic: // things\n    /// Does it.\n    void b();\n    void c();\n};'
    expect 'src/ui/A.h:4: b has no ///' src/ui/A.h 'class A\n{\npublic: // things\n    void b();\n};'
    expect 'src/ui/A.h:3: b has no ///' src/ui/A.h 'namespace A\n{\nvoid b();\n}'
    printf 'Self-test of the claims: each is checked\n'
}

if [[ ${1:-} == --self-test ]]; then self_test; else exec python3 "$here/claims.py"; fi
