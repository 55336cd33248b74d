# SPDX-License-Identifier: MIT
"""The engine of scripts/mutate.sh: finds the places, builds all changes into one program, in which a
variable of the environment chooses one, and runs the tests."""

import argparse
import collections
import concurrent.futures
import contextlib
import hashlib
import json
import os
import pathlib
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

Mutant = collections.namedtuple("Mutant", "file line kind begin end text")
# From its opening bracket to behind the closing one; reached is the number under which it says that it ran.
Body = collections.namedtuple("Body", "begin end reached")

COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
JUNCTIONS = {"&&": "||", "||": "&&"}
NO_CALLS = r"return|if|for|while|switch|case|else|throw|delete|using|template|static_assert|Q_\w+"

SWITCH = """#pragma once
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>
#include <cerrno>
namespace tadatachange {
struct Switch
{
    int active = 0;
    char* reached = nullptr;
    Switch()
    {
        const int error = errno;
        if (const char* number = ::getenv("TADATA_CHANGE"))
            active = ::atoi(number);
        if (const char* path = ::getenv("TADATA_REACHED")) {
            const int file = ::open(path, O_RDWR | O_CLOEXEC);
            void* at = ::mmap(nullptr, 65536, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
            reached = at == MAP_FAILED ? nullptr : static_cast<char*>(at);
            ::close(file);
        }
        errno = error;
    }
};
inline const Switch& the()
{
    static const Switch it;
    return it;
}
inline bool is(int number) { return the().active == number; }
inline void reach(int body)
{
    if (the().reached)
        the().reached[body] = 1;
}
}
"""


