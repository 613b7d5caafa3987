#include "fenklib/status/CReceiverStatusPS.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QTimeZone>
#include <QWheelEvent>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/Wgs84.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/MessageBoxTypes.h"

namespace {

// The date and time of the receiver's clock as the position page shows it.
QDateTime ToSystemTime(const devio::DATETIME_RECORD& r) {
    const QDate date(r.year, r.month, r.day);
    const QTime time(r.hour, r.minute, r.second, r.millisecond);
    return QDateTime(date, time, Qt::UTC);
}

}  // namespace

CReceiverStatusPS::CReceiverStatusPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkPropertySheet(receiver, LoadResString(IDS_STATUS), parent, L"CReceiverStatusPS",
                         uikit::CResizablePropertySheet::ApplyButton::Hidden),
      m_position(receiver),
      m_dataLink(receiver),
      m_satList(receiver),
      m_skyPlot(receiver),
      m_scatter(receiver),
      m_positionInTime(receiver),
      m_logging(receiver) {
    for (uikit::CResizablePropertyPage* page : std::initializer_list<uikit::CResizablePropertyPage*>{
             &m_position, &m_dataLink, &m_satList, &m_skyPlot, &m_scatter, &m_positionInTime, &m_logging})
        AddPage(page);
}

// The pages are members: the window must end while they still exist.
CReceiverStatusPS::~CReceiverStatusPS() { DestroyWindow(); }

bool CReceiverStatusPS::OnInitDialog() {
    CFenkPropertySheet::OnInitDialog();
    try {
        SetUpListeners();
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(nullptr, e);
        EndDialog(uikit::IDCANCEL);
        return true;
    }
    StartLiveOutput();
    return true;
}

// A terminal that outputs nothing would leave every page empty: the sheet asks for the live
// messages, and the "dm,/cur/term" after its run silences them again. A schedule the user set on
// the terminal stands; a link that takes no commands already streams what it has.
void CReceiverStatusPS::StartLiveOutput() {
    if (!m_receiver->TakesCommands()) return;
    RunJob([](CJobContext& job) { return job.Mate().StartLiveOutput(devio::vok::CUR_TERM); },
           [this](const JOB_RESULT<bool>& r) { m_startedOutput = r.Ok() && *r.value; });
}

void CReceiverStatusPS::SetUpListeners() {
    GetButton(uikit::IDOK)->hide();
    GetButton(uikit::IDCANCEL)->setText(LoadResString(IDS_CLOSE).ToQString());
    m_host = m_receiver->GetListenerHost();
    if (!m_host) throw basekit::CWinException("ReceiverStatusPS", __LINE__, L"devio::IListenerHost", basekit::kErrorInternal);
    for (std::intptr_t i = 0; i < 4; ++i)
        m_notices[static_cast<size_t>(i)] = devio::INotice::CreateInstance(GetSafeHwnd(), WM_FENK_NOTIFY, i + 1);

    const auto attach = [this](auto listener, std::intptr_t notice) {
        listener->AttachNotice(m_notices[static_cast<size_t>(notice - 1)], 1);
        m_host->AddListener(listener);
        return listener;
    };
    m_positionListener = attach(devio::IPositionListener::CreateInstance(1), kNoticePosition);
    m_dataLinkListener = attach(devio::IDataLinkListener::CreateInstance(1), kNoticeDataLink);
    m_satListListener = attach(devio::ISatListListener::CreateInstance(1), kNoticeSatList);
    m_dateTimeListener = attach(devio::IDateTimeListener::CreateInstance(1), kNoticeDateTime);
    setProperty(kAwaitingDataProperty, true);
}

int CReceiverStatusPS::DoModal() {
    const int result = CFenkPropertySheet::DoModal();
    // Whatever ended the sheet, the receiver stops talking to this terminal; a failure here
    // must not change what the sheet answered.
    try {
        devio::CVokReceiverMate mate(m_receiver);
        mate.DisableMessages(devio::vok::CUR_TERM);
    } catch (const basekit::CStdException&) {
    }
    return result;
}

