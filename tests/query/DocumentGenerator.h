// Documents made up at random, always the same for one seed.
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace tibxml::query::test {

// Elements a to e, some in namespaces; attributes; numbers and words as text; CDATA, comments and
// processing instructions anywhere.
class DocumentGenerator {
public:
    explicit DocumentGenerator(std::uint32_t seed) : random_{seed} {}

    std::string make(int elements);

    // With declarations on any element, which may change what a prefix means.
    std::string makeWithNamespaces(int elements);

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void element(std::string& out, int depth);
    void content(std::string& out, int depth);
    void attributes(std::string& out);
    void declarations(std::string& out);
    void cdata(std::string& out);
    void misc(std::string& out);

    std::mt19937 random_;
    int left_ = 0;
    bool declares_ = false;
};

} // namespace tibxml::query::test
