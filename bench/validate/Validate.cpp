#include "Validate.h"

namespace bench {

std::string const& settingsSchema() {
    static std::string const text = R"xsd(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
<xs:element name="settings"><xs:complexType><xs:sequence>
  <xs:element name="item" type="Item" minOccurs="0" maxOccurs="unbounded"/>
</xs:sequence></xs:complexType></xs:element>
<xs:complexType name="Item">
  <xs:sequence>
    <xs:element name="name" type="xs:string"/>
    <xs:element name="value" type="xs:int"/>
    <xs:element name="position" type="Position" minOccurs="0"/>
    <xs:element name="script" type="xs:string" minOccurs="0"/>
  </xs:sequence>
  <xs:attribute name="id" type="xs:nonNegativeInteger" use="required"/>
  <xs:attribute name="kind" type="xs:NMTOKEN"/>
</xs:complexType>
<xs:simpleType name="Position"><xs:restriction base="xs:string">
  <xs:pattern value="\(\d+,\d+\)"/>
</xs:restriction></xs:simpleType>
</xs:schema>
)xsd";
    return text;
}

namespace {

Operation operation(std::string name, Sources const& large, What what, Layout layout,
                    Targets targets = {}) {
    return {std::move(name),
            {tibxmlValidate(large, what), nullptr, libxml2Validate(large, what, layout)},
            targets};
}

} // namespace

std::vector<Operation> validateOperations(Sources const& large) {
    std::vector<Operation> all;
    What const both = What::parseAndValidate;
    all.push_back(operation("load 5 MB from memory and validate", large, both, Layout::asByDefault,
                            {0, 1.5}));
    all.push_back(
        operation("load and validate, libxml2 told to drop layout", large, both, Layout::dropped));
    all.push_back(operation("validate 5 MB", large, What::validate, Layout::asByDefault));
    all.push_back(
        operation("validate, libxml2 told to drop layout", large, What::validate, Layout::dropped));
    return all;
}

} // namespace bench
