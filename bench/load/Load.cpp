#include "Load.h"

namespace bench {

namespace {

Operation operation(std::string name, Sources const& sources, From from, Drop drop,
                    Targets targets) {
    return {std::move(name),
            {tibxmlLoad(sources, from, drop), pugixmlLoad(sources, from, drop),
             libxml2Load(sources, from, drop)},
            targets};
}

} // namespace

std::vector<Operation> loadOperations(Sources const& large, Sources const& small) {
    std::vector<Operation> all;
    all.push_back(operation("load 5 MB from memory", large, From::memory, Drop::untimed, {0, 3}));
    all.push_back(operation("load 5 MB from wide text", large, From::wideText, Drop::untimed, {}));
    all.push_back(operation("load 5 MB from a file", large, From::file, Drop::untimed, {}));
    all.push_back(
        operation("load 5 MB from memory and drop it", large, From::memory, Drop::timed, {}));
    all.push_back(
        operation("load 2 KB from a file and drop it", small, From::file, Drop::timed, {}));
    return all;
}

} // namespace bench
