"""What the tests of the command-line program share: files to work on, and running the program.

    some_test.py PROGRAM
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PROGRAM = None


class ProgramTest(unittest.TestCase):
    """Every test gets an empty directory, in which the program runs. The locale knows ASCII only:
    text is UTF-8 whatever it says."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.directory = pathlib.Path(scratch.name)

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode("utf-8")
        (self.directory / name).write_bytes(data)
        return name

    def start(self, arguments, stdin=b"", **options):
        """(status, what it printed as bytes, its errors as text)"""
        done = subprocess.run([PROGRAM, *arguments], cwd=self.directory, input=stdin,
                              env=os.environ | {"LC_ALL": "C"}, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, check=False, timeout=120, **options)
        return done.returncode, done.stdout, done.stderr.decode("utf-8")

    def shell(self, command):
        """(status, output and errors) of a line of bash, in which the program is $tibxml"""
        done = subprocess.run(["bash", "-c", command], cwd=self.directory,
                              env=os.environ | {"LC_ALL": "C", "tibxml": PROGRAM},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, check=False, timeout=120)
        return done.returncode, done.stdout.decode("utf-8")

    def expect(self, arguments, status, printed="", complaint="", stdin=b""):
        """`printed` must be the output, `complaint` a pattern for the errors: "" is none at all."""
        printed = printed if isinstance(printed, bytes) else printed.encode("utf-8")
        with self.subTest(arguments=arguments):
            got = self.start(arguments, stdin)
            self.assertEqual((status, printed), got[:2], got[2])
            pattern = complaint + "\n" if complaint else ""
            self.assertIsNotNone(re.fullmatch(pattern, got[2]), f"{got[2]!r} is not {pattern!r}")


def main():
    global PROGRAM  # pylint: disable=global-statement
    PROGRAM = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=1)
