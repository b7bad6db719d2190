#!/usr/bin/env python3
"""Holds every #include against the table of who may use whom.

The layers are what keeps the engine replaceable and the library free of it: one careless include
undoes that without any test noticing.
"""

import checking
import includes

# What all platforms share over what each has of its own. Which of the latter is there, CMake decides;
# all offer the same headers.
PLATFORM = {"platform/common", "platform/linux", "platform/windows"}
PUBLIC = PLATFORM | {"tibutils", "include", "engine/api"}
ENGINE = {"engine/api", "engine/tree", "engine/query", "engine/reader", "engine/output", "engine/libxml",
          "engine/validation", "engine/transform", "engine/com"}

# What each folder may include beside itself. Tests and fuzzers may reach everything.
MAY_USE = {
    "platform/common": PLATFORM,
    "platform/linux": {"platform/common"},
    "platform/windows": {"platform/common"},
    "tibutils": PLATFORM,
    "engine/api": PLATFORM,
    "engine/tree": PLATFORM,
    "engine/query": PLATFORM | {"engine/tree"},
    "engine/output": PLATFORM | {"engine/tree"},
    "engine/reader": PLATFORM | {"engine/tree"},
    "engine/libxml": PLATFORM | {"engine/tree"},
    "engine/validation": PLATFORM | {"engine/tree", "engine/reader", "engine/output", "engine/libxml"},
    "engine/transform": PLATFORM | {"engine/tree", "engine/reader", "engine/output", "engine/libxml"},
    "engine/com": ENGINE | PLATFORM,
    "include": PLATFORM | {"tibutils", "engine/api"},
    "calls": PLATFORM | {"include", "engine/api"},
    "xpath": PLATFORM | {"tibutils"},
    "values": PLATFORM | {"include", "calls", "engine/api", "tibutils"},
    "dom": PLATFORM | {"include", "calls", "engine/api", "tibutils"},
    "composite": PLATFORM | {"include", "calls", "tibutils"},
    "services": PLATFORM | {"include", "calls", "tibutils"},
    "examples": PUBLIC,
    "bench": PUBLIC,
    "tools": PUBLIC,
    "tests": set(includes.FOLDERS),
    "fuzz": set(includes.FOLDERS),
}

# Single headers opened to a folder that may not use the rest of their folder.
EXCEPTIONS = {
    ("xpath", "TibXml/WXPath.h"),
}

# Other people's headers: which folders may know of them.
THIRD_PARTY = {
    "libxml": {"engine/libxml", "engine/validation", "engine/transform", "bench", "tests"},
    "libxslt": {"engine/transform", "bench", "tests"},
    "libexslt": {"engine/transform", "bench", "tests"},
    "nlohmann": {"tibutils", "tests"},
    "CLI": {"tools"},
    "gtest": {"tests"},
    "gmock": {"tests"},
    "benchmark": {"bench"},
    "pugixml.hpp": {"bench"},
    "expat.h": {"bench"},
    "rapidxml": {"bench"},
    "xercesc": {"bench"},
    "sanitizer": {"engine/tree", "engine/com", "tests"},
    "emmintrin.h": {"engine/reader"},
    "arm_neon.h": {"engine/reader"},
    "netinet": {"tests"},  # the product never connects
}

# Library folders and platform/common are the same everywhere; only what lies below may ask for this
# system's headers.
POSIX = {"unistd.h", "fcntl.h", "dlfcn.h", "link.h", "pthread.h", "dirent.h", "langinfo.h", "iconv.h",
         "sys", "malloc.h", "strings.h", "libgen.h"}
POSIX_USERS = ENGINE | {"platform/linux", "tibutils", "bench", "tests", "tools", "fuzz"}

