#!/usr/bin/env python3
"""The library's sources stay in pieces that read well: few files of some size, short functions.

Prints the figures and compares them with the limits below. Fifty files of 20 lines cost a reader
as much as one of 1,000, so the number of files and their median count as well as the longest.
MOST_FILES follows the sources down and is never raised without a reason in the commit.

Functions are found by braces and layout (checks.format keeps that): at namespace and class scope a
brace after a blank opens a scope or a body, any other one an initialiser. Inside of a body nothing
is counted by itself, lambdas included. A function's lines are those from its name to its last brace.
"""

import dataclasses
import re
import statistics

import checking

NOT_LIBRARY = {"tests", "bench", "tools", "examples", "fuzz"}

MOST_FILES = 268  # the aim was 280
LEAST_MEDIAN = 85
LONGEST_FILE = 350
LONGEST_FUNCTION = 40
SHORT_FUNCTION = 12
LEAST_SHORT = 0.9

# Comments, raw strings, strings and characters (but not the ' within numbers), directives.
OPAQUE = re.compile(r"""//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|"""
                    r"""(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])*'|^[ \t]*\#(?:\\\n|[^\n])*""",
                    re.DOTALL | re.MULTILINE)
LABELS = re.compile(r"(\s*(public|protected|private)\s*:(?!:))*\s*")
SCOPE = re.compile(r"^(template\b.*>\s*)?(inline\s+)?(namespace|class|struct|union|enum|extern)\b",
                   re.DOTALL)


@dataclasses.dataclass(frozen=True)
class Function:
    place: str
    lines: int


def code_of(text):
    """The text with all but the code blanked out, line by line."""
    return OPAQUE.sub(lambda match: re.sub(r"[^\n]", "_" if match[0][0] in "'\"R" else " ", match[0]),
                      text)


def without_brackets(head):
    while (shorter := re.sub(r"\([^()]*\)|\{[^{}]*\}|<[^<>]*>|\[[^\[\]]*\]", "", head)) != head:
        head = shorter
    return head


def is_body(head):
    """Does a brace after this open the body of a function?"""
    head = head.strip()
    if "(" not in head or SCOPE.match(head):
        return False
    return "=" not in without_brackets(re.sub(r"operator\s*[^\w\s(]+", "operator", head))


def closing_brace(code, start):
    depth = 0
    for match in re.finditer(r"[{}]", code[start:]):
        depth += 1 if match[0] == "{" else -1
        if depth == 0:
            return start + match.start()
    return len(code) - 1


def functions_of(name, text):
    code = code_of(text)
    head, at = 0, 0
    while match := re.compile(r"[;{}]").search(code, at):
        at = match.end()
        if match[0] == "{":
            begin = LABELS.match(code, head).end()
            opened = code[begin:match.start()]
            in_brackets = opened.count("(") > opened.count(")")
            if in_brackets or not opened[-1:].isspace():  # an initialiser: the head goes on
                at = closing_brace(code, match.start()) + 1
                continue
            if is_body(opened):
                at = closing_brace(code, match.start()) + 1
                line = code.count("\n", 0, begin) + 1
                yield Function(f"{name}:{line}", code.count("\n", begin, at) + 1)
            elif not SCOPE.match(opened.strip()):
                at = closing_brace(code, match.start()) + 1
        head = at


def library_files(root):
    return [path for path in checking.cpp_files(root)
            if path.relative_to(root).parts[0] not in NOT_LIBRARY]


@dataclasses.dataclass(frozen=True)
class Figures:
    lengths: dict
    functions: list

    @property
    def median(self):
        return statistics.median(self.lengths.values())

    @property
    def short(self):
        return sum(f.lines < SHORT_FUNCTION for f in self.functions) / len(self.functions)


def figures_of(root):
    texts = {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8")
             for path in library_files(root)}
    return Figures({name: len(text.splitlines()) for name, text in texts.items()},
                   [found for name, text in texts.items() for found in functions_of(name, text)])


