// Expressions made up at random, always the same for one seed.
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace tibxml::query::test {

// All axes, node tests, functions and operators, except what the peer that answers are compared
// with is known to get wrong: following and preceding from attributes, and texts of numbers that
// are not integers.
class ExpressionGenerator {
public:
    explicit ExpressionGenerator(std::uint32_t seed) : random_{seed} {}

    // An expression that gives nodes. The context may be an attribute if so said.
    std::string nodes(bool fromAttribute, int depth = 0);

    // The same with the namespace axis somewhere, and no positions that count along it.
    std::string namespaces(bool fromAttribute);

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    bool chance(int percent) { return pick(100) < percent; }

    std::string path(bool fromAttribute, int depth);
    std::string filter(bool fromAttribute, int depth);
    std::string separator(bool atAttribute);
    std::string step(bool& atAttribute, int depth);
    std::string axis(bool& atAttribute, bool& attributes);
    std::string nodeTest(bool attributes);
    std::string predicates(bool fromAttribute, int depth);
    std::string predicate(bool fromAttribute, int depth);
    std::string boolean(bool fromAttribute, int depth);
    std::string comparison(bool fromAttribute, int depth);
    std::string number(bool fromAttribute, int depth);
    std::string wholeNumber(bool fromAttribute, int depth);
    std::string string(bool fromAttribute, int depth);
    std::string call(bool fromAttribute, int depth);
    std::string namespaceStep();

    template <std::size_t count>
    std::string oneOf(char const* const (&choices)[count]) {
        return choices[pick(static_cast<int>(count))];
    }

    std::mt19937 random_;
};

} // namespace tibxml::query::test
