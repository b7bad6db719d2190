// The predicates of one step or of a parenthesised expression.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "AttributeIndex.h"
#include "Expression.h"

namespace tibxml::query {

class Predicates {
public:
    /// Takes an expression as it stands between brackets: a number is compared with the position.
    void add(ExpressionPtr expression);

    bool empty() const noexcept { return items_.empty(); }

    std::size_t size() const noexcept { return items_.size(); }

    /// Some predicate asks for the position (or the size).
    bool positional() const noexcept { return positional_; }

    /// Some predicate asks for the number of candidates, so that they must all be known first.
    bool needsSize() const noexcept { return needsSize_; }

    /// At most one candidate can pass.
    bool selectsOne() const noexcept { return selectsOne_; }

    /// The first predicate is `[last()]`.
    bool startsWithLast() const noexcept {
        return !items_.empty() && items_.front().kind == Kind::last;
    }

    /// The first predicate when it is `[@k='v']`, else null.
    AttributeEquals const* leadingAttribute() const noexcept {
        return !items_.empty() ? items_.front().attribute : nullptr;
    }

    /// For predicates that are not positional. Most steps have none, so that is seen at once.
    bool hold(Evaluation const& evaluation, tree::Node* node) const {
        if (items_.empty()) return true;
        for (Item const& item : items_) {
            if (item.attribute != nullptr ? !item.attribute->holds(evaluation, node)
                                          : !item.expression->boolean({evaluation, node}))
                return false;
        }
        return true;
    }

    /// For all predicates: thins out candidates that stand in the order in which positions count,
    /// by the predicates from number `from` on.
    void applyTo(std::vector<tree::Node*>& candidates, Evaluation const& evaluation,
                 std::size_t from = 0) const;

    /// Counts positions for predicates that need no size, while candidates come one by one.
    class Cursor {
    public:
        explicit Cursor(Predicates const& predicates);

        bool accepts(Evaluation const& evaluation, tree::Node* node);

        /// No later candidate can be accepted.
        bool exhausted() const noexcept { return exhausted_; }

    private:
        Predicates const& predicates_;
        std::array<std::size_t, 4> few_{};
        std::vector<std::size_t> many_;
        bool exhausted_ = false;
    };

private:
    enum class Kind : std::uint8_t {
        condition, // holds when true
        number,    // holds when equal to the position
        index,     // a number that is known: [3]
        last,      // [last()]
    };

    struct Item {
        Kind kind;
        std::size_t index;                // 0 for numbers that are not a position
        AttributeEquals const* attribute; // the condition when it is `@k='v'`, else null
        ExpressionPtr expression;
    };

    static Item itemFor(ExpressionPtr expression);
    static bool holds(Item const& item, Context const& context);

    std::vector<Item> items_;
    bool positional_ = false;
    bool needsSize_ = false;
    bool selectsOne_ = false;
};

} // namespace tibxml::query
