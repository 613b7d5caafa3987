#pragma once
#include <locale.h>

namespace rcvsim {

// The simulator may run inside a host whose process locale writes "0,5": its threads format
// and parse receiver texts in the C locale, as a receiver's firmware does.
inline void UseCLocaleOnThisThread() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    uselocale(c);
}

}  // namespace rcvsim
