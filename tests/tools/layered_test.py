#!/usr/bin/env python3
"""tibxml layered: a value of the user's over one of the defaults, in two files."""

import os

import program

DEFAULTS = """<settings version="3">
\t<window id="main" width="800" title="Draw"/>
\t<window id="login" width="300" userCustomizable="false"/>
\t<window id="odd" width="10" userCustomizable="0"/>
</settings>
"""

MAIN = "window[@id='main']"
LOGIN = "window[@id='login']"


def parts(**values):
    lines = [f"{name:<8}{value}".rstrip() for name, value in values.items()]
    return "".join(line + "\n" for line in lines)


class Layered(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("d.xml", DEFAULTS)

    def tearDown(self):
        self.assertEqual(DEFAULTS, self.content("d.xml"), "the defaults are never changed")

    def content(self, name):
        return (self.directory / name).read_text(encoding="utf-8")

    def markup(self):
        return "".join(line.strip() for line in self.content("u.xml").splitlines())

    def layered(self, action, *arguments, status=0, complaint="", **printed):
        self.expect(["layered", action, "d.xml", "u.xml", *arguments], status, parts(**printed),
                    complaint)

    def test_value_of_the_defaults_when_there_is_no_user_file(self):
        self.layered("get", MAIN, "@width", "--type", "int", value="800", layer="defaults")
        self.layered("get", MAIN, "width", value="800", layer="defaults")
        self.assertFalse((self.directory / "u.xml").exists())

    def test_set_makes_the_file_and_the_element(self):
        self.layered("set", MAIN, "width", "1024", "--type", "int", before="800", after="1024",
                     layer="user")
        self.assertEqual('<settings><window id="main" width="1024"/></settings>', self.markup())
        self.layered("get", MAIN, "width", "--type", "int", value="1024", layer="user")
        self.layered("get", MAIN, "title", value="Draw", layer="defaults")

    def test_prefixes(self):
        text = '<s xmlns="urn:s"><w id="main" width="8"/></s>'
        self.write("n.xml", text)
        self.write("v.xml", '<s xmlns="urn:s"><w id="main" width="9"/></s>')
        path = ["n.xml", "v.xml", "p:w[@id='main']", "width"]
        names = ["--ns", "xmlns:p='urn:s'"]
        self.expect(["layered", "get", *path, *names], 0, parts(value="9", layer="user"))
        self.expect(["layered", "reset", *path, *names], 0,
                    parts(before="9", after="8", layer="defaults"))
        self.expect(["layered", "get", *path], 2, complaint=r"tibxml: bad path .+")
        self.expect(["layered", "get", *path, "--ns", "p"], 2, complaint=r"tibxml: bad namespaces .+")

    def test_set_keeps_what_else_the_user_has(self):
        self.write("u.xml", '<settings>\n\t<!-- mine -->\n\t<window id="main" x="1"/>\n</settings>\n')
        self.layered("set", MAIN, "x", "2", before="1", after="2", layer="user")
        self.assertEqual('<settings>\n\t<!-- mine -->\n\t<window id="main" x="2"/>\n</settings>\n',
                         self.content("u.xml"))

    def test_reset_shows_the_default_again(self):
        self.layered("set", MAIN, "width", "1024", before="800", after="1024", layer="user")
        self.layered("reset", MAIN, "@width", before="1024", after="800", layer="defaults")
        self.assertEqual('<settings><window id="main"/></settings>', self.markup())
        self.layered("reset", MAIN, "width", status=1,
                     complaint=r"tibxml: u.xml: nothing at window\[@id='main'\]/@width")

    def test_element_that_neither_has(self):
        self.layered("get", "a/b", "c", status=1, complaint="tibxml: d.xml: nothing at a/b/@c")
        self.layered("set", "a/b", "c", "1", before="", after="1", layer="user")
        self.assertEqual('<settings><a><b c="1"/></a></settings>', self.markup())
        self.layered("reset", "a/b", "c", before="1", after="", layer="defaults")
        self.layered("get", "a/b", "c", status=1, complaint="tibxml: d.xml: nothing at a/b/@c")

    def test_element_that_forbids_changes(self):
        self.layered("set", LOGIN, "width", "1", before="300", after="300", layer="defaults",
                     note="the defaults forbid changes; none was written")
        self.assertFalse((self.directory / "u.xml").exists())
        self.write("u.xml", '<settings><window id="login" width="1"/></settings>')
        self.layered("get", LOGIN, "width", value="300", layer="defaults")
        self.layered("reset", LOGIN, "width", status=1, complaint="tibxml: u.xml: nothing at .+")
        self.assertEqual('<settings><window id="login" width="1"/></settings>', self.content("u.xml"))

    def test_only_the_exact_word_forbids(self):
        self.layered("set", "window[@id='odd']", "width", "1", before="10", after="1", layer="user")

    def test_root_of_a_new_file_has_the_name_and_namespace_of_the_defaults(self):
        self.write("n.xml", '<p:s xmlns:p="urn:p" version="3"/>')
        self.expect(["layered", "set", "n.xml", "u.xml", "a", "b", "1"], 0,
                    parts(before="", after="1", layer="user"))
        self.assertEqual('<p:s xmlns:p="urn:p"><a b="1"/></p:s>', self.markup())

    def test_types(self):
        for kind, value, other in [("bool", "true", "false"), ("int", "-1", "2"),
                                   ("double", "0.5", "2"), ("point", "1,2", "3,4"),
                                   ("size", "1,2", "3,4"), ("rect", "1,2,3,4", "5,6,7,8")]:
            self.expect(["layered", "set", "--type", kind, "--", "d.xml", "u.xml", "t", kind, value],
                        0, parts(before="", after=value, layer="user"))
            self.layered("set", "t", kind, other, "--type", kind, before=value, after=other,
                         layer="user")
            self.layered("get", "t", kind, "--type", kind, value=other, layer="user")

    def test_values_not_of_the_type(self):
        self.layered("get", MAIN, "title", "--type", "int", status=1,
                     complaint=r"tibxml: d.xml: .+/@title is not an integer: 'Draw'")
        self.layered("set", MAIN, "width", "1x", "--type", "int", status=2,
                     complaint="tibxml: '1x' is not an integer")
        self.layered("set", MAIN, "width", "d.xml", "--type", "binary", status=2,
                     complaint="tibxml: bytes can only be held by an element")
        self.assertEqual(["d.xml"], os.listdir(self.directory))

    def test_bad_calls(self):
        self.write("bad.xml", "<a>")
        for arguments, status, complaint in [
            ([], 2, r"tibxml: .+ \(see tibxml layered --help\)"),
            (["put"], 2, r"tibxml: .+ \(see tibxml layered --help\)"),
            (["get", "d.xml", "u.xml", "a"], 2, r"tibxml: NAME is required \(see .+\)"),
            (["set", "d.xml", "u.xml", "a", "b"], 2, r"tibxml: VALUE is required \(see .+\)"),
            (["get", "d.xml", "u.xml", "a["  , "b"], 2, r"tibxml: bad path 'a\[': .+"),
            (["set", "d.xml", "u.xml", "a["  , "b", "1"], 2, r"tibxml: bad path 'a\[': .+"),
            (["set", "d.xml", "u.xml", "a[.='1']", "b", "1"], 2,
             r"tibxml: u.xml: cannot make a\[.='1'\]"),
            (["set", "d.xml", "u.xml", "a", "1b", "1"], 2, "tibxml: there can be no value at a/@1b"),
            (["set", "d.xml", "-", "a", "b", "1"], 2, "tibxml: USER must be a file"),
            (["set", "d.xml", "/proc/u.xml", "a", "b", "1"], 2, "tibxml: /proc/u.xml: cannot .+"),
            (["set", "d.xml", "gone/u.xml", "a", "b", "1"], 2, "tibxml: gone/u.xml: cannot .+"),
            (["get", "gone.xml", "u.xml", "a", "b"], 2, "tibxml: gone.xml: cannot be read: .+"),
            (["get", "bad.xml", "u.xml", "a", "b"], 1, r"bad.xml:1:\d+: .+"),
            (["set", "d.xml", "bad.xml", "a", "b", "1"], 1, r"bad.xml:1:\d+: .+"),
        ]:
            self.expect(["layered", *arguments], status, complaint=complaint)
        self.assertEqual(["bad.xml", "d.xml"], sorted(os.listdir(self.directory)))
        self.assertEqual("<a>", self.content("bad.xml"))


if __name__ == "__main__":
    program.main()
