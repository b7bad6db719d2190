#!/usr/bin/env python3
"""How tibxml is called, and what becomes of its output."""

import os
import re
import subprocess

import program

COMMANDS = ["check", "query", "get", "set", "delete", "layered", "path", "json", "xml", "strings",
            "events", "stats"]

WRONG = [
    ([], r"tibxml: .+ \(see tibxml --help\)"),
    (["wrong"], r"tibxml: there is no 'wrong' \(see tibxml --help\)"),
    (["--wrong"], r"tibxml: there is no '--wrong' \(see tibxml --help\)"),
    (["Check", "a.xml"], r"tibxml: there is no 'Check' \(see tibxml --help\)"),
    (["check"], r"tibxml: FILE is required \(see tibxml check --help\)"),
    (["check", "a.xml", "--wrong"], r"tibxml: .*--wrong.* \(see tibxml check --help\)"),
    (["query"], r"tibxml: FILE is required \(see tibxml query --help\)"),
    (["get"], r"tibxml: FILE is required \(see tibxml get --help\)"),
]


class Usage(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", "<a>" + "<b>text</b>" * 100_000 + "</a>")

    def test_wrong_usage(self):
        for arguments, complaint in WRONG:
            self.expect(arguments, 2, complaint=complaint)

    def test_arguments_that_are_not_utf8(self):
        for arguments, number in [
            ([b"path", b"\xff"], 2), ([b"check", b"a.xml", b"\xc3"], 3), ([b"\x80"], 1),
            ([b"get", b"a.xml", b"b", b"--default", b"\xed\xa0\x80"], 5),
            ([b"query", b"a.xml", b"b", b"--ns", b"\xc0\xaf"], 5),
        ]:
            self.expect(arguments, 2, complaint=f"tibxml: argument {number} is not valid UTF-8")

    def test_replacement_character_is_utf8_like_any_other(self):
        self.expect(["path", "\ufffd"], 0, "prefix\nstep    \ufffd\nstring  \ufffd\nroot    \ufffd\n"
                    "leaf    \ufffd\nparent\nchild\n")

    def test_help(self):
        for arguments in [["--help"], ["-h"], *([command, "--help"] for command in COMMANDS)]:
            with self.subTest(arguments):
                status, printed, complaint = self.start(arguments)
                self.assertEqual((0, ""), (status, complaint))
                name = " ".join(["tibxml", *arguments[:-1]])
                self.assertIn(f"\nUsage: {name} [OPTIONS] ", printed.decode())
                self.assertTrue(printed.endswith(b"\n"))
                self.assertRegex(printed.decode(), rf"Examples:\n(?:.*\n)*  (?:.*\| )?{name} ")
                self.assertIn("Status: " if arguments[0] != "path" else "Examples:", printed.decode())

    def test_help_of_the_program_lists_the_commands(self):
        printed = self.start(["--help"])[1].decode()
        for command in COMMANDS:
            self.assertRegex(printed, rf"(?m)^  {command} +\S")

    def test_help_shows_every_option(self):
        for command, options in [("query", ["--ns", "--text", "--xml", "--count"]),
                                 ("get", ["--ns", "--type", "--default"]),
                                 ("json", ["--ns", "--pretty"]), ("strings", ["--reverse"])]:
            printed = self.start([command, "--help"])[1].decode()
            for option in options:
                self.assertIn(f"  {option} ", printed)

    def test_version(self):
        status, printed, complaint = self.start(["--version"])
        self.assertEqual((0, ""), (status, complaint))
        self.assertRegex(printed, rb"\Atibxml \d+\.\d+\.\d+\n\Z")

    def test_options_may_stand_anywhere(self):
        self.expect(["query", "--count", "a.xml", "b"], 0, "100000\n")
        self.expect(["query", "a.xml", "--count", "b"], 0, "100000\n")

    def test_reader_that_stops_early(self):
        for command, first in [('query a.xml b', "<b>text</b>"), ("--help", None),
                               ("query a.xml b --text", "text"), ("path /a/b", "prefix  /")]:
            with self.subTest(command):
                status, printed = self.shell(f'set -o pipefail; "$tibxml" {command} | head -n 1')
                self.assertEqual(0, status)
                self.assertEqual(1, printed.count("\n"))
                self.assertIn(first or "", printed)

    def test_reader_that_is_not_there(self):
        for command, expected in [("query a.xml b", 0), ("query a.xml c --count", 1), ("--version", 0)]:
            with self.subTest(command):
                status, printed = self.shell(
                    f'set -o pipefail; {{ sleep 0.2; "$tibxml" {command}; }} | true')
                self.assertEqual((expected, ""), (status, printed))

    def test_full_device(self):
        for command in ["query a.xml b", "query a.xml b --count", "get a.xml b", "path a", "--help",
                        "--version"]:
            with self.subTest(command):
                status, printed = self.shell(f'"$tibxml" {command} > /dev/full')
                self.assertEqual(2, status)
                self.assertEqual("tibxml: cannot write the output: No space left on device\n", printed)

    def test_no_output_at_all(self):
        status, printed = self.shell('"$tibxml" path a >&-')
        self.assertEqual(2, status)
        self.assertRegex(printed, r"\Atibxml: cannot write the output: .+\n\Z")

    def test_check_needs_no_output(self):
        self.assertEqual((0, ""), self.shell('"$tibxml" check a.xml >&-'))

    def test_no_place_for_complaints(self):
        self.assertEqual((2, ""), self.shell('"$tibxml" check gone.xml 2>&-'))

    def test_text_does_not_depend_on_the_locale(self):
        self.write("b.xml", "<a>1.5 \u00e9</a>")
        for locale in ["C", "C.UTF-8", "de_DE.UTF-8", "nonsense"]:
            for arguments, expected in [(["."], "1.5 \u00e9\n"), ([".", "--type", "double"], "1.5\n")]:
                done = subprocess.run([program.PROGRAM, "get", "b.xml", *arguments], check=False,
                                      cwd=self.directory, stdout=subprocess.PIPE,
                                      env=os.environ | {"LC_ALL": locale})
                self.assertEqual(expected, done.stdout.decode("utf-8"), locale)

    def test_every_failure_is_one_line(self):
        for arguments in [["check", "gone"], ["query", "a.xml", "["], ["get", "a.xml", "c"], ["wrong"]]:
            complaint = self.start(arguments)[2]
            self.assertIsNotNone(re.fullmatch(r"tibxml: [^\n]+\n", complaint), complaint)


if __name__ == "__main__":
    program.main()
