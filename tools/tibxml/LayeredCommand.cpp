#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Layers.h"
#include "Output.h"
#include "Select.h"
#include "Text.h"
#include "ValueType.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"(One element in two files: what the user changed, and the defaults
that show where he did not. PATH begins at the root elements. USER need not be there; it is
made when something is written. DEFAULTS is never changed.
Status: 0 done, 1 nothing there, not of the type, or not well-formed, 2 bad path or value, or
a file that cannot be read or written.

Examples:
  tibxml layered get defaults.xml user.xml "window[@id='main']" visible --type bool
  tibxml layered set defaults.xml user.xml "window[@id='main']" visible false --type bool
  tibxml layered reset defaults.xml user.xml "window[@id='main']" visible)";

struct Layered {
    std::string defaults;
    std::string user;
    std::string path;
    std::string name;
    std::string value;
    std::string type = valueTypes().front().name;
    std::vector<std::string> namespaces;
};

// An attribute of an element in two layers.
class Attribute {
public:
    explicit Attribute(Layered const& layered)
        : layered_{layered},
          layers_{layered.defaults, layered.user, layered.namespaces},
          name_{toWide(layered.name.starts_with('@') ? layered.name : '@' + layered.name)},
          element_{layers_.defaults(), layers_.user(), WXPath{toWide(layered.path)}} {
        // The element itself takes a bad path for one that selects nothing.
        selectFirst(layers_.defaults().GetRootNode(), layered.path);
    }

    // What forbids changes gets a copy of its own from the library, and that is lost in the end.
    bool isForbidden() const {
        WXmlNode const* const given = element_.GetReadOnlyNode();
        return given != nullptr && !given->Attribute(L"@userCustomizable").GetBool(true);
    }

    // The user's own, if he has one.
    WXmlValueAccessor own() const {
        WXmlNode const* const changed = isForbidden() ? nullptr : element_.GetReadWriteNode();
        return (changed != nullptr ? *changed : WXmlNode{}).Attribute(name_);
    }

    char const* layer() const { return own().Exists() ? "user" : "defaults"; }

    // What is to be read, in its type; empty when there is none.
    std::string text() const {
        bool const fromDefaults = isForbidden();
        return valueType(layered_.type)
            .read(element_.ReadableAttribute(name_, fromDefaults))
            .value_or("");
    }

    std::string required() const {
        ValueType const& type = valueType(layered_.type);
        WXmlValueAccessor const value = element_.ReadableAttribute(name_, false);
        std::string const file = own().Exists() ? layered_.user : layered_.defaults;
        if (auto const text = type.read(value)) return *text;
        throw absentValue(file, place(), value, type);
    }

    void set() {
        WXmlValueAccessor target = element_.WriteableAttribute(name_);
        if (element_.GetReadWriteNode() == nullptr)
            throw failure(ExitStatus::failed, layered_.user + ": cannot make " + layered_.path);
        writeAs(valueType(layered_.type), target, layered_.value, place());
        if (!isForbidden()) layers_.saveUser();
    }

    void reset() {
        WXmlValueAccessor value = own();
        if (!value.Exists()) throw nothingToReset();
        value.Delete();
        layers_.saveUser();
    }

private:
    std::string place() const { return layered_.path + "/" + toUtf8(name_); }

    Failure nothingToReset() const {
        return failure(ExitStatus::notFound, layered_.user + ": nothing at " + place());
    }

    Layered const& layered_;
    Layers layers_;
    CString name_;
    WXmlCompositeNode element_;
};

void printPart(std::string const& name, std::string const& value) {
    constexpr std::size_t width = 8;
    printLine(value.empty() ? name : name + std::string(width - name.size(), ' ') + value);
}

ExitStatus get(Layered const& layered) {
    Attribute const attribute{layered};
    printPart("value", attribute.required());
    printPart("layer", attribute.layer());
    return ExitStatus::found;
}

// What was there and what is there now, after a change that may have changed nothing.
ExitStatus change(Layered const& layered, void (Attribute::*edit)()) {
    if (layered.user == "-") throw failure(ExitStatus::failed, "USER must be a file");
    Attribute attribute{layered};
    std::string const before = attribute.text();
    (attribute.*edit)();
    printPart("before", before);
    printPart("after", attribute.text());
    printPart("layer", attribute.layer());
    if (attribute.isForbidden()) printPart("note", "the defaults forbid changes; none was written");
    return ExitStatus::found;
}

ExitStatus set(Layered const& layered) {
    return change(layered, &Attribute::set);
}

ExitStatus reset(Layered const& layered) {
    return change(layered, &Attribute::reset);
}

void addArgument(CLI::App& command, char const* name, std::string& value, char const* help) {
    command.add_option(name, value, help)->option_text("REQUIRED")->required();
}

// One of the three, with the arguments that all of them have.
CLI::App& addAction(CLI::App& layered, char const* name, char const* help, Layered& arguments) {
    CLI::App& action = *layered.add_subcommand(name, help);
    addArgument(action, "DEFAULTS", arguments.defaults, "The file with the defaults");
    addArgument(action, "USER", arguments.user, "The file with what the user changed");
    addArgument(action, "PATH", arguments.path, "The element, an XPath 1.0 location path");
    addArgument(action, "NAME", arguments.name, "The name of the attribute");
    addNamespaceOption(action, arguments.namespaces);
    addTypeOption(action, arguments.type,
                  "What the value is: string (the default), bool, int, int64,\n"
                  "double, point, size or rect");
    action.footer(examples);
    return action;
}

} // namespace

void addLayered(CLI::App& program, Task& task) {
    auto const arguments = std::make_shared<Layered>();
    CLI::App& command =
        *program.add_subcommand("layered", "Read and change settings in two layers");
    command.require_subcommand(1);
    command.footer(examples);
    addAction(command, "get", "Print a value, and which layer it is from", *arguments)
        .callback([&task, arguments] { task = [arguments] { return get(*arguments); }; });
    CLI::App& setting = addAction(command, "set", "Write a value into the user's file", *arguments);
    addArgument(setting, "VALUE", arguments->value, "The value as \"tibxml get\" prints it");
    setting.callback([&task, arguments] { task = [arguments] { return set(*arguments); }; });
    addAction(command, "reset", "Remove the user's value", *arguments).callback([&task, arguments] {
        task = [arguments] { return reset(*arguments); };
    });
}

} // namespace tibxml::tool
