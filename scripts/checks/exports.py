#!/usr/bin/env python3
"""Holds the names that the shared library exports, and the libraries it needs, against lists.

    exports.py LIBRARY
    exports.py --self-test

A name that leaks is a promise that was not meant: another library's template instantiated
here, or an internal class, could no longer change or would be bound to by another library's copy.
"""

import re
import subprocess
import sys

# Classes and free functions of the library and of its platform; matched against demangled names.
OURS = re.compile(
    # A template's name begins with what it returns.
    r"""^(?:std::optional<[\w ]+>\ )?(?:(?:typeinfo\ (?:name\ )?|vtable|VTT|guard\ variable)\ ?for\ |non-virtual\ thunk\ to\ )?
    (?:
        (?:WXPath|XPathElement|WXml\w+|IBackupRestorable|WDataBackup)\b
      | CString\b | C(?:Point|Size|Rect)\b | _bstr_t\b | _variant_t\b | _com_error\b
      | I(?:Unknown|XMLDOM\w+|XSL\w+|SAX\w+|MXX\w+|Stream|SequentialStream|ErrorInfo
            |CreateErrorInfo|SupportErrorInfo)\b
      | (?:TibUtils|tibxml::platform)::
      | JsonConvert(?:To|From)Xml\b
      | Sys(?:AllocString(?:Len|ByteLen)?|ReAllocString(?:Len)?|FreeString|String(?:Byte)?Len)\b
      | Variant(?:Init|Clear|Copy)\b | SafeArray\w+\b
      | (?:Set|Get|Create)ErrorInfo\b | _com_(?:raise_error|issue_error|issue_errorex)\b
      | Co(?:Initialize|InitializeEx|Uninitialize|CreateInstance)\b | OleRun\b
      | SHCreate(?:MemStream|StreamOnFileW)\b | GetModuleHandle[AW]\b | EqualRect\b
      | operator(?:==|!=|<|>|<=|>=|\+)\(.*\b(?:CString|CPoint|CSize|CRect|WXPath|WXml\w+)\b
    )""", re.VERBOSE)

NEEDED = re.compile(r"^(?:libxml2|libxslt|libexslt|libstdc\+\+|libgcc_s|libc|libm|ld-linux[\w-]*)\.so")


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()


def exported_names(library):
    """Demangled names of what the library defines for others."""
    return [line.split(" ", 2)[2] for line in output_of("nm", "-D", "-C", "--defined-only", library)]


def needed_libraries(library):
    found = [re.search(r"\(NEEDED\).*\[(.+)\]", line) for line in output_of("readelf", "-d", library)]
    return [match[1] for match in found if match]


def has_soname(library):
    return any("(SONAME)" in line for line in output_of("readelf", "-d", library))


def faults_of(names, needed):
    faults = [f"exported, but not ours to give: {name}" for name in names if not OURS.match(name)]
    return faults + [f"needed, but not expected: {name}" for name in needed if not NEEDED.match(name)]


OUR_NAMES = [
    "WXPath::WXPath(wchar_t const*)", "vtable for WXmlDoc", "WXmlDoc::EngineDocument() const",
    "typeinfo for _com_error", "typeinfo name for WXmlValueTypeNotFoundException", "SysAllocString",
    "CString::~CString()", "std::optional<CRect> WXmlValueAccessor::Get<CRect>() const",
    "TibUtils::DataEncoding::Utf8Encode(CString const&)", "operator==(CString const&, CString const&)",
]
OTHER_NAMES = [
    "std::map<int, CString>::clear()", "std::optional<int> tibxml::tree::find<int>()",
    "std::vector<CString, std::allocator<CString> >::push_back(CString const&)", "xmlParseFile",
    "tibxml::tree::Node::detach()", "TinyXPath::token_list::add(int)", "vtable for tibxml::com::Handle",
    "nlohmann::detail::parse_error::~parse_error()", "typeinfo for std::bad_cast",
    "operator==(std::string const&, char const*)",
]


def self_test():
    wrong = faults_of(OUR_NAMES, ["libxml2.so.2", "libc.so.6"])
    wrong += [name for name in OTHER_NAMES if not faults_of([name], [])]
    wrong += [name for name in ["libssl.so.3", "libpugixml.so.1"] if not faults_of([], [name])]
    print("\n".join(wrong) if wrong else "every name judged as it must be")
    return 1 if wrong else 0


def main():
    if len(sys.argv) != 2:
        sys.exit(f"usage: {sys.argv[0]} LIBRARY | --self-test")
    if sys.argv[1] == "--self-test":
        sys.exit(self_test())
    names = exported_names(sys.argv[1])
    faults = faults_of(names, needed_libraries(sys.argv[1]))
    if not has_soname(sys.argv[1]):
        faults.append("the library has no name of its own (SONAME)")
    print("\n".join(faults))
    print(f"{len(names)} names exported, {len(faults)} faults")
    sys.exit(1 if faults or not names else 0)


if __name__ == "__main__":
    main()
