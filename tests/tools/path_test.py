#!/usr/bin/env python3
"""tibxml path: a path taken apart."""

import program

# A path and all that is printed about it.
PATHS = [
    ("/settings/window[@id='main'][1]/title", """\
prefix  /
step    settings
step    window
clause  @id='main'
clause  1
step    title
string  /settings/window[@id='main'][1]/title
root    /settings
leaf    title
parent  /settings/window[@id='main'][1]
child   window[@id='main'][1]/title
"""),
    ("", "prefix\nstring\nroot\nleaf\nparent\nchild\n"),
    ("/", "prefix  /\nstring  /\nroot\nleaf\nparent\nchild\n"),
    ("..", "prefix  ..\nstring  ..\nroot\nleaf\nparent\nchild\n"),
    ("a", "prefix\nstep    a\nstring  a\nroot    a\nleaf    a\nparent\nchild\n"),
    ("//item", """\
prefix  //
step    item
string  //item
root    //item
leaf    item
parent  //
child
"""),
    ("../a[x=\"1\"]//@b", """\
prefix  ../
step    a
clause  x='1'
step
step    @b
string  ../a[x='1']//@b
root    ../a[x='1']
leaf    @b
parent  ../a[x='1']
child   /@b
"""),
    ("a/b[../@x='1']/c/", """\
prefix
step    a
step    b
clause  ../@x='1'
step    c
step
string  a/b[../@x='1']/c
root    a
leaf
parent  a/b[../@x='1']/c
child   b[../@x='1']/c
"""),
    ("[1]", "prefix\nstep\nclause  1\nstring  [1]\nroot    [1]\nleaf    [1]\nparent\nchild\n"),
    ("a[b[1]]", """\
prefix
step    a]
clause  b[1
string  a][b[1]
root    a][b[1]
leaf    a][b[1]
parent
child
"""),
    ("a[x][X]['c']", """\
prefix
step    a
clause  x
clause  X
clause  'c'
string  a[x][X]['c']
root    a[x][X]['c']
leaf    a[x][X]['c']
parent
child
"""),
    ("gr\u00f6\u00dfe", """\
prefix
step    gr\u00f6\u00dfe
string  gr\u00f6\u00dfe
root    gr\u00f6\u00dfe
leaf    gr\u00f6\u00dfe
parent
child
"""),
]


class Path(program.ProgramTest):
    def test_paths(self):
        for path, printed in PATHS:
            self.expect(["path", path], 0, printed)

    def test_path_that_begins_with_a_dash(self):
        self.expect(["path", "--", "-a"], 0,
                    "prefix\nstep    -a\nstring  -a\nroot    -a\nleaf    -a\nparent\nchild\n")

    def test_usage(self):
        self.expect(["path"], 2, complaint=r"tibxml: PATH is required \(see tibxml path --help\)")
        self.expect(["path", "a", "b"], 2, complaint=r"tibxml: .*b.* \(see tibxml path --help\)")

    def test_long_path(self):
        path = "/".join(["a"] * 2000)
        status, printed, _ = self.start(["path", path])
        self.assertEqual((0, 2000), (status, printed.count(b"\nstep    a")))


if __name__ == "__main__":
    program.main()
