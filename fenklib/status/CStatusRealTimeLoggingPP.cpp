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

}  // namespace

CStatusRealTimeLoggingPP::CStatusRealTimeLoggingPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_LOGGING_WIDE : IDD_STATUS_LOGGING,
                        LoadResString(uikit::IsWideScreen() ? IDS_PAGE_LOG : IDS_PAGE_LOGGING)) {
    m_tick.setInterval(1000);
    connect(&m_tick, &QTimer::timeout, this, [this] { ShowState(); });
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
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Append)) {
        uikit::CMessageBoxService::ReportError(
            this, basekit::CWinException("RealTimeLogging", __LINE__, basekit::ustring::FromQString(path), basekit::kErrorInternal));
        return false;
    }
    m_file = std::move(file);
    m_bytes = 0;
    m_running.start();
    m_tick.start();
    UpdateControls();
    ShowState();
    return true;
}

void CStatusRealTimeLoggingPP::StopLogging() {
    m_tick.stop();
    m_file.reset();
    UpdateControls();
    ShowState();
}

void CStatusRealTimeLoggingPP::Write(const QByteArray& bytes) {
    if (!m_file) return;
    m_bytes += m_file->write(bytes);
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
    const qint64 seconds = IsLoggingInProgress() ? m_running.elapsed() / 1000 : 0;
    m_controls.Get<QLabel>(IDC_STATE)->setText(LoadResString(IDS_LOGGING_STATE)
                                                   .ToQString()
                                                   .arg(l.formattedDataSize(m_bytes),
                                                        QStringLiteral("%1:%2:%3")
                                                            .arg(seconds / 3600)
                                                            .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                                                            .arg(seconds % 60, 2, 10, QLatin1Char('0')),
                                                        l.formattedDataSize(storage.bytesAvailable())));
}

// Closing the sheet stops logging with it.
void CStatusRealTimeLoggingPP::OnDestroy() {
    StopLogging();
    CFenkPropertyPage::OnDestroy();
}
