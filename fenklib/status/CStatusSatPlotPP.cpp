#include "fenklib/status/CStatusSatPlotPP.h"

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/CSkyPlot.h"

namespace {

enum : unsigned { IDC_SKY_PLOT = 3054 };
constexpr DLG_ITEM kItems[] = {{IDC_SKY_PLOT, CtlKind::Custom, 0, 0, 0, 240, 226, uikit::kAnchorFill}};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_SKY_PLOT, 240, 226, kItems};
const CLayoutRegistration kRegistered("CStatusSatPlotPP", {{&kNormal}});

}  // namespace

CStatusSatPlotPP::CStatusSatPlotPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), IDD_STATUS_SKY_PLOT, LoadResString(IDS_PAGE_SKY_PLOT)) {}

bool CStatusSatPlotPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, nullptr, [](const DLG_ITEM&, QWidget* window) { return new CSkyPlot(window); });
    m_plot = static_cast<CSkyPlot*>(m_controls.Item(IDC_SKY_PLOT));
    // A link that only streams NMEA takes no command: the mask stays at its initial value, unasked.
    if (GetReceiver() && GetReceiver()->TakesCommands())
        WithReceiver([this](devio::CVokReceiverMate& mate) { m_mask = static_cast<double>(mate.Get(devio::par::LockElm)); });
    Draw();
    return true;
}

// A list that arrives while the page does not exist is dropped: the next one, a second later,
// fills the plot.
void CStatusSatPlotPP::OnSatList(const devio::SATLIST_RECORD& list) {
    if (!IsWindowCreated() || !m_plot) return;
    m_latest = list;
    Draw();
}

void CStatusSatPlotPP::Draw() {
    m_plot->SetSatellites(m_latest, m_mask);
    // A picture says nothing to a reader of text: the host's tour prints this instead.
    setProperty("fenkReadout", LoadResString(IDS_SKY_PLOT_READOUT).ToQString().arg(m_mask).arg(m_latest.size()));
}
