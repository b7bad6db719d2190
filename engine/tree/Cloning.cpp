#include <tree/Cloning.h>

#include <tree/AddressCache.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

// The target's records for the source's names.
class NameMap {
public:
    NameMap(Document& target, Document const& source) noexcept
        : target_{target},
          isIdentity_{&target == &source} {}

    Name* operator()(Name* name) {
        if (isIdentity_ || name == nullptr) return name;
        return recent_.of(
            name, [&] { return target_.names().intern(name->prefix, name->local, name->uri); });
    }

private:
    Document& target_;
    bool isIdentity_;
    AddressCache<Name const*, Name*, 64> recent_;
};

class Cloner {
public:
    Cloner(Document& target, Document const& source, CloneObserver* observer) noexcept
        : target_{target},
          names_{target, source},
          observer_{observer} {}

    // A copy of one node with its attributes, which is the last child of `parent` unless that is
    // null.
    Node* copyBelow(Node* parent, Node* original) {
        Node* const copy = copyOne(original);
        if (parent != nullptr) appendChild(target_, parent, copy);
        top_ = top_ != nullptr ? top_ : copy;
        for (Node* a = original->firstAttribute(); a != nullptr; a = a->next) {
            Node* const attribute = copyOne(a);
            appendAttribute(target_, copy, attribute);
            report(a, attribute);
        }
        report(original, copy);
        return copy;
    }

    // What has been copied so far; null before the first node.
    Node* top() const noexcept { return top_; }

private:
    Node* copyOne(Node* original) {
        Name* const name = names_(original->name);
        Node* const copy = target_.arena().newNode(original->kind);
        copy->name = name;
        copy->flags = original->flags & (breakAfter | breakInside);
        if (!original->hasChildList()) copyText(copy, original);
        return copy;
    }

    void copyText(Node* copy, Node* original) {
        if (original->inlineLength != Node::outOfLine) {
            copy->inlineLength = original->inlineLength;
            copy->content = original->content;
            return;
        }
        try {
            // Copies come and go: moving a node to another document makes one.
            setText(target_, copy, original->text());
        } catch (...) {
            target_.arena().freeNode(copy);
            throw;
        }
    }

    void report(Node* original, Node* copy) {
        if (observer_ != nullptr) observer_->copied(original, copy);
    }

    Document& target_;
    NameMap names_;
    CloneObserver* observer_;
    Node* top_ = nullptr;
};

Node* cloneDeep(Cloner& cloner, Node* root) {
    Node* const top = cloner.copyBelow(nullptr, root);
    Node* original = root;
    Node* copy = top; // of `original`
    while (true) {
        if (Node* child = original->firstChild()) {
            copy = cloner.copyBelow(copy, child);
            original = child;
            continue;
        }
        while (original != root && original->next == nullptr) {
            original = original->parent;
            copy = copy->parent;
        }
        if (original == root) return top;
        original = original->next;
        copy = cloner.copyBelow(copy->parent, original);
    }
}

} // namespace

Node* clone(Document& target, Document const& source, Node* node, CloneDepth depth,
            CloneObserver* observer) {
    Cloner cloner{target, source, observer};
    try {
        return depth == CloneDepth::deep ? cloneDeep(cloner, node)
                                         : cloner.copyBelow(nullptr, node);
    } catch (...) {
        if (cloner.top() != nullptr) destroy(target, cloner.top());
        throw;
    }
}

} // namespace tibxml::tree
