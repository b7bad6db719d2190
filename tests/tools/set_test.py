#!/usr/bin/env python3
"""tibxml set: one value of every type, in a text or an attribute, with all that is missing made."""

import os

import program

DOCUMENT = """<?xml version="1.0" encoding="UTF-8"?>
<!-- kept -->
<settings version="3">
\t<window id="main" visible="true">
\t\t<title>Br\u00fccke</title>
\t</window>
\t<empty/>
</settings>
"""

# Path, value, and what takes the place of what in the document.
EDITS = [
    ("window/title", "a < b & c", "Br\u00fccke", "a &lt; b &amp; c"),
    ("window[@id='main']/@visible", "no", 'visible="true"', 'visible="no"'),
    ("window@visible", "no", 'visible="true"', 'visible="no"'),
    ("/settings/window/title", "x", "Br\u00fccke", "x"),
    ("//title/text()", "x", "Br\u00fccke", "x"),
    ("/comment()", "x", " kept ", "x"),
    ("@version", "\u4e2d", '"3"', '"\u4e2d"'),
    ("/settings/@version", "", '"3"', '""'),
    ("@new", "1", '"3"', '"3" new="1"'),
    ("window/@new", "1", 'visible="true"', 'visible="true" new="1"'),
    ("window", "", "\n\t\t<title>Br\u00fccke</title>\n\t", ""),
]

# Path and what is made for it in an empty root element; the value is v.
MADE = [
    ("a", "<a>v</a>"),
    ("a/b/c", "<a><b><c>v</c></b></a>"),
    ("/r/a/b", "<a><b>v</b></a>"),
    ("a/@b", '<a b="v"/>'),
    ("/r/a@b", '<a b="v"/>'),
    ("a[@id='1']/b", '<a id="1"><b>v</b></a>'),
    ('a[@id="1"]/b', '<a id="1"><b>v</b></a>'),
    ('/r/a[@id="1"][@x=\'2\']', '<a id="1" x="2">v</a>'),
    ("a[3]", "<a/><a/><a>v</a>"),
]

# What the library makes is not there, or not what the path selects.
NOT_MADE = ["/x", "/x/y", "a[@name='a b']/c", "a[b='1']", "a[last()-1]", "a/text()", "a[.='x']", "a[@id='1']/b[.='x']",
            "r | s", "..", "a/b()"]

# Type, value, text in the document; None when it is not of the type.
VALUES = [
    ("string", " a  b ", " a  b "), ("string", "", ""),
    ("bool", "true", "true"), ("bool", "false", "false"), ("bool", "1", None), ("bool", "", None),
    ("bool", "True", None),
    ("int", "42", "42"), ("int", "2147483647", "2147483647"), ("int", "2147483648", None),
    ("int", "-2147483648", "-2147483648"), ("int", "007", "7"), ("int", "1x", None),
    ("int", "", None), ("int", " 1", None), ("int", "1.5", None),
    ("int64", "10737418240", "10737418240"), ("int64", "9223372036854775808", None),
    ("double", "1.25", "1.250000"), ("double", "1e3", "1000.000000"), ("double", "1,5", None),
    ("double", "1.5x", None), ("double", "inf", None), ("double", "nan", None), ("double", "", None),
    ("point", "1,-2", "(1,-2)"), ("point", "(1,-2)", "(1,-2)"), ("point", "1", None),
    ("point", "1,2,3", None), ("point", "1, 2", None), ("point", "(1,2", None),
    ("point", "1,2147483648", None),
    ("size", "3,4", "(3,4)"), ("size", "(3,4)", "(3,4)"), ("size", "7", "(7,7)"), ("size", "x", None),
    ("rect", "1,2,3,4", "1,2,3,4"), ("rect", "(1,2,3,4)", None), ("rect", "1,2,3", None),
    ("rect", "1,2,3,", None),
]

BAD = [
    (["a.xml", "a["  , "1"], r"tibxml: bad path 'a\[': .+"),
    (["a.xml", "", "1"], "tibxml: bad path '': .+"),
    (["a.xml", "p:a", "1"], "tibxml: bad path 'p:a': .+"),
    (["a.xml", "/", "1"], "tibxml: this node has no text of its own to set"),
    (["a.xml", "empty/@p:a", "1"], "tibxml: there can be no value at empty/@p:a"),
    (["a.xml", "empty", "\x01"], "tibxml: the text holds a character that XML cannot hold"),
    (["a.xml", "empty", "1", "--type", "float"], r"tibxml: .*float.* \(see tibxml set --help\)"),
    (["a.xml", "empty", "1", "--ns", "x"], "tibxml: bad namespaces 'x': .+"),
    (["a.xml", "empty", "1", "-o"], r"tibxml: .*-o.* \(see tibxml set --help\)"),
    (["a.xml", "empty"], r"tibxml: VALUE is required \(see tibxml set --help\)"),
    (["gone.xml", "a", "1"], "tibxml: gone.xml: cannot be read: No such file or directory"),
    (["a.xml", "empty", "1", "-o", "gone/b.xml"], "tibxml: gone/b.xml: .*No such file or directory"),
    (["a.xml", "empty", "1", "-o", "/proc/b.xml"], "tibxml: /proc/b.xml: cannot make a file there: .+"),
    (["a.xml", "empty", "1", "-o", "."], r"tibxml: \.: cannot .+: Is a directory"),
    (["a.xml", "empty", "gone", "--type", "binary"], "tibxml: gone: cannot be read: .+"),
    (["a.xml", "@b", "a.xml", "--type", "binary"], "tibxml: bytes can only be held by an element"),
]


