#include "World.h"

#include <TibXml/platform/Stream.h>

#include "EngineTest.h"

namespace model {

namespace {

constexpr std::size_t mostHeld = 16;
constexpr std::size_t mostLists = 3;
constexpr std::size_t mostDocuments = 4;
constexpr std::size_t largestTree = 60;

wchar_t const* const names[] = {L"a", L"b", L"c"};

// Short and long ones, because they are stored in different places.
wchar_t const* const texts[] = {L"",
                                L"1",
                                L"<&\">'",
                                L"sixteen bytes...",
                                L"seventeen bytes..",
                                L"a text of thirty-two bytes......",
                                L"a text that is longer than the one of thirty-two bytes",
                                L"\u00E4\u4E00\U00010000"};

template <class Edit>
bool succeeds(Edit const& edit) {
    try {
        edit();
        return true;
    } catch (_com_error const&) {
        return false;
    } catch (WXmlValueTypeNotFoundException const&) {
        return false;
    }
}

std::wstring contentOf(Node const& document) {
    std::wstring xml;
    for (Node const* child : document.children)
        xml += xmlOf(*child);
    return xml;
}

CString stringOf(std::wstring const& text) {
    return CString{std::wstring_view{text}};
}

void expectXml(CString const& xml, std::wstring const& expected) {
    EXPECT_EQ(utf8(xml), utf8(expected));
}

} // namespace

World::Action const World::actions[] = {
    {2, &World::createDocument}, {4, &World::createNode},
    {10, &World::createChild},   {3, &World::ensureDescendant},
    {12, &World::graftAtIndex},  {10, &World::graftBefore},
    {6, &World::prune},          {2, &World::deleteNodes},
    {4, &World::clone},          {6, &World::setText},
    {8, &World::setAttribute},   {3, &World::deleteAttribute},
    {16, &World::lookUp},        {4, &World::query},
    {10, &World::takeFromList},  {8, &World::dropNode},
    {3, &World::dropList},       {1, &World::dropDocument},
};

World::World(unsigned seed) : generator_{seed} {
    createDocument();
    createDocument();
}

void World::step() {
    unsigned sum = 0;
    for (Action const& action : actions)
        sum += action.weight;
    std::size_t chosen = random(sum);
    for (Action const& action : actions) {
        if (chosen < action.weight) {
            (this->*action.run)();
            break;
        }
        chosen -= action.weight;
    }
    check(anyHeld());
    if (!documents_.empty()) checkDocument(any(documents_));
}

World::Held& World::anyHeld() {
    if (held_.empty()) startAgain();
    return any(held_);
}

// Without a node in hand, the way to one leads through a document that has any.
void World::startAgain() {
    for (Document const& document : documents_) {
        if (document.node->children.empty()) continue;
        Node& first = *document.node->children.front();
        return hold(document.handle.GetNodes(L"/node()[1]").Node(0), first);
    }
    createDocument();
}

wchar_t const* World::anyName() {
    return names[random(std::size(names))];
}

wchar_t const* World::anyText() {
    return texts[random(std::size(texts))];
}

void World::hold(WXmlNode const& handle, Node& node) {
    ASSERT_TRUE(handle.IsValid());
    if (held_.size() == mostHeld) drop(held_);
    held_.push_back({handle, &node});
    check(held_.back());
}

bool World::isTooLarge(Node& parent, Node& child) {
    return sizeOf(rootOf(parent)) + sizeOf(child) > largestTree;
}

// Documents and their content.

void World::createDocument() {
    if (documents_.size() == mostDocuments) drop(documents_);
    Node& node = nodes_.newDocument();
    if (random(2) == 0) insert(node, nodes_.newNode(node, Kind::comment, {}, L"top"), nullptr);
    Node& root = nodes_.newNode(node, Kind::element, anyName(), {});
    insert(node, root, nullptr);
    fill(root, 0);
    WXmlDoc const document = WXmlDoc::CreateFromString(contentOf(node).c_str());
    ASSERT_TRUE(document.IsLoaded());
    documents_.push_back({document, &node});
    checkDocument(documents_.back());
    hold(document.GetRootNode(), root);
}

void World::fill(Node& element, int depth) {
    for (wchar_t const* const name : {L"x", L"y"}) {
        if (random(3) == 0) nodes_.setAttribute(element, name, anyText());
    }
    for (std::size_t count = random(4); count != 0; --count) {
        Node& child = randomContent(*element.document, depth);
        bool const afterText = !element.children.empty() && element.children.back()->is(Kind::text);
        if (!child.is(Kind::text) || (!afterText && !child.text.empty()))
            insert(element, child, nullptr);
    }
}

Node& World::randomContent(Node& document, int depth) {
    switch (random(depth < 3 ? 6 : 3)) {
    case 0: return nodes_.newNode(document, Kind::text, {}, anyText());
    case 1: return nodes_.newNode(document, Kind::cdata, {}, anyText());
    case 2: return nodes_.newNode(document, Kind::comment, {}, anyText());
    default: {
        Node& child = nodes_.newNode(document, Kind::element, anyName(), {});
        fill(child, depth + 1);
        return child;
    }
    }
}

// Edits.

void World::createNode() {
    if (documents_.empty()) return;
    Document const& document = any(documents_);
    wchar_t const* const name = anyName();
    hold(document.handle.CreateNode(name, nullptr),
         nodes_.newNode(*document.node, Kind::element, name, {}));
}

void World::createChild() {
    Held const parent = anyHeld();
    Node& child = nodes_.newNode(*parent.node->document, Kind::element, anyName(), {});
    if (isTooLarge(*parent.node, child)) return deleteNodes();
    std::wstring name = child.name;
    if (random(2) == 0) {
        name += L"[@x='predicate'][@y=\"2\"]";
        nodes_.setAttribute(child, L"x", L"predicate");
        nodes_.setAttribute(child, L"y", L"2");
    }
    WXmlNode handle = parent.handle;
    WXmlNode created;
    bool const done = succeeds([&] { created = handle.CreateChild(name.c_str(), nullptr); });
    ASSERT_EQ(done, parent.node->is(Kind::element));
    if (!done) return;
    insert(*parent.node, child, nullptr);
    hold(created, child);
}

void World::ensureDescendant() {
    Held const from = anyHeld();
    if (!from.node->is(Kind::element) || sizeOf(rootOf(*from.node)) > largestTree) return;
    wchar_t const* const first = anyName();
    wchar_t const* const second = anyName();
    std::wstring const path = std::wstring{first} + L"/" + second;
    WXmlNode handle = from.handle;
    hold(handle.EnsureDescendantExists(WXPath{stringOf(path)}),
         nodes_.ensure(*from.node, {first, second}));
}

void World::graftAtIndex() {
    Held const child = anyHeld();
    Held const parent = anyHeld();
    if (isTooLarge(*parent.node, *child.node)) return prune();
    auto const& siblings = parent.node->children;
    std::size_t const count = siblings.size();
    int const index = static_cast<int>(random(count + 3)) - 2;
    WXmlNode moved = child.handle;
    WXmlNode target = parent.handle;
    moved.Graft(target, index);
    bool const isLast = index < 0 || static_cast<std::size_t>(index) >= count;
    if (child.node->is(Kind::attribute)) {
        attach(*parent.node, *child.node);
    } else {
        insert(*parent.node, *child.node,
               isLast ? nullptr : siblings[static_cast<std::size_t>(index)]);
    }
    check(child);
    check(parent);
}

void World::graftBefore() {
    Held const child = anyHeld();
    Held const before = anyHeld();
    // Mostly where it is a child, sometimes anywhere.
    Held parent = anyHeld();
    Node* const actual = before.node->parent;
    if (actual != nullptr && !before.node->is(Kind::attribute) && random(4) != 0)
        parent = {before.handle.GetParentNode(), actual};
    if (isTooLarge(*parent.node, *child.node)) return prune();
    WXmlNode moved = child.handle;
    bool const isLast = random(8) == 0;
    moved.Graft(parent.handle, isLast ? WXmlNode{} : before.handle);
    insert(*parent.node, *child.node, isLast ? nullptr : before.node);
    check(child);
    check(before);
}

void World::prune() {
    Held const pruned = anyHeld();
    WXmlNode handle = pruned.handle;
    handle.Prune();
    if (!pruned.node->is(Kind::attribute)) detach(*pruned.node);
    check(pruned);
}

void World::deleteNodes() {
    Held const from = anyHeld();
    WXmlNode handle = from.handle;
    handle.DeleteNodes(L"node() | @*");
    while (!from.node->children.empty())
        detach(*from.node->children.front());
    check(from);
}

void World::clone() {
    Held const original = anyHeld();
    if (original.node->is(Kind::document)) return;
    bool const deep = random(2) == 0;
    hold(original.handle.Clone(deep), nodes_.copyOf(*original.node, deep));
}

void World::setText() {
    Held const changed = anyHeld();
    wchar_t const* const text = anyText();
    auto const set = [&](wchar_t const* value) {
        return succeeds([&] { changed.handle.Value().SetString(value); });
    };
    EXPECT_FALSE(set(L"what XML cannot hold: \x01"));
    ASSERT_EQ(set(text), !changed.node->is(Kind::document));
    if (!changed.node->is(Kind::document)) nodes_.setText(*changed.node, text);
    check(changed);
}

void World::setAttribute() {
    Held const changed = anyHeld();
    std::wstring const name = random(2) == 0 ? L"x" : L"y";
    wchar_t const* const value = anyText();
    bool const done =
        succeeds([&] { changed.handle.Attribute((L"@" + name).c_str()).SetString(value); });
    ASSERT_EQ(done, changed.node->is(Kind::element));
    if (done) nodes_.setAttribute(*changed.node, name, value);
    check(changed);
}

void World::deleteAttribute() {
    Held const changed = anyHeld();
    std::wstring const name = random(2) == 0 ? L"x" : L"y";
    changed.handle.Attribute((L"@" + name).c_str()).Delete();
    if (Node* attribute = findAttribute(*changed.node, name)) detach(*attribute);
    check(changed);
}

// Look-ups and lists.

void World::lookUp() {
    Held const from = anyHeld();
    Node& root = rootOf(*from.node);
    std::vector<Node*> nodes = everythingBelow(root);
    nodes.push_back(&root);
    Node& wanted = *any(nodes);
    hold(from.handle.GetNodeNoThrow(stringOf(pathTo(wanted))), wanted);
}

void World::query() {
    Held const from = anyHeld();
    if (lists_.size() == mostLists) drop(lists_);
    List list;
    if (random(2) == 0) {
        list = {from.handle.GetNodes(L"//node() | //@*"), everythingBelow(rootOf(*from.node))};
    } else {
        list = {from.handle.GetNodes(L"node()"), from.node->children};
    }
    ASSERT_EQ(list.handle.size(), list.nodes.size());
    lists_.push_back(std::move(list));
}

void World::takeFromList() {
    if (lists_.empty()) return;
    List const& list = any(lists_);
    ASSERT_EQ(list.handle.size(), list.nodes.size());
    if (list.nodes.empty()) return;
    std::size_t const index = random(list.nodes.size());
    checkItem(list, index);
    hold(list.handle.Node(static_cast<int>(index)), *list.nodes[index]);
}

// Letting go.

void World::dropNode() {
    if (!held_.empty()) drop(held_);
}

void World::dropList() {
    if (!lists_.empty()) drop(lists_);
}

void World::dropDocument() {
    if (!documents_.empty()) drop(documents_);
}

void World::dropAnything() {
    switch (random(3)) {
    case 0: return dropNode();
    case 1: return dropList();
    default: return dropDocument();
    }
}

// Comparing.

void World::check(Held const& held) {
    expectXml(held.handle.GetXML(), xmlOf(*held.node));
    checkParent(held);
    checkOwner(held);
}

void World::checkParent(Held const& held) {
    WXmlNode const parent = held.handle.GetParentNode();
    Node const* const expected = held.node->is(Kind::attribute) ? nullptr : held.node->parent;
    ASSERT_EQ(parent.IsValid(), expected != nullptr);
    if (expected == nullptr) return;
    EXPECT_EQ(static_cast<std::size_t>(parent.GetNumChildren()), expected->children.size());
    for (Held const& other : held_)
        EXPECT_EQ(other.handle == parent, other.node == expected);
}

void World::checkOwner(Held const& held) {
    if (held.node->is(Kind::document)) return;
    WXmlDoc const owner = held.handle.GetOwnerDocument();
    for (Document const& document : documents_)
        EXPECT_EQ(document.handle == owner, document.node == held.node->document);
}

void World::checkIdentities() {
    for (Held const& one : held_) {
        for (Held const& other : held_)
            EXPECT_EQ(one.handle == other.handle, one.node == other.node);
    }
}

void World::checkDocument(Document const& document) {
    expectXml(document.handle.SaveToString(), xmlOf(*document.node));
}

void World::checkItem(List const& list, std::size_t index) {
    Held const item{list.handle.Node(static_cast<int>(index)), list.nodes[index]};
    ASSERT_TRUE(item.handle.IsValid());
    check(item);
    for (Held const& held : held_)
        EXPECT_EQ(held.handle == item.handle, held.node == item.node);
}

void World::checkAll() {
    for (Held const& held : held_)
        check(held);
    checkIdentities();
    for (Document const& document : documents_)
        checkDocument(document);
    for (List const& list : lists_) {
        for (std::size_t i = 0; i != list.nodes.size(); ++i)
            checkItem(list, i);
    }
}

void World::checkSaving(Document const& document) {
    CString const xml = document.handle.SaveToString();
    bool const hasRoot = document.handle.IsLoaded();
    EXPECT_EQ(WXmlDoc::CreateFromString(xml).IsLoaded(), hasRoot);
    IStream* const stream = SHCreateMemStream(nullptr, 0);
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(document.handle.Save(stream));
    EXPECT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
    WXmlDoc again;
    EXPECT_EQ(again.Load(stream), hasRoot);
    stream->Release();
    if (hasRoot) expectXml(again.SaveToString(), std::wstring{xml.view()});
}

void World::finish() {
    checkAll();
    for (Document const& document : documents_)
        checkSaving(document);
    while (!held_.empty() || !lists_.empty() || !documents_.empty()) {
        dropAnything();
        if (!held_.empty()) check(any(held_));
    }
}

} // namespace model