std::intptr_t CReceiverStatusPS::OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_FENK_NOTIFY && wParam != kFenkJobNotice) {
        DispatchNotice(lParam);
        return 0;
    }
    return CFenkPropertySheet::OnWindowMessage(message, wParam, lParam);
}

unsigned CReceiverStatusPS::NoticesHandled(std::intptr_t notice) const {
    return notice >= 1 && notice <= 4 ? m_handled[static_cast<size_t>(notice - 1)] : 0;
}

void CReceiverStatusPS::DispatchNotice(std::intptr_t notice) {
    switch (notice) {
        case kNoticePosition: OnPositions(); break;
        case kNoticeDataLink: OnDataLinks(); break;
        case kNoticeSatList: OnSatList(); break;
        case kNoticeDateTime: OnDateTime(); break;
        default: return;
    }
    ++m_handled[static_cast<size_t>(notice - 1)];
    if (m_handled[kNoticePosition - 1] && m_handled[kNoticeSatList - 1]) setProperty(kAwaitingDataProperty, false);
}

void CReceiverStatusPS::OnPositions() {
    if (!m_positionListener) return;
    devio::POSITION_RECORD record;
    while (m_positionListener->Fetch(record, 0)) {
        wgs84::CompletePosition(record);
        m_position.OnPosition(record);
        m_scatter.OnPosition(record);
        m_positionInTime.OnPosition(record);
    }
}

void CReceiverStatusPS::OnDataLinks() {
    if (!m_dataLinkListener) return;
    devio::DATALINK_RECORD record;
    while (m_dataLinkListener->Fetch(record, 0)) m_dataLink.OnDataLink(record);
}

// Only the latest list matters: one is taken per notice.
void CReceiverStatusPS::OnSatList() {
    devio::SATLIST_RECORD list;
    if (!m_satListListener || !m_satListListener->Fetch(list)) return;
    m_position.OnSatList(list);
    m_satList.OnSatList(list);
    m_skyPlot.OnSatList(list);
}

void CReceiverStatusPS::OnDateTime() {
    devio::DATETIME_RECORD record;
    if (!m_dateTimeListener || !m_dateTimeListener->Fetch(record, 0)) return;
    m_position.OnDateTime(ToSystemTime(record));
}

bool CReceiverStatusPS::ConfirmClose() {
    if (!m_logging.IsLoggingInProgress()) return true;
    return uikit::CMessageBoxService::Show(this, LoadResString(IDS_STOP_REALTIME_LOGGING), {},
                                           uikit::MB_YESNO | uikit::MB_ICONQUESTION) == uikit::IDYES;
}

// The Close button and Escape.
void CReceiverStatusPS::reject() {
    if (!m_frameCloseConfirmed && !ConfirmClose()) return;
    m_frameCloseConfirmed = false;
    CFenkPropertySheet::reject();
}

// The window frame's close: asked once here, the base's reject then closes without asking again.
void CReceiverStatusPS::closeEvent(QCloseEvent* e) {
    if (!ConfirmClose()) {
        e->ignore();
        return;
    }
    m_frameCloseConfirmed = true;
    CFenkPropertySheet::closeEvent(e);
    m_frameCloseConfirmed = false;
}

void CReceiverStatusPS::wheelEvent(QWheelEvent* e) {
    CFenkPropertySheet::wheelEvent(e);
    if (m_scatter.IsWindowCreated()) m_scatter.OnMouseWheel(e->angleDelta().y());
}

// Listeners leave the host in the order they were added; records still waiting are not read.
void CReceiverStatusPS::OnDestroy() {
    CFenkPropertySheet::OnDestroy();
    m_logging.StopLogging();   // the closing guard has had the user's word on it
    if (m_host) {
        if (m_positionListener) m_host->RemoveListener(m_positionListener);
        if (m_dataLinkListener) m_host->RemoveListener(m_dataLinkListener);
        if (m_satListListener) m_host->RemoveListener(m_satListListener);
        if (m_dateTimeListener) m_host->RemoveListener(m_dateTimeListener);
    }
    m_positionListener = {};
    m_dataLinkListener = {};
    m_satListListener = {};
    m_dateTimeListener = {};
    m_notices = {};
    m_host = {};
}
