# SPDX-License-Identifier: MIT
"""The engine of scripts/mutate.sh: finds the places, changes one at a time, runs the tests."""

import argparse
import collections
import pathlib
import random
import re
import subprocess
import sys

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
    for match in re.finditer(r" (&&|\|\|) ", code):
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
    for match in re.finditer(r"(?<=\()([\w.]+), ([\w.]+)(?=\))", code):
        if match[1] != match[2]:
            yield "arguments exchanged", match.start(), match.end(), f"{match[2]}, {match[1]}"


def mutants_of(root, file):
    source = (root / file).read_text()
    code = masked(source)
    for kind, begin, end, text in places(code):
        yield Mutant(file, source.count("\n", 0, begin) + 1, kind, begin, end, text)


def run(words, **options):
    return subprocess.run(words, capture_output=True, text=True, **options)


class Tests:
    """The tests of a build, and what each is built of."""

    def __init__(self, source, build):
        self.source, self.build = source, build
        targets = run(["ninja", "-C", build, "-t", "targets", "all"]).stdout
        self.names = sorted(set(re.findall(r"^(tst_\w+|fuzz_\w+): phony", targets, re.M)))
        self.inputs = {name: self.inputs_of(name) for name in self.names}

    def inputs_of(self, name):
        lines = run(["ninja", "-C", self.build, "-t", "inputs", name]).stdout.splitlines()
        return {pathlib.PurePath(line).as_posix() for line in lines}

    def of(self, file):
        """Those that are linked with a file, the smallest first. A header has its source's."""
        stem = (self.source / file).with_suffix(".cpp").resolve().as_posix()
        near = [name for name in self.names if stem in self.inputs[name]]
        return sorted(near, key=lambda name: len(self.inputs[name]))

    def fails(self, name):
        """Why a test sees the change; None where it does not."""
        if run(["ninja", "-C", self.build, name]).returncode != 0:
            return "does not build"
        wanted = f"^{name}(_corpus)?$"
        tested = run(["ctest", "--test-dir", self.build, "-R", wanted, "--timeout", "300"])
        return name if tested.returncode != 0 else None


def judge(tests, mutant):
    for name in tests.of(mutant.file):
        reason = tests.fails(name)
        if reason:
            return reason
    return None


def changed_line(root, mutant):
    lines = (root / mutant.file).read_text().splitlines()
    return lines[mutant.line - 1].strip()


def try_out(root, tests, mutant):
    path = root / mutant.file
    original = path.read_text()
    path.write_text(original[: mutant.begin] + mutant.text + original[mutant.end :])
    try:
        return judge(tests, mutant), changed_line(root, mutant)
    finally:
        path.write_text(original)


def sources(root):
    found = [*root.glob("src/**/*.cpp"), *root.glob("host/lib/history/*.cpp")]
    return sorted(path.relative_to(root).as_posix() for path in found)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("build")
    parser.add_argument("--count", type=int, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()

    all_of = [m for file in options.files or sources(options.source)
              for m in mutants_of(options.source, file)]
    chosen = random.Random(options.seed).sample(all_of, min(options.count, len(all_of)))
    print(f"{len(all_of)} places, {len(chosen)} changes, seed {options.seed}", flush=True)
    tests = None if options.list else Tests(options.source, options.build)
    results = collections.Counter()
    for mutant in chosen:
        where = f"{mutant.file}:{mutant.line}: {mutant.kind}"
        if options.list:
            print(where, repr(mutant.text))
            continue
        reason, line = try_out(options.source, tests, mutant)
        result = {"does not build": "no program", None: "survived"}.get(reason, "killed")
        results[result] += 1
        print(f"{result}: {where}: {line}" + (f" ({reason})" if result == "killed" else ""),
              flush=True)
    print(", ".join(f"{name}: {count}" for name, count in sorted(results.items())))
    return 1 if results["survived"] else 0


sys.exit(main())
