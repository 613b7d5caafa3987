#include "fenklib/status/CStatusScatterPP.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/CScatterPlot.h"
#include "fenklib/status/PositionSummary.h"
#include "platform/uikit/WideScreen.h"

namespace {

enum : unsigned { IDC_PLOT = 100, IDC_STATISTICS, IDC_RESET };
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_PLOT, CtlKind::Custom, 0, 4, 4, 232, 170, uikit::kAnchorFill},
    {IDC_STATISTICS, CtlKind::Static, 0, 4, 178, 170, 44, uikit::kAnchorBottomWide},
    {IDC_RESET, CtlKind::Button, IDS_RESET, 180, 208, 56, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_PLOT, CtlKind::Custom, 0, 4, 4, 240, 140, uikit::kAnchorFill},
    {IDC_STATISTICS, CtlKind::Static, 0, 250, 4, 130, 100, uikit::kAnchorTopRight},
    {IDC_RESET, CtlKind::Button, IDS_RESET, 310, 110, 70, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_SCATTER, 240, 226, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_STATUS_SCATTER_WIDE, 384, 148, kWideItems};
const CLayoutRegistration kRegistered("CStatusScatterPP", {{&kNormal, &kWide}});

}  // namespace

CStatusScatterPP::CStatusScatterPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_SCATTER_WIDE : IDD_STATUS_SCATTER,
                        LoadResString(IDS_PAGE_SCATTER)) {}

bool CStatusScatterPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, &kWide,
                                       [this](const DLG_ITEM&, QWidget* window) { return new CScatterPlot(window, m_samples); });
    m_plot = static_cast<CScatterPlot*>(m_controls.Item(IDC_PLOT));
    m_statistics = m_controls.Get<QLabel>(IDC_STATISTICS);
    connect(m_controls.Get<QPushButton>(IDC_RESET), &QPushButton::clicked, this, [this] { OnReset(); });
    Show();
    return true;
}

void CStatusScatterPP::OnPosition(const devio::POSITION_RECORD& record) {
    m_samples.Add(record, QDateTime::currentDateTimeUtc());
    m_latest = record;
    if (IsWindowCreated()) Show();
}

void CStatusScatterPP::OnMouseWheel(int delta) {
    if (m_plot) m_plot->Zoom(delta / 120);
}

double CStatusScatterPP::MetresAcross() const { return m_plot ? 2 * m_plot->Span() : 0; }

void CStatusScatterPP::OnReset() {
    m_samples.Reset();
    if (m_plot) m_plot->FitToSamples();
    Show();
}

void CStatusScatterPP::Show() {
    if (!m_plot) return;
    m_plot->update();
    m_statistics->setText(StatisticsText());
    setProperty("fenkReadout", m_statistics->text());   // what the host's tour prints of the page
}

QString CStatusScatterPP::StatisticsText() const {
    const auto st = m_samples.Statistics();
    const QLocale l;
    const auto m = [&](double v) { return l.toString(v, 'f', 3); };
    QString text = LoadResString(IDS_SCATTER_STATISTICS)
                       .ToQString()
                       .arg(st.count)
                       .arg(m(st.deviation.east), m(st.deviation.north), m(st.deviation.up), m(st.cep50), m(st.cep95));
    const QString note = CPositionSummary::StatisticsNote(m_latest, m_samples.HeldLeftOut());
    return note.isEmpty() ? text : text + u'\n' + note;
}
