// The names of a document as the parser meets them, each looked at once: whether it is a name,
// where its colon is and what its prefix means is decided when it is first seen. Afterwards a name
// is found by its bytes, so checking it again costs nothing.
//
// A name's namespace depends on the place. Prefixes are records that say what they stand for now;
// a name remembers what its prefix stood for last and which name of the consumer that made, so that
// one comparison shows whether it still holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <reader/Simd.h>
#include <tree/Arena.h>
#include <tree/Name.h>

namespace tibxml::reader {

struct Prefix;

// The name of a namespace; each is there once.
struct Uri {
    std::string_view text;
    // The start tag that had an attribute in this namespace last, and by which prefix.
    std::uint64_t lastTag = 0;
    Prefix const* lastPrefix = nullptr;
};

struct Prefix {
    std::string_view text;
    Uri* uri = nullptr; // null: not declared
};

// What an attribute of a name is for.
enum class NameUse : std::uint8_t {
    plain,
    fresh, // plain, and no attribute had it yet
    prefixed,
    space, // xml:space
    declaresDefault,
    declaresPrefix,
};

struct QualifiedName {
    // The first bytes, with zeros after them: a short name as a whole.
    struct Key {
        std::uint64_t low;
        std::uint64_t high;

        bool operator==(Key const&) const = default;
    };

    Key key;
    std::string_view text;
    Prefix const* elementPrefix;   // the default namespace for a name without prefix
    Prefix const* attributePrefix; // no namespace for a name without prefix
    Uri const* elementUri;         // what the former stood for when elementName was made
    void* elementName;             // the consumer's
    Uri const* attributeUri;       // the same for the latter
    void* attributeName;
    Prefix* declared;             // by an attribute of this name
    std::uint64_t lastTag;        // that had an attribute of this name
    QualifiedName* nextElement;   // of the element that began after one of this name the last time
    QualifiedName* nextAttribute; // that came after this name in a tag the last time
    std::uint32_t prefixLength;   // 0 without colon
    NameUse use;

    std::string_view prefix() const noexcept { return text.substr(0, prefixLength); }

    std::string_view local() const noexcept {
        return prefixLength == 0 ? text : text.substr(prefixLength + 1);
    }

    bool declares() const noexcept { return use >= NameUse::declaresDefault; }
};

class Names {
public:
    Names();
    Names(Names const&) = delete;
    Names& operator=(Names const&) = delete;

    // The name with these bytes, of which there is at least one. A block may be loaded from `p`.
    // Throws std::bad_alloc, and ParseFailure when the bytes are not a name.
    QualifiedName& find(char const* p, std::size_t length) {
        QualifiedName::Key const key = keyOf(p, length);
        std::size_t slot = hashOf(key, p, length);
        for (;; ++slot) {
            QualifiedName* const name = slots_[slot & mask_];
            if (name == nullptr) return add(key, p, length);
            if (name->key == key && name->text.size() == length &&
                (length <= blockSize || std::memcmp(name->text.data(), p, length) == 0))
                return *name;
        }
    }

    // Whether the bytes at p, where a block may be loaded and the name's length is there, are this
    // name.
    static bool isAt(QualifiedName const& name, char const* p) noexcept {
        std::size_t const length = name.text.size();
        auto const equal =
            NativeBlock::at(p).equal(NativeBlock::at(reinterpret_cast<char const*>(&name.key)));
        if (length <= blockSize) return equal.leading() >= length;
        return std::memcmp(name.text.data(), p, length) == 0;
    }

    // The record of a namespace's name, which is not empty. Throws std::bad_alloc.
    Uri& uri(std::string_view text) { return uris_.find(text); }

    // What stands for the namespace of names that have none.
    Uri& none() noexcept { return none_; }

    Prefix& defaultPrefix() noexcept { return defaultPrefix_; }

private:
    static constexpr std::size_t firstSlots = 64;

    static QualifiedName::Key keyOf(char const* p, std::size_t length) noexcept {
        // As many set bytes as the name is long, and then zeros.
        alignas(16) static constexpr unsigned char bits[2 * blockSize] = {
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
        unsigned char const* const from =
            bits + blockSize - (length < blockSize ? length : blockSize);
        return {wordAt(p) & wordAt(from), wordAt(p + 8) & wordAt(from + 8)};
    }

    template <class Byte>
    static std::uint64_t wordAt(Byte const* bytes) noexcept {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }

    static std::size_t hashOf(QualifiedName::Key key, char const* p, std::size_t length) noexcept {
        std::uint64_t hash = (key.low ^ length) * 0x9E3779B97F4A7C15U;
        hash = (hash ^ (hash >> 32U) ^ key.high) * 0xD6E8FEB86659FD93U;
        if (length > blockSize) hash ^= std::hash<std::string_view>{}({p, length});
        return hash ^ (hash >> 32U);
    }

    // Equal texts are the same record, which stays where it is.
    template <class Record>
    class Records {
    public:
        Record& find(std::string_view text) {
            auto const found = records_.find(text);
            if (found != records_.end()) return found->second;
            auto const made = records_.try_emplace(std::string{text}).first;
            made->second.text = made->first;
            return made->second;
        }

    private:
        struct Hash : std::hash<std::string_view> {
            using is_transparent = void;
        };

        std::unordered_map<std::string, Record, Hash, std::equal_to<>> records_;
    };

    QualifiedName& add(QualifiedName::Key key, char const* p, std::size_t length);
    void classify(QualifiedName& name);
    void classifyPrefixed(QualifiedName& name);
    Prefix& prefix(std::string_view text);
    void grow();

    tree::Arena arena_;                 // of the names
    std::vector<QualifiedName*> slots_; // open addressing; the size is a power of two
    std::size_t mask_ = firstSlots - 1;
    std::size_t count_ = 0;
    Records<Uri> uris_;
    Records<Prefix> prefixes_;
    Uri none_;
    Uri xmlUri_{tree::xmlNamespace};
    Uri xmlnsUri_{tree::xmlnsNamespace};
    Prefix noPrefix_{{}, &none_};
    Prefix defaultPrefix_{{}, &none_};
    Prefix xmlPrefix_{"xml", &xmlUri_};
    Prefix xmlnsPrefix_{"xmlns", &xmlnsUri_};
};

// Where a text stops being a name without colon: its end, or the first character that does not
// belong there.
char const* findNameFault(char const* p, char const* end) noexcept;

// The namespace declarations in force: each makes a prefix stand for something, and the end of its
// element brings back what was before.

class NamespaceScopes {
public:
    explicit NamespaceScopes(Names& names) noexcept : names_{names} {}

    // What the attribute `name`, at `at`, declares on an element that so many others are open
    // around. Throws std::bad_alloc, and ParseFailure for what Namespaces in XML does not allow.
    void declare(QualifiedName const& name, std::string_view value, char const* at,
                 std::size_t depth);

    // Ends the declarations of an element that so many others are open around.
    void end(std::size_t depth) noexcept {
        while (!bindings_.empty() && bindings_.back().depth == depth)
            endLast();
    }

private:
    struct Binding {
        Prefix* prefix;
        Uri* before;
        std::size_t depth;
    };

    void endLast() noexcept;

    Names& names_;
    std::vector<Binding> bindings_;
};

} // namespace tibxml::reader
