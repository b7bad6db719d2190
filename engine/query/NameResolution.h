// What the names in a query mean in the document at hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <tree/Document.h>

namespace tibxml::query {

// A document keeps one record per expanded name, so a name test is one comparison of pointers once
// the record is known. The records of the last document stay known until another document comes or
// this one gets new names.
class NameResolution {
public:
    // Gives the number of a name, for use with the table from resolve().
    std::uint32_t add(std::string uri, std::string local);

    // The record for each number, null for names that no node of the document has.
    tree::Name const* const* resolve(tree::Document& document) {
        if (document.serial() != serial_ || document.names().size() != namesThen_)
            refresh(document);
        return found_.data();
    }

private:
    struct ExpandedName {
        std::string uri;
        std::string local;
    };

    void refresh(tree::Document& document);

    std::vector<ExpandedName> names_;
    std::vector<tree::Name const*> found_;
    std::uint64_t serial_ = 0;
    std::size_t namesThen_ = static_cast<std::size_t>(-1);
};

} // namespace tibxml::query
