"""Changes operators, constants and conditions of the program one at a time and sees whether the
tests notice. Called by tools/mutate.sh, which tells how; docs/mutation.md tells more.

The project is built once. A mutant costs the compilation of what includes the changed file, and the
linking of the tests that try it, with the new objects in front of the libraries: the members that
these replace stay out."""

import argparse
import collections
import concurrent.futures
import dataclasses
import fcntl
import json
import os
import pathlib
import queue
import random
import re
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time

# tools/mutate-test.sh tries this file on a program of its own.
ROOT = pathlib.Path(os.environ.get("VELMORA_MUTATED") or pathlib.Path(__file__).resolve().parent.parent)
PAGE = ROOT / "docs" / "mutation.md"
BUILD = ROOT / "build" / "mutate"
NEEDED_SCORE = 95.0  # [%] of all mutants
SHORTEST_LIMIT = 10.0  # [s] for a test; a slow one may take three times as long as it usually does
MOST_MEMORY = 8 << 30  # [bytes] for a test: an endless loop may fill a list

# Which tests have to notice a change in which files.
FOLDERS = {
    "src/engine": "engine",
    "src/io": "io",
    "src/canvas": "canvas",
}
GEOMETRY = "TrussGeometry"
# A file's own test, where it is not called as the file is, or as a part of that: it is tried first.
OWN_TESTS = {"LoadLogic": "model"}

# Left out: it needs a browser, which is not everywhere, and waits for it longer than for the program.
SKIPPED_TESTS = {"io_browser"}

