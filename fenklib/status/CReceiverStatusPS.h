#pragma once
#include <array>

#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/status/CStatusDataLinkPP.h"
#include "fenklib/status/CStatusPositionInTimePP.h"
#include "fenklib/status/CStatusPositionPP.h"
#include "fenklib/status/CStatusRealTimeLoggingPP.h"
#include "fenklib/status/CStatusSatListPP.h"
#include "fenklib/status/CStatusSatPlotPP.h"
#include "fenklib/status/CStatusScatterPP.h"

// The live view of an open receiver: seven pages fed by four listeners. The listeners signal
// notices that post message 1026 (notice number in the second parameter); the records are
// fetched and handed to the pages here, on the user-interface thread, so the pages need no lock.
class CReceiverStatusPS : public CFenkPropertySheet {
public:
    // True from set-up until a position and a satellite list have arrived: a window that shows
    // the sheet unattended (the host's tour) waits on it.
    static constexpr const char* kAwaitingDataProperty = "fenkAwaitingData";
    enum Notice : std::intptr_t { kNoticePosition = 1, kNoticeDataLink = 2, kNoticeSatList = 3, kNoticeDateTime = 4 };

    CReceiverStatusPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverStatusPS() override;

    bool OnInitDialog() override;
    // The modal run, then "dm,/cur/term" whatever it ended with.
    int DoModal() override;
    void reject() override;

    CStatusPositionPP& PositionPage() { return m_position; }
    CStatusDataLinkPP& DataLinkPage() { return m_dataLink; }
    CStatusSatListPP& SatListPage() { return m_satList; }
    CStatusSatPlotPP& SkyPlotPage() { return m_skyPlot; }
    CStatusScatterPP& ScatterPage() { return m_scatter; }
    CStatusPositionInTimePP& PositionInTimePage() { return m_positionInTime; }
    CStatusRealTimeLoggingPP& LoggingPage() { return m_logging; }
    // How many notices of a kind (1-4) the dispatcher has handled.
    unsigned NoticesHandled(std::intptr_t notice) const;
    bool IsListening() const { return static_cast<bool>(m_host); }
    // True once the sheet has enabled the live messages on a terminal that output nothing.
    bool StartedOutput() const { return m_startedOutput; }

protected:
    std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void OnDestroy() override;
    void closeEvent(QCloseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    void SetUpListeners();
    void StartLiveOutput();
    void DispatchNotice(std::intptr_t notice);
    void OnPositions();
    void OnDataLinks();
    void OnSatList();
    void OnDateTime();
    // True when the sheet may close: logging is not running, or the user chose to stop it.
    bool ConfirmClose();

    CStatusPositionPP m_position;
    CStatusDataLinkPP m_dataLink;
    CStatusSatListPP m_satList;
    CStatusSatPlotPP m_skyPlot;
    CStatusScatterPP m_scatter;
    CStatusPositionInTimePP m_positionInTime;
    CStatusRealTimeLoggingPP m_logging;

    basekit::CSmartPtr<devio::IListenerHost> m_host;
    basekit::CSmartPtr<devio::IPositionListener> m_positionListener;
    basekit::CSmartPtr<devio::IDataLinkListener> m_dataLinkListener;
    basekit::CSmartPtr<devio::ISatListListener> m_satListListener;
    basekit::CSmartPtr<devio::IDateTimeListener> m_dateTimeListener;
    std::array<basekit::CSmartPtr<devio::INotice>, 4> m_notices;
    std::array<unsigned, 4> m_handled{};
    bool m_frameCloseConfirmed = false;
    bool m_startedOutput = false;
};
