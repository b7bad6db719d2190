#include "Predicates.h"

#include <utility>

namespace tibxml::query {

namespace {

// The position that a number stands for, 0 when no position equals it.
std::size_t asIndex(double number) noexcept {
    constexpr double largest = 4294967295.0; // no document has as many nodes
    if (!(number >= 1 && number <= largest)) return 0;
    auto const index = static_cast<std::size_t>(number);
    return static_cast<double>(index) == number ? index : 0;
}

} // namespace

Predicates::Item Predicates::itemFor(ExpressionPtr expression) {
    Form const form = expression->form();
    bool const isNumber = expression->type() == ValueType::number;
    Item item{isNumber ? Kind::number : Kind::condition, 0, form.attributeEquals,
              std::move(expression)};
    switch (form.kind) {
    case Form::Kind::number:
    case Form::Kind::positionIs:
        item.kind = Kind::index;
        item.index = asIndex(form.number);
        break;
    case Form::Kind::last:
    case Form::Kind::positionIsLast: item.kind = Kind::last; break;
    default: break;
    }
    return item;
}

void Predicates::add(ExpressionPtr expression) {
    bool const usesSize = expression->usesSize();
    bool const usesPosition = expression->usesPosition();
    Item item = itemFor(std::move(expression));
    positional_ = positional_ || item.kind != Kind::condition || usesPosition || usesSize;
    needsSize_ = needsSize_ || usesSize;
    selectsOne_ = selectsOne_ || item.kind == Kind::index || item.kind == Kind::last;
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
