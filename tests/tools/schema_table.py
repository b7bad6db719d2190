"""Small schemas with documents and whether those are valid: one entry is a title, the files of the
schema ("schema.xsd" first; just a body stands for that one), and pairs of a document and a verdict.

Where a body begins with a name of an element and a colon, that element has the type that follows.
"""

XS = 'xmlns:xs="http://www.w3.org/2001/XMLSchema"'
XSI = 'xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"'


def schema(body, attributes=""):
    return f"<xs:schema {XS} {attributes}>{body}</xs:schema>"


def simple(base, *values):
    """Pairs for an element `a` of a built-in type: valid values, None, values that are not."""
    split = values.index(None)
    pairs = [(f"<a>{v}</a>", True) for v in values[:split]]
    pairs += [(f"<a>{v}</a>", False) for v in values[split + 1:]]
    return (base, schema(f'<xs:element name="a" type="xs:{base}"/>'), pairs)


def restricted(title, base, facets, *values):
    body = (f'<xs:element name="a"><xs:simpleType><xs:restriction base="xs:{base}">{facets}'
            '</xs:restriction></xs:simpleType></xs:element>')
    return (title, schema(body), simple(base, *values)[2])


def content(title, model, *pairs, more=""):
    """An element `a` with a content model, and further definitions."""
    body = f'<xs:element name="a"><xs:complexType>{model}</xs:complexType></xs:element>{more}'
    return (title, schema(body), [(f"<a>{inner}</a>", valid) for inner, valid in pairs])


def attributes(title, declarations, *pairs):
    body = f'<xs:element name="a"><xs:complexType>{declarations}</xs:complexType></xs:element>'
    return (title, schema(body), [(f"<a {text}/>", valid) for text, valid in pairs])


STRING = 'type="xs:string"'

BUILT_IN = [
    simple("string", "", "text", "a &amp; b", None),
    simple("boolean", "true", "0", " 1 ", None, "yes", "TRUE", ""),
    simple("decimal", "1", "-1.50", "+.5", None, "1e3", "1,5", "", "INF"),
    simple("integer", "0", "-12345678901234567890", "+7", None, "1.0", "x", "1 2"),
    simple("int", "2147483647", "-2147483648", None, "2147483648", "1.5"),
    simple("byte", "127", "-128", None, "128", "-129"),
    simple("unsignedByte", "255", None, "256", "-1"),
    simple("positiveInteger", "1", None, "0", "-1"),
    simple("nonNegativeInteger", "0", "-0", None, "-1"),
    simple("double", "1", "1E5", "-.5e-3", "INF", "-INF", "NaN", None, "inf", "x"),
    simple("float", "3.4e38", "NaN", None, "1f", "--1"),
    simple("date", "2024-02-29", "2024-01-01Z", "2024-01-01+02:00", None, "2023-02-29", "24-01-01",
           "2024-13-01", "2024-1-1"),
    simple("time", "23:59:59", "00:00:00.5", "12:00:00Z", None, "25:00:00", "12:00", "12:60:00"),
    simple("dateTime", "2024-05-06T07:08:09", "-0001-01-01T00:00:00Z", None, "2024-05-06",
           "2024-05-06 07:08:09"),
    simple("duration", "P1Y2M3DT4H5M6.7S", "-P1D", "PT1S", None, "P", "1D", "P1S", "PT"),
    simple("gYear", "2024", None, "24", "20240"[:1]),
    simple("gMonthDay", "--02-29", None, "--02-30", "02-29"),
    simple("hexBinary", "0aFF", "", None, "0", "0g"),
    simple("base64Binary", "AAEC", "YQ==", "", None, "A", "===="),
    simple("anyURI", "http://example.org/a?b#c", "relative/path", None),
    simple("QName", "name", "xs", None, "a:b", "1a", "a b"),
    simple("NCName", "a-b.c", None, "a:b", "1a", ""),
    simple("NMTOKEN", "1a:b", None, "a b", ""),
    simple("NMTOKENS", "a b 1", None, "a &amp;"),
    simple("language", "en", "de-AT", None, "x_y", "abcdefghi"),
    simple("token", "a  b", None),
    simple("normalizedString", "a b", None),
    simple("anySimpleType", "anything at all", None, "<b/>"),
]

