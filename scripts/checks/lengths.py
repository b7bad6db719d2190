#!/usr/bin/env python3
"""No file is over 600 lines, unless its first comment says why ("Over 600 lines because …")."""

import re

import checking

LIMIT = 600
REASON = re.compile(r"over 600 lines because\s+\w+", re.IGNORECASE)


def first_comment(lines):
    """The text of the leading comment, joined to one line."""
    comment = []
    for line in lines:
        if not re.match(r"\s*(//|/\*|\*|#pragma once|$)", line):
            break
        comment.append(re.sub(r"^\s*(///?|/\*+|\*/?)\s?", "", line))
    return " ".join(comment)


def find_faults(root):
    faults = []
    for path in checking.cpp_files(root):
        lines = checking.lines_of(path)
        if len(lines) > LIMIT and not REASON.search(first_comment(lines)):
            faults.append(f"{path.relative_to(root)}: {len(lines)} lines without a reason")
    return faults


LONG = "int x;\n" * LIMIT

CASES = [
    checking.Case("just short enough", {"dom/A.cpp": LONG}),
    checking.Case("a reason", {"dom/A.cpp": "// Tables. Over 600 lines\n// because of the names.\n" + LONG}),
    checking.Case("no reason", {"dom/A.cpp": "// Tables.\n" + LONG}, "601 lines"),
    checking.Case("a reason that comes late",
                  {"dom/A.h": "int y;\n// Over 600 lines because of x.\n" + LONG}, "602 lines"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES)
