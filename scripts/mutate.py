# SPDX-License-Identifier: MIT
"""The engine of scripts/mutate.sh: finds the places, changes one at a time, runs the tests."""

import argparse
import collections
import concurrent.futures
import contextlib
import functools
import hashlib
import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

Mutant = collections.namedtuple("Mutant", "file line kind begin end text")

COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
JUNCTIONS = {"&&": "||", "||": "&&"}
NO_CALLS = r"return|if|for|while|switch|case|else|throw|delete|using|template|static_assert|Q_\w+"


def masked(source):
    """The source with blanks in place of comments, texts and preprocessor lines."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|^[ \t]*#[^\n]*', re.S | re.M
    )
    blank = lambda match: re.sub(r"[^\n]", " ", match.group())
    return re.sub(pattern, blank, source)


def closing(text, at):
    """Where the bracket that opens there is closed; -1 where it is not."""
    depth = 0
    for i in range(at, len(text)):
        depth += {"(": 1, ")": -1}.get(text[i], 0)
        if depth == 0:
            return i
    return -1


def places(code):
    """Everything that can be changed: what kind of change, from where to where, and into what."""
    for match in re.finditer(r" (==|!=|<=|>=|<|>) ", code):
        yield "comparison", match.start(1), match.end(1), COMPARISONS[match[1]]
    for match in re.finditer(r" (&&|\|\|)\s", code):
        yield "condition", match.start(1), match.end(1), JUNCTIONS[match[1]]
    for match in re.finditer(r"(?<![\w.'])\d+(?![\w.'])", code):
        yield "constant", match.start(), match.end(), str(int(match.group()) + 1)
    for match in re.finditer(r"^[ ]{4,}(?!(?:%s)\b)[\w:.>-]+\(" % NO_CALLS, code, re.M):
        end = closing(code, match.end() - 1)
        if end > 0 and code[end + 1 : end + 3] == ";\n":
            begin = match.end() - len(match.group().lstrip())
            yield "call removed", begin, end + 1, ""
    for match in re.finditer(r"\bif \(", code):
        end = closing(code, match.end() - 1)
        # A condition that declares something cannot be dropped alone.
        if end > 0 and ";" not in code[match.end() : end]:
            yield "condition dropped", match.end(), end, "true"
            yield "condition dropped", match.end(), end, "false"
    # The order is all the same to a minimum and a maximum.
    for match in re.finditer(r"(?<!std::m(?:in|ax)\()(?<=\()([\w.]+), ([\w.]+)(?=\))", code):
        if match[1] != match[2]:
            yield "arguments exchanged", match.start(), match.end(), f"{match[2]}, {match[1]}"


def mutants_of(root, file):
    source = (root / file).read_text()
    code = masked(source)
    for kind, begin, end, text in places(code):
        yield Mutant(file, source.count("\n", 0, begin) + 1, kind, begin, end, text)


def run(words, **options):
    return subprocess.run(words, capture_output=True, text=True, **options)


class Test:
    """A test of CTest, run without it: a change may make it endless, or greedy."""

    NOT_RUN = {"packages", "x11"}

    def __init__(self, shown, targets):
        properties = {p["name"]: p["value"] for p in shown["properties"]}
        self.name = shown["name"]
        self.command = shown["command"]
        self.directory = properties["WORKING_DIRECTORY"]
        self.environment = dict(words.split("=", 1) for words in properties.get("ENVIRONMENT", []))
        labels = set(properties.get("LABELS", []))
        self.is_run = not self.NOT_RUN & labels
        # They are thousands of short programs, which would mostly write counts.
        self.is_of_faults = "faults" in labels
        programs = (pathlib.PurePath(word).name for word in self.command)
        self.target = next((name for name in programs if name in targets), None)
        # That it takes when nothing is changed; of those of faults it is not measured.
        self.seconds = 100.0

    @staticmethod
    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (16 << 30, 16 << 30))

    def passes(self, seconds=1500.0, **more):
        """Whether it ends so, within that time, with more in its environment."""
        # What a test that has crashed leaves would fill the disk, or let the next one fail.
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch:
            os.chmod(scratch, 0o1777)
            own = os.environ | self.environment | {"TMPDIR": scratch}
            result = self.run(own | more, seconds)
        program = next(w for w in self.command if pathlib.PurePath(w).name == self.target)
        shutil.rmtree(pathlib.Path(program).parent / "user", ignore_errors=True)
        return result == 0

    def run(self, environment, seconds):
        """Its exit code, or None where it did not end."""
        with subprocess.Popen(
            self.command, cwd=self.directory, env=environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
            preexec_fn=self.limits,
        ) as process:
            try:
                result = process.wait(seconds)
            except subprocess.TimeoutExpired:
                result = None
            if result is None or result < 0:
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(process.pid, signal.SIGKILL)
        return result

    def fails(self):
        """Whether it fails twice: some would fail now and then, and kill a change that nobody sees."""
        return not any(self.passes(20 + 10 * self.seconds) for _ in range(2))


def on_all_cores(work, items):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(work, items))


def tests_of(build):
    """All of a build, which is made."""
    subprocess.run(["ninja", "-C", build, "all"], check=True, stdout=sys.stderr)
    listed = run(["ninja", "-C", build, "-t", "targets", "all"]).stdout
    targets = set(re.findall(r"^(\w+): phony", listed, re.M))
    shown = json.loads(run(["ctest", "--test-dir", build, "--show-only=json-v1"]).stdout)
    tests = [Test(each, targets) for each in shown["tests"]]
    return [test for test in tests if test.is_run and test.target]


def without_faults(tests):
    return [test for test in tests if not test.is_of_faults]


def digest_of(root):
    """What tells one state of the sources from another; this script is none of them."""
    digest = hashlib.sha256()
    files = (path for path in root.rglob("*") if path.is_file() and path.parent.name != "scripts")
    for path in sorted(files):
        digest.update(path.relative_to(root).as_posix().encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


class Tests:
    """The tests of a plain build, and, by the tests of one that counts, which of them run which line."""

    def __init__(self, root, build, counting):
        self.build = pathlib.Path(build).resolve()
        self.counting = pathlib.Path(counting).resolve()
        self.counts = self.build.parent / "counts"
        all_tests = tests_of(build)
        self.tests = without_faults(all_tests)
        self.of_faults = [test for test in all_tests if test.is_of_faults]
        # Other seeds at the same commit need not count again.
        done = self.counts / "done.json"
        known = json.loads(done.read_text()) if done.exists() else {}
        if known.get("sources") != digest_of(root):
            self.count()
            self.run_all()
            known = {"sources": digest_of(root), "seconds": {t.name: t.seconds for t in self.tests}}
            done.write_text(json.dumps(known))
        self.tests = [test for test in self.tests if test.name in known["seconds"]]
        for test in self.tests:
            test.seconds = known["seconds"][test.name]
        print(f"{len(self.tests)} tests, {sum(known['seconds'].values()):.0f} seconds unchanged", flush=True)
        self.objects = self.objects_by_source()

    def objects_by_source(self):
        """Which object files a source, or a header, is compiled into."""
        objects = collections.defaultdict(list)
        for line in run(["ninja", "-C", str(self.build), "-t", "deps"]).stdout.splitlines():
            if line.startswith(" "):
                objects[line.strip()].append(output)
            else:
                output = line.partition(":")[0]
        return objects

    def count(self):
        """Whether a test passes there does not count: programs say that they cannot write counts."""
        shutil.rmtree(self.counts, ignore_errors=True)
        tests = without_faults(tests_of(self.counting))
        on_all_cores(lambda test: test.passes(GCOV_PREFIX=str(self.counts / test.name)), tests)

    def run_all(self):
        """Each unchanged; those that fail so are not asked any more."""

        def passes(test):
            begin = time.monotonic()
            is_right = test.passes()
            test.seconds = time.monotonic() - begin
            if not is_right:
                print(f"fails without a change: {test.name}", flush=True)
            return is_right

        right = on_all_cores(passes, self.tests)
        self.tests = [test for test, is_right in zip(self.tests, right) if is_right]

    def counted(self, file, test_name):
        """What a test has counted of the object files of a source: their notes, and the counts."""
        for output in self.objects[file]:
            notes = (self.counting / output).with_suffix(".gcno")
            counts = (self.counts / test_name).joinpath(*notes.with_suffix(".gcda").parts[1:])
            if counts.exists():
                yield notes, counts

    @functools.cache
    def lines_run(self, file, test_name):
        """How often a test has run the lines of a file; those without a number are not there."""
        lines = collections.Counter()
        for notes, counted in self.counted(file, test_name):
            beside = counted.with_suffix(".gcno")
            if not beside.exists():
                beside.symlink_to(notes)
            told = run(["gcov", "--json-format", "--stdout", counted.name], cwd=counted.parent)
            for report in map(json.loads, told.stdout.splitlines()):
                for of_file in report["files"]:
                    if (self.counting / of_file["file"]).resolve().as_posix() == file:
                        for line in of_file["lines"]:
                            lines[line["line_number"]] += line["count"]
        return lines

    def reaching(self, file, line):
        """The tests that run a line, the quickest first. What is no statement, they run with the file;
        what is in a header, with any that includes it."""
        found = [test for test in self.tests if self.reaches(test, file, line)]
        return sorted(found, key=lambda test: test.seconds)

    def reaches(self, test, file, line):
        if file.endswith(".h"):
            return any(self.counted(file, test.name))
        lines = self.lines_run(file, test.name)
        return lines[line] > 0 or (line not in lines and any(lines.values()))

    def build_of(self, names):
        return run(["ninja", "-C", str(self.build), *names]).returncode == 0

    def judge(self, file, line, asks_faults):
        """Why the change of a line is seen; None where it is not."""
        tests = self.reaching(file, line)
        if file.endswith(".cpp") and not self.build_of(self.objects[file]):
            return "does not build"
        begin = 0
        # To link many programs at once is quick; mostly the first ones do.
        for end in (2, 8, len(tests)):
            some = tests[begin:end]
            if some and not self.build_of(sorted({test.target for test in some})):
                return "does not build"
            for test in some:
                if test.fails():
                    return test.name
            begin = end
        if asks_faults and self.is_seen_by_faults():
            return "faults"
        return None if tests else "no test runs it"

    def is_seen_by_faults(self):
        return self.build_of(["all"]) and any(on_all_cores(Test.fails, self.of_faults))


def changed_line(root, mutant):
    lines = (root / mutant.file).read_text().splitlines()
    return lines[mutant.line - 1].strip()


def try_out(root, tests, mutant, asks_faults):
    path = root / mutant.file
    original = path.read_text()
    path.write_text(original[: mutant.begin] + mutant.text + original[mutant.end :])
    try:
        reason = tests.judge(path.resolve().as_posix(), mutant.line, asks_faults)
        return reason, changed_line(root, mutant)
    finally:
        path.write_text(original)


def sources(root):
    found = [*root.glob("src/**/*.cpp"), *root.glob("src/**/*.h")]
    found += [*root.glob("host/lib/history/*.cpp"), *root.glob("host/lib/history/*.h")]
    return sorted(path.relative_to(root).as_posix() for path in found)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("build")
    parser.add_argument("counting")
    parser.add_argument("--count", type=int, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", type=lambda text: [int(n) for n in text.split(",")])
    parser.add_argument("--faults", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("files", nargs="*")
    options = parser.parse_intermixed_args()

    all_of = [m for file in options.files or sources(options.source)
              for m in mutants_of(options.source, file)]
    chosen = random.Random(options.seed).sample(all_of, min(options.count, len(all_of)))
    print(f"{len(all_of)} places, {len(chosen)} changes, seed {options.seed}", flush=True)
    tests = None if options.list else Tests(options.source, options.build, options.counting)
    results = collections.Counter()
    for number, mutant in enumerate(chosen, 1):
        if options.only and number not in options.only:
            continue
        where = f"{number}: {mutant.file}:{mutant.line}: {mutant.kind}"
        if options.list:
            print(where, repr(mutant.text))
            continue
        reason, line = try_out(options.source, tests, mutant, options.faults)
        result = {"does not build": "no program", "no test runs it": "survived", None: "survived"}
        result = result.get(reason, "killed")
        results[result] += 1
        print(f"{result} {where}: {line}" + (f" ({reason})" if reason else ""), flush=True)
    print(", ".join(f"{name}: {count}" for name, count in sorted(results.items())))
    return 1 if results["survived"] else 0


sys.exit(main())
