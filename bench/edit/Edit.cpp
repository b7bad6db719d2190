#include "Edit.h"

#include "../Settings.h"

namespace bench {

namespace {

constexpr double childParts = childrenPerRun;

Operation children(std::string name, std::size_t atOnce, Targets targets) {
    std::string const& small = smallSettings();
    return {std::move(name),
            {tibxmlChildren(small, atOnce), pugixmlChildren(small, atOnce),
             libxml2Children(small, atOnce)},
            targets,
            childParts};
}

Operation ensure(std::string name, Descendant descendant) {
    std::string const& small = smallSettings();
    return {std::move(name),
            {tibxmlEnsure(small, descendant), pugixmlEnsure(small, descendant),
             libxml2Ensure(small, descendant)},
            {}};
}

Operation clone(std::string name, DropCopy drop, Targets targets) {
    std::string const& large = largeSettings();
    return {std::move(name),
            {tibxmlClone(large, drop), pugixmlClone(large, drop), libxml2Clone(large, drop)},
            targets};
}

// Settings of 10,000 nodes as the first child of a root.
std::string const& program() {
    static std::string const text = [] {
        constexpr std::size_t items = 1'373;
        std::string const all = settings(items);
        return "<program>" + all.substr(all.find("<settings>")) + "</program>";
    }();
    return text;
}

Operation graft() {
    return {"graft 10,000 nodes to another document and back",
            {tibxmlGraft(program()), pugixmlGraft(program()), libxml2Graft(program())},
            {}};
}

} // namespace

std::vector<Operation> editOperations() {
    std::string const& small = smallSettings();
    std::vector<Operation> all;
    all.push_back(children("child with 2 integers, made and removed", 1, {0, 1}));
    all.push_back(children("the same, 10,000 made, then all removed", childrenPerRun, {0, 1}));
    all.push_back(ensure("ensure window/position/left, which exists", Descendant::exists));
    all.push_back(ensure("the same when it is missing, and remove it", Descendant::missing));
    all.push_back({"set and read item[@id='7']/value, 2 KB",
                   {tibxmlSetAndRead(small), pugixmlSetAndRead(small), libxml2SetAndRead(small)},
                   {1, 0}});
    all.push_back(clone("deep clone of 5 MB", DropCopy::untimed, {0.8, 5}));
    all.push_back(clone("deep clone of 5 MB and drop it", DropCopy::timed, {}));
    all.push_back(graft());
    return all;
}

} // namespace bench