def masked(source):
    """The source with blanks in place of comments, texts and preprocessor lines."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|^[ \t]*#[^\n]*', re.S | re.M
    )
    blank = lambda match: re.sub(r"[^\n]", " ", match.group())
    return re.sub(pattern, blank, source)


def closing(text, at, brackets="()"):
    """Where the bracket that opens there is closed; -1 where it is not."""
    depth = 0
    for i in range(at, len(text)):
        depth += {brackets[0]: 1, brackets[1]: -1}.get(text[i], 0)
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


def is_head_of_function(head):
    """Whether what stands before an opening bracket makes it one of a body that runs with the program."""
    outside = re.sub(r"operator\W+", "operator(", head)
    while "(" in outside and (inner := re.sub(r"\([^()]*\)", "", outside)) != outside:
        outside = inner
    return (
        "(" in head
        and "=" not in outside
        and not re.search(r"\b(constexpr|consteval|class|struct|enum|union|namespace)\b", outside)
    )


def bodies_of(code, first):
    """The bodies of its functions, numbered from the first."""
    access = re.compile(r"\b(public|private|protected|slots|signals)$")
    at = begin = 0
    while at < len(code):
        if code[at] in ";}" or (code[at] == ":" and access.search(code, begin, at)):
            begin = at + 1
        elif code[at] == "{":
            head = code[begin:at]
            if is_head_of_function(head) and head[-1].isspace():
                end = closing(code, at, "{}")
                yield Body(at, end + 1, first)
                first += 1
                at, begin = end, end + 1
            elif re.search(r"\b(class|struct|namespace)\b[^=(]*$", head) and "enum" not in head:
                begin = at + 1
            else:
                at = closing(code, at, "{}")
                begin = begin if head.strip() and "(" in head and "=" not in head else at + 1
        at += 1


def body_around(bodies, begin, end):
    return next((body for body in bodies if body.begin < begin and end < body.end), None)


def mutants_of(root, file):
    source = (root / file).read_text()
    code = masked(source)
    bodies = list(bodies_of(code, 1))
    for kind, begin, end, text in places(code):
        # Outside of a body what looks like a call declares something.
        if kind != "call removed" or body_around(bodies, begin, end):
            yield Mutant(file, source.count("\n", 0, begin) + 1, kind, begin, end, text)


def run(words, **options):
    return subprocess.run(words, capture_output=True, text=True, **options)


class ChangedFile:
    """A source whose copy holds all of its changes: a body is there once more for each."""

    def __init__(self, original, path, mutants, first):
        self.path = path
        self.source = original.read_text()
        self.mutants = mutants
        self.bodies = list(bodies_of(masked(self.source), first))
        self.held = {n: body for n, m in mutants.items() if (body := self.body_of(m))}

    def body_of(self, mutant):
        return body_around(self.bodies, mutant.begin, mutant.end)

    def with_change(self, mutant, begin=0, end=None):
        return self.source[begin : mutant.begin] + mutant.text + self.source[mutant.end : end]

    def all_in_one(self, switch):
        parts = [f'#include "{switch}"\n']
        at = 0
        for body in self.bodies:
            parts.append(self.source[at : body.begin] + "{ ::tadatachange::reach(%d);\n" % body.reached)
            for number, held_by in self.held.items():
                if held_by is body:
                    changed = self.with_change(self.mutants[number], body.begin, body.end)
                    # An error of the compiler says so whose it is.
                    parts.append(f"if (::tadatachange::is({number}))\n")
                    parts.append(f'#line 1 "change-{number}"\n{changed}\nelse ')
            line = self.source.count("\n", 0, body.begin) + 1
            parts.append(f'\n#line {line} "{self.path}"\n' + self.source[body.begin : body.end] + "\n}")
            at = body.end
        return "".join(parts) + self.source[at:]

    def write(self, switch, compiles):
        """Whatever does not compile so is left out, and judged alone."""
        self.put(self.all_in_one(switch))
        while self.held and (errors := compiles(self.path)):
            wrong = {int(n) for n in re.findall(r"^change-(\d+):", errors, re.M)} & set(self.held)
            for number in wrong or set(self.held):
                del self.held[number]
            self.put(self.all_in_one(switch))

    def put(self, text):
        # What is the same is not built anew.
        if not self.path.exists() or self.path.read_text() != text:
            self.path.parent.mkdir(parents=True, exist_ok=True)
            self.path.write_text(text)


class Test:
    """A test of CTest, run without it: a change may make it endless, or greedy."""

    NOT_RUN = {"packages", "x11"}

    def __init__(self, shown):
        properties = {p["name"]: p["value"] for p in shown["properties"]}
        self.name = shown["name"]
        self.command = shown["command"]
        self.directory = properties["WORKING_DIRECTORY"]
        self.environment = dict(words.split("=", 1) for words in properties.get("ENVIRONMENT", []))
        labels = set(properties.get("LABELS", []))
        self.is_run = not self.NOT_RUN & labels
        # They are thousands of short programs.
        self.is_of_faults = "faults" in labels
        # Two runs of one test would be in each other's way.
        self.lock = threading.Lock()
        # That it takes when nothing is changed, and the bodies it runs then; of those of faults neither
        # is measured.
        self.seconds = 100.0
        self.reached = frozenset()

    @staticmethod
    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (16 << 30, 16 << 30))

    def result(self, seconds=1500.0, **more):
        """Its exit code, or None where it did not end within that time, with more in its environment."""
        # What a test that has crashed leaves would fill the disk, or let the next one fail.
        with self.lock, tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch:
            os.chmod(scratch, 0o1777)
            result = self.run(os.environ | self.environment | {"TMPDIR": scratch} | more, seconds)
            for word in self.command:
                if pathlib.PurePath(word).name.startswith("tst_"):
                    shutil.rmtree(pathlib.Path(word).parent / "user", ignore_errors=True)
            return result

    def run(self, environment, seconds):
        with subprocess.Popen(
            self.command, cwd=self.directory, env=environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True,
            preexec_fn=self.limits,
        ) as process:
            is_late = threading.Event()
            timer = threading.Timer(seconds, lambda: (is_late.set(), self.kill(process)))
            timer.start()
            # What fails besides is all the same.
            has_failed = any(line.startswith(b"FAIL!") for line in process.stdout)
            if has_failed:
                self.kill(process)
            result = process.wait()
            timer.cancel()
            # What has crashed may have left programs that it started.
            if result < 0:
                self.kill(process)
        return None if is_late.is_set() else 1 if has_failed else result

    @staticmethod
    def kill(process):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)

    def room(self, build):
        """The directory of its sources: tests/import for example, or fuzz."""
        return pathlib.Path(*pathlib.Path(self.directory).relative_to(build).parts[:2])

    def run_unchanged(self):
        """Measures what it takes and reaches; whether it passes."""
        with tempfile.NamedTemporaryFile() as reached:
            reached.truncate(65536)
            os.chmod(reached.name, 0o666)
            begin = time.monotonic()
            result = self.result(TADATA_REACHED=reached.name)
            self.seconds = time.monotonic() - begin
            marks = pathlib.Path(reached.name).read_bytes()
            self.reached = frozenset(n for n, is_marked in enumerate(marks) if is_marked)
        if result != 0:
            print(f"fails without a change: {self.name}", flush=True)
        return result == 0

    def sees(self, number):
        """Whether it fails twice: some would fail now and then, and kill a change that nobody sees."""
        patience = 20 + 10 * self.seconds
        result = self.result(patience, TADATA_CHANGE=str(number))
        return result is None or (result != 0 and self.result(patience, TADATA_CHANGE=str(number)) != 0)


def on_all_cores(work, items):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(work, items))


def digest_of(*roots):
    """What tells one state of all files below from another."""
    digest = hashlib.sha256()
    for path in sorted(path for root in roots for path in root.rglob("*") if path.is_file()):
        digest.update(path.as_posix().encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


class Program:
    """The build with all changes in it, its tests, and which of them reach what."""

    def __init__(self, root, copy, build, chosen):
        self.root = root
        self.build = pathlib.Path(build).resolve()
        switch = self.build / "change.h"
        switch.write_text(SWITCH)
        self.commands = json.loads((self.build / "compile_commands.json").read_text())
        self.files = {}
        first = 1
        # All say what is reached, so that this is known for other changes, too.
        for file in sources(root):
            of_file = {n: m for n, m in chosen.items() if m.file == file}
            self.files[file] = ChangedFile(root / file, copy.resolve() / file, of_file, first)
            first += len(self.files[file].bodies)
        on_all_cores(lambda file: file.write(switch, self.errors_of), self.files.values())
        self.make("all", check=True)
        shown = json.loads(run(["ctest", "--test-dir", self.build, "--show-only=json-v1"]).stdout)
        tests = [test for each in shown["tests"] if "command" in each and (test := Test(each)).is_run]
        self.of_faults = [test for test in tests if test.is_of_faults]
        self.tests = [test for test in tests if not test.is_of_faults]
        self.run_unchanged()
        seconds = sum(test.seconds for test in self.tests)
        print(f"{len(self.tests)} tests, {seconds:.0f} seconds unchanged", flush=True)
        self.seen = collections.Counter()

    def run_unchanged(self):
        """All that have not yet run so on these sources; those that fail are not asked any more."""
        record = self.build / "unchanged.json"
        known = json.loads(record.read_text()) if record.exists() else {}
        product = digest_of(*(self.root / part for part in ("src", "host", "cli", "plugins", "cmake")))
        support = digest_of(self.root / "tests/support")

        def passes(test):
            state = f"{product} {support} {digest_of(self.root / test.room(self.build))}"
            before = known.get(test.name, {})
            if before.get("state") == state:
                test.seconds, test.reached = before["seconds"], frozenset(before["reached"])
                return True
            known.pop(test.name, None)
            if test.run_unchanged():
                known[test.name] = {"state": state, "seconds": test.seconds, "reached": sorted(test.reached)}
            return test.name in known

        right = on_all_cores(passes, self.tests)
        self.tests = [test for test, is_right in zip(self.tests, right) if is_right]
        record.write_text(json.dumps(known))

    def make(self, *targets, check=False):
        words = ["ninja", "-C", self.build, *targets]
        return subprocess.run(words, check=check, stdout=sys.stderr).returncode == 0

    def errors_of(self, path):
        """What the compiler says against a source, or against a header as the nearest source."""
        def distance(command):
            source = pathlib.Path(command["file"])
            return source != path, -len(os.path.commonpath([source, path]))

        command = min(self.commands, key=distance)
        words = shlex.split(command["command"])
        words = words[: words.index("-o")] + ["-fsyntax-only", "-w", "-fmax-errors=0", "-x", "c++", str(path)]
        result = run(words, cwd=command["directory"])
        return result.stderr if result.returncode else ""

    def reaching(self, mutant):
        """The tests that run the body that is changed; outside of one, any body of the file."""
        file = self.files[mutant.file]
        body = file.body_of(mutant)
        numbers = [b.reached for b in ([body] if body else file.bodies)]
        return [test for test in self.tests if not numbers or not test.reached.isdisjoint(numbers)]

    def cost(self, test, mutant):
        """The seconds that it is likely to take until a test like this sees a change of the file."""
        is_of_file = test.name == "tst_" + pathlib.PurePath(mutant.file).stem
        return (test.seconds + 0.2) / (1 + 9 * is_of_file + 3 * self.seen[mutant.file, test.name])

    def seen_by(self, number, mutant, patience, asks_faults):
        """The test that sees it; None where none does of those that fit into so many seconds."""
        left = self.reaching(mutant)
        while left and patience > 0:
            test = min(left, key=lambda test: self.cost(test, mutant))
            left.remove(test)
            patience -= test.seconds
            if test.sees(number):
                self.seen[mutant.file, test.name] += 1
                return test.name
        if asks_faults:
            return next((test.name for test in self.of_faults if test.sees(number)), None)
        return None

    def seen_alone(self, number, mutant, patience, asks_faults):
        """As seen_by, of a change that the program does not hold: all is built anew with it."""
        file = self.files[mutant.file]
        before = file.path.read_text()
        file.put(file.with_change(mutant))
        try:
            if not self.make("all"):
                return "does not build"
            return self.seen_by(number, mutant, patience, asks_faults)
        finally:
            file.put(before)


def sources(root):
    found = [*root.glob("src/**/*.cpp"), *root.glob("src/**/*.h")]
    found += [*root.glob("host/lib/history/*.cpp"), *root.glob("host/lib/history/*.h")]
    return sorted(path.relative_to(root).as_posix() for path in found)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("copy", type=pathlib.Path)
    parser.add_argument("build")
    parser.add_argument("--count", type=int, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", type=lambda text: [int(n) for n in text.split(",")])
    parser.add_argument("--patience", type=float, default=float("inf"))
    parser.add_argument("--faults", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("files", nargs="*")
    options = parser.parse_intermixed_args()

    all_of = [m for file in options.files or sources(options.source)
              for m in mutants_of(options.source, file)]
    chosen = random.Random(options.seed).sample(all_of, min(options.count, len(all_of)))
    print(f"{len(all_of)} places, {len(chosen)} changes, seed {options.seed}", flush=True)
    chosen = {n: m for n, m in enumerate(chosen, 1) if not options.only or n in options.only}
    results = collections.Counter()
    def told(number, reason):
        mutant = chosen[number]
        result = {"does not build": "no program", None: "survived"}.get(reason, "killed")
        results[result] += 1
        source = (options.source / mutant.file).read_text()
        changed = source[: mutant.begin] + mutant.text + source[mutant.end :]
        line = changed.splitlines()[mutant.line - 1].strip()
        where = f"{number}: {mutant.file}:{mutant.line}: {mutant.kind}"
        print(f"{result} {where}: {line}" + (f" ({reason})" if reason else ""), flush=True)

    if options.list:
        for number, mutant in chosen.items():
            print(f"{number}: {mutant.file}:{mutant.line}: {mutant.kind}", repr(mutant.text))
        return 0
    program = Program(options.source, options.copy, options.build, chosen)
    held = [n for n, m in chosen.items() if n in program.files[m.file].held]
    how = options.patience, options.faults
    on_all_cores(lambda n: told(n, program.seen_by(n, chosen[n], *how)), held)
    for n in chosen.keys() - set(held):
        told(n, program.seen_alone(n, chosen[n], *how))
    print(", ".join(f"{name}: {count}" for name, count in sorted(results.items())))
    return 1 if results["survived"] else 0


sys.exit(main())
