#!/usr/bin/env python3
"""Schemas that Debian ships, of the packages docbook5-xml, xcb-proto and openscap-common: tibxml has
the same verdicts as xmllint, on real documents and on ones that were broken by this."""

import pathlib
import re
import subprocess

import program

XCB = pathlib.Path("/usr/share/xcb")
DOCBOOK = pathlib.Path("/usr/share/xml/docbook/schema/xsd/5.0")
OPENSCAP = pathlib.Path("/usr/share/openscap/schemas")

ARTICLE = """<article xmlns="http://docbook.org/ns/docbook" version="5.0" xml:id="a">
  <title>A title</title>
  <para>Text with <emphasis>stress</emphasis> and a
    <link xmlns:x="http://www.w3.org/1999/xlink" x:href="https://example.org/">link</link>.</para>
  <section><title>First</title>
    <itemizedlist><listitem><para>One</para></listitem><listitem><para>Two</para></listitem></itemizedlist>
    <informaltable><tgroup cols="2"><tbody><row><entry>1</entry><entry>2</entry></row></tbody></tgroup>
    </informaltable>
  </section>
</article>"""

VARIABLES = """<oval_variables xmlns="http://oval.mitre.org/XMLSchema/oval-variables-5"
    xmlns:c="http://oval.mitre.org/XMLSchema/oval-common-5">
  <generator>
    <c:schema_version>5.10</c:schema_version>
    <c:timestamp>2024-01-02T03:04:05</c:timestamp>
  </generator>
  <variables>
    <variable id="oval:org.example:var:1" datatype="string" comment="none"><value>text</value></variable>
  </variables>
</oval_variables>"""

# Ways to break a document: a pattern and what to put in the place of its first match.
BREAKAGES = [
    (r"<(\w+)([ >])", r"<\1 unknown='1'\2"),
    (r"</(\w+)>\s*\Z", r"<unknown/></\1>"),
    (r" (version|name|header|cols)=\"[^\"]*\"", ""),
    (r">\s*<", ">loose text<"),
    (r"<title>.*?</title>", "<title>1</title><title>2</title>"),
    (r"(<\w+ [^>]*?(?:bytes|number|opcode|value|cols)=\")[^\"]*\"", r'\1many"'),
    (r"(timestamp>).*?<", r"\1yesterday<"),
    (r"oval:org", "egg:org"),
]


class SchemasInUse(program.ProgramTest):
    def verdicts(self, document, schema):
        """ours and xmllint's: whether it is valid"""
        status, _, complaint = self.start(["validate", str(document), str(schema)])
        self.assertIn(status, (0, 1), complaint)
        done = subprocess.run(["xmllint", "--noout", "--nonet", "--schema", str(schema), str(document)],
                              cwd=self.directory, stderr=subprocess.PIPE, check=False, timeout=120)
        self.assertIn(done.returncode, (0, 3), done.stderr.decode())
        return status == 0, done.returncode == 0

    def expect_same(self, text, schema):
        """Of a document that is valid, and of all that can be made of it by breaking it."""
        self.write("a.xml", text)
        self.assertEqual((True, True), self.verdicts("a.xml", schema))
        without_comments = re.sub(r"<!--.*?-->", lambda m: " " * len(m[0]), text, flags=re.DOTALL)
        root = re.search(r"<[a-zA-Z]", without_comments).start()
        broken = 0
        for pattern, replacement in BREAKAGES:
            changed = text[:root] + re.sub(pattern, replacement, text[root:], count=1, flags=re.DOTALL)
            if changed == text:
                continue
            with self.subTest(pattern):
                self.write("a.xml", changed)
                ours, theirs = self.verdicts("a.xml", schema)
                self.assertEqual(theirs, ours)
                broken += not ours
        self.assertGreaterEqual(broken, 2)

    def test_docbook(self):
        self.expect_same(ARTICLE, DOCBOOK / "docbook.xsd")

    def test_xcb(self):
        for name in ["bigreq.xml", "xc_misc.xml", "shape.xml"]:
            self.expect_same((XCB / name).read_text(encoding="utf-8"), XCB / "xcb.xsd")

    def test_all_protocols(self):
        files = sorted(XCB.glob("*.xml"))
        self.assertGreater(len(files), 20)
        for file in files:
            with self.subTest(file.name):
                ours, theirs = self.verdicts(file, XCB / "xcb.xsd")
                self.assertEqual(theirs, ours)

    def test_openscap(self):
        self.expect_same(VARIABLES, OPENSCAP / "oval/5.10/oval-variables-schema.xsd")

    def test_document_types_are_refused_where_they_are_imported(self):
        self.write("a.xml", "<a/>")
        self.expect(["validate", "a.xml", str(OPENSCAP / "cpe/2.1/cpe-dictionary_2.1.xsd")], 2,
                    complaint="tibxml: .*/common/xml.xsd:.*DTD.*")


if __name__ == "__main__":
    program.main()
