#include "Select.h"

#include <CLI/CLI.hpp>

#include <TibXml/platform/ComError.h>

#include "EngineError.h"
#include "Failure.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

// Runs a call of the engine that fails when `argument` is bad: the failure names it, then.
template <class Call>
auto withArgument(std::string const& what, std::string const& argument, Call call) {
    try {
        return call();
    } catch (_com_error const& error) {
        if (error.Error() == E_OUTOFMEMORY) throw;
        throw failure(ExitStatus::failed, what + " '" + argument + "': " + describe(error));
    }
}

std::string joined(std::vector<std::string> const& texts) {
    std::string all;
    for (std::string const& text : texts) {
        if (!all.empty()) all += ' ';
        all += text;
    }
    return all;
}

} // namespace

void addNamespaceOption(CLI::App& command, std::vector<std::string>& declarations) {
    command
        .add_option("--ns", declarations,
                    "Prefixes for the path, such as \"xmlns:p='urn:example'\";\n"
                    "several are separated by blanks or given one by one")
        ->option_text("DECLARATIONS")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
}

void useNamespaces(WXmlDoc& document, std::vector<std::string> const& declarations) {
    std::string const all = joined(declarations);
    withArgument("bad namespaces", all, [&] { document.SetSelectionNamespaces(toWide(all)); });
}

WXmlNodeList selectAll(WXmlNode const& element, std::string const& path) {
    return withArgument("bad path", path, [&] { return element.GetNodes(WXPath{toWide(path)}); });
}

WXmlNode selectFirst(WXmlNode const& element, std::string const& path) {
    return withArgument("bad path", path,
                        [&] { return element.GetNodeNoThrow(WXPath{toWide(path)}); });
}

} // namespace tibxml::tool
