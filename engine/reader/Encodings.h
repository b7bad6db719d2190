// Which encoding a document is in.
//
// A byte order mark decides. Without one it is the encoding that the XML declaration names, which
// has to be one in which the declaration reads as it does; without a name it is UTF-8, or what the
// first bytes of a declaration show.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Conversion.h"
#include "Messages.h"

namespace tibxml::reader {

// No declaration is longer.
inline constexpr std::size_t maximumDeclaration = 65536;

struct FoundEncoding {
    Encoding encoding = Encoding::utf8;
    std::string name;                       // for people
    std::unique_ptr<Conversion> conversion; // null for UTF-8

    // Why nothing can be read after the declaration, which is so many bytes long with the mark and
    // in the encoding that the first bytes show.
    std::optional<Message> refusal;
    std::string reason;
    std::size_t declarationSize = 0;
};

// Whether the encoding depends on more than these first bytes of a document. `seen` of them did not
// settle it. Throws std::bad_alloc.
bool needsMoreToFind(std::string_view bytes, std::size_t seen);

// By the first bytes: the whole declaration if there is one, or as many as a declaration may have.
// Throws std::bad_alloc.
FoundEncoding findEncoding(std::string_view bytes);

} // namespace tibxml::reader
