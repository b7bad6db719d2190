#include <validation/Schema.h>

#include <exception>
#include <memory>
#include <new>
#include <stdexcept>

#include <libxml/xmlschemas.h>

#include <libxml/LibxmlErrors.h>
#include <libxml/LibxmlTypes.h>
#include <tree/AddressCache.h>
#include <tree/Namespaces.h>
#include <tree/Text.h>

#include "ElementLines.h"

namespace tibxml::validation {

using libxml::allocated;
using libxml::bytes;
using libxml::lengthOf;
using tree::Node;
using tree::NodeKind;

namespace {

constexpr std::string_view escapedAmpersand = "&#38;";

Node const* firstElement(Node const* node) noexcept {
    while (node != nullptr && !node->is(NodeKind::element))
        node = node->next;
    return node;
}

Node const* firstText(Node const* node) noexcept {
    while (node != nullptr && !node->isText())
        node = node->next;
    return node;
}

struct EventName {
    xmlChar const* local;
    xmlChar const* uri; // null for none
};

// The names of a tree, ended by NULs. Each distinct text is kept once, however many nodes have it,
// until the end. Its functions throw std::bad_alloc.
class EventNames {
public:
    EventName const& of(tree::Name const* name) {
        return names_.of(name, [&] {
            return EventName{text(name->local), name->uri.empty() ? nullptr : text(name->uri)};
        });
    }

    xmlChar const* text(std::string_view text) {
        if (text.size() > longest) throw std::length_error{"a name is too long"};
        return allocated(xmlDictLookup(dictionary_.get(), bytes(text), lengthOf(text)));
    }

private:
    struct Free {
        void operator()(xmlDict* dictionary) const noexcept { xmlDictFree(dictionary); }
    };

    static constexpr std::size_t longest = 1U << 30; // for libxml2's dictionary

    std::unique_ptr<xmlDict, Free> dictionary_{allocated(xmlDictCreate())};
    tree::AddressCache<tree::Name const*, EventName> names_;
};

// Walks over a tree and plays the parser for libxml2's validation.
class Validation {
public:
    explicit Validation(Schema const& schema) {
        libxml::LibxmlErrors const errors{note, this};
        context_.reset(allocated(xmlSchemaNewValidCtxt(schema.libxmlSchema())));
        xmlSchemaSetValidStructuredErrors(context_.get(), note, this);
        plug_.reset(allocated(xmlSchemaSAXPlug(context_.get(), &events_, &data_)));
    }

    std::vector<Mismatch> run(Node const* root) {
        libxml::LibxmlErrors const errors{note, this};
        Node const* node = root;
        while (node != nullptr && !isStopped())
            node = visit(node, root);
        if (exception_) std::rethrow_exception(exception_);
        return std::move(mismatches_);
    }

private:
    struct FreeContext {
        void operator()(xmlSchemaValidCtxt* context) const noexcept {
            xmlSchemaFreeValidCtxt(context);
        }
    };

    struct Unplug {
        void operator()(xmlSchemaSAXPlugStruct* plug) const noexcept { xmlSchemaSAXUnplug(plug); }
    };

    struct Open {
        EventName name;
        std::uint64_t element;
        bool hasElements;
        bool hasText;
    };

    bool isStopped() const noexcept { return exception_ || mismatches_.size() == mostMismatches; }

    // The next node in document order, after all that ends on the way has been ended.
    Node const* visit(Node const* node, Node const* root) {
        if (node->is(NodeKind::element)) {
            start(*node);
            if (Node const* const child = node->firstChild()) return child;
            end();
        } else if (node->isText()) {
            text(*node);
        }
        while (node != root && node->next == nullptr) {
            node = node->parent;
            end();
        }
        return node != root ? node->next : nullptr;
    }

    void start(Node const& element) {
        declarations_.clear();
        attributes_.clear();
        escaped_.clear();
        for (Node const* a = element.firstAttribute(); a != nullptr; a = a->next)
            a->name->declaresNamespace ? declare(*a) : add(*a);
        EventName const name = names_.of(element.name);
        open_.push_back({name, ++elements_, firstElement(element.firstChild()) != nullptr, false});
        events_->startElementNs(data_, name.local, nullptr, name.uri,
                                static_cast<int>(declarations_.size() / 2), declarations_.data(),
                                static_cast<int>(attributes_.size() / 5), 0, attributes_.data());
    }

