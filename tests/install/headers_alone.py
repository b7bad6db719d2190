#!/usr/bin/env python3
"""Compiles every installed header by itself, twice in one source, under a caller's warnings.

    headers_alone.py COMPILER INCLUDE_DIRECTORY
    headers_alone.py COMPILER --self-test
"""

import pathlib
import subprocess
import sys
import tempfile

FLAGS = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only", "-x", "c++", "-"]


def complaint(compiler, directory, header):
    """What the compiler says about a header; empty when it is content."""
    name = header.relative_to(directory).as_posix()
    source = f"#include <{name}>\n#include <{name}>\n"
    done = subprocess.run([compiler, f"-I{directory}", *FLAGS], input=source, capture_output=True,
                          text=True, check=False)
    return "" if done.returncode == 0 else f"{name}:\n{done.stderr}"


def complaints(compiler, directory):
    """(every complaint, the number of headers)"""
    headers = sorted(directory.rglob("*.h"))
    said = [complaint(compiler, directory, header) for header in headers]
    return [text for text in said if text], len(headers)


def self_test(compiler):
    headers = {
        "Good.h": "#pragma once\n#include <string>\ninline std::string good() { return {}; }\n",
        "Leans.h": "#pragma once\ninline std::string leans() { return {}; }\n",
        "Warns.h": "#pragma once\ninline int warns(int unused) { return 1; }\n",
        "Twice.h": "inline int twice() { return 2; }\n",
    }
    with tempfile.TemporaryDirectory() as directory:
        for name, text in headers.items():
            pathlib.Path(directory, name).write_text(text, encoding="utf-8")
        found, _ = complaints(compiler, pathlib.Path(directory))
    blamed = [text.split(":")[0] for text in found]
    print("blamed:", *blamed)
    return 0 if blamed == ["Leans.h", "Twice.h", "Warns.h"] else 1


def main():
    compiler, what = sys.argv[1:]
    if what == "--self-test":
        sys.exit(self_test(compiler))
    found, examined = complaints(compiler, pathlib.Path(what))
    print("\n".join(found))
    print(f"{examined} headers, {len(found)} do not stand alone")
    sys.exit(1 if found or examined == 0 else 0)


if __name__ == "__main__":
    main()
