#pragma once
#include <cstddef>
#include <string_view>

#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/lexer/ILexerSink.h"
#include "platform/devio/nmea/CDataLinkDecoder.h"
#include "platform/devio/nmea/CNmeaDecoder.h"
#include "platform/devio/nmea/ILiveDataSink.h"

namespace devio {

struct LIVEDATA_COUNTERS {
    LEXER_COUNTERS lexer;
    NMEA_COUNTERS nmea;
    std::uint64_t dataLinkMessages = 0;
    std::uint64_t dataLinkMalformed = 0;
    std::uint64_t otherFrames = 0;
};

// The receiver's output stream in, live-data records out: lexer, NMEA decoder and "DL"
// decoder wired together.
class CLiveDataDecoder : private ILexerSink {
public:
    explicit CLiveDataDecoder(ILiveDataSink& sink);

    // For capture files: see CStreamLexer::SetCommentLines.
    void SetCommentLines(bool on) { m_lexer.SetCommentLines(on); }

    void Feed(const char* data, std::size_t size) { m_lexer.Feed(data, size); }
    void Feed(std::string_view data) { m_lexer.Feed(data); }
    // End of stream: drops the unit in progress and publishes the last epoch's satellites.
    void Finish();

    LIVEDATA_COUNTERS Counters() const;

private:
    void OnSentence(std::string_view sentence) override;
    void OnFrame(const FRAME_VIEW& frame) override;

    ILiveDataSink& m_sink;
    CNmeaDecoder m_nmea;
    CDataLinkDecoder m_dataLink;
    CStreamLexer m_lexer;
    std::uint64_t m_otherFrames = 0;
};

}  // namespace devio
