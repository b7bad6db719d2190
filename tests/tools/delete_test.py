#!/usr/bin/env python3
"""tibxml delete: all that a path selects, elements, attributes and whatever else there is."""

import os

import program

DOCUMENT = """<?xml version="1.0"?>
<!--c-->
<r version="3">
\t<a id="1" x="y">one</a>
\t<a id="2">two<a id="3"/></a>
\t<b xml:lang="de"/>
</r>
"""

# Path, and what takes the place of what.
DELETED = [
    ("b", [('\t<b xml:lang="de"/>\n', "")]),
    ("a[1]", [('\t<a id="1" x="y">one</a>\n', "")]),
    ("a[@id='2']", [('\t<a id="2">two<a id="3"/></a>\n', "")]),
    ("//a", [('\t<a id="1" x="y">one</a>\n\t<a id="2">two<a id="3"/></a>\n', "")]),
    ("a/text()", [("one</a>", "</a>"), ("two", ""), ('"y"></a>', '"y"/>')]),
    ("a/@x", [(' x="y"', "")]),
    ("a@x", [(' x="y"', "")]),
    ("a/@id", [(' id="1"', ""), (' id="2"', "")]),
    ("//@id", [(' id="1"', ""), (' id="2"', ""), (' id="3"', "")]),
    ("a/@*", [(' id="1" x="y"', ""), (' id="2"', "")]),
    ("@version", [(' version="3"', "")]),
    ("b/@xml:lang", [(' xml:lang="de"', "")]),
    ("/comment()", [("<!--c-->\n", "")]),
    ("b | a/@x", [('\t<b xml:lang="de"/>\n', ""), (' x="y"', "")]),
]

BAD = [
    (["a.xml", "gone"], 1, "tibxml: a.xml: nothing at gone"),
    (["a.xml", "@gone"], 1, "tibxml: a.xml: nothing at @gone"),
    (["a.xml", "b/@gone"], 1, "tibxml: a.xml: nothing at b/@gone"),
    (["a.xml", "gone/@id"], 1, "tibxml: a.xml: nothing at gone/@id"),
    (["bad.xml", "b"], 1, r"bad.xml:1:\d+: .+"),
    (["a.xml", "/"], 2, "tibxml: a.xml: the document cannot be deleted"),
    (["a.xml", "."], 2, "tibxml: a.xml: the root element cannot be deleted"),
    (["a.xml", "//*"], 2, "tibxml: a.xml: the root element cannot be deleted"),
    (["a.xml", "a["], 2, r"tibxml: bad path 'a\[': .+"),
    (["a.xml", "p:a"], 2, "tibxml: bad path 'p:a': .+"),
    (["a.xml"], 2, r"tibxml: PATH is required \(see tibxml delete --help\)"),
    (["a.xml", "b", "c"], 2, r"tibxml: .*c.* \(see tibxml delete --help\)"),
    (["gone.xml", "b"], 2, "tibxml: gone.xml: cannot be read: No such file or directory"),
    (["a.xml", "b", "-o", "/proc/b.xml"], 2, "tibxml: /proc/b.xml: cannot make a file there: .+"),
]


class Delete(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", DOCUMENT)

    def content(self, name):
        return (self.directory / name).read_text(encoding="utf-8")

    def test_deletes_what_the_path_selects_and_nothing_else(self):
        for path, changes in DELETED:
            self.write("a.xml", DOCUMENT)
            self.expect(["delete", "a.xml", path], 0)
            expected = DOCUMENT
            for old, new in changes:
                expected = expected.replace(old, new, 1)
            self.assertEqual(expected, self.content("a.xml"), path)

    def test_bad_calls_leave_the_file_alone(self):
        self.write("bad.xml", "<a>")
        for arguments, status, complaint in BAD:
            self.expect(["delete", *arguments], status, complaint=complaint)
            self.assertEqual(DOCUMENT, self.content("a.xml"), arguments)
        self.assertEqual(["a.xml", "bad.xml"], sorted(os.listdir(self.directory)))

    def test_output(self):
        self.expect(["delete", "a.xml", "//a", "-o", "b.xml"], 0)
        self.assertEqual(DOCUMENT, self.content("a.xml"))
        self.expect(["query", "b.xml", "*", "--count"], 0, "1\n")
        self.expect(["delete", "-", "b"], 0, "<a/>\n", stdin=b"<a><b/></a>")

    def test_namespaces(self):
        self.write("b.xml", '<a xmlns:p="urn:p"><p:b/></a>')
        self.expect(["delete", "b.xml", "q:b", "--ns", "xmlns:q='urn:p'"], 0)
        self.assertEqual('<a xmlns:p="urn:p"/>\n', self.content("b.xml"))


if __name__ == "__main__":
    program.main()