FACETS = [
    restricted("length", "string", '<xs:length value="3"/>', "abc", "\u00e4\u00f6\u00fc",
               "\U0001F600bc", None, "ab", "abcd"),
    restricted("lengths", "string", '<xs:minLength value="2"/><xs:maxLength value="3"/>', "ab",
               "abc", None, "a", "abcd", ""),
    restricted("pattern", "string", '<xs:pattern value="[a-c]+\\d{2,3}"/>', "a12", "abc123", None,
               "12", "a1", "xa12"),
    restricted("two patterns", "string", '<xs:pattern value="a+"/><xs:pattern value="b+"/>', "aa",
               "bb", None, "ab"),
    restricted("pattern with classes", "string", '<xs:pattern value="\\p{Lu}\\i\\c*"/>', "Ab-1",
               "\u00c4x", None, "ab", "A-"),
    restricted("pattern with subtraction", "string", '<xs:pattern value="[a-z-[aeiou]]+"/>', "xyz",
               None, "xaz"),
    restricted("enumeration", "string",
               '<xs:enumeration value="red"/><xs:enumeration value="light blue"/>', "red",
               "light blue", None, "blue", "RED", ""),
    restricted("enumeration of references", "string", '<xs:enumeration value="x&amp;#38;y"/>',
               "x&amp;#38;y", None, "x&amp;y"),
    restricted("enumeration of numbers", "decimal", '<xs:enumeration value="1.50"/>', "1.5", "1.500",
               None, "1.51"),
    restricted("inclusive range", "int", '<xs:minInclusive value="1"/><xs:maxInclusive value="9"/>',
               "1", "9", None, "0", "10"),
    restricted("exclusive range", "decimal",
               '<xs:minExclusive value="0"/><xs:maxExclusive value="1"/>', "0.1", "0.999", None, "0",
               "1"),
    restricted("dates in order", "date", '<xs:minInclusive value="2024-01-01"/>', "2024-01-01",
               "2025-06-07", None, "2023-12-31"),
    restricted("digits", "decimal", '<xs:totalDigits value="4"/><xs:fractionDigits value="2"/>',
               "12.34", "1234", None, "12345", "1.234"),
    restricted("collapsed white space", "string",
               '<xs:whiteSpace value="collapse"/><xs:maxLength value="3"/>', " a   b ", None, "a b c"),
    restricted("kept white space", "string", '<xs:length value="5"/>', " a b ", None, "a b"),
    ("list", schema('<xs:element name="a"><xs:simpleType><xs:restriction><xs:simpleType><xs:list '
                    'itemType="xs:int"/></xs:simpleType><xs:maxLength value="3"/></xs:restriction>'
                    '</xs:simpleType></xs:element>'),
     simple("list", "1 2 3", " 4 ", "", None, "1 x", "1 2 3 4")[2]),
    ("union", schema('<xs:element name="a"><xs:simpleType><xs:union memberTypes="xs:int xs:boolean"/>'
                     '</xs:simpleType></xs:element>'),
     simple("union", "12", "true", None, "12.5", "maybe")[2]),
]

B, C, D = (f'<xs:element name="{name}" {STRING}/>' for name in "bcd")

