#!/usr/bin/env python3
"""Every C++ file is laid out as clang-format with the project's settings would lay it out."""

import pathlib
import re
import subprocess

import checking

STYLE = checking.ROOT / ".clang-format"
FAULT = re.compile(r"^(.+?):(\d+):\d+: error: ")


def find_faults(root):
    paths = [str(path) for path in checking.cpp_files(root)]
    if not paths:
        return []
    command = ["clang-format", f"--style=file:{STYLE}", "--dry-run", "-Werror", *paths]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    matches = [FAULT.match(line) for line in done.stderr.splitlines()]
    faults = [f"{pathlib.Path(match[1]).relative_to(root)}:{match[2]}: not as clang-format has it"
              for match in matches if match]
    if done.returncode != 0 and not faults:
        faults.append(f"clang-format: {done.stderr.strip()}")
    return faults


CASES = [
    checking.Case("laid out", {"dom/A.cpp": "int twice(int value) {\n    return 2 * value;\n}\n"}),
    checking.Case("two blanks", {"dom/A.cpp": "int twice(int value) {\n  return 2 * value;\n}\n"},
                  "dom/A.cpp:1"),
    checking.Case("in a header", {"include/TibXml/A.h": "#pragma once\n\nint  a();\n"}, "A.h:3"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES)
