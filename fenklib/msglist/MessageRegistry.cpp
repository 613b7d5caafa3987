#include "fenklib/msglist/MessageRegistry.h"

#include <QFile>
#include <QXmlStreamReader>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/MessageList.h"
#include "fenklib/msglist/XmlAttributes.h"

using basekit::ustring;

namespace fenkmsg {

CMessageRegistry CMessageRegistry::Parse(const QByteArray& bytes) {
    QXmlStreamReader xml(bytes);
    CMessageRegistry registry;
    if (!xml.readNextStartElement() || xml.name().compare(u"ReceiverMessageRegistry", Qt::CaseInsensitive) != 0) return {};
    while (xml.readNextStartElement()) {
        if (xml.name() == u"Message") {
            const ustring name = CanonicalName(AttributeText(xml, QLatin1StringView("Name")));
            const double size = AttributeReal(xml, QLatin1StringView("Bytes"));
            if (!name.empty()) registry.m_entries[name] = ENTRY{AttributeText(xml, QLatin1StringView("Description")), size < 1e6 ? static_cast<int>(size) : 0};
        }
        xml.skipCurrentElement();
    }
    if (xml.hasError()) return {};
    return registry;
}

const CMessageRegistry& CMessageRegistry::Instance() {
    static const CMessageRegistry registry = [] {
        QFile file(GetDataFilePath(L"ReceiverMessageRegistry", L".xml").ToQString());
        return file.open(QIODevice::ReadOnly) ? Parse(file.readAll()) : CMessageRegistry{};
    }();
    return registry;
}

ustring CMessageRegistry::Description(const ustring& fullName) const {
    const auto found = m_entries.find(CanonicalName(fullName));
    return found == m_entries.end() ? ustring() : found->second.description;
}

int CMessageRegistry::Bytes(const ustring& fullName) const {
    const auto found = m_entries.find(CanonicalName(fullName));
    return found == m_entries.end() ? 0 : found->second.bytes;
}

ustring CMessageRegistry::DisplayText(const ustring& shown, const ustring& fullName) const {
    const ustring description = Description(fullName);
    return description.empty() ? shown : ustring::Format(L"%s (%s)", shown, description);
}

}  // namespace fenkmsg