MODELS = [
    content("sequence", f"<xs:sequence>{B}{C}</xs:sequence>", ("<b/><c/>", True), ("<b/>", False),
            ("<c/><b/>", False), ("<b/><c/><c/>", False), ("", False), ("<b/>text<c/>", False),
            ("<b/><!-- x --><?p i?><c/>", True)),
    content("choice", f"<xs:choice>{B}{C}</xs:choice>", ("<b/>", True), ("<c/>", True),
            ("<b/><c/>", False), ("", False)),
    content("all", f"<xs:all>{B}{C}</xs:all>", ("<b/><c/>", True), ("<c/><b/>", True), ("<b/>", False),
            ("<b/><c/><b/>", False)),
    content("optional in all", f'<xs:all>{B}<xs:element name="c" minOccurs="0"/></xs:all>',
            ("<b/>", True), ("<c/><b/>", True), ("<c/>", False)),
    content("occurrence", '<xs:sequence><xs:element name="b" minOccurs="2" maxOccurs="3"/>'
            '</xs:sequence>', ("<b/><b/>", True), ("<b/><b/><b/>", True), ("<b/>", False),
            ("<b/><b/><b/><b/>", False)),
    content("unbounded", f'<xs:sequence maxOccurs="unbounded">{B}{C}</xs:sequence>',
            ("<b/><c/>", True), ("<b/><c/>" * 50, True), ("<b/><c/><b/>", False)),
    content("unbounded choice", f'<xs:choice minOccurs="0" maxOccurs="unbounded">{B}{C}</xs:choice>',
            ("", True), ("<c/><b/><b/><c/>", True), ("<d/>", False)),
    content("nested groups", f"<xs:sequence>{B}<xs:choice>{C}<xs:sequence>{D}{D}</xs:sequence>"
            "</xs:choice></xs:sequence>", ("<b/><c/>", True), ("<b/><d/><d/>", True),
            ("<b/><d/>", False), ("<b/><c/><d/>", False)),
    content("named group", '<xs:group ref="g"/>', ("<b/><c/>", True), ("<c/>", False),
            more=f'<xs:group name="g"><xs:sequence>{B}{C}</xs:sequence></xs:group>'),
    content("empty", "", ("", True), ("text", False), ("<b/>", False), ("<!-- x -->", True)),
    ("mixed", schema(f'<xs:element name="a"><xs:complexType mixed="true"><xs:sequence>{B}'
                     '</xs:sequence></xs:complexType></xs:element>'),
     [("<a>x<b/>y</a>", True), ("<a><b/></a>", True), ("<a>text</a>", False),
      ("<a>x<![CDATA[y]]><b/>z<!-- -->w</a>", True)]),
    content("any of other namespaces", '<xs:sequence><xs:any namespace="##other" '
            'processContents="lax" maxOccurs="unbounded"/></xs:sequence>',
            ('<x xmlns="urn:x"/>', True), ("<b/>", False)),
    content("any, skipped", '<xs:sequence><xs:any processContents="skip"/></xs:sequence>',
            ("<b><c>1</c></b>", True), ("", False), ("<b/><b/>", False)),
    content("any, strict", '<xs:sequence><xs:any/></xs:sequence>', ("<b>1</b>", True),
            ("<b>x</b>", False), ("<unknown/>", False), more='<xs:element name="b" type="xs:int"/>'),
    content("any, lax", '<xs:sequence><xs:any processContents="lax"/></xs:sequence>',
            ("<b>1</b>", True), ("<b>x</b>", False), ("<unknown>x</unknown>", True),
            more='<xs:element name="b" type="xs:int"/>'),
    content("simple content with attributes", '<xs:simpleContent><xs:extension base="xs:int">'
            '<xs:attribute name="x"/></xs:extension></xs:simpleContent>', ("5", True), ("x", False),
            ("<b/>", False), ("1<!-- -->2", True), ("1<b/>", False)),
    content("reference", '<xs:sequence><xs:element ref="b"/></xs:sequence>', ("<b>7</b>", True),
            ("<b>x</b>", False), more='<xs:element name="b" type="xs:int"/>'),
    content("recursive", '<xs:sequence><xs:element ref="a" minOccurs="0"/></xs:sequence>', ("", True),
            ("<a><a><a/></a></a>", True), ("<a><b/></a>", False), ("<a/><a/>", False)),
    ("root", schema('<xs:element name="a"/><xs:element name="b" type="xs:int"/>'),
     [("<a><any>x</any></a>", True), ("<b>1</b>", True), ("<c/>", False), ('<a xmlns="urn:x"/>', False)]),
]

