#include "Select.h"

#include <string_view>

#include <CLI/CLI.hpp>
#include <TibXml/platform/ComError.h>

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

namespace {

// What cannot be part of a name; everything that is not ASCII can, as far as this matters here.
constexpr std::string_view notInNames = " \t\r\n!\"#$%&'()*+,/;<=>?@[\\]^`{|}~";

constexpr std::string_view notFirstInNames = "-.:0123456789";

bool isName(std::string_view text) {
    return !text.empty() && text.find_first_of(notInNames) == text.npos &&
           notFirstInNames.find(text.front()) == text.npos;
}

// Whether the path is several ones, joined by a "|" outside of brackets, parentheses and literals.
bool isUnion(std::string_view path) {
    int depth = 0;
    char quote = '\0';
    for (char const character : path) {
        if (quote != '\0') {
            if (character == quote) quote = '\0';
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (character == '[' || character == '(') {
            ++depth;
        } else if (character == ']' || character == ')') {
            --depth;
        } else if (character == '|' && depth == 0) {
            return true;
        }
    }
    return false;
}

// Whether a path that is followed by the name of an attribute selects its element: not so when it
// ends with an operator, or with a "/" because there are two of them.
bool selectsElement(std::string_view path) {
    return path.empty() || std::string_view{" \t\r\n/|=<>+-,(["}.find(path.back()) == path.npos;
}

} // namespace

ValuePath valuePath(std::string const& path) {
    std::size_t const at = path.rfind('@');
    if (at == path.npos || !isName(std::string_view{path}.substr(at + 1)) || isUnion(path))
        return {path, ""};
    std::string_view node = std::string_view{path}.substr(0, at);
    bool const isRoot = node == "/";
    if (node.ends_with('/') && !isRoot) node.remove_suffix(1);
    if (isRoot || !selectsElement(node)) return {path, ""};
    return {std::string{node}, path.substr(at)};
}

WXmlNode nodeAt(WXmlNode const& root, ValuePath const& path) {
    bool const isOfRoot = path.node.empty() && !path.attribute.empty();
    return isOfRoot ? root : selectFirst(root, path.node);
}

WXmlValueAccessor valueAt(WXmlNode const& node, ValuePath const& path) {
    return path.attribute.empty() ? node.Value() : node.Attribute(toWide(path.attribute));
}

// A path that was changed puts its string together from its steps. So does one that was asked for a
// change which came to nothing: no clause is just a "]".
CString rebuilt(WXPath path) {
    path.RemoveFilterClause(L"]");
    return path.ToString();
}

} // namespace tibxml::tool
