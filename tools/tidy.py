#!/usr/bin/env python3
"""Runs clang-tidy over sources, but for those that it has found clean before.

    tidy.py CLANG_TIDY BUILD_FOLDER SOURCE...

A source is the same as before if its compile command, its own bytes, those of the project's headers that it
reads, the checks and the versions of tool and Qt are. What was clean is noted in the user's cache folder by
the hash of all that, whatever folder the project lies in. Prints what is found; exits with 1 if anything is.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "velmora-tidy"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def project_files(command, folder):
    """The source and the project's headers that it reads, in a fixed order."""
    words = shlex.split(command)
    del words[words.index("-o"):words.index("-o") + 2]
    words.remove("-c")
    told = subprocess.run(words + ["-MM", "-MT", "x"], cwd=folder, check=True, capture_output=True, text=True)
    names = shlex.split(told.stdout.replace("\\\n", " "))[1:]
    return sorted({(pathlib.Path(folder) / name).resolve() for name in names})


class Tidy:
    """clang-tidy with one set of checks."""

    def __init__(self, tool, build):
        self.tool = tool
        self.build = build
        checks = (ROOT / ".clang-tidy").read_bytes()
        versions = output(tool, "--version") + output("qmake6", "-query", "QT_VERSION")
        self.common = hashlib.sha256(checks + versions.encode()).digest()
        with open(pathlib.Path(build) / "compile_commands.json", encoding="utf-8") as file:
            self.commands = {entry["file"]: entry for entry in json.load(file)}

    def key(self, source):
        entry = self.commands[source]
        digest = hashlib.sha256(self.common)
        digest.update(entry["command"].replace(str(ROOT), "").encode())
        for file in project_files(entry["command"], entry["directory"]):
            digest.update(str(file).replace(str(ROOT), "").encode() + b"\0" + file.read_bytes())
        return digest.hexdigest()

    def look(self, source):
        """What clang-tidy finds in the source; nothing where that is known to be clean."""
        mark = CACHE / self.key(source)
        if mark.exists():
            return ""
        run = subprocess.run([self.tool, "-quiet", "-p", self.build, source], capture_output=True, text=True)
        if run.returncode == 0:
            CACHE.mkdir(parents=True, exist_ok=True)
            mark.touch()
            return ""
        return run.stdout + run.stderr


def main(tool, build, *sources):
    tidy = Tidy(tool, build)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        found = [text for text in pool.map(tidy.look, sources) if text]
    print("".join(found), end="")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
