#!/usr/bin/env python3
"""tibxml check: well-formed or not, with the place, for any number of files."""

import os
import subprocess

import program

GOOD = "<a><b>text</b></a>"

# What is wrong with a document, its bytes, and where.
MALFORMED = [
    ("a wrong end tag", b"<a>\n  <b></a>\n", "2:"),
    ("cut off", b"<a>\n<b>text", "2:"),
    ("empty", b"", ""),
    ("blank", b"  \n ", ""),
    ("no element", b"<!-- only this -->", ""),
    ("two roots", b"<a/>\n<b/>", "2:"),
    ("text behind the root", b"<a/>x", "1:"),
    ("white space before the declaration", b" <?xml version='1.0'?><a/>", "1:"),
    ("a name twice", b"<a x='1'\n x='2'/>", "2:"),
    ("an unknown entity", b"<a>\n\n&nbsp;</a>", "3:"),
    ("an undeclared prefix", b"<p:a/>", "1:"),
    ("a control character", b"<a>\x01</a>", "1:"),
    ("not UTF-8", b"<a>\n\xff\xfe</a>", "2:"),
    ("cut UTF-8", b"<a>\xc3", "1:"),
    ("UTF-16 without its end", b"\xff\xfe<\0a\0>\0", "1:"),
    ("an encoding that there is not", b"<?xml version='1.0' encoding='nonsense'?><a/>", "1:"),
    ("a document type", b"<!DOCTYPE a><a/>", "1:"),
    ("entities that grow", b"<!DOCTYPE a [<!ENTITY b 'bb'>]>\n<a>&b;</a>", "1:"),
    ("a NUL", b"<a>\0</a>", "1:"),
    ("too deep", b"<a>" * 257 + b"</a>" * 257, "1:"),
    ("very deep", b"<a>" * 200_000 + b"</a>" * 200_000, "1:"),
    ("not XML", b"\x89PNG\r\n\x1a\n\0\0", "1:"),
]

WELL_FORMED = [
    ("simple", GOOD.encode()),
    ("with a byte order mark", b"\xef\xbb\xbf<a/>"),
    ("UTF-16", "<?xml version='1.0' encoding='UTF-16'?><a>\u00e9</a>".encode("utf-16")),
    ("Latin 1", b"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>"),
    ("as deep as it may be", b"<a>" * 256 + b"</a>" * 256),
    ("many attributes", b"<a " + b" ".join(b"a%d='1'" % i for i in range(5000)) + b"/>"),
    ("comments around the root", b"<!--a--><?b c?><a/><!--d-->"),
]


class Check(program.ProgramTest):
    def test_well_formed(self):
        for name, content in WELL_FORMED:
            with self.subTest(name):
                self.write("a.xml", content)
                self.expect(["check", "a.xml"], 0)

    def test_malformed_names_the_place(self):
        for name, content, place in MALFORMED:
            with self.subTest(name):
                self.write("a.xml", content)
                rest = r"\d+: .+" if place else r"\d+:\d+: .+"
                self.expect(["check", "a.xml"], 1, complaint=f"a.xml:{place}{rest}")

    def test_exact_place(self):
        self.write("a.xml", "<a>\n  <b>\n  </c>\n</a>\n")
        status, _, complaint = self.start(["check", "a.xml"])
        self.assertEqual(1, status)
        self.assertRegex(complaint, r"^a\.xml:3:[5-8]: ")

    def test_document_type_is_named(self):
        self.write("a.xml", "<!DOCTYPE a><a/>")
        self.expect(["check", "a.xml"], 1, complaint="a.xml:1:.*(?i:dtd|document type).*")

    def test_unreadable(self):
        (self.directory / "folder").mkdir()
        for name, why in [("gone.xml", "No such file or directory"), ("folder", "Is a directory"),
                          ("gone/a.xml", "No such file or directory"), ("", "No such file.*"),
                          ("x" * 5000, "File name too long")]:
            self.expect(["check", name], 2, complaint=f"tibxml: {name}: cannot be read: {why}")

    def test_read_error_is_not_a_malformed_document(self):
        self.expect(["check", "/proc/self/mem"], 2,
                    complaint="tibxml: /proc/self/mem: cannot be read: Input/output error")

    def test_no_permission(self):
        self.directory.chmod(0o755)
        (self.directory / self.write("a.xml", GOOD)).chmod(0)
        expected = (2, "tibxml: a.xml: cannot be read: Permission denied\n")
        if os.geteuid() != 0:
            got = self.start(["check", "a.xml"])
        elif not reachable_by_nobody(program.PROGRAM):
            self.skipTest("the program lies where only the superuser may go")
        else:
            got = self.start(["check", "a.xml"], user="nobody", group="nogroup", extra_groups=[])
        self.assertEqual(expected, (got[0], got[2]))

    def test_worst_status_wins_and_every_file_is_looked_at(self):
        good, bad = self.write("good.xml", GOOD), self.write("bad.xml", "<a>")
        malformed, missing = r"bad.xml:1:\d+: .+", "tibxml: gone: cannot be read: .+"
        for files, status, complaint in [
            ([good, good], 0, ""),
            ([good, bad, good], 1, malformed),
            ([bad, bad], 1, f"{malformed}\n{malformed}"),
            (["gone", bad], 2, f"{missing}\n{malformed}"),
            ([bad, "gone", good], 2, f"{malformed}\n{missing}"),
        ]:
            self.expect(["check", *files], status, complaint=complaint)

    def test_standard_input(self):
        self.expect(["check", "-"], 0, stdin=GOOD.encode())
        self.expect(["check", "-"], 1, stdin=b"<a>\n<", complaint=r"-:2:\d+: .+")

    def test_standard_input_that_cannot_be_read(self):
        for redirection in ["<&-", "<."]:
            status, printed = self.shell(f'"$tibxml" check - {redirection}')
            self.assertEqual(2, status)
            self.assertRegex(printed, r"\Atibxml: -: cannot be read: .+\n\Z")

    def test_pipe_that_gives_little_at_a_time(self):
        status, printed = self.shell("{ printf '<a>'; sleep 0.1; printf '</a>'; } | \"$tibxml\" check -")
        self.assertEqual((0, ""), (status, printed))

    def test_file_names(self):
        for name in ["check", "path", "[a,b]", "a b.xml", "b\u00fccher.xml", "%41.xml", "file:a", "a=b"]:
            self.write(name, GOOD)
            self.expect(["check", name], 0)
            self.expect(["check", "-", name], 0, stdin=b"<a/>")
        self.write("-x", GOOD)
        self.expect(["check", "./-x"], 0)
        self.expect(["check", "--", "-x"], 0)
        self.expect(["check", "a=b", "--", "-x", "path"], 0)
        self.expect(["check", "a=b", "-x"], 2, complaint="tibxml: .*-x.* .see tibxml check --help.")

    def test_name_with_a_line_end_gives_one_line(self):
        self.expect(["check", "a\nb"], 2, complaint="tibxml: a b: cannot be read: .+")

    def test_much_input(self):
        self.write("a.xml", b"<a>" + b"<b c='d'>text</b>\n" * 200_000 + b"</a>")
        self.expect(["check", "a.xml"], 0)


def reachable_by_nobody(path):
    return subprocess.run(["test", "-x", path], user="nobody", check=False).returncode == 0


if __name__ == "__main__":
    program.main()