ATTRIBUTES = [
    attributes("optional", '<xs:attribute name="x" type="xs:int"/>', ("", True), ('x="1"', True),
               ('x="a"', False), ('y="1"', False)),
    attributes("required", '<xs:attribute name="x" use="required"/>', ('x=""', True), ("", False)),
    attributes("prohibited", '<xs:attribute name="x" use="prohibited"/>', ("", True), ('x="1"', False)),
    attributes("fixed", '<xs:attribute name="x" fixed="1"/>', ("", True), ('x="1"', True),
               ('x="2"', False)),
    attributes("fixed number", '<xs:attribute name="x" type="xs:decimal" fixed="1.0"/>',
               ('x="1.00"', True), ('x="2"', False)),
    attributes("default", '<xs:attribute name="x" type="xs:int" default="1"/>', ("", True),
               ('x="2"', True), ('x=""', False)),
    attributes("any attribute", '<xs:anyAttribute processContents="skip"/>', ('q="1" r="2"', True)),
    attributes("any attribute of other namespaces",
               '<xs:anyAttribute namespace="##other" processContents="lax"/>',
               ('xmlns:p="urn:p" p:q="1"', True), ('q="1"', False)),
    attributes("a value with references", '<xs:attribute name="x"><xs:simpleType><xs:restriction '
               'base="xs:string"><xs:enumeration value="a&amp;#38;b"/><xs:enumeration value="&lt;&amp;"/>'
               '</xs:restriction></xs:simpleType></xs:attribute>', ('x="a&amp;#38;b"', True),
               ('x="a&amp;b"', False), ('x="&lt;&amp;"', True), ('x="&amp;#38;"', False)),
    ("attribute group", schema('<xs:attributeGroup name="g"><xs:attribute name="x" use="required"/>'
                               '<xs:attribute name="y"/></xs:attributeGroup><xs:element name="a">'
                               '<xs:complexType><xs:attributeGroup ref="g"/></xs:complexType>'
                               '</xs:element>'),
     [('<a x="1"/>', True), ('<a y="1"/>', False), ('<a x="1" y="2" z="3"/>', False)]),
]

DERIVED = '''<xs:complexType name="Base"><xs:sequence><xs:element name="b" type="xs:int"/></xs:sequence>
</xs:complexType><xs:complexType name="More"><xs:complexContent><xs:extension base="Base"><xs:sequence>
<xs:element name="c"/></xs:sequence><xs:attribute name="x"/></xs:extension></xs:complexContent>
</xs:complexType><xs:complexType name="Other"><xs:sequence><xs:element name="c"/></xs:sequence>
</xs:complexType>'''

