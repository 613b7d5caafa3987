#include "fenklib/msglist/PredefinedMessageSets.h"

#include <QFile>
#include <QXmlStreamReader>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/XmlAttributes.h"

using basekit::ustring;

namespace fenkmsg {

namespace {

devio::vok::MSG ReadMessage(const QXmlStreamReader& xml) {
    devio::vok::MSG msg;
    msg.name = AttributeText(xml, QLatin1StringView("Name"));
    msg.period = AttributeReal(xml, QLatin1StringView("Period"));
    msg.phase = 0;
    msg.count = 0;
    msg.flags = 0;
    return msg;
}

MESSAGE_SET ReadSet(QXmlStreamReader& xml) {
    MESSAGE_SET set{AttributeText(xml, QLatin1StringView("Name")), {}};
    while (xml.readNextStartElement()) {
        if (xml.name() == u"Message") {
            const devio::vok::MSG msg = ReadMessage(xml);
            if (!msg.name.empty()) AddUnique(set.messages, msg);
        }
        xml.skipCurrentElement();
    }
    return set;
}

}  // namespace

std::vector<MESSAGE_SET> ParsePredefinedMessageSets(const QByteArray& bytes) {
    QXmlStreamReader xml(bytes);
    std::vector<MESSAGE_SET> sets;
    if (!xml.readNextStartElement() || xml.name().compare(u"PredefinedMessageSets", Qt::CaseInsensitive) != 0) return {};
    while (xml.readNextStartElement()) sets.push_back(ReadSet(xml));
    // Nothing of a document that breaks off or is malformed further on is trusted.
    if (xml.hasError()) return {};
    return sets;
}

const std::vector<MESSAGE_SET>& PredefinedMessageSets() {
    static const std::vector<MESSAGE_SET> sets = [] {
        QFile file(GetDataFilePath(L"PredefinedMessageSets", L".xml").ToQString());
        return file.open(QIODevice::ReadOnly) ? ParsePredefinedMessageSets(file.readAll()) : std::vector<MESSAGE_SET>{};
    }();
    return sets;
}

}  // namespace fenkmsg
