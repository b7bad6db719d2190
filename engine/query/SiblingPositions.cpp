#include "SiblingPositions.h"

namespace tibxml::query {

namespace {

// A walk in document order. On entering a list of children it finds out which of them are selected,
// so that positions are right, and then passes them as it comes to them.
class SiblingPositions {
public:
    SiblingPositions(Step const& step, Evaluation const& evaluation) noexcept
        : step_{step},
          evaluation_{evaluation} {}

    bool walk(tree::Node* context, NodeVisitor visitor) {
        enter(context);
        while (!levels_.empty()) {
            Level& level = levels_.back();
            tree::Node* const node = level.next;
            if (node == nullptr) {
                leave();
                continue;
            }
            level.next = node->next;
            if (takeSelected(level, node) && visitor(node)) return true;
            enter(node);
        }
        return false;
    }

private:
    struct Level {
        tree::Node* next;
        std::size_t first; // of the level's selected nodes in selected_
        std::size_t at;
        std::size_t end;
    };

    void enter(tree::Node* parent) {
        if (parent->firstChild() == nullptr) return;
        std::size_t const first = selected_.size();
        walkStepAlong(Axis::child, step_, evaluation_, parent, [this](tree::Node* node) {
            selected_.push_back(node);
            return false;
        });
        levels_.push_back({parent->firstChild(), first, first, selected_.size()});
    }

    void leave() {
        selected_.resize(levels_.back().first);
        levels_.pop_back();
    }

    bool takeSelected(Level& level, tree::Node* node) const noexcept {
        if (level.at == level.end || selected_[level.at] != node) return false;
        ++level.at;
        return true;
    }

    Step const& step_;
    Evaluation const& evaluation_;
    std::vector<tree::Node*> selected_;
    std::vector<Level> levels_;
};

} // namespace

bool walkBySiblingPositions(Step const& step, Evaluation const& evaluation, tree::Node* context,
                            NodeVisitor visitor) {
    return SiblingPositions{step, evaluation}.walk(context, visitor);
}

} // namespace tibxml::query
