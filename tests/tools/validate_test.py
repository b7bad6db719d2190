#!/usr/bin/env python3
"""tibxml validate: errors with their lines, and the same verdicts as xmllint."""

import re
import shutil
import socket
import subprocess

import program
import schema_table
from schema_table import schema

INT = schema('<xs:element name="a" type="xs:int"/>')


class Validate(program.ProgramTest):
    def test_valid(self):
        self.write("a.xsd", INT)
        self.write("a.xml", "<a>1</a>")
        self.expect(["validate", "a.xml", "a.xsd"], 0)
        self.expect(["validate", "-", "a.xsd"], 0, stdin=b"<a>1</a>")

    def test_every_error_with_its_line(self):
        self.write("a.xsd", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b" '
                                   'type="xs:int" maxOccurs="9"/></xs:sequence><xs:attribute name="x" '
                                   'use="required"/></xs:complexType></xs:element>'))
        self.write("a.xml", "<?xml version='1.0'?>\n<!--\n-->\n<a>\n\n\n<b\n>x</b> <b>1</b>\n"
                            "<b>y</b>\n\n<c/>\n</a>\n")
        self.expect(["validate", "a.xml", "a.xsd"], 1, complaint="\n".join([
            "a.xml:4: Element 'a': The attribute 'x' is required but missing.",
            "a.xml:8: Element 'b': 'x' is not a valid value of the atomic type 'xs:int'.",
            "a.xml:9: Element 'b': 'y' is not a valid value of the atomic type 'xs:int'.",
            "a.xml:11: Element 'c': This element is not expected.( Expected is .*)?"]))

    def test_lines_in_other_encodings(self):
        self.write("a.xsd", INT)
        text = "<?xml version='1.0' encoding='{}'?>\n<!-- \u00e9 -->\n\n<a>\u00e9</a>"
        for encoding in ["UTF-16", "ISO-8859-1", "UTF-8"]:
            self.write("a.xml", text.format(encoding).encode(encoding))
            self.expect(["validate", "a.xml", "a.xsd"], 1, complaint="a.xml:4: .*'\u00e9'.*")

    def test_too_many_errors(self):
        self.write("a.xsd", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b" '
                                   'type="xs:int" maxOccurs="unbounded"/></xs:sequence></xs:complexType>'
                                   '</xs:element>'))
        self.write("a.xml", "<a>" + "\n<b>x</b>" * 5000 + "</a>")
        status, _, complaint = self.start(["validate", "a.xml", "a.xsd"])
        lines = complaint.splitlines()
        self.assertEqual((1, 1000), (status, len(lines)))
        self.assertTrue(lines[-1].startswith("a.xml:1001: "), lines[-1])

    def test_other_root(self):
        self.write("a.xsd", INT)
        self.expect(["validate", "-", "a.xsd"], 1, stdin=b"<b/>", complaint="-:1: .*'b'.*")
        self.expect(["validate", "-", "a.xsd"], 1, stdin=b"<a xmlns='urn:x'/>", complaint="-: .*'urn:x'.*")

    def test_bad_input(self):
        self.write("a.xsd", INT)
        self.write("a.xml", "<a>1</a>")
        self.write("broken.xml", "<a>\n<b></a>")
        self.expect(["validate", "gone.xml", "a.xsd"], 2, complaint="tibxml: gone.xml: cannot be read: .*")
        self.expect(["validate", "a.xml", "gone.xsd"], 2, complaint="tibxml: gone.xsd: cannot be read: .*")
        self.expect(["validate", "broken.xml", "a.xsd"], 1, complaint="broken.xml:2:.*")
        self.expect(["validate", "a.xml", "broken.xml"], 2, complaint="broken.xml:2:.*")
        self.expect(["validate", "a.xml", "a.xml"], 2, complaint="tibxml: .*not a schema")
        self.expect(["validate", "a.xml"], 2, complaint="tibxml: .*SCHEMA.*")

    def test_reads_each_file_once(self):
        self.write("a.xsd", INT)
        for command, expected in [
                ("$tibxml validate <(echo '<a>1</a>') a.xsd", (0, "")),
                ("$tibxml validate <(echo '<a>1</a>') <(cat a.xsd)", (0, "")),
                ("$tibxml validate <(printf '<a>\\n<b></a>') a.xsd 2>&1 | cut -d : -f 2,3", (0, "2:8\n"))]:
            with self.subTest(command=command):
                self.assertEqual(expected, self.shell(command))

    def test_unusable_schema_names_the_place(self):
        self.write("a.xml", "<a>1</a>")
        self.write("t.xsd", schema('\n\n<xs:element name="b"\n type="None"/>'))
        self.write("a.xsd", schema('\n<xs:include schemaLocation="t.xsd"/>'))
        self.expect(["validate", "a.xml", "a.xsd"], 2, complaint=r"tibxml: /.*/t.xsd:4: .*'None'.*")
        self.write("a.xsd", schema('\n<xs:include\n schemaLocation="none.xsd"/>'))
        self.expect(["validate", "a.xml", "a.xsd"], 2, complaint=r"tibxml: /.*/a.xsd:3: .*'none.xsd'.*")

    def test_unusable(self):
        self.write("a.xml", "<a/>")
        self.write("no.xml", "<a/>")
        for name, text in schema_table.UNUSABLE:
            with self.subTest(name):
                self.write("schema.xsd", text)
                status, printed, complaint = self.start(["validate", "a.xml", "schema.xsd"])
                self.assertEqual((2, b""), (status, printed), complaint)
                self.assertRegex(complaint, r"\Atibxml: .+\n\Z")

    def test_monstrous_schemas(self):
        self.write("a.xml", "<a/>")
        for name, text in monsters():
            with self.subTest(name):
                self.write("schema.xsd", text)
                status, _, complaint = self.start(["validate", "a.xml", "schema.xsd"])
                self.assertEqual(2, status, complaint[:500])

    def test_no_network(self):
        self.write("a.xml", "<a/>")
        with socket.create_server(("127.0.0.1", 0)) as server:
            server.settimeout(0.2)
            port = server.getsockname()[1]
            for scheme in ["http", "ftp"]:
                location = f"{scheme}://127.0.0.1:{port}/t.xsd"
                for reference in [f'<xs:include schemaLocation="{location}"/>',
                                  f'<xs:import namespace="urn:x" schemaLocation="{location}"/>',
                                  f'<xs:redefine schemaLocation="{location}"/>']:
                    self.write("schema.xsd", schema(reference + '<xs:element name="a"/>'))
                    self.expect(["validate", "a.xml", "schema.xsd"], 2,
                                complaint="tibxml: .*schema.xsd:1: .*not a local file.*")
            self.write("schema.xsd", schema('<xs:element name="a"/>'))
            self.write("a.xml", f'<a {schema_table.XSI} xsi:noNamespaceSchemaLocation='
                                f'"http://127.0.0.1:{port}/a.xsd"/>')
            self.expect(["validate", "a.xml", "schema.xsd"], 0)
            with self.assertRaises(TimeoutError):
                server.accept()


