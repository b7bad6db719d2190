#!/usr/bin/env python3
"""tibxml transform: a document through a stylesheet, printed or written."""

import program

XSL = ("<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>{}"
       "</xsl:stylesheet>")

COUNT = ("<xsl:template match='/'><n><xsl:value-of select='count(//i)'/><xsl:text> </xsl:text></n>"
         "</xsl:template>")

# The content of the stylesheet, what is printed.
RESULTS = [
    (COUNT, '<?xml version="1.0"?>\n<n>2 </n>\n'),
    ("<xsl:output omit-xml-declaration='yes'/>" + COUNT, "<n>2 </n>\n"),
    ("<xsl:output encoding='ISO-8859-1'/><xsl:template match='/'><n>\u00e9</n></xsl:template>",
     '<?xml version="1.0" encoding="ISO-8859-1"?>\n<n>\u00e9</n>\n'.encode("latin-1")),
    ("<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'>"
     "<xsl:copy-of select='.'/></xsl:template>", "<a><i/><i/></a>\n"),
    ("<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'>"
     "<xsl:comment>only</xsl:comment></xsl:template>", "<!--only-->\n"),
    ("<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'>"
     "<xsl:copy-of select='document(\"other.xml\")'/></xsl:template>", "<other/>\n"),
]

# The content of the stylesheet, the complaint behind its name.
FAILURES = [
    ("<xsl:template match='a['/>", r".*/xsl:template\[1\].*"),
    ("<xsl:template match='/'><xsl:value-of select='$no'/></xsl:template>",
     r"/xsl:stylesheet\[1\]/xsl:template\[1\]/xsl:value-of\[1\]: .*no.*"),
    ("<xsl:template match='/'><xsl:message terminate='yes'>stop\nhere</xsl:message></xsl:template>",
     "stop here"),
    ("<xsl:template match='/'>text</xsl:template>", "the result has text outside of an element"),
    ("<xsl:import href='gone.xsl'/>", ".*gone.xsl.*"),
    ("<xsl:import href='http://127.0.0.1:9/a.xsl'/>", ".*127.0.0.1.*"),
]


class Transform(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", "<a>\n <i/> <i/></a>")
        self.write("other.xml", "<other/>")

    def test_results(self):
        for content, printed in RESULTS:
            self.write("s.xsl", XSL.format(content))
            self.expect(["transform", "a.xml", "s.xsl"], 0, printed)

    def test_failures(self):
        for content, complaint in FAILURES:
            self.write("s.xsl", XSL.format(content))
            self.expect(["transform", "a.xml", "s.xsl", "-o", "out.xml"], 2,
                        complaint=r"tibxml: s\.xsl: " + complaint)
            self.assertFalse((self.directory / "out.xml").exists())

    def test_output_file(self):
        self.write("s.xsl", XSL.format(COUNT))
        self.expect(["transform", "a.xml", "s.xsl", "-o", "a.xml"], 0)
        self.assertEqual('<?xml version="1.0"?>\n<n>2 </n>\n', (self.directory / "a.xml").read_text())
        self.expect(["transform", "a.xml", "s.xsl", "--output", "none/b.xml"], 2,
                    complaint="tibxml: none/b.xml: .*No such file or directory.*")

    def test_imports_beside_the_stylesheet(self):
        (self.directory / "sub").mkdir()
        self.write("sub/one.xsl", XSL.format(COUNT))
        self.write("sub/s.xsl", XSL.format("<xsl:import href='one.xsl'/>"))
        self.expect(["transform", "a.xml", "sub/s.xsl"], 0, '<?xml version="1.0"?>\n<n>2 </n>\n')

    def test_standard_input(self):
        self.write("s.xsl", XSL.format(COUNT))
        self.expect(["transform", "-", "s.xsl"], 0, '<?xml version="1.0"?>\n<n>1 </n>\n',
                    stdin=b"<a><i/></a>")
        self.expect(["transform", "a.xml", "-"], 0, '<?xml version="1.0"?>\n<n>2 </n>\n',
                    stdin=XSL.format(COUNT).encode())

    def test_bad_files(self):
        self.write("s.xsl", XSL.format(COUNT))
        self.write("bad.xml", "<a>\n<b>")
        self.expect(["transform", "bad.xml", "s.xsl"], 1, complaint=r"bad.xml:2:\d+: .+")
        self.expect(["transform", "a.xml", "bad.xml"], 1, complaint=r"bad.xml:2:\d+: .+")
        self.expect(["transform", "gone.xml", "s.xsl"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")
        self.expect(["transform", "a.xml", "gone.xsl"], 2,
                    complaint="tibxml: gone.xsl: cannot be read: No such file or directory")
        self.expect(["transform", "a.xml", "other.xml"], 2, complaint=r"tibxml: other\.xml: .+")

    def test_usage(self):
        self.expect(["transform", "a.xml"], 2,
                    complaint=r"tibxml: STYLESHEET is required \(see tibxml transform --help\)")


if __name__ == "__main__":
    program.main()