STANDARD = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath compare complex concepts condition_variable coroutine csetjmp
    csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception
    execution filesystem forward_list fstream functional future initializer_list iomanip ios iosfwd
    iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers
    numeric optional ostream queue random ratio regex scoped_allocator semaphore set shared_mutex
    source_location span sstream stack stdexcept stop_token streambuf string string_view syncstream
    system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility
    valarray variant vector version cxxabi.h
    assert.h ctype.h errno.h fenv.h float.h inttypes.h limits.h locale.h math.h setjmp.h signal.h
    stdarg.h stddef.h stdint.h stdio.h stdlib.h string.h time.h uchar.h wchar.h wctype.h
""".split())


def may_use(user, used, path, spelling):
    if user == used or used in MAY_USE[user] or (user, spelling) in EXCEPTIONS:
        return True
    # The SAX front end alone stands directly on the engine's interfaces.
    return user == "services" and used == "engine/api" and "Sax" in path.name


def quoted_fault(root, path, spelling):
    target = includes.quoted_target(root, path, spelling)
    if target is None:
        return f'"{spelling}" is not beside the file'
    if includes.folder_of(root, target) != includes.folder_of(root, path):
        return f'"{spelling}" leaves its folder: quotes stay within one'
    return None


def foreign_fault(folder, spelling):
    """A header that is not ours: the standard library, this platform's or a third party's."""
    head = spelling.split("/")[0]
    if spelling in STANDARD:
        return None
    if spelling in POSIX or head in POSIX:
        return None if folder in POSIX_USERS else f"{folder} may not know <{spelling}>: platform only"
    if head in THIRD_PARTY:
        return None if folder in THIRD_PARTY[head] else f"{folder} may not include <{spelling}>"
    return f"<{spelling}> is neither ours nor known here"


def angle_fault(root, path, folder, spelling):
    target = includes.angle_target(root, spelling)
    if target is None:
        if includes.claims_to_be_ours(spelling):
            return f"<{spelling}> does not exist"
        return foreign_fault(folder, spelling)
    if may_use(folder, target[0], path, spelling):
        return None
    return f"{folder} may not include <{spelling}> of {target[0]}"


def fault_of(root, path, spelling, quoted):
    folder = includes.folder_of(root, path)
    if folder is None:
        return "lies in no folder of the table"
    if spelling is None:
        return "an include by macro cannot be checked"
    if quoted:
        return quoted_fault(root, path, spelling)
    return angle_fault(root, path, folder, spelling)


def find_faults(root):
    root = root.resolve()
    faults = []
    for path in checking.cpp_files(root):
        for number, spelling, quoted in includes.of_file(path):
            fault = fault_of(root, path, spelling, quoted)
            if fault:
                faults.append(f"{path.relative_to(root)}:{number}: {fault}")
    return faults


GOOD = {
    "platform/common/include/TibXml/platform/CString.h": "#include <TibXml/platform/BStr.h>\n",
    "platform/linux/include/TibXml/platform/BStr.h": "#include <string>\n",
    "platform/linux/Stream.cpp": "#include <fcntl.h>\n#include <TibXml/platform/CString.h>\n",
    "include/TibXml/WXPath.h": "#include <TibXml/platform/CString.h>\n",
    "include/TibXml/WXmlNode.h": "#include <TibXml/WXPath.h>\n",
    "calls/include/calls/EngineCall.h": "#include <TibXml/engine/IXMLDOMNode.h>\n",
    "engine/api/include/TibXml/engine/IXMLDOMNode.h": "#include <TibXml/platform/CString.h>\n",
    "engine/tree/include/tree/Node.h": "#include <TibXml/platform/CString.h>\n",
    "engine/tree/Node.cpp": "#include <tree/Node.h>\n#include \"Arena.h\"\n",
    "engine/tree/Arena.h": "#include <unistd.h>\n",
    "engine/query/include/query/Query.h": "#include <tree/Node.h>\n",
    "engine/libxml/include/libxml/LibxmlTypes.h": "#include <libxml/parser.h>\n#include <tree/Node.h>\n",
    "engine/validation/Schema.cpp": "#include <libxml/LibxmlTypes.h>\n#include <libxml/xmlschemas.h>\n",
    "engine/transform/Stylesheet.cpp": "#include <libxml/LibxmlTypes.h>\n#include <libxslt/xslt.h>\n",
    "engine/transform/include/transform/Stylesheet.h": "#include <tree/Node.h>\n",
    "services/WXmlSax.cpp": "#include <TibXml/engine/IXMLDOMNode.h>\n",
    "xpath/WXPath.cpp": "#include <TibXml/WXPath.h>\n",
    "tests/support/Trees.h": "#include <tree/Node.h>\n",
    "tests/tree/NodeTest.cpp": "#include \"Trees.h\"\n#include <gtest/gtest.h>\n",
}


def bad(name, path, text, fault):
    return checking.Case(name, GOOD | {path: text}, fault)


CASES = [
    checking.Case("a tree in order", GOOD),
    bad("a public header with what callers must not see", "include/TibXml/WXmlDoc.h",
        "#include <calls/EngineCall.h>\n", "include may not include"),
    bad("tool in the library's way to the engine", "tools/tibxml/A.cpp",
        "#include <calls/EngineCall.h>\n", "tools may not"),
    bad("upwards", "platform/linux/A.cpp", "#include <tree/Node.h>\n", "platform/linux may not include"),
    bad("line is named", "platform/linux/A.cpp", "\n#include <tree/Node.h>\n", "platform/linux/A.cpp:2:"),
    bad("a system's header in what all share", "platform/common/A.cpp", "#include <fcntl.h>\n",
        "platform only"),
    bad("a third system", "platform/A.cpp", "#include <string>\n", "no folder of the table"),
    bad("sideways", "engine/output/A.cpp", "#include <query/Query.h>\n", "of engine/query"),
    bad("engine in the library", "dom/A.cpp", "#include <tree/Node.h>\n", "dom may not include"),
    bad("libxml2 in the reader", "engine/reader/A.cpp", "#include <libxml/parser.h>\n", "may not include"),
    bad("library in the engine", "engine/com/A.cpp", "#include <TibXml/WXPath.h>\n", "of include"),
    bad("the path object knows paths only", "xpath/A.cpp", "#include <TibXml/WXmlNode.h>\n",
        "xpath may not include"),
    bad("services beside SAX", "services/Json.cpp", "#include <TibXml/engine/IXMLDOMNode.h>\n",
        "of engine/api"),
    bad("tool in private headers", "tools/tibxml/A.cpp", "#include <tree/Node.h>\n", "tools may not"),
    bad("libxml2 outside its folder", "engine/com/A.cpp", "#include <libxml/tree.h>\n", "may not"),
    bad("libxslt outside its folder", "dom/A.cpp", "#include <libxslt/xslt.h>\n", "may not"),
    bad("libxslt in the schemas", "engine/validation/A.cpp", "#include <libxslt/xslt.h>\n", "may not"),
    bad("what schemas and stylesheets share in the reader", "engine/reader/A.cpp",
        "#include <libxml/LibxmlTypes.h>\n", "of engine/libxml"),
    bad("stylesheets in the schemas", "engine/validation/A.cpp", "#include <transform/Stylesheet.h>\n",
        "of engine/transform"),
    bad("schemas in what they share", "engine/libxml/A.cpp", "#include <query/Query.h>\n", "of engine/query"),
    bad("platform header in the library", "dom/A.cpp", "#include <unistd.h>\n", "platform only"),
    bad("missing header of ours", "dom/A.cpp", "#include <TibXml/Gone.h>\n", "does not exist"),
    bad("unknown header", "dom/A.cpp", "#include <windows_extra.h>\n", "neither ours nor known"),
    bad("quotes across folders", "dom/A.cpp", '#include "../xpath/WXPath.cpp"\n', "leaves its folder"),
    bad("quotes to nothing", "dom/A.cpp", '#include "Gone.h"\n', "not beside the file"),
    bad("include by macro", "dom/A.cpp", "#include HEADER\n", "by macro"),
    bad("a folder outside the table", "engine/A.cpp", "#include <string>\n", "no folder of the table"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES)
