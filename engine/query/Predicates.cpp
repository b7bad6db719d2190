#include "Predicates.h"

#include <utility>

#include "Constants.h"
#include "ContextFunctions.h"

namespace tibxml::query {

namespace {

// The position that a number stands for, 0 when no position equals it.
std::size_t asIndex(double number) noexcept {
    constexpr double largest = 4294967295.0; // no document has as many nodes
    if (!(number >= 1 && number <= largest)) return 0;
    auto const index = static_cast<std::size_t>(number);
    return static_cast<double>(index) == number ? index : 0;
}

// What a predicate compares with the position, or else the predicate itself.
Expression const& comparedWithPosition(Expression const& predicate) noexcept {
    auto const* comparison = dynamic_cast<PositionIs const*>(&predicate);
    return comparison != nullptr ? comparison->value() : predicate;
}

} // namespace

void Predicates::add(ExpressionPtr expression) {
    Item item{Kind::condition, 0, dynamic_cast<AttributeEquals const*>(expression.get()), nullptr};
    Expression const& value = comparedWithPosition(*expression);
    if (value.type() == ValueType::number) item.kind = Kind::number;
    if (auto const* constant = dynamic_cast<NumberConstant const*>(&value)) {
        item.kind = Kind::index;
        item.index = asIndex(constant->value());
    }
    if (dynamic_cast<Last const*>(&value) != nullptr) item.kind = Kind::last;
    bool const counts = item.kind != Kind::condition || expression->usesPosition();
    positional_ = positional_ || counts || expression->usesSize();
    needsSize_ = needsSize_ || expression->usesSize();
    selectsOne_ = selectsOne_ || item.kind == Kind::index || item.kind == Kind::last;
    item.expression = std::move(expression);
    items_.push_back(std::move(item));
}

bool Predicates::holds(Item const& item, Context const& context) {
    switch (item.kind) {
    case Kind::condition: return item.expression->boolean(context);
    case Kind::number:
        return item.expression->number(context) == static_cast<double>(context.position);
    case Kind::index: return item.index == context.position;
    case Kind::last: return context.position == context.size;
    }
    return false;
}

void Predicates::applyTo(std::vector<tree::Node*>& candidates, Evaluation const& evaluation,
                         std::size_t from) const {
    for (std::size_t i = from; i < items_.size(); ++i) {
        std::size_t const size = candidates.size();
        std::size_t kept = 0;
        for (std::size_t at = 0; at < size; ++at) {
            if (holds(items_[i], {evaluation, candidates[at], at + 1, size}))
                candidates[kept++] = candidates[at];
        }
        candidates.resize(kept);
    }
}

Predicates::Cursor::Cursor(Predicates const& predicates) : predicates_{predicates} {
    if (predicates.items_.size() > few_.size()) many_.resize(predicates.items_.size());
}

bool Predicates::Cursor::accepts(Evaluation const& evaluation, tree::Node* node) {
    std::size_t* position = many_.empty() ? few_.data() : many_.data();
    for (Item const& item : predicates_.items_) {
        ++*position;
        if (item.kind == Kind::index && *position >= item.index) exhausted_ = true;
        if (!Predicates::holds(item, {evaluation, node, *position, 0})) return false;
        ++position;
    }
    return true;
}

} // namespace tibxml::query
