#include "Functions.h"

#include <algorithm>
#include <utility>

#include "AttributeIndex.h"

namespace tibxml::query {

namespace {

using Special = Function::Special;

// A call whose value is made by a body.
template <class Base, class Body>
class Call : public Base {
protected:
    Call(Body body, Arguments arguments) noexcept : body_{body}, arguments_{std::move(arguments)} {
        for (ExpressionPtr const& argument : arguments_)
            this->dependLike(*argument);
    }

    Body body_;
    Arguments arguments_;
};

class BooleanCall final : public Call<BooleanExpression, BooleanBody> {
public:
    BooleanCall(BooleanBody body, Arguments arguments) noexcept
        : Call{body, std::move(arguments)} {}

    bool boolean(Context const& context) const override { return body_(context, arguments_); }
};

class NumberCall final : public Call<NumberExpression, NumberBody> {
public:
    NumberCall(NumberBody body, Arguments arguments) noexcept : Call{body, std::move(arguments)} {}

    double number(Context const& context) const override { return body_(context, arguments_); }
};

class StringCall final : public Call<StringExpression, StringBody> {
public:
    StringCall(StringBody body, Arguments arguments) noexcept : Call{body, std::move(arguments)} {}

    std::string_view string(Context const& context, std::string& storage) const override {
        return body_(context, arguments_, storage);
    }
};

class Position final : public NumberExpression {
public:
    Position() noexcept { dependOnPosition(); }

    Form form() const noexcept override { return {.kind = Form::Kind::position}; }

    double number(Context const& context) const override {
        return static_cast<double>(context.position);
    }
};

class Last final : public NumberExpression {
public:
    Last() noexcept { dependOnSize(); }

    Form form() const noexcept override { return {.kind = Form::Kind::last}; }

    double number(Context const& context) const override {
        return static_cast<double>(context.size);
    }
};

char lowered(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

bool isLanguageOrDialect(std::string_view actual, std::string_view wanted) noexcept {
    if (actual.size() < wanted.size()) return false;
    return equalIgnoringCase(actual.substr(0, wanted.size()), wanted) &&
           (actual.size() == wanted.size() || actual[wanted.size()] == '-');
}

// Whether the nearest xml:lang around the context node names the language or a dialect of it.
class Lang final : public BooleanExpression {
public:
    Lang(std::uint32_t xmlLang, ExpressionPtr language) noexcept
        : xmlLang_{xmlLang},
          language_{std::move(language)} {
        dependLike(*language_);
    }

    bool boolean(Context const& context) const override {
        tree::Name const* const name = context.evaluation.names[xmlLang_];
        if (name == nullptr) return false;
        std::string storage;
        std::string_view const wanted = language_->string(context, storage);
        for (tree::Node const* node = context.node; node != nullptr; node = node->parent) {
            if (tree::Node const* attribute = attributeNamed(node, name))
                return isLanguageOrDialect(attribute->text(), wanted);
        }
        return false;
    }

private:
    std::uint32_t xmlLang_;
    ExpressionPtr language_;
};

ExpressionPtr makeSpecial(Special special, Arguments arguments, std::uint32_t xmlLang) {
    switch (special) {
    case Special::position: return std::make_unique<Position>();
    case Special::last: return std::make_unique<Last>();
    case Special::lang: return std::make_unique<Lang>(xmlLang, std::move(arguments.front()));
    default: return std::make_unique<NoNodes>();
    }
}

} // namespace

ExpressionPtr makeCall(Function const& function, Arguments arguments, std::uint32_t xmlLang) {
    if (arguments.empty() && function.defaultsToNode)
        arguments.push_back(std::make_unique<ContextNode>());
    if (function.boolean != nullptr)
        return std::make_unique<BooleanCall>(function.boolean, std::move(arguments));
    if (function.number != nullptr)
        return std::make_unique<NumberCall>(function.number, std::move(arguments));
    if (function.string != nullptr)
        return std::make_unique<StringCall>(function.string, std::move(arguments));
    return makeSpecial(function.special, std::move(arguments), xmlLang);
}

} // namespace tibxml::query
