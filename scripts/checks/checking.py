"""What every check shares: finding our files, reporting faults, and proving that the check can fail.

A check is a function that takes the root of a source tree and returns a list of faults, each one
line of text beginning with the place. Its `--self-test` runs it over small made-up trees: one that
must pass and one for each fault that it must find.
"""

import dataclasses
import os
import pathlib
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
CPP_SUFFIXES = (".h", ".cpp")
CODE_FOLDERS = (
    "platform", "tibutils", "engine", "include", "calls", "xpath", "dom", "values", "composite",
    "services", "tools", "tests", "bench", "fuzz", "examples",
)
SKIPPED = {".git", ".cache", "build", "__pycache__"}  # in a second work tree .git is a file


@dataclasses.dataclass(frozen=True)
class Case:
    """One made-up tree, and a piece of the fault that it must give (None: it must pass)."""

    name: str
    files: dict
    fault: str | None = None


def files_under(directory, suffixes=None):
    """All files of a tree in a stable order, as paths."""
    found = []
    for folder, subfolders, names in os.walk(directory):
        subfolders[:] = sorted(set(subfolders) - SKIPPED)
        found += [pathlib.Path(folder, name) for name in sorted(set(names) - SKIPPED)]
    return [path for path in found if suffixes is None or path.suffix in suffixes]


def cpp_files(root):
    """Our C++ sources and headers, in a stable order."""
    return [path for folder in CODE_FOLDERS for path in files_under(root / folder, CPP_SUFFIXES)]


def lines_of(path):
    return path.read_text(encoding="utf-8").splitlines()


def write_tree(directory, files):
    for name, text in files.items():
        path = directory / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")


def case_goes_wrong(find_faults, case):
    """None when the check answers as the case expects, else what it did instead."""
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        write_tree(root, case.files)
        faults = find_faults(root)
    if case.fault is None:
        return f"unexpected faults {faults}" if faults else None
    if any(case.fault in fault for fault in faults):
        return None
    return f"no fault with {case.fault!r} in {faults}"


def self_test(find_faults, cases):
    wrong = [(case.name, case_goes_wrong(find_faults, case)) for case in cases]
    wrong = [f"{name}: {what}" for name, what in wrong if what]
    print("\n".join(wrong) if wrong else f"{len(cases)} cases answered as they must be")
    return 1 if wrong else 0


def report(faults, examined):
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults in {examined} files")
    return 1 if faults else 0


def main(find_faults, cases, examined=cpp_files):
    """The whole of a check's command line: no argument, or --self-test."""
    if sys.argv[1:] == ["--self-test"]:
        sys.exit(self_test(find_faults, cases))
    if sys.argv[1:]:
        sys.exit(f"usage: {sys.argv[0]} [--self-test]")
    sys.exit(report(find_faults(ROOT), len(examined(ROOT))))
