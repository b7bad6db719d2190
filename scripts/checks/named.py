#!/usr/bin/env python3
"""The pages for engineers name only what is there: files, folders, classes and functions.

Such names stand between backticks and in the blocks that show how a request goes through the
folders. A path may leave out its beginning and its suffix. Names of classes and functions are known
by a capital letter within them; they must be words of the sources.
"""

import re

import checking

PAGES = ("docs/design.md", "docs/maintaining.md", "CONTRIBUTING.md")
CODE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)#:\s]+)(?:#[^)]*)?\)")
SUFFIXES = (".h", ".cpp", ".py", ".md", ".txt", ".dict")
NAME = re.compile(r"[A-Za-z_]\w*(?:::~?\w+)*")
MIXED = re.compile(r"\w*[a-z]\w*[A-Z]\w*|[A-Z]\w*[a-z]\w*")
PATH = re.compile(r"[\w.-]+(?:/[\w.-]+)*/?")
OUTPUT = {"build"}


def known_paths(root):
    """Every end of every path, with and without the file's suffix."""
    known = set()
    for path in checking.files_under(root):
        parts = path.relative_to(root).parts
        for end in range(1, len(parts) + 1):
            for start in range(end):
                known.add("/".join(parts[start:end]))
        for start in range(len(parts)):
            known.add("/".join((*parts[start:-1], path.stem)))
    return known


def known_words(root):
    words = set()
    for path in [*checking.cpp_files(root), *checking.files_under(root, {".txt", ".cmake"})]:
        words.update(re.findall(r"\w+", path.read_text(encoding="utf-8", errors="replace")))
    return words


def pieces(lines):
    """What names something: (line, text, whether it is one name or path)."""
    in_block, is_walk = False, False
    for number, line in enumerate(lines, 1):
        if line.startswith("```"):
            in_block, is_walk = not in_block, line == "```"
        elif in_block and is_walk:
            yield from ((number, word) for word in re.findall(r"[\w:/.]+", line))
        elif not in_block:
            yield from ((number, text) for text in CODE.findall(line))


def is_path(text):
    return PATH.fullmatch(text) and ("/" in text.rstrip("/") or text.endswith(SUFFIXES))


def missing(text, paths, words):
    """What a piece names that is not there, or None."""
    text = text.removesuffix("()")
    if is_path(text):
        first = text.split("/")[0]
        return None if text.rstrip("/") in paths or first in OUTPUT else text
    if not NAME.fullmatch(text):
        return None
    return next((word for word in text.split("::") if MIXED.fullmatch(word) and word not in words), None)


def broken_links(page, lines):
    for number, line in enumerate(lines, 1):
        for target in LINK.findall(CODE.sub("", line)):
            if not (page.parent / target).exists():
                yield number, target


def find_faults(root):
    paths, words = known_paths(root), known_words(root)
    faults = []
    for name in PAGES:
        page = root / name
        if not page.is_file():
            continue
        lines = checking.lines_of(page)
        found = [(number, missing(text, paths, words)) for number, text in pieces(lines)]
        faults += [f"{name}:{number}: there is no {what}"
                   for number, what in [*found, *broken_links(page, lines)] if what]
    return faults


def tree(page):
    return {"engine/tree/include/tree/Node.h": "struct Node { int firstChild; };\n",
            "engine/tree/Editing.cpp": "void insertBefore();\n", "docs/guide/paths.md": "",
            "docs/design.md": page}


WALK = "```\ninsertBefore(node)   engine/tree/   Editing: puts nodes\n```\n"

CASES = [
    checking.Case("all there", tree(WALK + "`tree/Node.h`, `Editing.cpp`, `engine/tree`, "
                                    "`Node::firstChild`, `insertBefore()`, `item[@id='7']`, `a/b[2]`\n"
                                    "`build/dev`, [paths](guide/paths.md#x), <http://a.b/c>\n")),
    checking.Case("no such file", tree("See `tree/Nodes.h`.\n"), "docs/design.md:1: there is no tree/Nodes.h"),
    checking.Case("no such folder", tree("\n`engine/trees`\n"), "docs/design.md:2: there is no engine/trees"),
    checking.Case("no such class", tree("`NodeTree` does\n"), "no NodeTree"),
    checking.Case("no such member", tree("`Node::lastChild`\n"), "no lastChild"),
    checking.Case("no such function", tree("`insertAfter()`\n"), "no insertAfter"),
    checking.Case("in a block", tree(WALK.replace("insertBefore", "insertAfter")), ":2: there is no insertAfter"),
    checking.Case("a folder in a block", tree(WALK.replace("engine/tree/", "engine/trie/")), "engine/trie"),
    checking.Case("a broken link", tree("[x](guide/nodes.md)\n"), "no guide/nodes.md"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES, lambda root: [root / page for page in PAGES])
