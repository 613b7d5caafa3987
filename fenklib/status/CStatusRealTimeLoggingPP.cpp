#include "fenklib/status/CStatusRealTimeLoggingPP.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStorageInfo>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CStdException.h"
#include "platform/basekit/CWinException.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/WideScreen.h"

namespace {

enum : unsigned { IDC_FILE_LABEL = 100, IDC_FILE, IDC_START_STOP, IDC_STATE };
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_FILE_LABEL, CtlKind::Static, IDS_LOG_FILE, 4, 6, 40, 10},
    {IDC_FILE, CtlKind::Edit, 0, 46, 4, 190, 14, uikit::kAnchorTopWide},
    {IDC_START_STOP, CtlKind::Button, IDS_RT_LOG_START, 4, 24, 60, 14},
    {IDC_STATE, CtlKind::Static, 0, 4, 44, 232, 60, uikit::kAnchorTopWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_FILE_LABEL, CtlKind::Static, IDS_LOG_FILE, 4, 6, 40, 10},
    {IDC_FILE, CtlKind::Edit, 0, 46, 4, 260, 14, uikit::kAnchorTopWide},
    {IDC_START_STOP, CtlKind::Button, IDS_RT_LOG_START, 310, 4, 70, 14, uikit::kAnchorTopRight},
    {IDC_STATE, CtlKind::Static, 0, 4, 24, 376, 60, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_LOGGING, 240, 226, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_STATUS_LOGGING_WIDE, 384, 148, kWideItems};
const CLayoutRegistration kRegistered("CStatusRealTimeLoggingPP", {{&kNormal, &kWide}});

}  // namespace

CStatusRealTimeLoggingPP::CStatusRealTimeLoggingPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_LOGGING_WIDE : IDD_STATUS_LOGGING,
                        LoadResString(uikit::IsWideScreen() ? IDS_PAGE_LOG : IDS_PAGE_LOGGING)) {
    m_tick.setInterval(1000);
    connect(&m_tick, &QTimer::timeout, this, [this] { OnTick(); });
}

CStatusRealTimeLoggingPP::~CStatusRealTimeLoggingPP() { DestroyWindow(); }

bool CStatusRealTimeLoggingPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, &kWide);
    if (m_controls.Get<QLineEdit>(IDC_FILE)->text().isEmpty())
        m_controls.Get<QLineEdit>(IDC_FILE)->setText(QDir::home().filePath(QStringLiteral("realtime.log")));
    connect(m_controls.Get<QPushButton>(IDC_START_STOP), &QPushButton::clicked, this, [this] { OnStartStop(); });
    UpdateControls();
    ShowState();
    return true;
}

void CStatusRealTimeLoggingPP::UpdateControls() {
    if (!m_controls.Has(IDC_START_STOP)) return;
    m_controls.Get<QPushButton>(IDC_START_STOP)->setText(LoadResString(IsLoggingInProgress() ? IDS_RT_LOG_STOP : IDS_RT_LOG_START).ToQString());
    m_controls.Get<QLineEdit>(IDC_FILE)->setEnabled(!IsLoggingInProgress());
}

bool CStatusRealTimeLoggingPP::StartLogging(const QString& path) {
    if (IsLoggingInProgress()) return true;
    try {
        basekit::CSmartPtr<devio::CRawFileWriter> writer(new devio::CRawFileWriter(basekit::ustring::FromQString(path)));
        if (!m_receiver || !m_receiver->AddRawTap(writer)) {
            writer->Stop();
            throw basekit::CStdException(LoadResString(IDS_RT_LOG_NO_TAP), "RealTimeLogging", __LINE__);
        }
        m_writer = std::move(writer);
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
        return false;
    }
    m_path = path;
    m_last = {};
    m_lastSeconds = 0;
    m_running.start();
    m_tick.start();
    UpdateControls();
    ShowState();
    return true;
}

void CStatusRealTimeLoggingPP::StopLogging() {
    m_tick.stop();
    if (m_writer) {
        m_receiver->RemoveRawTap(m_writer);
        m_writer->Stop();
        m_last = m_writer->State();
        m_lastSeconds = m_running.elapsed() / 1000;
        m_writer = {};
    }
    UpdateControls();
    ShowState();
}

devio::RAW_LOG_STATE CStatusRealTimeLoggingPP::LogState() const { return m_writer ? m_writer->State() : m_last; }

// A log whose file can no longer be written stops, and says why.
void CStatusRealTimeLoggingPP::OnTick() {
    const int error = LogState().error;
    if (error == 0) {
        ShowState();
        return;
    }
    StopLogging();
    uikit::CMessageBoxService::ReportError(this, basekit::CWinException("RealTimeLogging", __LINE__, basekit::ustring::FromQString(m_path),
                                                                        basekit::SystemErrorFromErrno(error)));
}

void CStatusRealTimeLoggingPP::OnStartStop() {
    if (IsLoggingInProgress()) StopLogging();
    else StartLogging(m_controls.Get<QLineEdit>(IDC_FILE)->text());
}

void CStatusRealTimeLoggingPP::ShowState() {
    if (!m_controls.Has(IDC_STATE)) return;
    const QLocale l;
    const QString path = m_controls.Get<QLineEdit>(IDC_FILE)->text();
    const QStorageInfo storage(QFileInfo(path).absolutePath());
    const qint64 seconds = IsLoggingInProgress() ? m_running.elapsed() / 1000 : m_lastSeconds;
    const devio::RAW_LOG_STATE state = LogState();
    const QString duration = QStringLiteral("%1:%2:%3")
                                 .arg(seconds / 3600)
                                 .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                                 .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    QString text = LoadResString(IDS_LOGGING_STATE)
                       .ToQString()
                       .arg(l.formattedDataSize(static_cast<qint64>(state.written)), duration,
                            l.formattedDataSize(storage.bytesAvailable()));
    if (state.dropped > 0) text += LoadResString(IDS_RT_LOG_LOST).ToQString().arg(l.formattedDataSize(static_cast<qint64>(state.dropped)));
    m_controls.Get<QLabel>(IDC_STATE)->setText(text);
}

// Closing the sheet stops logging with it.
void CStatusRealTimeLoggingPP::OnDestroy() {
    StopLogging();
    CFenkPropertyPage::OnDestroy();
}
