// The state of one run of a stylesheet, with its limits, and what compiling and running may read.
#pragma once

#include <locale.h>
#include <memory>

#include <libxml/xmlIO.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>

#include <transform/Stylesheet.h>

namespace tibxml::transform {

struct FreeContext {
    void operator()(xsltTransformContext* context) const noexcept {
        xsltFreeTransformContext(context);
    }
};

struct FreeSecurity {
    void operator()(xsltSecurityPrefs* security) const noexcept { xsltFreeSecurityPrefs(security); }
};

using Context = std::unique_ptr<xsltTransformContext, FreeContext>;
using Security = std::unique_ptr<xsltSecurityPrefs, FreeSecurity>;

/// What may be opened. Throws std::bad_alloc.
Security securityFor(DocumentFunction permission);

/// For one run, with the parameters and the mode that are asked for; `security` has to outlive it.
/// Throws std::bad_alloc, and TransformError for a parameter that cannot be set.
Context contextFor(xsltStylesheet* style, xmlDoc* input, xsltSecurityPrefs* security,
                   Request const& request);

/// For libxml2, what it may read by a URL or path: a regular file of this machine by its absolute
/// path; null for anything else.
xmlParserInputBuffer* openLocalFile(char const* url, xmlCharEncoding encoding) noexcept;

/// While this lives, numbers of the calling thread have a decimal point, whatever the program's
/// locale is: libxml2 and libxslt write them with the C library. All else of the thread's locale
/// stays as it was, and where it has a point already that is left alone.
class NumericLocale {
public:
    /// Throws std::bad_alloc.
    NumericLocale();
    NumericLocale(NumericLocale const&) = delete;
    NumericLocale& operator=(NumericLocale const&) = delete;
    ~NumericLocale();

private:
    locale_t own_ = nullptr; // none when there is nothing to change
    locale_t before_ = nullptr;
};

} // namespace tibxml::transform