TYPES = [
    ("extension", schema(f'{DERIVED}<xs:element name="a" type="More"/>'),
     [("<a><b>1</b><c/></a>", True), ('<a x=""><b>1</b><c/></a>', True), ("<a><b>1</b></a>", False),
      ("<a><c/></a>", False)]),
    ("xsi:type", schema(f'{DERIVED}<xs:element name="a" type="Base"/>'),
     [("<a><b>1</b></a>", True), (f'<a {XSI} xsi:type="More"><b>1</b><c/></a>', True),
      (f'<a {XSI} xsi:type="More"><b>1</b></a>', False),
      (f'<a {XSI} xsi:type="Other"><c/></a>', False), (f'<a {XSI} xsi:type="None"><b>1</b></a>', False)]),
    ("xsi:type of a built-in type", schema('<xs:element name="a" type="xs:decimal"/>'),
     [(f'<a {XSI} {XS} xsi:type="xs:int">1</a>', True),
      (f'<a {XSI} {XS} xsi:type="xs:int">1.5</a>', False),
      (f'<a {XSI} {XS} xsi:type="xs:string">1</a>', False),
      (f'<a {XSI} xsi:type="xs:int">1</a>', False)]),
    ("abstract type", schema(DERIVED.replace('name="Base"', 'name="Base" abstract="true"')
                             + '<xs:element name="a" type="Base"/>'),
     [("<a><b>1</b></a>", False), (f'<a {XSI} xsi:type="More"><b>1</b><c/></a>', True)]),
    ("final and block", schema(DERIVED + '<xs:element name="a" type="Base" block="extension"/>'),
     [("<a><b>1</b></a>", True), (f'<a {XSI} xsi:type="More"><b>1</b><c/></a>', False)]),
    ("restriction of content", schema(
        f'<xs:complexType name="T"><xs:sequence>{B}<xs:element name="c" {STRING} minOccurs="0"/>'
        '</xs:sequence></xs:complexType><xs:element name="a"><xs:complexType><xs:complexContent>'
        f'<xs:restriction base="T"><xs:sequence>{B}</xs:sequence></xs:restriction></xs:complexContent>'
        '</xs:complexType></xs:element>'), [("<a><b/></a>", True), ("<a><b/><c/></a>", False)]),
    ("nillable", schema('<xs:element name="a" type="xs:int" nillable="true"/>'),
     [(f'<a {XSI} xsi:nil="true"/>', True), (f'<a {XSI} xsi:nil="true">1</a>', False),
      ("<a>1</a>", True), ("<a/>", False), (f'<a {XSI} xsi:nil="false">1</a>', True)]),
    ("not nillable", schema('<xs:element name="a" type="xs:string"/>'),
     [(f'<a {XSI} xsi:nil="true"/>', False)]),
    ("default of an element", schema('<xs:element name="a" type="xs:int" default="1"/>'),
     [("<a/>", True), ("<a>2</a>", True), ("<a>x</a>", False)]),
    ("fixed element", schema('<xs:element name="a" type="xs:int" fixed="1"/>'),
     [("<a/>", True), ("<a>1</a>", True), ("<a>2</a>", False)]),
    ("substitution", schema(
        '<xs:element name="head" type="xs:decimal"/><xs:element name="one" type="xs:int" '
        'substitutionGroup="head"/><xs:element name="two" substitutionGroup="one"/><xs:element name="a">'
        '<xs:complexType><xs:sequence><xs:element ref="head" maxOccurs="9"/></xs:sequence>'
        '</xs:complexType></xs:element>'),
     [("<a><head>1.5</head><one>1</one><two>2</two></a>", True), ("<a><one>1.5</one></a>", False),
      ("<a><three>1</three></a>", False)]),
    ("abstract head", schema(
        '<xs:element name="head" type="xs:int" abstract="true"/><xs:element name="one" '
        'substitutionGroup="head"/><xs:element name="a"><xs:complexType><xs:sequence><xs:element '
        'ref="head"/></xs:sequence></xs:complexType></xs:element>'),
     [("<a><one>1</one></a>", True), ("<a><head>1</head></a>", False)]),
]


def keyed(title, constraint, *pairs):
    item = ('<xs:element name="{}" maxOccurs="unbounded" minOccurs="0"><xs:complexType><xs:attribute '
            'name="id" type="xs:int"/><xs:attribute name="x"/></xs:complexType></xs:element>')
    body = (f'<xs:element name="a"><xs:complexType><xs:sequence>{item.format("b")}{item.format("r")}'
            f'</xs:sequence></xs:complexType>{constraint}</xs:element>')
    return (title, schema(body), [(f"<a>{inner}</a>", valid) for inner, valid in pairs])


KEY = '<xs:key name="k"><xs:selector xpath="b"/><xs:field xpath="@id"/></xs:key>'

CONSTRAINTS = [
    keyed("unique", '<xs:unique name="u"><xs:selector xpath="b"/><xs:field xpath="@id"/></xs:unique>',
          ('<b id="1"/><b id="2"/>', True), ('<b id="1"/><b id="01"/>', False), ("<b/><b/>", True)),
    keyed("key", KEY, ('<b id="1"/><b id="2"/>', True), ('<b id="1"/><b/>', False),
          ('<b id="1"/><b id="1"/>', False), ("", True)),
    keyed("key of two fields", '<xs:key name="k"><xs:selector xpath="b"/><xs:field xpath="@id"/>'
          '<xs:field xpath="@x"/></xs:key>', ('<b id="1" x="1"/><b id="1" x="2"/>', True),
          ('<b id="1" x="1"/><b id="1" x="1"/>', False), ('<b id="1"/>', False)),
    keyed("key reference", KEY + '<xs:keyref name="r" refer="k"><xs:selector xpath="r"/><xs:field '
          'xpath="@id"/></xs:keyref>', ('<b id="1"/><r id="1"/><r id="1"/>', True),
          ('<b id="1"/><r id="2"/>', False), ('<b id="1"/><r/>', True)),
    keyed("selector with descendants and choice",
          '<xs:unique name="u"><xs:selector xpath=".//b|.//r"/><xs:field xpath="@id"/></xs:unique>',
          ('<b id="1"/><r id="2"/>', True), ('<b id="1"/><r id="1"/>', False)),
]

