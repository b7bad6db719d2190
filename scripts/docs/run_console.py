#!/usr/bin/env python3
"""Runs the terminal examples of one page of documentation and compares what they print.

    run_console.py PAGE.md --tibxml PROGRAM --data DIRECTORY
    run_console.py --self-test

A ```console block is run when a command of it calls tibxml; lines that begin with "$ " are commands
and the lines after one are its output, errors included. The commands of a page run in one temporary
directory that begins as a copy of DIRECTORY; `echo $?` shows the status of the command before. A
line of output that is just "..." stands for any number of lines.
"""

import argparse
import dataclasses
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from page_to_test import blocks_of

PROMPT = "$ "


@dataclasses.dataclass
class Example:
    line: int
    command: str
    expected: list


def calls_tibxml(block):
    return any(re.match(r"\$ (.*\|\s*)?tibxml\b", line) for line in block.text)


def examples_of(lines):
    examples = []
    for block in filter(calls_tibxml, blocks_of(lines, "console")):
        for offset, line in enumerate(block.text):
            if line.startswith(PROMPT):
                examples.append(Example(block.line + offset, line[len(PROMPT):], []))
            elif offset == 0:
                raise ValueError(f"line {block.line}: output without a command")
            else:
                examples[-1].expected.append(line)
    return examples


def agrees(expected, printed):
    pattern = "".join("(?:.*\n)*" if line.strip() == "..." else re.escape(line) + "\n"
                      for line in expected)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed)) is not None


def run(example, directory, path, status):
    """(what the command printed, its status)"""
    done = subprocess.run(["bash", "-c", f"(exit {status})\n{example.command}"], cwd=directory,
                          env=os.environ | {"PATH": f"{path}{os.pathsep}{os.environ['PATH']}"},
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False)
    return done.stdout.decode("utf-8").splitlines(), done.returncode


def faults_of(page, examples, directory, path):
    status = 0
    for example in examples:
        printed, status = run(example, directory, path, status)
        if not agrees(example.expected, printed):
            difference = difflib.unified_diff(example.expected, printed, "in the page", "printed",
                                              lineterm="")
            yield f"{page}:{example.line}: $ {example.command}\n" + "\n".join(difference)


def check(page, tibxml, data):
    """The page's faults, and how many commands were run."""
    examples = examples_of(pathlib.Path(page).read_text(encoding="utf-8").splitlines())
    with tempfile.TemporaryDirectory() as scratch:
        directory, path = pathlib.Path(scratch, "data"), pathlib.Path(scratch, "bin")
        shutil.copytree(data, directory)
        path.mkdir()
        (path / "tibxml").symlink_to(pathlib.Path(tibxml).resolve())
        return list(faults_of(page, examples, directory, path)), len(examples)


# Each page of the self-test, and whether it must pass with a program that prints its arguments.
PAGES = [
    ("```console\n$ tibxml a b\nran a b\n$ echo $?\n3\n$ cat data.txt\nhello\n```\n", True),
    ("```console\n$ tibxml a\n...\n```\n```console\n$ false # not run: no call of ours\nx\n```\n", True),
    ("```console\n$ tibxml a\nran b\n```\n", False),
    ("```console\n$ tibxml a\n```\n", False),
    ("```console\n$ tibxml a\nran a\nmore\n```\n", False),
    ("```console\n$ tibxml a\nran a\n$ echo $?\n0\n```\n", False),
]


def self_test():
    wrong = 0
    with tempfile.TemporaryDirectory() as scratch:
        page, program, data = (pathlib.Path(scratch, name) for name in ("page.md", "program", "data"))
        program.write_text('#!/bin/sh\necho "ran $*"\nexit 3\n', encoding="utf-8")
        program.chmod(0o755)
        data.mkdir()
        (data / "data.txt").write_text("hello\n", encoding="utf-8")
        for text, right in PAGES:
            page.write_text(text, encoding="utf-8")
            faults, ran = check(page, program, data)
            wrong += ran == 0 or right == bool(faults)
    print(f"{wrong} of {len(PAGES)} pages judged wrongly")
    return 1 if wrong else 0


def main():
    parser = argparse.ArgumentParser(description="run the terminal examples of a page")
    parser.add_argument("page", nargs="?")
    parser.add_argument("--tibxml", help="the program that the examples call")
    parser.add_argument("--data", help="what the examples find in their directory")
    parser.add_argument("--self-test", action="store_true")
    arguments = parser.parse_args()
    if arguments.self_test:
        sys.exit(self_test())
    if not (arguments.page and arguments.tibxml and arguments.data):
        parser.error("a page, --tibxml and --data are needed")
    faults, ran = check(arguments.page, arguments.tibxml, arguments.data)
    print("\n".join(faults))
    print(f"{ran} commands run, {len(faults)} printed something else")
    sys.exit(1 if faults or ran == 0 else 0)


if __name__ == "__main__":
    main()
