#include "platform/basekit/CCLocaleScope.h"

#include <cwchar>

namespace basekit {

namespace {
locale_t CLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return c;
}
}  // namespace

CCLocaleScope::CCLocaleScope() : m_previous(uselocale(CLocale())) {}

CCLocaleScope::~CCLocaleScope() { uselocale(m_previous); }

void CCLocaleScope::AdoptForThisThread() { uselocale(CLocale()); }

double ParseReal(const ustring& text) { return wcstod_l(text.c_str(), nullptr, CLocale()); }

}  // namespace basekit
