#include "Load.h"

#include <malloc.h>

namespace bench {

namespace {

struct Way {
    From from;
    Drop drop;
    Layout layout = Layout::asByDefault;
};

Operation operation(std::string name, Sources const& sources, Way way, Targets targets = {}) {
    return {std::move(name),
            {tibxmlLoad(sources, way.from, way.drop), pugixmlLoad(sources, way.from, way.drop),
             libxml2Load(sources, way.from, way.drop, way.layout)},
            targets};
}

} // namespace

void returnFreeMemory() noexcept {
    malloc_trim(0);
}

std::vector<Operation> loadOperations(Sources const& large, Sources const& small) {
    Way const memory{From::memory, Drop::untimed};
    Way const memoryWithoutLayout{From::memory, Drop::untimed, Layout::dropped};
    Way const memoryAndDrop{From::memory, Drop::timed};
    Way const wideText{From::wideText, Drop::untimed};
    Way const file{From::file, Drop::untimed};
    Way const fileAndDrop{From::file, Drop::timed};
    std::vector<Operation> all;
    all.push_back(operation("load 5 MB from memory", large, memory, {0, 3}));
    all.push_back(operation("the same, libxml2 told to drop layout", large, memoryWithoutLayout));
    all.push_back(operation("load 5 MB from memory and drop it", large, memoryAndDrop));
    all.push_back(operation("load 5 MB from wide text", large, wideText));
    all.push_back(operation("load 5 MB from a file", large, file));
    all.push_back(operation("load 2 KB from a file and drop it", small, fileAndDrop));
    return all;
}

} // namespace bench
