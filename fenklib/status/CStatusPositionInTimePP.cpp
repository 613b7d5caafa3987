#include "fenklib/status/CStatusPositionInTimePP.h"

#include <QLabel>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/CTimeChart.h"
#include "fenklib/status/PositionSummary.h"
#include "platform/uikit/WideScreen.h"

namespace {

enum : unsigned { IDC_CHART = 100, IDC_NOTE };
constexpr size_t kReceivedKept = 64;
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_CHART, CtlKind::Custom, 0, 4, 4, 232, 198, uikit::kAnchorFill},
    {IDC_NOTE, CtlKind::Static, 0, 4, 204, 232, 18, uikit::kAnchorBottomWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_CHART, CtlKind::Custom, 0, 4, 4, 376, 122, uikit::kAnchorFill},
    {IDC_NOTE, CtlKind::Static, 0, 4, 128, 376, 16, uikit::kAnchorBottomWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_POSITION_IN_TIME, 240, 226, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_STATUS_POSITION_IN_TIME_WIDE, 384, 148, kWideItems};
const CLayoutRegistration kRegistered("CStatusPositionInTimePP", {{&kNormal, &kWide}});

}  // namespace

CStatusPositionInTimePP::CStatusPositionInTimePP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_POSITION_IN_TIME_WIDE : IDD_STATUS_POSITION_IN_TIME,
                        LoadResString(uikit::IsWideScreen() ? IDS_PAGE_POS_IN_TIME : IDS_PAGE_POSITION_IN_TIME)) {}

bool CStatusPositionInTimePP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, &kWide, [this](const DLG_ITEM&, QWidget* window) {
        return new CTimeChart(window, m_samples, m_windowSeconds);
    });
    m_chart = static_cast<CTimeChart*>(m_controls.Item(IDC_CHART));
    m_note = m_controls.Get<QLabel>(IDC_NOTE);
    ShowNote();
    return true;
}

void CStatusPositionInTimePP::OnPosition(const devio::POSITION_RECORD& record) {
    if (m_received.size() >= kReceivedKept) m_received.pop_front();
    m_received.push_back(record);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    m_samples.Add(record, now);
    m_samples.DropOlderThan(now.addSecs(-m_windowSeconds));
    if (m_chart && IsWindowCreated()) {
        m_chart->update();
        ShowNote();
    }
}

void CStatusPositionInTimePP::ShowNote() {
    m_note->setText(NoteText());
    // A chart says nothing to a reader of text: the host's tour prints this instead.
    setProperty("fenkReadout", LoadResString(IDS_TIME_CHART_READOUT).ToQString().arg(m_samples.Samples().size()).arg(m_windowSeconds));
}

QString CStatusPositionInTimePP::NoteText() const {
    return m_received.empty() ? QString() : CPositionSummary::StatisticsNote(m_received.back(), m_samples.HeldLeftOut());
}
