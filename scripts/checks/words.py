#!/usr/bin/env python3
"""Words that must not get into the repository: places and papers that a reader does not have.

Paths of one machine make a file useless elsewhere; a note to do something later, or a reference to
a numbered section of a paper that does not lie here, tells its reader nothing.
"""

import re

import checking

TEXT_SUFFIXES = {".h", ".cpp", ".md", ".txt", ".cmake", ".py", ".sh", ".json", ".xml", ".in", ".yml", ""}


def anywhere(name):
    return True


def code_only(name):
    return not name.startswith(("tests/", "docs/", "scripts/", "examples/")) and "/" in name


FORBIDDEN = [
    (re.compile(r"(?<![\w.])/(?:home/\w|Users/\w|work/(?:main|shared)\b)"), "a path of one machine",
     anywhere),
    (re.compile(r"(?<![\w.])/tmp/\w"), "a temporary path", code_only),
    (re.compile(r"\b(?:TO" r"DO|FIX" r"ME|XX" r"X)\b"), "a note to oneself", anywhere),
    (re.compile(r"\bParts? \d+\.\d"), "a section of another paper", anywhere),
    (re.compile(r"^(?:<{7}|>{7}) "), "a conflict marker", anywhere),
    (re.compile(r"\bAs an AI\b|\blanguage model\b", re.IGNORECASE), "chatter", anywhere),
]

# This file has to spell out what it forbids.
EXEMPT = {"scripts/checks/words.py"}


def text_files(root):
    return [path for path in checking.files_under(root)
            if path.suffix in TEXT_SUFFIXES and path.relative_to(root).as_posix() not in EXEMPT]


def faults_of(name, path):
    try:
        lines = checking.lines_of(path)
    except UnicodeDecodeError:
        return  # Test data in other encodings.
    for number, line in enumerate(lines, 1):
        for pattern, what, applies in FORBIDDEN:
            match = pattern.search(line)
            if match and applies(name):
                yield f"{name}:{number}: {what} ({match.group().strip()})"


def find_faults(root):
    named = [(path.relative_to(root).as_posix(), path) for path in text_files(root)]
    return [fault for name, path in named for fault in faults_of(name, path)]


CASES = [
    checking.Case("clean", {"dom/A.cpp": "// Reads a path such as /root/b; homework/x, XXXL.\n",
                            "tests/A.cpp": "// /tmp/x\n"}),
    checking.Case("a home", {"README.md": "See /home/me/x.\n"}, "README.md:1: a path of one machine"),
    checking.Case("a temporary file in code", {"dom/A.cpp": '"/tmp/x"\n'}, "a temporary path"),
    checking.Case("a note", {"xpath/A.cpp": "int a; // TODO later\n"}, "a note to oneself"),
    checking.Case("a reference", {"dom/A.h": "\n// See " "Part" " 2.1.\n"}, "dom/A.h:2: a section"),
    checking.Case("a merge left over", {"CMakeLists.txt": "<<<<<<< HEAD\n"}, "a conflict marker"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES, text_files)
