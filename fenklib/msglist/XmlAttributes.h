#pragma once
#include <QXmlStreamReader>

#include "platform/basekit/ustring.h"

namespace fenkmsg {

// Attribute values of the element the reader is on; numbers in the C locale, 0 when absent,
// negative or not a number (the files hold periods and sizes).
inline basekit::ustring AttributeText(const QXmlStreamReader& xml, QLatin1StringView name) {
    return basekit::ustring::FromQString(xml.attributes().value(name).toString().trimmed());
}
inline double AttributeReal(const QXmlStreamReader& xml, QLatin1StringView name) {
    bool ok = false;
    const double value = xml.attributes().value(name).trimmed().toDouble(&ok);   // QStringView: C locale
    return ok && value >= 0 && value <= 1e9 ? value : 0.0;   // no NaN, infinity or negative period
}

}  // namespace fenkmsg
