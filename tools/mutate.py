"""Changes operators, constants and conditions of the program one at a time and sees whether the
tests notice. Called by tools/mutate.sh, which tells how."""

import argparse
import concurrent.futures
import dataclasses
import pathlib
import queue
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "mutation.md"
WORK = ROOT / "build" / "mutate"
NEEDED_SCORE = 95.0  # [%] of the mutants
BUILD_SECONDS = 900
TEST_SECONDS = 120

# Which tests have to notice a change in which files. The slow ones come last.
FOLDERS = {
    "src/engine": "engine",
    "src/io": "io",
    "src/canvas": "canvas",
}
GEOMETRY = "TrussGeometry.cpp"
SLOW_TESTS = {"engine_properties", "io_windowreports", "canvas_drawing"}

# Pattern and replacement. The blanks keep templates, pointers and signs out.
OPERATORS = [
    (r" <= ", " < "), (r" >= ", " > "), (r" < ", " <= "), (r" > ", " >= "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r" \+= ", " -= "), (r" -= ", " += "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"std::max\b", "std::min"), (r"std::min\b", "std::max"),
    (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\b(if|while) \((?!.*= )(.*)\)(?= \{$|$)", r"\1 (!(\2))"),
]
NUMBER = r"(?<![\w.'])(\d[\d']*\.?\d*)(F?)\b(?![\w.'])"


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One changed line of one file."""

    path: str
    line: int
    before: str
    after: str

    def key(self):
        return f"`{self.path}`: `{self.before.strip()}` → `{self.after.strip()}`"


def changed_number(match):
    digits, suffix = match.group(1), match.group(2)
    if "." in digits:
        changed = float(digits.replace("'", "")) * 2 or 1.0
        return f"{changed!r}{suffix}"
    return str(int(digits.replace("'", "")) + 1) + suffix


def code_lines(text):
    """The lines that hold code: no comments, includes, assertions or braces alone."""
    for index, line in enumerate(text.split("\n")):
        bare = line.strip()
        if re.match(r"(//|#|static_assert|using |namespace |template|\}?$|\{$)", bare):
            continue
        yield index, line


def outside_texts(line):
    """The places of `line` that are no text or comment, as a list of booleans."""
    free = [True] * len(line)
    for match in re.finditer(r'"(\\.|[^"\\])*"|u?\'(\\.|[^\'\\])\'|//.*$|<[A-Za-z_:]+>', line):
        for i in range(match.start(), match.end()):
            free[i] = False
    return free


def mutants_of(path):
    found = []
    for index, line in code_lines((ROOT / path).read_text()):
        free = outside_texts(line)
        rules = [(pattern, lambda m, new=new: m.expand(new)) for pattern, new in OPERATORS]
        rules.append((NUMBER, changed_number))
        for pattern, change in rules:
            for match in re.finditer(pattern, line):
                if free[match.start()]:
                    after = line[:match.start()] + change(match) + line[match.end():]
                    found.append(Mutant(str(path), index, line, after))
    return found


def mutated_files():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).glob("*.cpp")):
            if folder != "src/canvas" or path.name == GEOMETRY:
                yield path.relative_to(ROOT)


def tests_of(path):
    folder = FOLDERS[str(pathlib.PurePath(path).parent)]
    listed = (ROOT / "tests" / folder / "tests.cmake").read_text()
    names = re.findall(r"^velmora_test\(\w+ (\w+)\)", listed, re.MULTILINE)
    tests = [f"{folder}_{name}" for name in names]
    return sorted(tests, key=lambda test: (test in SLOW_TESTS, test))


def run(command, seconds, **options):
    """True if the command ends with 0 in time."""
    try:
        return subprocess.run(command, timeout=seconds, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False, **options).returncode == 0
    except subprocess.TimeoutExpired:
        return False


class Bench:
    """A copy of the project with a build of its own, in which one mutant lives at a time."""

    def __init__(self, number):
        self.root = WORK / str(number)
        self.source = self.root / "source"
        self.build = self.root / "build"

    def prepare(self, files):
        shutil.rmtree(self.source, ignore_errors=True)
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True,
                                stdout=subprocess.PIPE, text=True).stdout.splitlines()
        for name in listed:
            if (ROOT / name).is_file():
                (self.source / name).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy2(ROOT / name, self.source / name)
        if not run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja",
                    "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                    "-DVELMORA_WARNINGS_AS_ERRORS=OFF"], BUILD_SECONDS):
            sys.exit("The configuration failed")
        tests = sorted({test for path in files for test in tests_of(path)})
        if not self.make(tests):
            sys.exit("The build failed")
        broken = [test for test in tests if not self.passes(test)]
        if broken:
            sys.exit("These tests fail without any change: " + " ".join(broken))

    def make(self, tests):
        return run(["ninja", "-C", self.build, *(f"tst_{test}" for test in tests)], BUILD_SECONDS)

    def passes(self, test):
        environment = {"QT_QPA_PLATFORM": "offscreen", "PATH": "/usr/bin:/bin", "HOME": str(self.root),
                       "TMPDIR": str(self.root)}
        return run([self.build / "bin" / f"tst_{test}"], TEST_SECONDS, env=environment, cwd=self.root)

    def judge(self, mutant):
        """"killed", "survived", or "stillborn" where it does not compile."""
        path = self.source / mutant.path
        original = path.read_text()
        lines = original.split("\n")
        lines[mutant.line] = mutant.after
        path.write_text("\n".join(lines))
        tests = tests_of(mutant.path)
        try:
            if not self.make(tests):
                return "stillborn"
            return "survived" if all(self.passes(test) for test in tests) else "killed"
        finally:
            path.write_text(original)


def judge_all(mutants, files, jobs):
    benches = queue.Queue()
    for number in range(jobs):
        bench = Bench(number)
        bench.prepare(files)
        benches.put(bench)

    def judge(mutant):
        bench = benches.get()
        try:
            result = bench.judge(mutant)
        finally:
            benches.put(bench)
        print(f"{result:9} {mutant.path}:{mutant.line + 1}: {mutant.before.strip()} → {mutant.after.strip()}",
              flush=True)
        return result

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        return list(pool.map(judge, mutants))


def main():
    parser = argparse.ArgumentParser(prog="tools/mutate.sh")
    parser.add_argument("--sample", type=int, help="try only this many mutants, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (default: 1)")
    parser.add_argument("--jobs", type=int, default=1, help="mutants at a time, each in a build of its own")
    parser.add_argument("--list", action="store_true", help="print the mutants and try none")
    parser.add_argument("files", nargs="*", help="only these, for example src/engine/Reactions.cpp")
    options = parser.parse_args()

    files = [path for path in mutated_files() if not options.files or str(path) in options.files]
    mutants = [mutant for path in files for mutant in mutants_of(path)]
    if options.sample and options.sample < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.sample)
        mutants.sort(key=lambda mutant: (mutant.path, mutant.line))
    if options.list:
        for mutant in mutants:
            print(mutant.key())
        print(f"{len(mutants)} mutants")
        return 0
    if not mutants:
        sys.exit("There is nothing to change in: " + " ".join(options.files))

    results = judge_all(mutants, files, options.jobs)
    survivors = [mutant for mutant, result in zip(mutants, results) if result == "survived"]
    killed = results.count("killed")
    score = 100.0 * killed / max(1, killed + len(survivors))
    known = PAGE.read_text() if PAGE.exists() else ""
    unknown = [mutant for mutant in survivors if mutant.key() not in known]
    for mutant in survivors:
        print("Survivor" + (" without a reason" if mutant in unknown else "") + ": " + mutant.key())
    passed = score >= NEEDED_SCORE and not unknown
    print(f"Mutation {'passed' if passed else 'failed'}: {killed} of {killed + len(survivors)} mutants died "
          f"({score:.1f} %, {NEEDED_SCORE:g} % needed), {len(unknown)} survivors without a reason, "
          f"{results.count('stillborn')} did not compile")
    return 0 if passed else 1


if __name__ == "__main__":
    sys.exit(main())
