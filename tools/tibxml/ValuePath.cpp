#include "ValuePath.h"

#include <string_view>

#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

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

} // namespace tibxml::tool