    void declare(Node const& declaration) {
        std::string_view const prefix = tree::declaredPrefix(&declaration);
        declarations_.push_back(prefix.empty() ? nullptr : names_.text(prefix));
        declarations_.push_back(names_.text(declaration.text()));
    }

    void add(Node const& attribute) {
        EventName const name = names_.of(attribute.name);
        std::string_view const value = asParsed(attribute.text());
        xmlChar const* const begin = bytes(value);
        for (xmlChar const* part : {name.local, static_cast<xmlChar const*>(nullptr), name.uri,
                                    begin, begin + lengthOf(value)})
            attributes_.push_back(part);
    }

    // libxml2's parser hands an ampersand in an attribute value over as a reference, and the
    // validation turns that back.
    std::string_view asParsed(std::string_view value) {
        if (value.find(escapedAmpersand) == std::string_view::npos) return value;
        auto text = std::make_unique<std::string>();
        for (char const c : value)
            c == '&' ? text->append(escapedAmpersand) : text->append(1, c);
        escaped_.push_back(std::move(text));
        return *escaped_.back();
    }

    void text(Node const& node) {
        Open& open = open_.back();
        if (open.hasElements) return mixedText(node, open);
        if (text_.empty() && firstText(node.next) == nullptr) return pass(node.text());
        text_ += node.text();
        if (firstText(node.next) != nullptr) return;
        pass(text_);
        text_.clear();
    }

    // libxml2 joins the texts of an element to one value. Beside child elements none counts
    // as a value: all that matters is whether there is any text, so one piece is enough.
    void mixedText(Node const& node, Open& open) {
        if (open.hasText || tree::isBlankText(node.text())) return;
        open.hasText = true;
        pass(node.text());
    }

    void pass(std::string_view text) { events_->characters(data_, bytes(text), lengthOf(text)); }

    void end() {
        EventName const name = open_.back().name;
        events_->endElementNs(data_, name.local, nullptr, name.uri);
        open_.pop_back();
    }

    // Called from frames of C, through which no exception may pass.
    static void note(void* data, xmlError* error) {
        auto& validation = *static_cast<Validation*>(data);
        if (error->level < XML_ERR_ERROR || validation.isStopped()) return;
        try {
            validation.add(*error);
        } catch (...) {
            validation.exception_ = std::current_exception();
        }
    }

    void add(xmlError const& error) {
        if (error.code == XML_ERR_NO_MEMORY) throw std::bad_alloc{};
        mismatches_.push_back(
            {errorInvalid + static_cast<std::uint32_t>(error.code),
             libxml::inOneLine(reader::wellFormed(error.message != nullptr ? error.message : "")),
             open_.empty() ? 1 : open_.back().element});
    }

    EventNames names_; // first, because the context refers to them until its end
    std::unique_ptr<xmlSchemaValidCtxt, FreeContext> context_;
    xmlSAXHandler* events_ = nullptr;
    void* data_ = nullptr;
    std::unique_ptr<xmlSchemaSAXPlugStruct, Unplug> plug_;
    std::vector<xmlChar const*> declarations_; // of one start tag: prefix and URI
    std::vector<xmlChar const*> attributes_;   // five pointers for each
    std::vector<std::unique_ptr<std::string>> escaped_;
    std::string text_; // of several nodes that make one value
    std::vector<Open> open_;
    std::uint64_t elements_ = 0;
    std::vector<Mismatch> mismatches_;
    std::exception_ptr exception_;
};

std::vector<std::uint64_t> elementsOf(std::span<Mismatch const> mismatches) {
    std::vector<std::uint64_t> elements;
    for (Mismatch const& mismatch : mismatches)
        elements.push_back(mismatch.element);
    return elements;
}

void takeLines(std::span<Mismatch> mismatches, ElementLines const& lines) noexcept {
    for (Mismatch& mismatch : mismatches)
        mismatch.line = lines.lineOf(mismatch.element);
}

} // namespace

std::vector<Mismatch> validate(Schema const& schema, tree::Document const& document) {
    return Validation{schema}.run(document.documentElement());
}

void findLines(std::span<Mismatch> mismatches, reader::ByteSource& file) {
    takeLines(mismatches, ElementLines{elementsOf(mismatches), file});
}

void findLines(std::span<Mismatch> mismatches, tree::Document const& document) {
    takeLines(mismatches, ElementLines{elementsOf(mismatches), document});
}

} // namespace tibxml::validation
