// A compiled query of libxml2's with its context, and values read from its results.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include <libxml/xpath.h>

namespace bench {

class Libxml2Query {
public:
    struct FreeResult {
        void operator()(xmlXPathObject* result) const noexcept { xmlXPathFreeObject(result); }
    };

    using Result = std::unique_ptr<xmlXPathObject, FreeResult>;

    explicit Libxml2Query(std::string const& expression)
        : compiled_{xmlXPathCompile(reinterpret_cast<xmlChar const*>(expression.c_str()))} {}

    void setDocument(xmlDoc* document) {
        context_.reset(xmlXPathNewContext(document));
        context_->node = xmlDocGetRootElement(document);
    }

    xmlXPathContext* context() const noexcept { return context_.get(); }

    Result evaluate() const {
        return Result{xmlXPathCompiledEval(compiled_.get(), context_.get())};
    }

private:
    struct FreeCompiled {
        void operator()(xmlXPathCompExpr* compiled) const noexcept {
            xmlXPathFreeCompExpr(compiled);
        }
    };

    struct FreeContext {
        void operator()(xmlXPathContext* context) const noexcept { xmlXPathFreeContext(context); }
    };

    std::unique_ptr<xmlXPathCompExpr, FreeCompiled> compiled_;
    std::unique_ptr<xmlXPathContext, FreeContext> context_;
};

// The number in the text of a result's first node; -1 when there is none.
inline int numberIn(Libxml2Query::Result const& result) {
    if (result->nodesetval == nullptr || result->nodesetval->nodeNr == 0) return -1;
    xmlChar* const text = xmlNodeGetContent(result->nodesetval->nodeTab[0]);
    int const value = std::atoi(reinterpret_cast<char const*>(text));
    xmlFree(text);
    return value;
}

} // namespace bench
