#pragma once
#include <fstream>
#include <memory>
#include <thread>

#include "platform/basekit/CEvent.h"
#include "platform/devio/CLink.h"

namespace devio {

// A capture file played back as if a receiver sent it: its lines come at the line rate the
// address names ("rate", characters of ten bits), from the start again when "loop" is 1, and
// the link ends with the file otherwise. Lines starting with '#' annotate a capture and are
// not played. A feeder thread writes into one end of a socket pair; the reader sees the other
// end like any link. Nothing answers commands.
class CReplayLink final : public CLink {
public:
    // Throws basekit::CWinException when the file cannot be opened.
    static std::unique_ptr<CLink> Open(const CSmartPtr<IPortAddr>& address);
    ~CReplayLink() override;

private:
    CReplayLink(const CSmartPtr<IPortAddr>& address, int readFd, int feedFd, std::ifstream capture);
    void Feed();
    bool NextLine(std::string& line);
    bool WaitUntilWritable();

    int m_feedFd;
    std::ifstream m_capture;
    double m_bytesPerSecond;
    bool m_loop;
    basekit::CEvent m_stop{basekit::CEvent::Mode::Manual};
    std::thread m_feeder;
};

}  // namespace devio