# Pattern and replacement. The blanks keep templates, pointers and signs out.
OPERATORS = [
    (r" <= ", " < "), (r" >= ", " > "), (r" < ", " <= "), (r" > ", " >= "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r" \+= ", " -= "), (r" -= ", " += "), (r"\+\+", "--"), (r"--", "++"),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"std::max\b", "std::min"), (r"std::min\b", "std::max"),
    (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\b(if|while) \((?!.* = )(.*)\)(?= \{$|$)", r"\1 (!(\2))"),
    (r"(^\s*|return |(?<![=!<>])= |, |\()((?:\w|\.|->|::|\(\))+) \? ", r"\1!\2 ? "),
]
NUMBER = r"(?<![\w.'])(\d[\d']*\.?\d*)(F?)\b(?![\w.'])"



def without_steps(line):
    return re.sub(r"--|\+\+", "", line)


# Changes that teach nothing.
POINTLESS = [
    # How much memory is asked for before it is needed.
    lambda before, after: ".reserve(" in before,
    # A text can be appended to, but not subtracted: this does not compile.
    lambda before, after: re.search(r"(_s|'|\"\)) - | - u['\"]", after) and not re.search(" - ", before),
    # A loop that counts the wrong way crashes or never ends, whatever it is for.
    lambda before, after: re.match(r"\s*for \(", before) and without_steps(before) == without_steps(after),
    # The same as the condition without its "!", or with the opposite operator.
    lambda before, after: "(!(" in after and re.search(r"\((![^&|]*|[^&|]* [=!]= [^&|]*)\)( \{)?$", before),
]


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One changed line of one file."""

    path: str
    line: int
    before: str
    after: str
    number: int  # 1; 2 … for the same change of the same line further down in the file

    def change(self):
        repeated = f" ({self.number})" if self.number > 1 else ""
        return f"`{self.before.strip()}` → `{self.after.strip()}`{repeated}"

    def key(self):
        return self.path, self.change()


def changed_number(match):
    digits, suffix = match.group(1), match.group(2)
    if "." in digits:
        changed = float(digits.replace("'", "")) * 2 or 1.0
        return f"{changed!r}{suffix}"
    return str(int(digits.replace("'", "")) + 1) + suffix


def code_lines(text):
    """The lines that hold code: no comments, includes, assertions, braces alone, or long texts."""
    in_text = False
    for index, line in enumerate(text.split("\n")):
        starts, ends = 'R"(' in line, ')"' in line
        if in_text or starts:
            in_text = not ends
            continue
        if re.match(r"(//|#|static_assert|using |namespace |template|\}?$|\{$)", line.strip()):
            continue
        yield index, line


def outside_texts(line):
    """The places of `line` that are no text or comment, as a list of booleans."""
    free = [True] * len(line)
    for match in re.finditer(r'"(\\.|[^"\\])*"|u?\'(\\.|[^\'\\])\'|//.*$|<[A-Za-z_:]+>', line):
        for i in range(match.start(), match.end()):
            free[i] = False
    return free


def changes_of(line):
    free = outside_texts(line)
    rules = [(pattern, lambda m, new=new: m.expand(new)) for pattern, new in OPERATORS]
    rules.append((NUMBER, changed_number))
    for pattern, change in rules:
        for match in re.finditer(pattern, line):
            after = line[:match.start()] + change(match) + line[match.end():]
            if free[match.start()] and not any(is_pointless(line, after) for is_pointless in POINTLESS):
                yield after


def mutants_of(path):
    found = []
    times = collections.Counter()
    for index, line in code_lines((ROOT / path).read_text()):
        for after in changes_of(line):
            key = line.strip(), after.strip()
            times[key] += 1
            found.append(Mutant(str(path), index, line, after, times[key]))
    return found


def mutated_files():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).glob("*.*")):
            if path.suffix in {".cpp", ".h"} and (folder != "src/canvas" or path.stem == GEOMETRY):
                yield path.relative_to(ROOT)


def tests_of(path):
    folder = FOLDERS[str(pathlib.PurePath(path).parent)]
    listed = (ROOT / "tests" / folder / "tests.cmake").read_text()
    tests = [f"{folder}_{name}" for name in re.findall(r"^velmora_test\(\w+ (\w+)", listed, re.MULTILINE)]
    return [test for test in tests if test not in SKIPPED_TESTS]


def is_own_test(test, path):
    """tst_engine_stress is TrussStress's own test."""
    stem = pathlib.PurePath(path).stem
    return test.split("_", 1)[1] in (OWN_TESTS.get(stem) or stem.lower())


def option_value(arguments, option):
    return arguments[arguments.index(option) + 1]


class Build:
    """The project as it is, built once, and how each part of it is made."""

    def __init__(self, files):
        self.sources = {path: (ROOT / path).read_text() for path in files}
        self.tests = {path: tests_of(path) for path in files}
        tests = sorted({test for of_file in self.tests.values() for test in of_file})
        configuration = ["cmake", "-S", str(ROOT), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                         "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -D_GLIBCXX_ASSERTIONS",
                         "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DVELMORA_WARNINGS_AS_ERRORS=OFF"]
        subprocess.run(configuration, check=True, stdout=subprocess.DEVNULL)
        self.ninja(*(f"tst_{test}" for test in tests))
        self.compilations = self.read_compilations()
        self.dependencies = self.read_dependencies()
        self.links = {test: self.read_link(test) for test in tests}
        self.members = {test: self.read_members(test) for test in tests}
        self.seconds = {test: self.measured(test) for test in tests}
        self.kills = collections.Counter()

    @staticmethod
    def ninja(*arguments):
        return subprocess.run(["ninja", "-C", str(BUILD), *arguments], check=True, stdout=subprocess.PIPE,
                              text=True).stdout

    @staticmethod
    def read_compilations():
        """The command of each object, by the object's name as the linker is told it."""
        commands = [shlex.split(entry["command"])
                    for entry in json.loads((BUILD / "compile_commands.json").read_text())]
        return {option_value(command, "-o"): command for command in commands}

    def read_dependencies(self):
        """The files that each object is made of."""
        found = {}
        for line in self.ninja("-t", "deps").splitlines():
            if line.startswith("    "):
                found[current].add(os.path.normpath(BUILD / line.strip()))
            elif ": #deps" in line:
                current = line.split(": #deps")[0]
                found[current] = set()
        return found

    def read_link(self, test):
        line = self.ninja("-t", "commands", f"tst_{test}").splitlines()[-1]
        return shlex.split(line.removeprefix(": && ").removesuffix(" && :"))

    def read_members(self, test):
        """The names of the objects that the linker takes out of the libraries."""
        command = [*self.links[test], "-Wl,--trace"]
        command[command.index("-o") + 1] = str(BUILD / "traced")
        traced = subprocess.run(command, cwd=BUILD, check=True, stdout=subprocess.PIPE, text=True).stdout
        return set(re.findall(r"\.a\((.*)\)$", traced, re.MULTILINE))

    def measured(self, test):
        """How long the test takes as it is."""
        tester = Tester(BUILD / "unchanged")
        start = time.monotonic()
        if tester.outcome(BUILD / "bin" / f"tst_{test}", 600) != "survived":
            sys.exit(f"tst_{test} fails without any change")
        return time.monotonic() - start

    def tests_by_promise(self, path):
        """Its own first, then those that killed most of the file's mutants so far, then the quick ones."""
        return sorted(self.tests[path], key=lambda test: (not is_own_test(test, path), -self.kills[path, test],
                                                          self.seconds[test]))

    def objects_of(self, path, test):
        """Those of the file's folder and of the test that have to be made anew when the file changes."""
        folder = f".dir/{pathlib.PurePath(path).parent.name}/"
        return [name for name, files in self.dependencies.items() if str(ROOT / path) in files
                and (f"/tst_{test}.dir/" in name
                     or name.startswith("src/") and folder in name and os.path.basename(name) in self.members[test])]


class Tester:
    """Runs tests in a folder of its own."""

    def __init__(self, folder):
        self.folder = folder
        self.temporary = folder / "tmp"

    def outcome(self, program, seconds):
        """"killed" at the first failure, "timed out", or "survived"."""
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)
        environment = {"QT_QPA_PLATFORM": "offscreen", "PATH": "/usr/bin:/bin", "HOME": str(self.temporary),
                       "TMPDIR": str(self.temporary), "LC_ALL": "C.UTF-8"}
        # The limit on processor time ends what loops for ever where this script is ended from outside.
        command = ["prlimit", f"--data={MOST_MEMORY}", f"--cpu={int(seconds) + 60}", "--core=0", str(program),
                   "-nocrashhandler"]
        process = subprocess.Popen(command, env=environment, cwd=self.folder, start_new_session=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, text=True, errors="replace")
        late = threading.Event()

        def end():
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass

        def end_late():
            late.set()
            end()

        clock = threading.Timer(seconds, end_late)
        clock.start()
        try:
            failed = any(line.startswith(("FAIL!", "XPASS")) for line in process.stdout)
        finally:
            end()
            status = process.wait()
            clock.cancel()
        if late.is_set():
            return "timed out"
        return "killed" if failed or status != 0 else "survived"