def monsters():
    yield "too deep", schema("<xs:annotation>" * 300 + "</xs:annotation>" * 300)
    chain = "".join(f'<xs:simpleType name="t{i}"><xs:restriction base="t{i + 1}"/></xs:simpleType>'
                    for i in range(100_000))
    yield "a long chain of types", schema(chain + '<xs:simpleType name="t100000"><xs:restriction '
                                          'base="xs:int"/></xs:simpleType><xs:element name="a" type="t0"/>')
    groups = "".join(f'<xs:group name="g{i}"><xs:sequence><xs:group ref="g{i + 1}"/><xs:group ref="g{i + 1}"/>'
                     '</xs:sequence></xs:group>' for i in range(60))
    yield "groups that grow", schema(groups + '<xs:group name="g60"><xs:sequence><xs:element name="b"/>'
                                     '</xs:sequence></xs:group><xs:element name="a"><xs:complexType><xs:group '
                                     'ref="g0"/></xs:complexType></xs:element>')
    yield "a pattern of parentheses", schema(
        '<xs:element name="a"><xs:simpleType><xs:restriction base="xs:string"><xs:pattern value="'
        + "(" * 100_000 + ")" * 100_000 + '"/></xs:restriction></xs:simpleType></xs:element>')
    yield "a document type", "<!DOCTYPE x [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>" + INT


class Verdicts(program.ProgramTest):
    """Documents of the table: the verdict that it has is ours and xmllint's."""

    def test_table(self):
        count = 0
        for title, files, pairs in schema_table.ALL + schema_table.DEPARTURES:
            files = files if isinstance(files, dict) else {"schema.xsd": files}
            for name, text in files.items():
                (self.directory / name).parent.mkdir(exist_ok=True)
                self.write(name, text)
            for document, valid in pairs:
                count += 1
                with self.subTest(title, document=document):
                    self.write("a.xml", document)
                    expected = 0 if valid else 1
                    status, _, complaint = self.start(["validate", "a.xml", "schema.xsd"])
                    self.assertEqual(expected, status, complaint)
                    self.assertEqual(valid, xmllint(self.directory), "xmllint thinks otherwise")
        self.assertGreater(count, 250)

    def test_lines_are_those_of_xmllint(self):
        self.write("schema.xsd", schema(
            '<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b" maxOccurs="unbounded" '
            'minOccurs="0"><xs:complexType><xs:attribute name="x" type="xs:int"/></xs:complexType></xs:element>'
            '</xs:sequence></xs:complexType></xs:element>'))
        tags = ['<b x="1"/>', '<b\n\nx="n"/>', "\n", "<!--\n\n-->", "<b y='1'\n/>\n", "<b>x\n</b>", "<b/>"]
        self.write("a.xml", "<a>" + "".join(tags[i * i * 7 % len(tags)] + tags[i % 7] for i in range(50)) + "</a>")
        done = subprocess.run(["xmllint", "--noout", "--schema", "schema.xsd", "a.xml"], cwd=self.directory,
                              stderr=subprocess.PIPE, text=True, check=False)
        theirs = re.findall(r"^a\.xml:(\d+): .*?: (Element .*)$", done.stderr, re.MULTILINE)
        ours = re.findall(r"^a\.xml:(\d+): (Element .*)$", self.start(["validate", "a.xml", "schema.xsd"])[2],
                          re.MULTILINE)
        self.assertGreater(len(theirs), 10)
        self.assertEqual([(line, text.strip()) for line, text in theirs],
                         [(line, text.strip()) for line, text in ours])


def xmllint(directory):
    assert shutil.which("xmllint"), "xmllint is missing: run scripts/setup"
    done = subprocess.run(["xmllint", "--noout", "--nonet", "--schema", "schema.xsd", "a.xml"], cwd=directory,
                          stderr=subprocess.PIPE, check=False, timeout=60)
    if done.returncode not in (0, 3):
        raise AssertionError(f"xmllint: {done.stderr.decode()}")
    return done.returncode == 0


if __name__ == "__main__":
    program.main()
