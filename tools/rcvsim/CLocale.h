#pragma once
#include <locale.h>

namespace rcvsim {

// The simulator may run inside a host whose process locale writes "0,5": its threads format
// and parse receiver texts in the C locale, as a receiver's firmware does.
inline locale_t CLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return c;
}
inline void UseCLocaleOnThisThread() { uselocale(CLocale()); }

// The C locale on the calling thread until Restore() (or the end of the scope): the simulator
// is built on its host's thread, and its parameter tree is seeded with formatted numbers.
class CLocaleScope {
public:
    CLocaleScope() : previous_(uselocale(CLocale())) {}
    ~CLocaleScope() { Restore(); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;
    void Restore() {
        if (previous_) uselocale(previous_);
        previous_ = nullptr;
    }

private:
    locale_t previous_;
};

}  // namespace rcvsim
