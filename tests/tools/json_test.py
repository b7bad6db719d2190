#!/usr/bin/env python3
"""tibxml json: an element as JSON."""

import json

import program

DOCUMENT = """<?xml version="1.0"?>
<list kind="short" xmlns:x="urn:x">
	<item id="1">one</item>
	<item id="z\u00fc&quot;"><b/></item>
	<x:item/>
</list>
"""

ROOT = ('{"tag":"list","attributes":{"kind":"short","xmlns:x":"urn:x"},"children":['
        '{"tag":"item","attributes":{"id":"1"},"children":[]},'
        '{"tag":"item","attributes":{"id":"z\u00fc\\""},"children":[{"tag":"b"}]},'
        '{"tag":"x:item"}]}\n')

NS = "xmlns:p='urn:x'"

ELEMENTS = [
    ([], ROOT),
    (["."], ROOT),
    (["/list"], ROOT),
    (["item"], '{"tag":"item","attributes":{"id":"1"},"children":[]}\n'),
    (["item[2]/b"], '{"tag":"b"}\n'),
    (["p:item", "--ns", NS], '{"tag":"x:item"}\n'),
    (["item[2]", "--pretty"],
     '{\n  "tag": "item",\n  "attributes": {\n    "id": "z\u00fc\\""\n  },\n'
     '  "children": [\n    {\n      "tag": "b"\n    }\n  ]\n}\n'),
]

BAD = [
    (["gone"], 1, "tibxml: a.xml: nothing at gone"),
    (["item/@id"], 1, "tibxml: a.xml: item/@id is not an element"),
    (["item/text()"], 1, r"tibxml: a.xml: item/text\(\) is not an element"),
    (["/"], 1, "tibxml: a.xml: / is not an element"),
    (["item["], 2, r"tibxml: bad path 'item\[': .*\d+.*"),
    (["item", "--ns", "p"], 2, "tibxml: bad namespaces 'p': .+"),
    (["item", "more"], 2, r"tibxml: .*more.* \(see tibxml json --help\)"),
]


class Json(program.ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", DOCUMENT)

    def test_elements(self):
        for arguments, printed in ELEMENTS:
            self.expect(["json", "a.xml", *arguments], 0, printed)
            json.loads(printed)

    def test_bad(self):
        for arguments, status, complaint in BAD:
            self.expect(["json", "a.xml", *arguments], status, complaint=complaint)

    def test_standard_input(self):
        self.expect(["json", "-"], 0, '{"tag":"a"}\n', stdin=b"<a/>")

    def test_bad_files(self):
        self.write("bad.xml", "<a>\n<b>")
        self.expect(["json", "bad.xml"], 1, complaint=r"bad.xml:2:\d+: .+")
        self.expect(["json", "gone.xml"], 2,
                    complaint="tibxml: gone.xml: cannot be read: No such file or directory")

    def test_and_back(self):
        status, printed = self.shell('set -o pipefail; "$tibxml" json a.xml | "$tibxml" xml > b.xml && '
                                     '"$tibxml" json b.xml')
        self.assertEqual(0, status)
        # What had no element in it had texts; empty lists do not survive.
        self.assertEqual(ROOT.replace(',"children":[]', ""), printed)


if __name__ == "__main__":
    program.main()
