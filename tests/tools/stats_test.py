#!/usr/bin/env python3
"""tibxml stats: numbers of what is in a file, and a line of progress on a terminal."""

import os
import pty
import subprocess
import time

import program

# What a document is, its bytes; elements, attributes, depth and bytes of text.
DOCUMENTS = [
    ("one element", b"<a/>", (1, 0, 1, 0)),
    ("attributes", b"<a b='1' c='2'><d e='3'/></a>", (2, 3, 2, 0)),
    ("declarations are no attributes", b"<a xmlns='u' xmlns:p='v' p:b='1'/>", (1, 1, 1, 0)),
    ("depth", b"<a><b><c/></b><d/><e><f/></e></a>", (6, 0, 3, 0)),
    ("white space counts", b"<a>\r\n <b/>\n</a>\n\n", (2, 0, 2, 3)),
    ("text of one to four bytes", "<a>a\u00e4\u20ac\U0001f600</a>".encode(), (1, 0, 1, 10)),
    ("text in another encoding", "<?xml version='1.0' encoding='UTF-16'?><a>\u00e4</a>".encode("utf-16"),
     (1, 0, 1, 2)),
    ("CDATA and references", b"<a><![CDATA[<b>]]>&amp;&#65;</a>", (1, 0, 1, 5)),
    ("as deep as it may be", b"<a>" * 256 + b"</a>" * 256, (256, 0, 256, 0)),
]


def lines(elements, attributes, depth, text):
    return (f"elements    {elements}\nattributes  {attributes}\n"
            f"depth       {depth}\ntext bytes  {text}\n")


class Stats(program.ProgramTest):
    def test_numbers(self):
        for name, content, numbers in DOCUMENTS:
            with self.subTest(name):
                self.write("a.xml", content)
                self.expect(["stats", "a.xml"], 0, printed=lines(*numbers))
                self.expect(["stats", "-"], 0, printed=lines(*numbers), stdin=content)

    def test_many(self):
        self.write("a.xml", b"<a>" + b"<b c='d'>text</b>\n" * 100_000 + b"</a>")
        self.expect(["stats", "a.xml"], 0, printed=lines(100_001, 100_000, 2, 500_000))

    def test_malformed(self):
        for content, place in [(b"<a>\n<b></a>", "2:"), (b"", ""), (b"<a>" * 257, "1:"),
                               (b"<!DOCTYPE a><a/>", "1:")]:
            self.write("a.xml", content)
            self.expect(["stats", "a.xml"], 1, complaint=rf"a\.xml:{place}.+")

    def test_unreadable(self):
        self.expect(["stats", "gone.xml"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")

    def slowly(self, stderr, seconds):
        """What is printed for a file that takes that long."""
        with subprocess.Popen([program.PROGRAM, "stats", "-"], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=stderr) as process:
            process.stdin.write(b"<a>")
            until = time.monotonic() + seconds
            while time.monotonic() < until:
                process.stdin.write(b"<b/>" * 10_000)
                process.stdin.flush()
                time.sleep(0.02)
            process.stdin.write(b"</a>")
            process.stdin.close()
            printed = process.stdout.read().decode()
            self.assertEqual(0, process.wait(60))
        self.assertTrue(printed.startswith("elements "), printed)

    def on_a_terminal(self, seconds):
        ours, theirs = pty.openpty()
        self.slowly(theirs, seconds)
        os.close(theirs)
        shown = b""
        try:
            while part := os.read(ours, 65536):
                shown += part
        except OSError:
            pass  # the end of a terminal that nobody writes to any more
        os.close(ours)
        return shown.decode()

    def test_progress_on_a_terminal(self):
        self.assertRegex(self.on_a_terminal(2.5), r"\A(\r\d+ MB, \d+ elements\x1b\[K)+\r\x1b\[K\Z")

    def test_no_progress_for_what_is_quick(self):
        self.assertEqual("", self.on_a_terminal(0.1))

    def test_no_progress_into_a_file(self):
        path = self.directory / "errors"
        with path.open("wb") as errors:
            self.slowly(errors, 1.5)
        self.assertEqual(b"", path.read_bytes())


if __name__ == "__main__":
    program.main()
