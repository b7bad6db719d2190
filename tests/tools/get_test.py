#!/usr/bin/env python3
"""tibxml get: one value of every type, from a text or an attribute, or a default."""

import program

DOCUMENT = """<settings version="3" name="\u00dcber" xmlns:x="urn:x" x:flag="true" odd="no number">
	<bool>true</bool>
	<window id="main" visible="false"><title>a &lt; b</title></window>
	<window id="other"/>
	<empty/>
	<long>abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz</long>
	<x:thing size="7">text</x:thing>
	<bytes xmlns:dt="urn:schemas-microsoft-com:datatypes" dt:dt="bin.base64">AAH/Cg==</bytes>
	<nobytes xmlns:dt="urn:schemas-microsoft-com:datatypes" dt:dt="bin.base64"/>
	<badbytes xmlns:dt="urn:schemas-microsoft-com:datatypes" dt:dt="bin.base64">?</badbytes>
</settings>
"""

# Type, text, what is printed; None when the text does not read as the type.
VALUES = [
    ("string", "", ""), ("string", " a  b ", " a  b "), ("string", "\u4e2d", "\u4e2d"),
    ("bool", "true", "true"), ("bool", "false", "false"), ("bool", "TRUE", None),
    ("bool", "1", None), ("bool", "", None), ("bool", " true", None),
    ("int", "42", "42"), ("int", "-7", "-7"), ("int", "+7", "7"), ("int", " 42", "42"),
    ("int", "42 ", None), ("int", "", None), ("int", "x", None), ("int", "1.5", None),
    ("int", "99999999999", "2147483647"), ("int", "-99999999999", "-2147483648"),
    ("int64", "10737418240", "10737418240"), ("int64", "-1", "-1"), ("int64", "1x", None),
    ("int64", "99999999999999999999", "9223372036854775807"),
    ("double", "1.5", "1.5"), ("double", "0", "0"), ("double", "0.1", "0.1"),
    ("double", "1.500000", "1.5"), ("double", "1e30", "1e+30"), ("double", "-0.25", "-0.25"),
    ("double", "1.5xyz", "1.5"), ("double", "3", "3"), ("double", "", None), ("double", "x", None),
    ("double", "-0", None), ("double", "0.30000000000000004", "0.30000000000000004"),
    ("point", "(1,-2)", "1,-2"), ("point", "( 1 , 2)", "1,2"), ("point", "1,2", None),
    ("point", "(1,2 )", None), ("point", "", None),
    ("size", "(3,4)", "3,4"), ("size", "7", "7,7"), ("size", "7 px", "7,7"), ("size", "x", None),
    ("rect", "1,2,3,4", "1,2,3,4"), ("rect", " 1 , 2 , 3 , 4", "1,2,3,4"), ("rect", "9", "9,9,9,9"),
    ("rect", "(1,2,3,4)", None), ("rect", "1,2,3", None),
]

# Where a value is, and what it is as a string.
PLACES = [
    ("bool", "true"), ("./bool", "true"), ("/settings/bool", "true"), ("//title", "a < b"),
    ("window[@id='main']/title", "a < b"), ("window[@id=\"main\"]/title", "a < b"),
    ("@version", "3"), ("./@version", "3"), (".@version", "3"), ("/settings/@version", "3"),
    ("/settings@version", "3"), ("@name", "\u00dcber"), ("@x:flag", "true"), ("@xmlns:x", "urn:x"),
    ("window/@id", "main"), ("window@id", "main"), ("window[2]/@id", "other"),
    ("window[@id='other']@id", "other"), ("window[@id='other']/@id", "other"),
    ("window[@visible]/@visible", "false"), ("//window/@id", "main"), ("//@id", "main"),
    ("window//@id", "main"), ("window/attribute::id", "main"), ("@*", "3"),
    ("bool | window/@id", "true"), ("(window | bool)[1]/@id", None), ("nothing | window/@id", "main"),
    ("window/@id[.='other']", "other"), ("window[@id=string('a/@id')]/@id", None),
    ("bool/text()", "true"), ("empty", ""), ("nothing", None), ("@nothing", None),
    ("nothing/@id", None), ("empty/@id", None), ("bool/text()/@id", None), ("/@version", None),
    ("window[2]/@visible", None),
]

BAD = [
    (["a["], r"tibxml: bad path 'a\[': .+"),
    ([""], "tibxml: bad path '': .+"),
    (["a[/@id"], r"tibxml: bad path 'a\[/@id': .+"),
    (["x:thing"], "tibxml: bad path 'x:thing': .+"),
    (["@1x"], "tibxml: bad path '@1x': .+"),
    (["bool", "--ns", "nonsense"], "tibxml: bad namespaces 'nonsense': .+"),
    (["bool", "--type", "float"], r"tibxml: .*float.* \(see tibxml get --help\)"),
    (["bool", "--type"], r"tibxml: .*--type.* \(see tibxml get --help\)"),
    (["bool", "--default"], r"tibxml: .*--default.* \(see tibxml get --help\)"),
    (["bool", "more"], r"tibxml: .*more.* \(see tibxml get --help\)"),
    ([], r"tibxml: PATH is required \(see tibxml get --help\)"),
]


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")


