// Numbers in data files are written with a decimal point whatever the user's locale says.
#pragma once

#include <locale.h>

namespace sorvane {
// While one is alive, scanf and printf of the calling thread read and write numbers as in the "C" locale.
class CNumericLocale {
public:
    CNumericLocale() : previous_(::uselocale(cLocale())) {}
    ~CNumericLocale() { ::uselocale(previous_); }
    CNumericLocale(const CNumericLocale&) = delete;
    CNumericLocale& operator=(const CNumericLocale&) = delete;

private:
    static locale_t cLocale() {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t previous_;
};
} // namespace sorvane