def succeeds(command):
    # A cache of the compiler's would only be in the way: no mutant comes again soon.
    environment = {**os.environ, "CCACHE_DISABLE": "1"}
    return subprocess.run(command, cwd=BUILD, env=environment, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, check=False).returncode == 0


class Worker:
    """A folder in which one mutant lives at a time."""

    def __init__(self, build, number):
        self.build = build
        self.folder = BUILD / f"worker-{number}"
        self.tester = Tester(self.folder)

    def judge(self, mutant):
        """"killed", "timed out", "survived", or "stillborn" where it does not compile."""
        shutil.rmtree(self.folder, ignore_errors=True)
        changed = self.folder / "src" / pathlib.PurePath(mutant.path).relative_to("src")
        changed.parent.mkdir(parents=True)
        lines = self.build.sources[mutant.path].split("\n")
        lines[mutant.line] = mutant.after
        changed.write_text("\n".join(lines))

        for test in self.build.tests_by_promise(mutant.path):
            objects = self.build.objects_of(mutant.path, test)
            if not objects:
                continue  # it does not use the file
            program = self.make(mutant.path, test, objects)
            if program is None:
                return "stillborn"
            outcome = self.tester.outcome(program, max(SHORTEST_LIMIT, 3 * self.build.seconds[test]))
            if outcome != "survived":
                self.build.kills[mutant.path, test] += 1
                return outcome
        return "survived"

    def make(self, path, test, objects):
        """The test with the changed file, or nothing when the compiler or the linker refuses."""
        made = {name: self.folder / name for name in objects}
        for name, target in made.items():
            if not target.exists() and not self.compile(path, name, target):
                return None
        program = self.folder / test
        link = [str(made.pop(argument, argument)) for argument in self.build.links[test]]
        link[link.index("-o") + 1] = str(program)
        link[1:1] = [str(target) for target in made.values()]
        return program if succeeds(link) else None

    def compile(self, path, name, target):
        target.parent.mkdir(parents=True, exist_ok=True)
        command = list(self.build.compilations[name])
        command[command.index("-o") + 1] = str(target)
        source = command.index("-c") + 1
        if command[source] == str(ROOT / path):
            command[source] = str(self.folder / path)
        # A header is found here before it is found where it belongs.
        first_flag = next(i for i, argument in enumerate(command) if argument.startswith("-"))
        command.insert(first_flag, f"-I{self.folder / 'src'}")
        return succeeds(command)


