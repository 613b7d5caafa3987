#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/devio/nmea/CEpochPosition.h"
#include "platform/devio/nmea/CGsvAssembler.h"
#include "platform/devio/nmea/CNmeaSentence.h"
#include "platform/devio/nmea/CSkyView.h"
#include "platform/devio/nmea/INmeaSink.h"
#include "platform/devio/nmea/NmeaCounters.h"

namespace devio {

// Decodes NMEA 0183 sentences into live-data records (docs/nmea-decoding.md). Stateful: it
// assembles GSV groups, remembers the GSA used set, and emits one combined satellite list
// per epoch. Feed it sentences without line ends, as CStreamLexer cuts them.
class CNmeaDecoder {
public:
    explicit CNmeaDecoder(INmeaSink& sink);
    CNmeaDecoder(const CNmeaDecoder&) = delete;
    CNmeaDecoder& operator=(const CNmeaDecoder&) = delete;

    void Decode(std::string_view sentence);
    // End of stream: publishes the satellites of the epoch in progress.
    void Flush();

    NMEA_COUNTERS Counters() const;

private:
    using DecodeFunction = bool (CNmeaDecoder::*)();
    // One row per sentence type; adding a type means adding a row and its function.
    struct SENTENCE_ROW {
        std::string_view type;
        std::size_t minFields;
        DecodeFunction decode;
    };
    static const SENTENCE_ROW kSentenceTable[];

    // Proprietary sentences shaped like a standard one, for what the standard talkers lack
    // (a chipset's QZSS satellites in "$PQGSV"): address, standard type, talker whose
    // satellite numbering applies.
    struct PROPRIETARY_ROW {
        std::string_view address;
        std::string_view type;
        std::string_view talker;
    };
    static const PROPRIETARY_ROW kProprietaryTable[];

    const SENTENCE_ROW* Find(std::string_view type) const;
    const SENTENCE_ROW* FindRow();
    void DecodeGood();
    bool DecodeGga();
    bool DecodeGns();
    bool DecodeGll();
    bool DecodeRmc();
    bool DecodeVtg();
    bool DecodeGst();
    bool DecodeGsa();
    bool DecodeGsv();
    bool DecodeZda();
    // A time field: empty is no time; a time changes the epoch when it differs.
    bool TakeTime(std::string_view field, bool& hasTime);
    // A GGA, GNS or GLL fix at its time field's epoch (an epoch by itself without one).
    void OfferTimedFix(std::string_view timeField, bool hasPosition, CEpochPosition::Kind kind, FIX_REPORT& fix);
    void OnEpochTime(std::int32_t millisecondOfDay);
    void BeginGsa(std::int32_t system);

    INmeaSink& m_sink;
    NMEA_COUNTERS m_counters;
    CNmeaSentence m_sentence;
    CGsvAssembler m_gsv;
    CSkyView m_sky;
    CEpochPosition m_position;
    std::string_view m_talker;            // whose numbering the sentence's satellites use
    std::string_view m_groupKey;          // GSV: whose group the part belongs to
    std::int32_t m_epochTime = -1;        // millisecond of day of the epoch in progress
    bool m_zdaSeen = false;
    std::int32_t m_rmcDateEpoch = -1;     // epoch whose RMC date went out already
    std::uint32_t m_gsaSystems = 0;       // systems whose GSA the current used set holds
    bool m_lastWasGsa = false;
};

}  // namespace devio
