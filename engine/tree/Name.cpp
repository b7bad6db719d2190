#include <tree/Name.h>

#include <algorithm>
#include <cstring>
#include <new>

#include <TibXml/platform/Utf.h>

#include <tree/Arena.h>

namespace tibxml::tree {

namespace {

constexpr std::size_t firstBucketCount = 16;

// FNV-1a over all three: a document may have one local name in a hundred thousand namespaces, or
// under as many prefixes.
template <class Character>
std::uint32_t hashOf(std::string_view prefix, std::basic_string_view<Character> local,
                     std::string_view uri) noexcept {
    std::uint32_t hash = 2166136261U;
    auto const add = [&hash](auto text) {
        for (auto const c : text)
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    };
    add(local);
    add(uri);
    add(prefix);
    return hash ^ (hash >> 15);
}

bool equalsAscii(std::string_view name, std::wstring_view wide) noexcept {
    return std::equal(name.begin(), name.end(), wide.begin(), wide.end(), [](char a, wchar_t b) {
        auto const code = static_cast<char32_t>(b);
        return code < 0x80 && code == static_cast<unsigned char>(a);
    });
}

// The target "xmlns" of a processing instruction is in no namespace, but the attribute of that name
// is: it declares one.
bool isPlain(Name const& name) noexcept {
    return name.uri.empty() && name.prefix.empty() && !name.declaresNamespace;
}

std::string_view store(Arena& arena, std::string_view text) {
    if (text.empty()) return {};
    auto* copy = static_cast<char*>(arena.newPermanent(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

bool declaresNamespace(std::string_view prefix, std::string_view local) noexcept {
    return prefix == "xmlns" || (prefix.empty() && local == "xmlns");
}

} // namespace

NameTable::~NameTable() {
    delete[] buckets_;
}

Name* NameTable::intern(std::string_view prefix, std::string_view local, std::string_view uri) {
    std::uint32_t const hash = hashOf(prefix, local, uri);
    if (Name* const known = find(prefix, local, uri, hash)) return known;
    // The record without prefix stands for all, so it is there whenever another one is.
    Name const* const standing = prefix.empty() ? nullptr : intern({}, local, uri);
    return make(prefix, local, uri, hash, standing);
}

Name* NameTable::find(std::string_view prefix, std::string_view local, std::string_view uri,
                      std::uint32_t hash) const noexcept {
    if (bucketCount_ == 0) return nullptr;
    Name* n = buckets_[hash & (bucketCount_ - 1)];
    while (n != nullptr &&
           !(n->hash == hash && n->local == local && n->uri == uri && n->prefix == prefix))
        n = n->nextInBucket;
    return n;
}

Name* NameTable::make(std::string_view prefix, std::string_view local, std::string_view uri,
                      std::uint32_t hash, Name const* standing) {
    if (size_ >= bucketCount_) grow();
    auto* name = new (arena_.newPermanent(sizeof(Name), alignof(Name))) Name{};
    if (prefix.empty()) {
        name->qualified = name->local = store(arena_, local);
    } else {
        std::size_t const colon = prefix.size();
        auto* text = static_cast<char*>(arena_.newPermanent(colon + 1 + local.size(), 1));
        std::memcpy(text, prefix.data(), colon);
        text[colon] = ':';
        std::memcpy(text + colon + 1, local.data(), local.size());
        name->qualified = {text, colon + 1 + local.size()};
        name->prefix = name->qualified.substr(0, colon);
        name->local = name->qualified.substr(colon + 1);
    }
    name->uri = store(arena_, uri);
    name->hash = hash;
    name->declaresNamespace = declaresNamespace(prefix, local);
    name->expanded = standing != nullptr ? standing : name;
    Name*& bucket = buckets_[hash & (bucketCount_ - 1)];
    name->nextInBucket = bucket;
    bucket = name;
    ++size_;
    return name;
}

Name* NameTable::findPlain(std::wstring_view name) const noexcept {
    if (bucketCount_ == 0) return nullptr;
    std::uint32_t const hash = hashOf({}, name, {});
    Name* n = buckets_[hash & (bucketCount_ - 1)];
    while (n != nullptr && !(n->hash == hash && isPlain(*n) && equalsAscii(n->local, name)))
        n = n->nextInBucket;
    return n;
}

Name const* NameTable::findExpanded(std::string_view local, std::string_view uri) const noexcept {
    return find({}, local, uri, hashOf({}, local, uri));
}

void NameTable::grow() {
    std::size_t const count = bucketCount_ == 0 ? firstBucketCount : bucketCount_ * 2;
    auto** const buckets = new Name* [count] {};
    for (std::size_t i = 0; i != bucketCount_; ++i) {
        for (Name* n = buckets_[i]; n != nullptr;) {
            Name* const following = n->nextInBucket;
            Name*& bucket = buckets[n->hash & (count - 1)];
            n->nextInBucket = bucket;
            bucket = n;
            n = following;
        }
    }
    delete[] buckets_;
    buckets_ = buckets;
    bucketCount_ = count;
}

std::wstring_view NameTable::wideForm(Name& name) {
    if (name.wide == nullptr) {
        std::size_t const most = platform::wideLength(name.qualified) + 1;
        auto* wide =
            static_cast<wchar_t*>(arena_.newPermanent(most * sizeof(wchar_t), alignof(wchar_t)));
        wchar_t* const end = platform::widenUtf8(name.qualified, wide);
        *end = L'\0';
        name.wide = wide;
        name.wideLength = static_cast<std::uint32_t>(end - wide);
    }
    return {name.wide, name.wideLength};
}

} // namespace tibxml::tree