def judge_all(build, mutants, jobs):
    workers = queue.Queue()
    for number in range(jobs):
        workers.put(Worker(build, number))

    def judge(mutant):
        worker = workers.get()
        start = time.monotonic()
        try:
            result = worker.judge(mutant)
        finally:
            workers.put(worker)
        print(f"{result:9} {time.monotonic() - start:5.1f} s  {mutant.path}:{mutant.line + 1}: {mutant.change()}",
              flush=True)
        return result

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        return list(pool.map(judge, mutants))


def listed_survivors():
    """Those that the page lists with a reason, as keys of mutants.

    Under a heading with the file's name, an item is a mutant; the lines after it, indented, are the reason."""
    listed = set()
    path = key = None
    for line in PAGE.read_text().splitlines() if PAGE.exists() else []:
        if line.startswith("#"):
            path, key = line.strip("# `"), None
        elif line.startswith("- "):
            key = (path, line[2:].strip())
        elif key and line.startswith("  ") and line.strip():
            listed.add(key)
    return listed


def main():
    parser = argparse.ArgumentParser(prog="tools/mutate.sh")
    parser.add_argument("--sample", type=int, help="try only this many mutants, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (default: 1)")
    parser.add_argument("--jobs", type=int, default=1, help="mutants at a time")
    parser.add_argument("--list", action="store_true", help="print the mutants and try none")
    parser.add_argument("files", nargs="*", help="only these, for example src/engine/Reactions.cpp")
    options = parser.parse_args()

    everything = [mutant for path in mutated_files() for mutant in mutants_of(path)]
    mutants = [mutant for mutant in everything if not options.files or mutant.path in options.files]
    if options.sample and options.sample < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.sample)
        mutants.sort(key=lambda mutant: (mutant.path, mutant.line))
    if options.list:
        for mutant in mutants:
            print(f"{mutant.path}:{mutant.line + 1}: {mutant.change()}")
        print(f"{len(mutants)} mutants")
        return 0
    if not mutants:
        sys.exit("There is nothing to change in: " + " ".join(options.files))
    # One run at a time in the build folder: a second one waits for the first.
    BUILD.mkdir(parents=True, exist_ok=True)
    lock = (BUILD / ".lock").open("w")
    fcntl.flock(lock, fcntl.LOCK_EX)
    known = listed_survivors()
    outdated = known - {mutant.key() for mutant in everything}

    build = Build({mutant.path for mutant in mutants})
    results = judge_all(build, mutants, options.jobs)
    return report(mutants, results, known, outdated, len(mutants) == len(everything))


def report(mutants, results, known, outdated, is_whole):
    survivors = [mutant for mutant, result in zip(mutants, results) if result == "survived"]
    unknown = [mutant for mutant in survivors if mutant.key() not in known]
    for path, change in sorted(outdated):
        print(f"Listed in {PAGE.name}, but no mutant: {path}: {change}")
    for mutant in unknown:
        print(f"Survivor without a reason: {mutant.path}:{mutant.line + 1}: {mutant.change()}")
    for mutant, result in zip(mutants, results):
        if mutant.key() in known and result != "survived":
            print(f"Listed as a survivor, but {result}: {mutant.path}:{mutant.line + 1}: {mutant.change()}")

    timed_out = results.count("timed out")
    died = results.count("killed") + timed_out
    tried = died + len(survivors)
    score = 100.0 * died / max(1, tried)
    # A handful of mutants has no score: a single survivor that is known to be harmless would spoil it.
    passed = not unknown and not outdated and tried > 0 and (not is_whole or score >= NEEDED_SCORE)
    print(f"Mutation {'passed' if passed else 'failed'}: {died} of {tried} mutants died ({score:.1f} %"
          + (f", {NEEDED_SCORE:g} % needed" if is_whole else "") + f"), {timed_out} of them by timeout, "
          f"{len(unknown)} survivors without a reason, {results.count('stillborn')} more did not compile")
    return 0 if passed else 1


if __name__ == "__main__":
    sys.exit(main())
