// Numbers as stylesheets write them.
#pragma once

#include <langinfo.h>
#include <locale.h>

#include <new>
#include <string_view>

namespace tibxml::transform {

// While this lives, numbers of the calling thread have a decimal point, whatever the program's
// locale is: libxml2 and libxslt write them with the C library. All else of the thread's locale
// stays as it was, and where it has a point already that is left alone.
class NumericLocale {
public:
    // Throws std::bad_alloc.
    NumericLocale() {
        if (std::string_view{::nl_langinfo(RADIXCHAR)} == ".") return;
        locale_t const copy = ::duplocale(::uselocale(nullptr));
        if (copy == nullptr) throw std::bad_alloc{};
        own_ = ::newlocale(LC_NUMERIC_MASK, "C", copy);
        if (own_ == nullptr) {
            ::freelocale(copy);
            throw std::bad_alloc{};
        }
        before_ = ::uselocale(own_);
    }

    NumericLocale(NumericLocale const&) = delete;
    NumericLocale& operator=(NumericLocale const&) = delete;

    ~NumericLocale() {
        if (own_ == nullptr) return;
        ::uselocale(before_);
        ::freelocale(own_);
    }

private:
    locale_t own_ = nullptr; // none when there is nothing to change
    locale_t before_ = nullptr;
};

} // namespace tibxml::transform
