#!/usr/bin/env python3
"""Proves that wrong C++ examples are found: compiles and runs made-up pages.

    self_test.py COMPILER
"""

import pathlib
import subprocess
import sys
import tempfile

import page_to_test

# (what the page is about, its text, "passes", "fails" when run, or "no compile" or "refused")
PAGES = [
    ("right", "```cpp\n#include <string>\nstd::string s(2, 'a');\nCHECK(s == \"aa\");\n```\n", "passes"),
    ("wrong value", "```cpp\nCHECK(1 + 1 == 3);\n```\n", "fails"),
    ("wrong in a later block", "```cpp\nCHECK(true);\n```\ntext\n```cpp\nCHECK(false);\n```\n", "fails"),
    ("wrong code", "```cpp\nint a = nothing;\n```\n", "no compile"),
    ("leans on the block above", "```cpp\nint a = 1;\n```\n```cpp\nCHECK(a == 1);\n```\n", "no compile"),
    ("setup", "<!-- setup -->\n```cpp\nint a = 1;\n```\n```cpp\nCHECK(a == 1);\n```\n", "passes"),
    ("declarations",
     "<!-- declarations -->\n```cpp\nint twice(int a) { return 2 * a; }\n```\n"
     "```cpp\nCHECK(twice(2) == 4);\n```\n", "passes"),
    ("no example", "text\n```console\n$ ls\n```\n", "refused"),
    ("no end", "```cpp\nint a = 1;\n", "refused"),
]


def outcome(compiler, directory, text):
    source, program = directory / "page.cpp", directory / "page"
    try:
        source.write_text(page_to_test.test_source("page.md", text.splitlines()), encoding="utf-8")
    except ValueError:
        return "refused"
    command = [compiler, "-std=c++20", source, "-o", program, "-lgtest_main", "-lgtest"]
    if subprocess.run(command, capture_output=True, check=False).returncode != 0:
        return "no compile"
    done = subprocess.run([program], capture_output=True, text=True, check=False)
    if done.returncode == 0:
        return "passes"
    return "fails" if "page.md:" in done.stdout else "fails without the place"


def main():
    with tempfile.TemporaryDirectory() as directory:
        got = [(name, expected, outcome(sys.argv[1], pathlib.Path(directory), text))
               for name, text, expected in PAGES]
    wrong = [f"{name}: {is_}, not {expected}" for name, expected, is_ in got if is_ != expected]
    print("\n".join(wrong) if wrong else f"{len(PAGES)} pages judged as they must be")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
