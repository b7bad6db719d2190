#!/usr/bin/env python3
"""Runs clang-tidy over every C++ source of ours that a build directory compiles.

    tidy.py BUILD_DIRECTORY [--jobs N]
    tidy.py --self-test

clang-tidy takes seconds per file, so a file that passed is not looked at again until something that
it can see changes: its own text, a header of ours that it reaches, its compile command, the checks
or clang-tidy itself. What passed is remembered in BUILD_DIRECTORY/tidy-passed.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import checking
import includes

CONFIGURATION = ".clang-tidy"


def configurations(root):
    """The text of every settings file: a folder may have its own beside the project's."""
    paths = [path for path in checking.files_under(root) if path.name == CONFIGURATION]
    return "\n".join(path.read_text(encoding="utf-8") for path in paths)


def reachable(root, path, seen):
    """Adds the file and every file of ours that it includes, however indirectly."""
    if path in seen:
        return
    seen.add(path)
    for _, spelling, quoted in includes.of_file(path):
        if spelling is None:
            continue
        angle = includes.angle_target(root, spelling)
        target = includes.quoted_target(root, path, spelling) if quoted else angle and angle[1]
        if target:
            reachable(root, target, seen)


def fingerprint(root, path, *settings):
    """Changes when the file, what it reaches or one of the settings changes."""
    seen = set()
    reachable(root, path, seen)
    digest = hashlib.sha256("\n".join(settings).encode())
    for file in sorted(seen):
        digest.update(f"{file}\n".encode() + file.read_bytes())
    return digest.hexdigest()


def sources(root, build):
    """(path, compile command) of the sources that are ours; not what the build generated."""
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    ours = set(checking.cpp_files(root))
    found = {pathlib.Path(entry["file"]): entry["command"] for entry in entries}
    return sorted((path, command) for path, command in found.items() if path in ours)


def tidy(build, path):
    """What clang-tidy says about a file; empty when it passes."""
    command = ["clang-tidy", "--quiet", "-p", str(build), str(path)]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    return "" if done.returncode == 0 else done.stdout + done.stderr


def check(root, build, jobs):
    passed = build / "tidy-passed"
    passed.mkdir(exist_ok=True)
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, text=True,
                             check=True).stdout
    settings = configurations(root)
    prints = {path: fingerprint(root, path, command, version, settings)
              for path, command in sources(root, build)}
    waiting = [path for path, mark in prints.items() if not (passed / mark).exists()]
    print(f"clang-tidy: {len(prints)} files, {len(waiting)} of them new or changed", flush=True)

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for path, said in zip(waiting, pool.map(lambda path: tidy(build, path), waiting)):
            if said:
                failed += 1
                print(said, flush=True)
            else:
                (passed / prints[path]).touch()
    print(f"clang-tidy: {failed} files with faults")
    return 1 if failed or not prints else 0


def run_on(files, jobs=1):
    """The exit status over a made-up tree, twice: the second run comes from what was remembered."""
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory).resolve()
        settings = (checking.ROOT / CONFIGURATION).read_text(encoding="utf-8")
        checking.write_tree(root, files | {CONFIGURATION: settings})
        build = root / "build"
        build.mkdir()
        entries = [{"directory": str(root), "file": str(path), "command": f"clang++ -std=c++20 -c {path}"}
                   for path in checking.cpp_files(root) if path.suffix == ".cpp"]
        (build / "compile_commands.json").write_text(json.dumps(entries), encoding="utf-8")
        return [check(root, build, jobs), check(root, build, jobs)]


def self_test():
    good = {"dom/A.cpp": "int const* nothing() { return nullptr; }\n"}
    bad = good | {"dom/B.cpp": "int const* none() { return 0; }\n"}
    answers = [run_on(good), run_on(bad), run_on({})]
    right = answers == [[0, 0], [1, 1], [1, 1]]
    print("the check can fail and can pass" if right else f"wrong answers: {answers}")
    return 0 if right else 1


def main():
    parser = argparse.ArgumentParser(description="clang-tidy over our sources")
    parser.add_argument("build", nargs="?", type=pathlib.Path, help="directory with compile_commands.json")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--self-test", action="store_true")
    arguments = parser.parse_args()
    if arguments.self_test:
        sys.exit(self_test())
    if arguments.build is None:
        parser.error("a build directory is needed")
    sys.exit(check(checking.ROOT, arguments.build.resolve(), arguments.jobs))


if __name__ == "__main__":
    main()
