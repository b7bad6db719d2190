#!/usr/bin/env python3
"""tibxml strings: localised strings by key, and keys by localised string."""

import program

STRINGS = """<?xml version="1.0" encoding="ISO-8859-1"?>
<stringMap>
	<context name="menu">
		<string nonTranslatableString="open" locString="\u00d6ffnen"/>
		<string nonTranslatableString="quit" locString="Ende"/>
		<string nonTranslatableString="exit" locString="Ende"/>
		<string nonTranslatableString="it's" locString="apostrophe"/>
		<string nonTranslatableString="none"/>
	</context>
	<context name="dialog">
		<string nonTranslatableString="end" locString="Ende"/>
	</context>
	<context name="it's"><string nonTranslatableString="k" locString="v"/></context>
	<context name="a:b"><string nonTranslatableString="k" locString="deep"/></context>
	<context name='"'><string nonTranslatableString="k" locString="quote"/></context>
</stringMap>
""".encode("iso-8859-1")

FOUND = [
    (["menu", "open"], "\u00d6ffnen\n"),
    (["dialog", "end"], "Ende\n"),
    (["a:b", "k"], "deep\n"),
    (['"', "k"], "quote\n"),
    (["menu", "\u00d6ffnen", "--reverse"], "open\n"),
    (["--reverse", "menu", "Ende"], "exit\n"),
    (["dialog", "Ende", "--reverse"], "end\n"),
    (['"', "quote", "--reverse"], "k\n"),
]

MISSED = [
    ["menu", "Open"], ["menu", "none"], ["menu", "end"], ["gone", "open"], ["menu", "it's"],
    ["it's", "k"], ["menu", "open", "--reverse"], ["menu", "apostrophe", "--reverse"],
    ["it's", "v", "--reverse"], ["a:b", "deep", "--reverse"], ["menu", "", "--reverse"],
]


class Strings(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", STRINGS)

    def test_found(self):
        for arguments, printed in FOUND:
            self.expect(["strings", "a.xml", *arguments], 0, printed)

    def test_missed(self):
        for arguments in MISSED:
            self.expect(["strings", "a.xml", *arguments], 1,
                        complaint="tibxml: a.xml: no '.*' in context '.*'")

    def test_standard_input(self):
        self.expect(["strings", "-", "menu", "quit"], 0, "Ende\n", stdin=STRINGS)

    def test_bad_files_and_usage(self):
        self.write("bad.xml", "<a>\n<b>")
        self.expect(["strings", "bad.xml", "c", "k"], 1, complaint=r"bad.xml:2:\d+: .+")
        self.expect(["strings", "gone.xml", "c", "k"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")
        self.expect(["strings", "a.xml", "menu"], 2,
                    complaint=r"tibxml: KEY is required \(see tibxml strings --help\)")


if __name__ == "__main__":
    program.main()
