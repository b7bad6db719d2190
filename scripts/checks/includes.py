"""How an #include of ours names a file, shared by the checks that follow includes.

Angle brackets reach across folders, quotes stay within one. A folder offers to others what lies in
its `include` directory; the exported headers are a folder of their own.
"""

import re

import checking

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:<([^>]+)>|"([^"]+)"|(\S.*))')

# Longest first, so that a path finds its innermost folder.
FOLDERS = (
    "engine/api", "engine/tree", "engine/query", "engine/reader", "engine/output", "engine/libxml",
    "engine/validation", "engine/transform", "engine/com", "platform/common", "platform/linux",
    "platform/windows", "tibutils", "include", "calls", "xpath", "dom", "values", "composite", "services",
    "tools", "tests", "bench", "fuzz", "examples",
)

# The first part of an angle include that claims to be ours, whether or not the file exists.
OUR_PREFIXES = (
    "TibXml", "tree", "query", "output", "reader", "validation", "transform", "com", "calls", "xpath",
    "dom", "values", "composite", "services", "support",
)


def folder_of(root, path):
    name = path.relative_to(root).as_posix()
    return next((folder for folder in FOLDERS if name.startswith(folder + "/")), None)


def include_directories(root):
    """(folder, directory) for every folder that offers headers to others."""
    offered = [("include", root / "include")]
    offered += [(folder, root / folder / "include") for folder in FOLDERS if folder != "include"]
    return offered + [("tests", root / "tests" / "support")]


def of_file(path):
    """(line number, spelling, True for quotes); a spelling of None is an include by macro."""
    found = []
    for number, line in enumerate(checking.lines_of(path), 1):
        match = INCLUDE.match(line)
        if match:
            angle, quoted, _ = match.groups()
            found.append((number, angle or quoted, quoted is not None))
    return found


def angle_target(root, spelling):
    """(folder, path) of an angle include of ours, or None when no folder of ours offers it."""
    for folder, directory in include_directories(root):
        if (directory / spelling).is_file():
            return folder, directory / spelling
    return None


def quoted_target(root, path, spelling):
    """The file that a quoted include means: beside the file, or in the tests' support folder."""
    candidates = [path.parent / spelling, root / "tests" / "support" / spelling]
    return next((target.resolve() for target in candidates if target.is_file()), None)


def claims_to_be_ours(spelling):
    return "/" in spelling and spelling.split("/")[0] in OUR_PREFIXES
