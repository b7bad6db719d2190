#!/usr/bin/env python3
"""tibxml xml: the XML that a JSON text describes."""

import program

ELEMENT = '{"tag":"a","attributes":{"x":"<\\"\u00fc"},"children":[{"tag":"b"},7]}'
MARKUP = '<a x="&lt;&quot;\u00fc"><b></b></a>\n'

# The text, the complaint.
BAD = [
    ("", r"a\.json:1:1: unexpected end of input; .+"),
    ('{"tag":\n "\u00fc" x}', r"a\.json:2:6: invalid literal; .+"),
    ("[1,]", r"a\.json:1:4: unexpected '\]'; .+"),
    (b'{"tag":"\xff"}', r"a\.json:1:9: invalid string: ill-formed UTF-8 byte"),
    ("[" * 100_000, r"a\.json:1:1025: objects and arrays deeper than 1024"),
    ("[]", 'tibxml: a.json: not an object with a "tag"'),
    ("{}", 'tibxml: a.json: not an object with a "tag"'),
    ('{"tag":1}', 'tibxml: a.json: not an object with a "tag"'),
]


class Xml(program.ProgramTest):
    def test_file(self):
        self.write("a.json", ELEMENT)
        self.expect(["xml", "a.json"], 0, MARKUP)

    def test_standard_input(self):
        self.expect(["xml"], 0, MARKUP, stdin=ELEMENT.encode())
        self.expect(["xml", "-"], 0, MARKUP, stdin=ELEMENT.encode())

    def test_bad_texts(self):
        for text, complaint in BAD:
            self.write("a.json", text)
            self.expect(["xml", "a.json"], 1, complaint=complaint)

    def test_standard_input_is_named_by_a_dash(self):
        self.expect(["xml"], 1, stdin=b"x", complaint="-:1:1: invalid literal")

    def test_bad_files(self):
        self.expect(["xml", "gone.json"], 2,
                    complaint="tibxml: gone.json: cannot be read: No such file or directory")
        self.expect(["xml", "."], 2, complaint="tibxml: .: cannot be read: Is a directory")
        self.expect(["xml", "a", "b"], 2, complaint=r"tibxml: .*b.* \(see tibxml xml --help\)")

    def test_texts_longer_than_a_buffer(self):
        count = 50_000
        self.write("a.json", '{"tag":"a","children":[' + ",".join(['{"tag":"b"}'] * count) + "]}")
        self.expect(["xml", "a.json"], 0, "<a>" + "<b></b>" * count + "</a>\n")

    def test_text_of_exactly_a_buffer(self):
        text = '{"tag":"a"}'
        self.write("a.json", text + " " * (65536 - len(text)))
        self.expect(["xml", "a.json"], 0, "<a></a>\n")


if __name__ == "__main__":
    program.main()