def show(figures):
    longest_file = max(figures.lengths, key=figures.lengths.get)
    longest = max(figures.functions, key=lambda function: function.lines)
    print(f"library sources:    {len(figures.lengths)} files, {sum(figures.lengths.values())} lines\n"
          f"lines of a file:    median {figures.median:g}, most {figures.lengths[longest_file]}"
          f" ({longest_file})\n"
          f"functions:          {len(figures.functions)}, {100 * figures.short:.1f} % under"
          f" {SHORT_FUNCTION} lines\n"
          f"longest function:   {longest.lines} lines ({longest.place})")


def faults_of(figures):
    if len(figures.lengths) > MOST_FILES:
        yield f"{len(figures.lengths)} files, more than {MOST_FILES}"
    if figures.median < LEAST_MEDIAN:
        yield f"the median file has {figures.median:g} lines, under {LEAST_MEDIAN}"
    for name, lines in figures.lengths.items():
        if lines > LONGEST_FILE:
            yield f"{name}: {lines} lines, over {LONGEST_FILE}"
    for function in figures.functions:
        if function.lines > LONGEST_FUNCTION:
            yield f"{function.place}: a function of {function.lines} lines, over {LONGEST_FUNCTION}"
    if figures.short < LEAST_SHORT:
        yield f"{100 * figures.short:.1f} % of the functions are under {SHORT_FUNCTION} lines"


def find_faults(root):
    figures = figures_of(root)
    if not figures.functions:
        return ["no functions found"]
    if root == checking.ROOT:
        show(figures)
    return list(faults_of(figures))


def function(lines, head="void f(int x = 1) {"):
    return head + "\n" + "    x;\n" * (lines - 2) + "}\n"


def of(lines, text=None):
    """A file of this many lines, which begins with a short function or with the text."""
    text = function(3) if text is None else text
    return text + "int x;\n" * (lines - text.count("\n"))


LONG_ONES = {
    "a long function": function(41),
    "a long member": "class A : public B {\n" + function(41, "    int get() const noexcept {") + "};\n",
    "a long private one": "class A {\nprivate:\n    struct B {\n" + function(41) + "};\n};\n",
    "a long constructor": function(41, "A::A(int b) : b_{b}, c_(b, {1, 2}) {"),
    "a long operator": function(41, "bool operator==(A a, A b) {"),
    "a long template": function(41, "template <class T>\nstd::enable_if_t<(x<T> > 1), T> f() {")[:-1],
    "a long function after strings": 'char const* a = "}{"; char b = \'{\'; // }\n' + function(41),
    "a long function after a list": "int const all[] = {1, 2};\nA const a{[] { return 1; }};\n"
                                    + function(41),
    "a long function in a namespace": "namespace a {\nnamespace {\n" + function(41) + "}\n}\n",
}

CASES = [
    checking.Case("within the limits", {"dom/A.cpp": of(350, function(40)),
                                        "dom/B.cpp": of(100, function(5) * 9)}),
    checking.Case("tests are not counted",
                  {"dom/A.cpp": of(90), "tests/dom/ATest.cpp": of(400, function(50))}),
    checking.Case("a table is not a function",
                  {"dom/A.cpp": of(90, function(3) + "int all[] = {\n" + "1,\n" * 50 + "};\n")}),
    checking.Case("too many files", {f"dom/A{i}.cpp": of(90) for i in range(MOST_FILES + 1)},
                  f"{MOST_FILES + 1} files"),
    checking.Case("small files", {"dom/A.cpp": of(90), "dom/A.h": of(20), "dom/B.h": of(84)},
                  "the median file has 84 lines"),
    checking.Case("a long file", {"dom/A.cpp": of(351)}, "dom/A.cpp: 351 lines"),
    *(checking.Case(name, {"dom/A.cpp": of(200, text + function(3) * 9)}, "a function of 4")
      for name, text in LONG_ONES.items()),
    checking.Case("too few short ones", {"dom/A.cpp": of(200, function(12) + function(11) * 8)},
                  "88.9 % of the functions"),
    checking.Case("nothing found", {"dom/A.cpp": of(90, "")}, "no functions found"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES, library_files)
