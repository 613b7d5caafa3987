#include "platform/devio/nmea/CLiveDataDecoder.h"

namespace devio {

CLiveDataDecoder::CLiveDataDecoder(ILiveDataSink& sink)
    : m_sink(sink), m_nmea(sink), m_dataLink(sink), m_lexer(*this)
{
}

void CLiveDataDecoder::Finish()
{
    m_lexer.Finish();
    m_nmea.Flush();
}

LIVEDATA_COUNTERS CLiveDataDecoder::Counters() const
{
    LIVEDATA_COUNTERS counters;
    counters.lexer = m_lexer.Counters();
    counters.nmea = m_nmea.Counters();
    counters.dataLinkMessages = m_dataLink.Decoded();
    counters.dataLinkMalformed = m_dataLink.Malformed();
    counters.otherFrames = m_otherFrames;
    return counters;
}

void CLiveDataDecoder::OnSentence(std::string_view sentence) { m_nmea.Decode(sentence); }

void CLiveDataDecoder::OnFrame(const FRAME_VIEW& frame)
{
    if (frame.kind == 'M' && frame.id == "DL") {
        m_dataLink.Decode(frame.payload);
        return;
    }
    ++m_otherFrames;
    m_sink.OnOtherFrame(frame);
}

}  // namespace devio
