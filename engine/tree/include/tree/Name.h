// Names of elements and attributes, stored once per document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tibxml::tree {

class Arena;

inline constexpr std::string_view xmlNamespace = "http://www.w3.org/XML/1998/namespace";
inline constexpr std::string_view xmlnsNamespace = "http://www.w3.org/2000/xmlns/";

// One record per (prefix, local name, namespace) of a document: two nodes of one document have the
// same qualified and expanded name exactly when they have the same record.
struct Name {
    std::string_view prefix;
    std::string_view local;
    std::string_view uri;
    std::string_view qualified; // prefix:local, or local alone
    Name const* expanded;       // the record without prefix, which stands for all of a namespace
    wchar_t const* wide;        // the qualified name, made on first use by NameTable::wideForm
    std::uint32_t wideLength;
    std::uint32_t hash;
    Name* nextInBucket;
    bool declaresNamespace; // xmlns or xmlns:p
};

class NameTable {
public:
    // The arena holds the records and must outlive the table.
    explicit NameTable(Arena& arena) noexcept : arena_{arena} {}

    NameTable(NameTable const&) = delete;
    NameTable& operator=(NameTable const&) = delete;
    ~NameTable();

    // The record for a name, made when missing. Throws std::bad_alloc.
    Name* intern(std::string_view prefix, std::string_view local, std::string_view uri);

    // The record of an ASCII name without prefix and namespace, as most are, by its wide form; null
    // when there is none. Finding one needs no conversion and no check of its characters.
    Name* findPlain(std::wstring_view name) const noexcept;

    // The record that stands for all names with this local name and namespace, or null when no
    // node of the document ever had such a name.
    Name const* findExpanded(std::string_view local, std::string_view uri) const noexcept;

    // The qualified name as wide characters, zero-terminated; lives as long as the document.
    std::wstring_view wideForm(Name& name);

    // Grows with every new record: what was not found stays missing while this is unchanged.
    std::size_t size() const noexcept { return size_; }

private:
    Name* find(std::string_view prefix, std::string_view local, std::string_view uri,
               std::uint32_t hash) const noexcept;
    Name* make(std::string_view prefix, std::string_view local, std::string_view uri,
               std::uint32_t hash, Name const* standing);
    void grow();

    Arena& arena_;
    Name** buckets_ = nullptr; // chained by Name::nextInBucket; the size is a power of two
    std::size_t bucketCount_ = 0;
    std::size_t size_ = 0;
};

} // namespace tibxml::tree
