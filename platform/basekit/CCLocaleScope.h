#pragma once
#include <locale.h>

#include "platform/basekit/ustring.h"

namespace basekit {

// Makes the C locale current for this thread's number formatting and parsing while it lives.
// Qt adopts the user's locale for the whole process, so "%f" would write "0,500000" for a
// comma-decimal user; protocol texts, stored settings and files must not follow it.
class CCLocaleScope {
public:
    CCLocaleScope();
    ~CCLocaleScope();
    CCLocaleScope(const CCLocaleScope&) = delete;
    CCLocaleScope& operator=(const CCLocaleScope&) = delete;

    // Makes the C locale current for the rest of the calling thread's life (worker and reader
    // threads call it once at their start).
    static void AdoptForThisThread();

private:
    locale_t m_previous;
};

// A decimal real in the C locale; 0 when the text does not start with a number.
double ParseReal(const ustring& text);

}  // namespace basekit
