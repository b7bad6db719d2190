#!/usr/bin/env python3
"""Turns the C++ examples of one page of documentation into a GoogleTest source.

    page_to_test.py PAGE.md OUTPUT.cpp

Every ```cpp block becomes the body of a test of its own, in the page's order, so an example cannot
lean on one above it by accident. `#include` lines go to the top of the source. An HTML comment on
the line before a block changes what becomes of it:

    <!-- setup -->         its text is put before the text of every later block of the page
    <!-- declarations -->  it stands at namespace scope instead of in a function

CHECK(expression) asserts. Compiler errors and failures name the line of the page.
"""

import dataclasses
import pathlib
import re
import sys

MARKS = {"<!-- setup -->": "setup", "<!-- declarations -->": "declarations"}

HEAD = """// Made from {page}: change the page, not this file.
#include <gtest/gtest.h>
#define CHECK(...) EXPECT_TRUE(static_cast<bool>(__VA_ARGS__))
"""


@dataclasses.dataclass
class Block:
    kind: str
    line: int
    text: list


def blocks_of(lines, language):
    """The fenced blocks of one language, each with the number of its first line and its mark."""
    blocks, current, mark = [], None, "test"
    for number, line in enumerate(lines, 1):
        if current is None:
            if line.strip() == f"```{language}":
                current = Block(mark, number + 1, [])
            if line.strip():
                mark = MARKS.get(line.strip(), "test")
        elif line.strip() == "```":
            blocks.append(current)
            current = None
        else:
            current.text.append(line)
    if current is not None:
        raise ValueError(f"the block at line {current.line} does not end")
    return blocks


def is_include(line):
    return re.match(r"\s*#\s*include\b", line) is not None


def at_line(page, line, text):
    return [f'#line {line} "{page}"', *text]


def includes_of(page, blocks):
    source = []
    for block in blocks:
        for offset, line in enumerate(block.text):
            if is_include(line):
                source += at_line(page, block.line + offset, [line])
    return source


def body_of(page, block):
    """The block's text with its includes blanked, so that the lines keep their numbers."""
    return at_line(page, block.line, ["" if is_include(line) else line for line in block.text])


def test_source(page, lines):
    blocks = blocks_of(lines, "cpp")
    if not blocks:
        raise ValueError("no C++ example on this page")
    source = [HEAD.format(page=page), *includes_of(page, blocks)]
    suite = re.sub(r"\W", "_", pathlib.Path(page).stem)
    setup = []
    for block in blocks:
        body = body_of(page, block)
        if block.kind == "declarations":
            source += body
            continue
        source += [f"TEST({suite}, Line{block.line}) {{", *setup, *body, "}"]
        if block.kind == "setup":
            setup += body
    return "\n".join(source) + "\n"


def main():
    if len(sys.argv) != 3:
        sys.exit(f"usage: {sys.argv[0]} PAGE.md OUTPUT.cpp")
    page, output = sys.argv[1:]
    try:
        text = test_source(page, pathlib.Path(page).read_text(encoding="utf-8").splitlines())
    except ValueError as error:
        sys.exit(f"{page}: {error}")
    pathlib.Path(output).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