SPACE = 'targetNamespace="urn:t" xmlns="urn:t"'

NAMESPACES = [
    ("target namespace", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b"/>'
                                '</xs:sequence></xs:complexType></xs:element>', SPACE),
     [('<a xmlns="urn:t"><b xmlns=""/></a>', True), ('<p:a xmlns:p="urn:t"><b/></p:a>', True),
      ('<a xmlns="urn:t"><b/></a>', False)]),
    ("qualified elements", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b"/>'
                                  '</xs:sequence></xs:complexType></xs:element>',
                                  SPACE + ' elementFormDefault="qualified"'),
     [('<a xmlns="urn:t"><b/></a>', True), ('<p:a xmlns:p="urn:t"><b/></p:a>', False)]),
    ("qualified attributes", schema('<xs:element name="a"><xs:complexType><xs:attribute name="x"/>'
                                    '</xs:complexType></xs:element>',
                                    SPACE + ' attributeFormDefault="qualified"'),
     [('<p:a xmlns:p="urn:t" p:x="1"/>', True), ('<p:a xmlns:p="urn:t" x="1"/>', False)]),
    ("names in content", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b" '
                                'type="xs:QName" maxOccurs="2"/></xs:sequence></xs:complexType></xs:element>'),
     [('<a xmlns:p="urn:p"><b>p:x</b></a>', True), ("<a><b>p:x</b></a>", False),
      ('<a><b xmlns:p="urn:p">p:x</b><b>p:x</b></a>', False)]),
]


def several(title, files, *pairs):
    return (title, files, pairs)


T_INT = '<xs:simpleType name="T"><xs:restriction base="xs:int"/></xs:simpleType>'

FILES = [
    several("include", {"schema.xsd": schema('<xs:include schemaLocation="t.xsd"/>'
                                             '<xs:element name="a" type="T"/>'),
                        "t.xsd": schema(T_INT)}, ("<a>1</a>", True), ("<a>x</a>", False)),
    several("include from another folder",
            {"schema.xsd": schema('<xs:include schemaLocation="in/t.xsd"/><xs:element name="a" type="T"/>'),
             "in/t.xsd": schema('<xs:include schemaLocation="../u.xsd"/>'),
             "u.xsd": schema(T_INT)}, ("<a>1</a>", True), ("<a>x</a>", False)),
    several("include in a circle",
            {"schema.xsd": schema('<xs:include schemaLocation="t.xsd"/><xs:element name="a" type="T"/>'),
             "t.xsd": schema('<xs:include schemaLocation="schema.xsd"/>' + T_INT)},
            ("<a>1</a>", True), ("<a>x</a>", False)),
    several("include without a namespace into one that has",
            {"schema.xsd": schema('<xs:include schemaLocation="t.xsd"/><xs:element name="a" type="T"/>', SPACE),
             "t.xsd": schema(T_INT + '<xs:element name="b" type="T"/>')},
            ('<a xmlns="urn:t">1</a>', True), ('<b xmlns="urn:t">1</b>', True),
            ('<b xmlns="urn:t">x</b>', False)),
    several("import", {"schema.xsd": schema('<xs:import namespace="urn:t" schemaLocation="t.xsd"/>'
                                            '<xs:element name="a" type="t:T"/>', 'xmlns:t="urn:t"'),
                       "t.xsd": schema(T_INT, SPACE)}, ("<a>1</a>", True), ("<a>x</a>", False)),
    several("import of elements",
            {"schema.xsd": schema('<xs:import namespace="urn:t" schemaLocation="t.xsd"/><xs:element name="a">'
                                  '<xs:complexType><xs:sequence><xs:element ref="t:b"/></xs:sequence>'
                                  '</xs:complexType></xs:element>', 'xmlns:t="urn:t"'),
             "t.xsd": schema(T_INT + '<xs:element name="b" type="T"/>', SPACE)},
            ('<a><b xmlns="urn:t">1</b></a>', True), ('<a><b xmlns="urn:t">x</b></a>', False),
            ("<a><b>1</b></a>", False)),
    several("redefine", {"schema.xsd": schema('<xs:redefine schemaLocation="t.xsd"><xs:simpleType name="T">'
                                              '<xs:restriction base="T"><xs:maxInclusive value="5"/>'
                                              '</xs:restriction></xs:simpleType></xs:redefine>'
                                              '<xs:element name="a" type="T"/>'),
                         "t.xsd": schema(T_INT)}, ("<a>5</a>", True), ("<a>6</a>", False)),
    several("names with blanks and umlauts",
            {"schema.xsd": schema('<xs:include schemaLocation="a%20b.xsd"/><xs:element name="a" type="T"/>'),
             "a b.xsd": schema(T_INT)}, ("<a>1</a>", True), ("<a>x</a>", False)),
]

