#pragma once
#include <QByteArray>
#include <map>

#include "platform/basekit/ustring.h"

namespace fenkmsg {

// What the library knows of each receiver message by its full name ("nmea/GGA"): a
// description for people and the bytes one output takes on the wire (for the load figure).
class CMessageRegistry {
public:
    struct ENTRY {
        basekit::ustring description;
        int bytes = 0;   // 0: not known
    };

    // <ReceiverMessageRegistry><Message Name="nmea/GGA" Description="..." Bytes="74"/>...
    // A root of another name or a malformed document gives an empty registry.
    static CMessageRegistry Parse(const QByteArray& xml);
    // The library-wide registry, read once from "ReceiverMessageRegistry.xml" in the data folder.
    static const CMessageRegistry& Instance();

    basekit::ustring Description(const basekit::ustring& fullName) const;
    int Bytes(const basekit::ustring& fullName) const;
    // "%s (%s)" with the description where one is known, else shown bare.
    basekit::ustring DisplayText(const basekit::ustring& shown, const basekit::ustring& fullName) const;
    std::size_t Size() const { return m_entries.size(); }

private:
    std::map<basekit::ustring, ENTRY> m_entries;
};

}  // namespace fenkmsg
