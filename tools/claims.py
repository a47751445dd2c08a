"""Holds what headers and pages claim against the files: run by tools/claims.sh.

- Links: what a page of the project links to is there, and so is the heading.
- Banners: an access label that names a source file ("// tabs (MainWindowTabs.cpp)") stands over
  functions that this file defines.
- Documents: each public name of a header has a /// of its own, or follows one that has without a blank
  line between them: a group under one comment. Not counted are overrides, slots and signals of
  the same name, constructors that take nothing but a parent, destructors and what is deleted.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent)
LABEL = re.compile(r"^(public|protected|private|signals)\b.*:")
BANNER = re.compile(r"^\w+[^:]*:\s*//.*\(([\w/, .]+\.cpp)\)")
NAME = re.compile(r"(~?\w+|operator\S+)\(")


def anchors(page):
    """The anchors of a page's headings, as GitHub makes them."""
    found = set()
    for line in page.read_text().splitlines():
        if heading := re.match(r"#+ (.*)", line):
            text = re.sub(r"[^\w\- ]", "", heading[1].lower())
            found.add(text.replace(" ", "-"))
    return found


def broken_links():
    for page in sorted(ROOT.rglob("*.md")):
        if "build" in page.relative_to(ROOT).parts:
            continue
        for target in re.findall(r"\]\(([^)\s]+)\)", page.read_text()):
            if re.match(r"[a-z]+:", target):
                continue
            name, _, anchor = target.partition("#")
            file = (page.parent / name) if name else page
            if not file.exists():
                yield f"{page.relative_to(ROOT)}: no {name}"
            elif anchor and anchor not in anchors(file):
                yield f"{page.relative_to(ROOT)}: no heading #{anchor}"


def declarations(lines):
    """Each statement of a header's public part: its first line, its text, whether a comment stands on it."""
    text, documented, start = "", False, 0
    for number, line in enumerate(lines):
        bare = line.strip()
        if bare.startswith("///"):
            documented = True
            continue
        if not bare or bare.startswith(("//", "#", "Q_", "}")) or LABEL.match(bare):
            yield number, None, False
            text, documented = "", False
            continue
        if not text:
            start = number
        text += " " + bare
        if "///<" in line:
            documented = True
        if re.search(r"[;{}]\s*(//.*)?$", bare):
            yield start, text.strip(), documented
            text, documented = "", False


def wrong_banners():
    for header in sorted((ROOT / "src").rglob("*.h")):
        lines = header.read_text().splitlines()
        files = None
        for number, line in enumerate(lines):
            if LABEL.match(line.strip()):
                banner = BANNER.match(line.strip())
                files = [header.parent / f.strip() for f in banner[1].split(",")] if banner else None
                files = files and [f if f.exists() else ROOT / "src" / f.relative_to(header.parent) for f in files]
                continue
            name = NAME.search(line.split("//")[0])
            if not files or not name or not line.startswith("    ") or line.startswith("     "):
                continue
            if not any(f.exists() and f"::{name[1]}(" in f.read_text() for f in files):
                yield f"{header.relative_to(ROOT)}:{number + 1}: {name[1]} is not in {files[0].name}"


def is_counted(text):
    if not NAME.search(text) or re.search(r"\boverride\b|= delete|= default|^using |^friend |^struct |^class ", text):
        return False
    name = NAME.search(text)[1]
    return not name.startswith("~") and name not in ("for", "if", "return", "switch", "while")


def undocumented():
    for header in sorted((ROOT / "src").rglob("*.h")):
        lines = header.read_text().splitlines()
        public, group = True, False
        for number, line in enumerate(lines):
            if label := LABEL.match(line.strip()):
                public = label[1] in ("public", "signals")
                lines[number] = "//" if public else line
            if not public:
                lines[number] = "//"
            if line.startswith("};"):
                public = True
        for number, text, documented in declarations(lines):
            if text is None:
                group = False
                continue
            group = group or documented
            is_constructor = re.match(r"(explicit )?\w+\((QWidget\* parent.*)?\)", text) and header.stem in text
            if is_counted(text) and not group and not is_constructor:
                yield f"{header.relative_to(ROOT)}:{number + 1}: {NAME.search(text)[1]} has no ///"


def main():
    findings = [*broken_links(), *wrong_banners(), *undocumented()]
    for finding in findings:
        print(finding)
    print(f"Claims: {len(findings) or 'no'} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
