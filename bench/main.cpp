// Measures the library beside others that do the same, in one run, and prints one table.
//
//   tibxml_bench            everything
//   tibxml_bench TEXT       the operations whose names hold the text
//   tibxml_bench --large    also loading up to 200 MB
//   tibxml_bench --apart    only the operations that give each library a process of its own
//   tibxml_bench --rounds N of those: as many processes for each library, 3 unless told otherwise
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <libxml/parser.h>

#include "Measurement.h"
#include "Settings.h"
#include "Table.h"
#include "TemporaryFile.h"
#include "apart/Alone.h"
#include "apart/Apart.h"
#include "edit/Edit.h"
#include "edit/Growth.h"
#include "layers/Layers.h"
#include "list/List.h"
#include "load/Growth.h"
#include "load/Load.h"
#include "lookup/Lookup.h"
#include "memory/Memory.h"
#include "save/Save.h"
#include "sax/Sax.h"
#include "strings/Strings.h"
#include "transform/Transform.h"
#include "validate/Validate.h"
#include "json/Json.h"

namespace {

using namespace bench;

struct Wishes {
    bool large = false;
    bool onlyApart = false;
    int rounds = 3;
    std::string_view part; // of the name
};

Wishes parse(int count, char** arguments) {
    Wishes wishes;
    for (int i = 1; i < count; ++i) {
        std::string_view const argument = arguments[i];
        if (argument == "--large") {
            wishes.large = true;
        } else if (argument == "--apart") {
            wishes.onlyApart = true;
        } else if (argument == "--rounds" && i + 1 < count) {
            wishes.rounds = std::max(1, std::atoi(arguments[++i]));
        } else {
            wishes.part = argument;
        }
    }
    return wishes;
}

Sources sourcesOf(std::string const& text, TemporaryFile const& file) {
    return {text, widened(text.data(), text.size()), file.path(),
            std::wstring{file.path().begin(), file.path().end()}};
}

void measureAll(std::vector<Operation> operations, Wishes const& wishes) {
    for (Operation& operation : operations)
        if (operation.name.find(wishes.part) != std::string::npos) printRow(measure(operation));
}

void measureTogether(Wishes const& wishes) {
    TemporaryFile const largeFile{largeSettings()};
    TemporaryFile const smallFile{smallSettings()};
    Sources const large = sourcesOf(largeSettings(), largeFile);
    Sources const small = sourcesOf(smallSettings(), smallFile);
    std::printf("documents of %zu and %zu bytes; processor time, best of many rounds\n\n",
                large.text.size(), small.text.size());
    printHeading();
    if (memoryRow.find(wishes.part) != std::string_view::npos) printRow(memoryPerNode());
    measureAll(loadOperations(large, small), wishes);
    measureAll(lookupOperations(), wishes);
    measureAll(listOperations(), wishes);
    measureAll(saveOperations(), wishes);
    measureAll(editOperations(), wishes);
    measureAll(layersOperations(), wishes);
    if (editsBySize.find(wishes.part) != std::string_view::npos) printEditsBySize();
    measureAll(jsonOperations(), wishes);
    measureAll(stringOperations(), wishes);
    if (std::string_view{"sax"}.find(wishes.part) != std::string_view::npos)
        printSax(largeSettings());
    measureAll(validateOperations(large), wishes);
    measureAll(transformOperations(), wishes);
    if (wishes.large) printGrowth();
}

void measure(int count, char** arguments) {
    if (count > 1 && std::string_view{arguments[1]} == aloneOption) {
        doAlone(taskOf({arguments + 1, arguments + count}));
        return;
    }
    Wishes const wishes = parse(count, arguments);
    if (!wishes.onlyApart) {
        xmlInitParser();
        measureTogether(wishes);
    }
    printApart(wishes.part, wishes.rounds);
}

} // namespace

int main(int count, char** arguments) {
    try {
        measure(count, arguments);
        return 0;
    } catch (std::exception const& error) {
        (void)std::fprintf(stderr, "tibxml_bench: %s\n", error.what());
        return 1;
    }
}
