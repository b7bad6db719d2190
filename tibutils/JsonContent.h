#pragma once

#include <TibXml/tibutils/Variant.h>

#include <atomic>
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace TibUtils::Json {

/// The values of an object, or those of an array, which have no names.
struct Content {
    struct Member {
        CString name;
        Variant value;
    };

    Content() = default;

    /// A copy that has one owner. Objects and arrays among the values are shared with the original.
    Content(Content const& other) : members{other.members}, places{other.places} {}

    Content& operator=(Content const&) = delete;
    ~Content() = default;

    /// The place of a name; the number of members when there is none.
    std::size_t find(CString const& name) const noexcept;

    /// Adds a member with a name that is not there yet.
    void add(CString name, Variant value);

    std::atomic<std::size_t> owners{1};
    Content* nextDoomed = nullptr; ///< while a chain of contents is being destroyed
    std::vector<Member> members;

    /// The places by name: of all members or of none.
    std::unordered_map<CString, std::size_t> places;

private:
    void updatePlaces() noexcept;
};

} // namespace TibUtils::Json