class Set(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", DOCUMENT)

    def content(self, name):
        return (self.directory / name).read_bytes().decode("utf-8")

    def test_edits_leave_the_rest_as_it_was(self):
        for path, value, old, new in EDITS:
            self.write("a.xml", DOCUMENT)
            self.expect(["set", "a.xml", path, value], 0)
            expected = DOCUMENT.replace(old, new, 1)
            if path == "window":  # empty, it is one tag
                expected = expected.replace('"true"></window>', '"true"/>')
            self.assertEqual(expected, self.content("a.xml"), path)

    def test_makes_what_is_missing(self):
        for path, made in MADE:
            self.write("b.xml", "<r></r>")
            self.expect(["set", "b.xml", path, "v"], 0)
            printed = "".join(line.strip() for line in self.content("b.xml").splitlines())
            self.assertEqual(f"<r>{made}</r>", printed, path)
            again = self.content("b.xml")
            self.expect(["set", "b.xml", path, "v"], 0)
            self.assertEqual(again, self.content("b.xml"), path)

    def test_makes_nothing_that_the_path_would_not_find_again(self):
        for path in NOT_MADE:
            self.expect(["set", "a.xml", path, "v"], 2, complaint="tibxml: .+")
            self.assertEqual(DOCUMENT, self.content("a.xml"), path)

    def test_values_of_every_type(self):
        for kind, value, text in VALUES:
            for path in ["empty", "@new"]:
                self.write("a.xml", DOCUMENT)
                arguments = ["set", "--type", kind, "--", "a.xml", path, value]
                if text is None:
                    self.expect(arguments, 2, complaint="tibxml: '.*' is not .+")
                    self.assertEqual(DOCUMENT, self.content("a.xml"))
                else:
                    self.expect(arguments, 0)
                    self.expect(["get", "a.xml", path], 0, text + "\n")

    def test_what_get_prints_can_be_set(self):
        for kind, text in [("bool", "true"), ("int", "-7"), ("int64", "-10737418240"),
                           ("double", "-0.25"), ("point", "-1,2"), ("size", "3,4"),
                           ("rect", "1,-2,3,4"), ("string", " x ")]:
            self.expect(["set", "--type", kind, "--", "a.xml", "new", text], 0)
            self.expect(["get", "a.xml", "new", "--type", kind], 0, text + "\n")

    def test_binary(self):
        for data in [b"\x00\xff\n", bytes(range(256)) * 1000, b""]:
            self.write("bytes", data)
            self.expect(["set", "a.xml", "icon", "bytes", "--type", "binary"], 0)
            self.expect(["get", "a.xml", "icon", "--type", "binary"], 0, data)

    def test_bad_calls_leave_the_file_alone(self):
        for arguments, complaint in BAD:
            self.expect(["set", *arguments], 2, complaint=complaint)
            self.assertEqual(DOCUMENT, self.content("a.xml"), arguments)
        self.assertEqual(["a.xml"], os.listdir(self.directory))

    def test_file_that_is_not_well_formed(self):
        self.write("bad.xml", "<a>")
        self.expect(["set", "bad.xml", "b", "1"], 1, complaint=r"bad.xml:1:\d+: .+")
        self.assertEqual("<a>", self.content("bad.xml"))

    def test_read_only_directory(self):
        self.directory.chmod(0o555)
        self.addCleanup(self.directory.chmod, 0o755)
        # Nothing is read-only for the superuser.
        options = {"user": 65534} if os.geteuid() == 0 else {}
        status, printed, complaint = self.start(["set", "a.xml", "empty", "1"], **options)
        self.assertEqual(
            (2, b"", "tibxml: a.xml: cannot make a file there: Permission denied\n"),
            (status, printed, complaint))
        self.assertEqual(DOCUMENT, self.content("a.xml"))

    def test_output(self):
        self.write("in.xml", "<a/>")
        for arguments, printed in [(["in.xml", "@b", "1", "-o", "-"], '<a b="1"/>\n'),
                                   (["-", "@b", "1"], '<a b="1"/>\n')]:
            self.expect(["set", *arguments], 0, printed, stdin=b"<a/>")
        self.expect(["set", "-", "@b", "1", "--output", "\u00fc.xml"], 0, stdin=b"<a/>")
        self.assertEqual('<a b="1"/>\n', self.content("\u00fc.xml"))
        self.assertEqual("<a/>", self.content("in.xml"))

    def test_output_that_takes_no_more(self):
        status, printed = self.shell('"$tibxml" set a.xml empty 1 -o - > /dev/full')
        self.assertEqual(2, status)
        self.assertRegex(printed, r"\Atibxml: cannot write the output: .+\n\Z")

    def test_encoding_stays(self):
        self.write("b.xml", '<?xml version="1.0" encoding="ISO-8859-1"?><a>\u00e4</a>'.encode("latin-1"))
        self.expect(["set", "b.xml", "@b", "\u00fc"], 0)
        self.assertIn('<a b="\u00fc">\u00e4</a>'.encode("latin-1"), (self.directory / "b.xml").read_bytes())

    def test_namespaces(self):
        self.write("b.xml", '<p:a xmlns:p="urn:p"/>')
        self.expect(["set", "b.xml", "p:b/@p:c", "1", "--ns", "xmlns:p='urn:p'"], 0)
        self.expect(["get", "b.xml", "q:b/@p:c", "--ns", "xmlns:q='urn:p'"], 0, "1\n")


if __name__ == "__main__":
    program.main()