class Get(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", DOCUMENT)

    def test_values_of_every_type(self):
        for kind, text, printed in VALUES:
            self.write("b.xml", f'<a b="{escaped(text)}"><c>{escaped(text)}</c></a>')
            for path in ["c", "@b"]:
                if printed is None:
                    complaint = f"tibxml: b.xml: {path} is not .+: '.*'"
                    self.expect(["get", "b.xml", path, "--type", kind], 1, complaint=complaint)
                else:
                    self.expect(["get", "b.xml", path, "--type", kind], 0, printed + "\n")

    def test_every_type_falls_back_to_the_default(self):
        for kind in ["string", "bool", "int", "int64", "double", "point", "size", "rect"]:
            self.expect(["get", "a.xml", "nothing", "--type", kind, "--default", "d"], 0, "d\n")
            self.expect(["get", "a.xml", "nothing", "--type", kind], 1,
                        complaint="tibxml: a.xml: nothing at nothing")
        self.expect(["get", "a.xml", "nothing", "--type", "binary", "--default", "d"], 0, "d")

    def test_places(self):
        for path, text in PLACES:
            if text is None:
                self.expect(["get", "a.xml", path], 1, complaint="tibxml: a.xml: nothing at .+")
            else:
                self.expect(["get", "a.xml", path], 0, text + "\n")

    def test_text_of_the_document_is_that_of_its_root(self):
        self.write("b.xml", "<!--x--><a>b<c>d</c></a>")
        self.expect(["get", "b.xml", "/"], 0, "bd\n")
        self.expect(["get", "b.xml", "."], 0, "bd\n")

    def test_defaults(self):
        for arguments, printed in [
            (["nothing", "--default", "5"], "5\n"),
            (["nothing", "--default=5"], "5\n"),
            (["nothing", "--default", "-5"], "-5\n"),
            (["nothing", "--default", "--type"], "--type\n"),
            (["nothing", "--default", ""], "\n"),
            (["nothing", "--default="], "\n"),
            (["--default=", "nothing"], "\n"),
            (["nothing", "--default", "[1,2]"], "[1,2]\n"),
            (["nothing", "--default", "\u00e9"], "\u00e9\n"),
            (["@odd", "--type", "int", "--default", "9"], "9\n"),
            (["@version", "--type", "int", "--default", "9"], "3\n"),
            (["empty", "--default", "9"], "\n"),
            (["empty", "--type", "int", "--default", "9"], "9\n"),
        ]:
            self.expect(["get", "a.xml", *arguments], 0, printed)

    def test_default_does_not_hide_a_bad_path_or_document(self):
        self.write("bad.xml", "<a>")
        self.expect(["get", "a.xml", "a[", "--default", "5"], 2, complaint="tibxml: bad path .+")
        self.expect(["get", "bad.xml", "b", "--default", "5"], 1, complaint=r"bad.xml:1:\d+: .+")
        self.expect(["get", "gone.xml", "b", "--default", "5"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")

    def test_binary(self):
        for path, printed in [("bytes", b"\x00\x01\xff\n"), ("nobytes", b""), ("empty", b"")]:
            self.expect(["get", "a.xml", path, "--type", "binary"], 0, printed)
        for path in ["badbytes", "bool", "@version", "nothing", "@nothing"]:
            self.expect(["get", "a.xml", path, "--type", "binary"], 1, complaint="tibxml: a.xml: .+")
            self.expect(["get", "a.xml", path, "--type", "binary", "--default", "x"], 0, "x")

    def test_complaints(self):
        for arguments, complaint in [
            (["@odd", "--type", "int"], "tibxml: a.xml: @odd is not an integer: 'no number'"),
            (["@odd", "--type", "bool"], "tibxml: a.xml: @odd is not true or false: 'no number'"),
            (["long", "--type", "point"],
             r"tibxml: a.xml: long is not a point: 'abcdefghijklmnopqrstuvwxyzabcdefghijklmn\.\.\.'"),
        ]:
            self.expect(["get", "a.xml", *arguments], 1, complaint=complaint)

    def test_complaint_about_several_lines_is_one(self):
        self.write("b.xml", "<a>x\ny\x7f</a>")
        self.expect(["get", "b.xml", ".", "--type", "int"], 1,
                    complaint="tibxml: b.xml: . is not an integer: 'x y '")

    def test_bad_paths_and_usage(self):
        for arguments, complaint in BAD:
            self.expect(["get", "a.xml", *arguments], 2, complaint=complaint)

    def test_namespaces(self):
        for arguments, printed in [
            (["p:thing", "--ns", "xmlns:p='urn:x'"], "text\n"),
            (["p:thing/@size", "--ns", "xmlns:p='urn:x'", "--type", "int"], "7\n"),
        ]:
            self.expect(["get", "a.xml", *arguments], 0, printed)

    def test_standard_input(self):
        self.expect(["get", "-", "@b", "--type", "int"], 0, "1\n", stdin=b"<a b='1'/>")


if __name__ == "__main__":
    program.main()
