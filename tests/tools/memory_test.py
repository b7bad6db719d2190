#!/usr/bin/env python3
"""tibxml with too little memory: it fails like with any other bad input, in one line."""

import re
import resource

import program

MEGABYTE = 1 << 20
SHADOW = 1 << 40  # Programs under a sanitizer take that much address space, and more, to start.


class Memory(program.ProgramTest):
    def limited(self, arguments, limit):
        def set_limit():
            resource.setrlimit(resource.RLIMIT_AS, (limit, limit))

        return self.start(arguments, preexec_fn=set_limit)

    def least_to_start(self):
        """The least address space, in megabytes, in which the program can do something at all."""
        if self.limited(["--version"], SHADOW)[0] != 0:
            self.skipTest("a program under a sanitizer cannot be held short of memory")
        size = 1
        while self.limited(["--version"], size * MEGABYTE)[0] != 0:
            size += 1
        return size

    def test_every_limit_gives_the_result_or_one_line(self):
        count = 100_000
        self.write("a.xml", "<a>" + "<b>text</b>" * count + "</a>")
        least = self.least_to_start()
        for arguments, printed in [(["check", "a.xml"], ""),
                                   (["query", "a.xml", "b", "--text"], "text\n" * count),
                                   (["query", "a.xml", "."], None),
                                   (["get", "a.xml", "."], "text" * count + "\n")]:
            statuses = set()
            for limit in range(least, least + 64, 2):
                status, output, complaint = self.limited(arguments, limit * MEGABYTE)
                statuses.add(status)
                with self.subTest(arguments=arguments, limit=limit):
                    if status == 0:
                        self.assertEqual("", complaint)
                        self.assertIn(output.decode(), [printed or output.decode()])
                    else:
                        self.assertEqual(2, status, complaint)
                        self.assertIsNotNone(re.fullmatch(r"tibxml: [^\n]*memory[^\n]*\n", complaint),
                                             complaint)
            self.assertEqual({0, 2}, statuses, "no limit was too small, or none large enough")


if __name__ == "__main__":
    program.main()
