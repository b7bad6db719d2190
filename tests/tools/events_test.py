#!/usr/bin/env python3
"""tibxml events: one line for each event."""

import program

# What a document is, its bytes, and its events between the start and the end of the document.
DOCUMENTS = [
    ("one element", b"<a/>", "start a\nend a\n"),
    ("attributes", b"<a z='1' b=''/>", 'start a z="1" b=""\nend a\n'),
    ("text", b"<a>x<b/>y</a>", "start a\ntext x\nstart b\nend b\ntext y\nend a\n"),
    ("white space", b"<a>\n\t<b/>\r\n</a>", "start a\ntext \\n\\t\nstart b\nend b\ntext \\n\nend a\n"),
    ("escapes", b"<a b='&#9;\\&#10;'>&#13;</a>", 'start a b="\\t\\\\\\n"\ntext \\r\nend a\n'),
    ("prefixes", b"<p:a xmlns:p='u' p:b='1'/>", 'start a b="1"\nend a\n'),
    ("Latin 1", b"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>",
     "start a\ntext \u00e9\nend a\n"),
    ("CDATA and comments", b"<a><![CDATA[<]]><!--x--></a>", "start a\ntext <\nend a\n"),
]


class Events(program.ProgramTest):
    def test_events(self):
        for name, content, events in DOCUMENTS:
            with self.subTest(name):
                self.write("a.xml", content)
                expected = f"start of document\n{events}end of document\n"
                self.expect(["events", "a.xml"], 0, printed=expected)
                self.expect(["events", "-"], 0, printed=expected, stdin=content)

    def test_malformed_after_the_events_up_to_there(self):
        self.write("a.xml", "<a>\n<b></a>")
        self.expect(["events", "a.xml"], 1, complaint=r"a\.xml:2:\d+: .+",
                    printed="start of document\nstart a\ntext \\n\nstart b\n")

    def test_document_type(self):
        self.write("a.xml", "<!DOCTYPE a><a/>")
        self.expect(["events", "a.xml"], 1, complaint=r"a\.xml:1:\d+: .*DTD.*",
                    printed="start of document\n")

    def test_unreadable(self):
        (self.directory / "folder").mkdir()
        for name, why in [("gone.xml", "No such file or directory"), ("folder", "Is a directory")]:
            self.expect(["events", name], 2, complaint=f"tibxml: {name}: cannot be read: {why}")

    def test_wrong_calls(self):
        self.expect(["events"], 2, complaint="tibxml: .*FILE.*tibxml events --help.")
        self.expect(["events", "a", "b"], 2, complaint="tibxml: .*tibxml events --help.")

    def test_reader_that_stops_early(self):
        self.write("a.xml", b"<a>" + b"<b/>" * 100_000 + b"</a>")
        status, printed = self.shell('"$tibxml" events a.xml | head -n 2; echo ${PIPESTATUS[0]}')
        self.assertEqual((0, "start of document\nstart a\n0\n"), (status, printed))


if __name__ == "__main__":
    program.main()
