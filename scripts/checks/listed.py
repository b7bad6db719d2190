#!/usr/bin/env python3
"""Every source file is named in a CMakeLists.txt, every folder of tests in the one above it, every
page of the guide among those whose examples are run.

Files are listed by name in this project, so a forgotten one is not compiled and its tests
drop out in silence. A project of its own (one with `project(`) needs no folder above it.
"""

import re

import checking


def build_text(directory):
    """The folder's build file without its comments, or None when it has none."""
    path = directory / "CMakeLists.txt"
    if not path.is_file():
        return None
    return "\n".join(line.split("#")[0] for line in checking.lines_of(path))


def names(text, word):
    """Is this file or folder a word of the build file?"""
    return re.search(rf"(?<![\w./-]){re.escape(word)}(?![\w./-])", text) is not None


def nearest_build_directory(root, directory):
    while build_text(directory) is None and directory != root:
        directory = directory.parent
    return directory


def unlisted_sources(root):
    for path in (path for path in checking.cpp_files(root) if path.suffix == ".cpp"):
        directory = nearest_build_directory(root, path.parent)
        word = path.relative_to(directory).as_posix()
        if not names(build_text(directory) or "", word):
            yield f"{path.relative_to(root)}: not named in {directory.name}/CMakeLists.txt"


def unlisted_folders(root):
    for path in checking.files_under(root / "tests"):
        directory = path.parent
        if path.name != "CMakeLists.txt" or directory == root / "tests":
            continue
        if "project(" in build_text(directory):
            continue
        if not names(build_text(directory.parent) or "", directory.name):
            yield f"{directory.relative_to(root)}: not added by the folder above"


def unlisted_pages(root):
    text = build_text(root / "tests" / "docs") or ""
    for page in checking.files_under(root / "docs" / "guide", {".md"}):
        name = page.relative_to(root).as_posix()
        if not names(text, name):
            yield f"{name}: its examples are not named in tests/docs/CMakeLists.txt"


def find_faults(root):
    return [*unlisted_sources(root), *unlisted_folders(root), *unlisted_pages(root)]


GOOD = {
    "tests/CMakeLists.txt": "foreach(folder tree docs)\n  add_subdirectory(${folder})\nendforeach()\n",
    "tests/docs/CMakeLists.txt": "foreach(page docs/guide/paths.md)\n",
    "docs/guide/paths.md": "",
    "tests/tree/CMakeLists.txt": "tibxml_test_program(tree_tests SOURCES NodeTest.cpp deep/ATest.cpp)\n",
    "tests/tree/NodeTest.cpp": "",
    "tests/tree/deep/ATest.cpp": "",
    "tests/install/consumer/CMakeLists.txt": "project(Consumer)\nadd_executable(consumer main.cpp)\n",
    "tests/install/consumer/main.cpp": "",
    "dom/CMakeLists.txt": "tibxml_folder(dom SOURCES WXmlDoc.cpp)\n",
    "dom/WXmlDoc.cpp": "",
}

CASES = [
    checking.Case("everything listed", GOOD),
    checking.Case("a forgotten test", GOOD | {"tests/tree/NameTest.cpp": ""}, "NameTest.cpp: not named"),
    checking.Case("a forgotten source", GOOD | {"dom/WXmlNode.cpp": ""}, "dom/WXmlNode.cpp"),
    checking.Case("part of a longer name", GOOD | {"tests/tree/Test.cpp": ""}, "tests/tree/Test.cpp"),
    checking.Case("named in a comment only",
                  GOOD | {"dom/CMakeLists.txt": "tibxml_folder(dom SOURCES X.cpp) # WXmlDoc.cpp\n"},
                  "dom/WXmlDoc.cpp"),
    checking.Case("a folder without build file", GOOD | {"tests/query/ATest.cpp": ""}, "query/ATest.cpp"),
    checking.Case("a folder that is not added",
                  GOOD | {"tests/query/CMakeLists.txt": ""}, "tests/query: not added"),
    checking.Case("a forgotten page", GOOD | {"docs/guide/nodes.md": ""}, "docs/guide/nodes.md"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES)
