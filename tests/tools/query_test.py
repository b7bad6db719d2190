#!/usr/bin/env python3
"""tibxml query: the nodes of a path, as markup, as text or counted."""

import program

DOCUMENT = """<?xml version="1.0"?>
<!-- top -->
<list kind="short" xmlns:x="urn:x">
	<item id="1">one</item>
	<item id="2">zw\u00f6lf &amp; <b>more</b></item>
	<x:item id="3"/>
	<data><![CDATA[<raw>]]></data>
</list>
"""

NS = "xmlns:p='urn:x'"

# Arguments behind the file, what is printed, status.
QUERIES = [
    (["item[1]"], '<item id="1">one</item>\n', 0),
    (["item[1]", "--xml"], '<item id="1">one</item>\n', 0),
    (["item"], '<item id="1">one</item>\n<item id="2">zw\u00f6lf &amp; <b>more</b></item>\n', 0),
    (["item", "--text"], "one\nzw\u00f6lf & more\n", 0),
    (["item", "--count"], "2\n", 0),
    (["/list/item", "--count"], "2\n", 0),
    (["//item/@id", "--text"], "1\n2\n", 0),
    (["item/@id"], 'id="1"\nid="2"\n', 0),
    (["data", "--text"], "<raw>\n", 0),
    (["data/text()"], "<![CDATA[<raw>]]>\n", 0),
    (["item[2]/text()", "--text"], "zw\u00f6lf & \n", 0),
    (["/comment()", "--text"], " top \n", 0),
    (["/comment()"], "<!-- top -->\n", 0),
    ([".", "--count"], "1\n", 0),
    (["/", "--text"], "one zw\u00f6lf & more <raw>\n", 0),
    (["/"], DOCUMENT, 0),
    (["item[.='one'] | data", "--count"], "2\n", 0),
    (["item[contains(., 'w\u00f6l')]/@id", "--text"], "2\n", 0),
    (["nothing"], "", 1),
    (["nothing", "--text"], "", 1),
    (["nothing", "--count"], "0\n", 1),
    (["p:item/@id", "--ns", NS, "--text"], "3\n", 0),
    (["p:item/@id", f"--ns={NS}", "--text"], "3\n", 0),
    (["--ns", NS, "--text", "p:item/@id"], "3\n", 0),
    (["q:item | p:item", "--ns", f"{NS} xmlns:q=\"urn:q\"", "--count"], "1\n", 0),
    (["q:item | p:item", "--ns", NS, "--ns", "xmlns:q='urn:q'", "--count"], "1\n", 0),
    (["item", "--ns", "", "--count"], "2\n", 0),
    (["item", "--ns=", "--count"], "2\n", 0),
]

# Arguments behind the file, the complaint.
BAD = [
    (["item["], r"tibxml: bad path 'item\[': .*\d+.*"),
    (["item]"], r"tibxml: bad path 'item\]': .*\d+.*"),
    ([""], "tibxml: bad path '': .+"),
    (["count(item)"], r"tibxml: bad path 'count\(item\)': .+"),
    (["unknown()"], r"tibxml: bad path 'unknown\(\)': .+"),
    (["x:item"], "tibxml: bad path 'x:item': .*x.*"),
    (["$a"], r"tibxml: bad path '\$a': .+"),
    (["item", "--ns", "p='urn:x'"], "tibxml: bad namespaces 'p='urn:x'': .+"),
    (["item", "--text", "--xml"], r"tibxml: --\w+ excludes --\w+ \(see tibxml query --help\)"),
    (["item", "--text", "--count"], r"tibxml: --\w+ excludes --\w+ \(see tibxml query --help\)"),
    (["item", "more"], r"tibxml: .*more.* \(see tibxml query --help\)"),
    (["item", "--ns"], r"tibxml: --ns.* \(see tibxml query --help\)"),
    (["item", "--wrong"], r"tibxml: .*--wrong.* \(see tibxml query --help\)"),
    ([], r"tibxml: PATH is required \(see tibxml query --help\)"),
]


class Query(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", DOCUMENT)

    def test_queries(self):
        for arguments, printed, status in QUERIES:
            self.expect(["query", "a.xml", *arguments], status, printed)

    def test_bad_paths_and_usage(self):
        for arguments, complaint in BAD:
            self.expect(["query", "a.xml", *arguments], 2, complaint=complaint)

    def test_bad_path_names_the_column(self):
        self.expect(["query", "a.xml", "item[1]/+"], 2,
                    complaint=r"tibxml: bad path 'item\[1\]/\+': .*\b9\b.*")

    def test_nesting_beyond_measure(self):
        for path in ["(" * 50_000 + "a", "a" + "[b" * 30_000]:
            status, printed, complaint = self.start(["query", "a.xml", path])
            self.assertEqual((2, b""), (status, printed))
            self.assertRegex(complaint, r"\Atibxml: bad path '[^\n]*\n\Z")

    def test_standard_input(self):
        self.expect(["query", "-", "b", "--text"], 0, "\u00fc\n", stdin="<a><b>\u00fc</b></a>".encode())

    def test_other_encodings_are_printed_as_utf8(self):
        self.write("b.xml", b"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>")
        self.expect(["query", "b.xml", ".", "--text"], 0, "\u00e9\n")

    def test_text_with_line_ends_stays_as_it_is(self):
        self.write("b.xml", "<a>x\ny\n</a>")
        self.expect(["query", "b.xml", ".", "--text"], 0, "x\ny\n\n")

    def test_bad_files(self):
        self.write("bad.xml", "<a>\n<b>")
        self.expect(["query", "bad.xml", "b"], 1, complaint=r"bad.xml:2:\d+: .+")
        self.expect(["query", "gone.xml", "b"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")
        self.expect(["query", ".", "b"], 2, complaint="tibxml: .: cannot be read: Is a directory")

    def test_path_that_begins_with_a_dash(self):
        self.expect(["query", "a.xml", "--count", "--", "-1"], 2, complaint="tibxml: bad path '-1': .+")

    def test_many_nodes(self):
        self.write("b.xml", "<a>" + "<b>x</b>" * 50_000 + "</a>")
        self.expect(["query", "b.xml", "b", "--text"], 0, "x\n" * 50_000)


if __name__ == "__main__":
    program.main()
