#!/usr/bin/env python3
"""Words that must not get into the repository: places and papers that a reader does not have, and
turns of phrase that have to be read twice.

Paths of one machine make a file useless elsewhere; a note to do something later, or a reference to
a numbered section of a paper that does not lie here, says nothing to its reader.

Prose is short, active, and in the field's words; PLAIN lists what it does not say, and what to say
instead. Prose is the pages, the comments of C++, and the texts of the product's C++: its messages.
Lines that follow each other are read as one, so a phrase is found over the end of a line.
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


# What prose does not say, and what it says instead.
PLAIN = [(re.compile(pattern, re.IGNORECASE), instead) for pattern, instead in [
    (r"\b(?:is|are|was|were|be|been|being|gets?) told\b", "gets, is called with, is reported"),
    (r"\btells\b", "says, shows, returns, reports"),
    (r"\b(?:no|some|any|every)body\b|\bwho(?:so)?ever\b", "nothing, the caller, the owner"),
    (r"\bwant of\b", "if out of memory, without"),
    (r"\bto be had\b", "there is, available"),
    (r"\bbehind\b", "after, under, of"),
    (r"(?<!\bthere )\b(?:is|are|was|were) no\b(?! (?:more|less|better|worse|longer|\w+er)\b)", "is not a"),
    (r"\b(?:takes?|took) over what\b", "takes, owns"),
]]

# Their prose is still to be gone through.
NOT_YET_PLAIN = ()

COMMENT = re.compile(r"//+<?\s?(.*)")
LITERAL = re.compile(r'L?"((?:[^"\\\n]|\\.)*)"')
CODE_BLOCK = re.compile(r"^\s*```")


def comment_of(line):
    """The comment of a line of C++; no // within a literal begins one."""
    blanked = LITERAL.sub(lambda match: "_" * len(match[0]), line)
    match = COMMENT.search(blanked)
    return line[match.start(1):] if match else ""


def prose_of(name, lines):
    """The prose of a file: (number of the line, text)."""
    if name.endswith(".md"):
        in_block = False
        for number, line in enumerate(lines, 1):
            in_block ^= bool(CODE_BLOCK.match(line))
            yield number, "" if in_block else re.sub(r"`[^`]*`", "_", line)
    elif name.endswith(checking.CPP_SUFFIXES):
        for number, line in enumerate(lines, 1):
            comment = comment_of(line)
            texts = LITERAL.findall(line.removesuffix(comment)) if code_only(name) else []
            yield number, " ".join([*texts, comment])


def plain_faults_of(name, lines):
    starts, joined = [], ""
    for number, text in prose_of(name, lines):
        starts.append((len(joined), number))
        joined += text.strip() + " "
    for pattern, instead in PLAIN:
        for match in pattern.finditer(joined):
            number = max(number for start, number in starts if start <= match.start())
            yield f"{name}:{number}: {match.group()!r}; say: {instead}"


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
    if not name.startswith(NOT_YET_PLAIN):
        yield from plain_faults_of(name, lines)


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
    checking.Case("plain prose", {"dom/A.cpp": "// There is no child; it is no longer there, and no\n// body.\n"
                                               "Node* behind = nobody(); // a url: file://x\n",
                                  "README.md": "`nobody` is a user.\n```\nnobody\n```\n"}),
    checking.Case("told", {"dom/A.h": "/// The caller is told so.\n"}, "dom/A.h:1: 'is told'"),
    checking.Case("tells", {"docs/a.md": "\nIt tells why.\n"}, "docs/a.md:2: 'tells'"),
    checking.Case("nobody", {"tests/ATest.cpp": "int a; // Nobody asks.\n"}, "ATest.cpp:1: 'Nobody'"),
    checking.Case("over two lines", {"dom/A.h": "// raised for want\n// of memory\n"}, "dom/A.h:1: 'want of'"),
    checking.Case("behind", {"dom/A.h": "// one behind the last\n"}, "'behind'"),
    checking.Case("is no", {"engine/com/A.cpp": 'throw Failure{"that is no name"};\n'}, "A.cpp:1: 'is no'"),
    checking.Case("to be had", {"dom/A.h": "// if memory is to be had\n"}, "'to be had'"),
    checking.Case("takes over", {"dom/A.h": "// takes over what it opens\n"}, "'takes over what'"),
    checking.Case("a merge left over", {"CMakeLists.txt": "<<<<<<< HEAD\n"}, "a conflict marker"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES, text_files)