ALL = BUILT_IN + FACETS + MODELS + ATTRIBUTES + TYPES + CONSTRAINTS + NAMESPACES + FILES

# Where the processor departs from the standard, which says the opposite: xmllint has the same one.
# A change here is news for the guide.
DEPARTURES = [
    ("double", schema('<xs:element name="a" type="xs:double"/>'), [("<a>1e</a>", True)]),
    ("no names", schema('<xs:element name="a" type="xs:NMTOKENS"/>'), [("<a/>", True)]),
    ("white space around integers", schema('<xs:element name="a" type="xs:int"/>'),
     [("<a> 1 </a>", False)]),
    ("other writings of a fixed number", schema('<xs:element name="a" type="xs:int" fixed="1"/>'),
     [("<a>01</a>", False)]),
    ("identifiers that are used twice", schema(
        '<xs:element name="a"><xs:complexType><xs:sequence><xs:element name="b" type="xs:ID" '
        'maxOccurs="2"/></xs:sequence></xs:complexType></xs:element>'),
     [("<a><b>x</b><b>x</b></a>", True)]),
]

# Schemas that no document can be held against.
UNUSABLE = [
    ("no schema", "<a/>"),
    ("another language", '<grammar xmlns="http://relaxng.org/ns/structure/1.0"/>'),
    ("unknown type", schema('<xs:element name="a" type="Unknown"/>')),
    ("unknown element", schema('<xs:element name="a"><xs:complexType><xs:sequence><xs:element ref="b"/>'
                               '</xs:sequence></xs:complexType></xs:element>')),
    ("element twice", schema('<xs:element name="a"/><xs:element name="a"/>')),
    ("ambiguous", schema(f'<xs:element name="a"><xs:complexType><xs:choice>{B}<xs:sequence>{B}{C}'
                         '</xs:sequence></xs:choice></xs:complexType></xs:element>')),
    ("facet of the wrong kind", schema('<xs:simpleType name="T"><xs:restriction base="xs:int">'
                                       '<xs:length value="1"/></xs:restriction></xs:simpleType>')),
    ("bad pattern", schema('<xs:simpleType name="T"><xs:restriction base="xs:string"><xs:pattern '
                           'value="["/></xs:restriction></xs:simpleType>')),
    ("type in a circle", schema('<xs:simpleType name="T"><xs:restriction base="U"/></xs:simpleType>'
                                '<xs:simpleType name="U"><xs:restriction base="T"/></xs:simpleType>')),
    ("group in a circle", schema('<xs:group name="g"><xs:sequence><xs:group ref="g"/></xs:sequence></xs:group>'
                                 '<xs:element name="a"><xs:complexType><xs:group ref="g"/></xs:complexType>'
                                 '</xs:element>')),
    ("includes itself", schema('<xs:include schemaLocation="schema.xsd"/><xs:element name="a"/>')),
    ("includes what is not there", schema('<xs:include schemaLocation="gone.xsd"/><xs:element name="a"/>')),
    ("includes what is no schema", schema('<xs:include schemaLocation="no.xml"/><xs:element name="a"/>')),
    ("misplaced", schema("<xs:sequence/>")),
    ("unknown attribute", schema('<xs:element name="a" colour="red"/>')),
]
