// The words of XML: names, values, texts and the delimiters around them.
#pragma once

#include <string_view>

#include <tree/Node.h>

#include "Converter.h"
#include "Escaping.h"
#include "OutputBuffer.h"

namespace tibxml::output {

class MarkupWriter {
public:
    /// With a repertoire, other characters become references where that is possible; elsewhere they
    /// make every function below throw EncodingError. Both must outlive the writer.
    MarkupWriter(OutputBuffer& out, Repertoire* repertoire) noexcept
        : out_{out},
          repertoire_{repertoire} {}

    /// Markup in ASCII, as it is.
    void markup(std::string_view text) { out_.append(text); }

    void markup(char c) { out_.append(c); }

    void name(std::string_view name) {
        if (repertoire_ != nullptr) repertoire_->demand(name, "a name");
        out_.append(name);
    }

    /// A name whose prefix is not its own.
    void name(std::string_view prefix, std::string_view local) {
        if (!prefix.empty()) {
            name(prefix);
            markup(':');
        }
        name(local);
    }

    /// The own characters of a node, escaped for the place.
    template <Place place>
    void escaped(tree::Node const& node) {
        if (node.inlineLength <= tree::Node::inlineCapacity && repertoire_ == nullptr &&
            isPlain16<place>(node.content.shortText, node.inlineLength)) {
            out_.appendOf16(node.content.shortText, node.inlineLength);
        } else {
            escaped<place>(node.text());
        }
    }

    template <Place place>
    void escaped(std::string_view text);

    void reference(char32_t character);

    /// =" value "
    void quoted(tree::Node const& attribute) {
        markup("=\"");
        escaped<Place::attributeValue>(attribute);
        markup('"');
    }

    void quoted(std::string_view value) {
        markup("=\"");
        escaped<Place::attributeValue>(value);
        markup('"');
    }

    /// Whole nodes. Comments and processing instructions that would end too early cannot come from
    /// a document, only from an engine that did not check them; a blank is put where the end would
    /// be, so that what is written stays a document.
    void comment(std::string_view text);
    void processingInstruction(std::string_view target, std::string_view data);
    void cdata(std::string_view text);
    void declaration(std::string_view content);

private:
    template <Place place>
    void escapedWithin(Repertoire& repertoire, std::string_view text);
    void raw(std::string_view text, std::string_view where);
    void rawSplit(std::string_view text, std::string_view end, std::string_view splitter,
                  std::string_view where);

    OutputBuffer& out_;
    Repertoire* repertoire_;
};

} // namespace tibxml::output
