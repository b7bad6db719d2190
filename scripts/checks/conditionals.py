#!/usr/bin/env python3
"""Only the engine and the systems' own folders may ask which platform they are compiled for.

Everything else is one set of sources for every platform; a conditional there would be a second one.
"""

import re

import checking

ALLOWED = ("platform/linux/", "platform/windows/", "engine/")
CONDITIONAL = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b(.*)")
PLATFORM_MACRO = re.compile(
    r"\b(_?WIN(?:32|64)|_MSC_VER|__MINGW\w*|__CYGWIN__|_?_?(?:linux|unix|gnu_linux)(?:__)?"
    r"|__APPLE__|__MACH__|__FreeBSD__|__GLIBC\w*|_?_?WCHAR_\w+|__SIZEOF_WCHAR_T__)\b")


def fault_of(line):
    match = CONDITIONAL.match(line)
    macro = match and PLATFORM_MACRO.search(match.group(1))
    return f"asks for the platform ({macro.group(1)})" if macro else None


def find_faults(root):
    faults = []
    for path in checking.cpp_files(root):
        name = path.relative_to(root).as_posix()
        if name.startswith(ALLOWED):
            continue
        for number, line in enumerate(checking.lines_of(path), 1):
            fault = fault_of(line)
            if fault:
                faults.append(f"{name}:{number}: {fault}")
    return faults


CASES = [
    checking.Case("asked below the boundary", {"platform/linux/Module.cpp": "#ifdef _WIN32\n#endif\n",
                                               "engine/com/A.cpp": "#if defined(__linux__)\n#endif\n"}),
    checking.Case("other conditionals", {"dom/A.cpp": "#ifndef NDEBUG\n#endif\n// #ifdef _WIN32\n"}),
    checking.Case("in the library", {"dom/A.cpp": "#ifdef _WIN32\n#endif\n"}, "dom/A.cpp:1"),
    checking.Case("in what the platforms share", {"platform/common/A.cpp": "#ifdef _WIN32\n#endif\n"},
                  "platform/common/A.cpp:1"),
    checking.Case("in a public header", {"include/TibXml/A.h": "# if !defined(__linux__)\n# endif\n"},
                  "__linux__"),
    checking.Case("in a later branch", {"xpath/A.cpp": "#if X\n#elif defined(_MSC_VER)\n#endif\n"},
                  "xpath/A.cpp:2"),
]

if __name__ == "__main__":
    checking.main(find_faults, CASES)
