// Documents made up at random, always the same for one seed: small, full of what the grammar has,
// and most of them broken in a place or two.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace tibxml::reader::test {

class RandomDocument {
public:
    // Seeds in a row shall not begin alike.
    explicit RandomDocument(std::uint32_t seed) : random_{seed * 2'654'435'761U} {}

    // As the grammar has it.
    std::string wellFormed();

    // The document with one to three bytes, pieces or tokens changed, lost, doubled or put in.
    std::string broken(std::string document);

    // UTF-8 that declares another encoding, in that; with and without a byte order mark.
    std::string inSomeEncoding(std::string const& document);

    // True once in so many times.
    bool once(std::uint32_t in) { return pick(in) == 0; }

private:
    std::uint32_t pick(std::uint32_t count) {
        return static_cast<std::uint32_t>(random_() >> 4U) % count;
    }

    template <std::size_t Count>
    std::string_view one(std::string_view const (&of)[Count]) {
        return of[pick(Count)];
    }

    void declaration();
    void misc();
    void element(int depth);
    void attributes(int depth);
    void attribute();
    void content(int depth);
    void text();
    void blanks();
    void breakOnce(std::string& document);

    std::minstd_rand random_;
    std::string out_;
};

} // namespace tibxml::reader::test
