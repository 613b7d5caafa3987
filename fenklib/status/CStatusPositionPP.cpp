#include "fenklib/status/CStatusPositionPP.h"

#include <QApplication>
#include <QClipboard>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/SatelliteLook.h"
#include "platform/uikit/WideScreen.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_COPY };
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 200, uikit::kAnchorFill},
    {IDC_COPY, CtlKind::Button, IDS_COPY_POSITION, 156, 208, 80, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 300, 140, uikit::kAnchorFill},
    {IDC_COPY, CtlKind::Button, IDS_COPY_POSITION, 310, 4, 70, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_POSITION, 240, 226, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_STATUS_POSITION_WIDE, 384, 148, kWideItems};

// GGA fix quality names, by quality.
constexpr unsigned kFixNames[] = {IDS_FIX_NONE, IDS_FIX_SINGLE, IDS_FIX_DGPS, IDS_FIX_PPS,
                                  IDS_FIX_RTK_FIXED, IDS_FIX_RTK_FLOAT, IDS_FIX_ESTIMATED};

QString Number(double v, int decimals) { return QLocale().toString(v, 'f', decimals); }

}  // namespace

CStatusPositionPP::CStatusPositionPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_POSITION_WIDE : IDD_STATUS_POSITION,
                        LoadResString(IDS_PAGE_POSITION)) {}

bool CStatusPositionPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, &kWide);
    m_list = m_controls.Get<QTreeWidget>(IDC_LIST);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    connect(m_controls.Get<QPushButton>(IDC_COPY), &QPushButton::clicked, this, [this] { OnCopyPosition(); });
    Show();
    return true;
}

void CStatusPositionPP::OnPosition(const devio::POSITION_RECORD& record) {
    m_last = record;
    ++m_positions;
    if (IsWindowCreated()) Show();
}

void CStatusPositionPP::OnSatList(const devio::SATLIST_RECORD& list) {
    m_perSystem.clear();
    for (const auto& sat : list) {
        auto& [used, tracked] = m_perSystem[sat.system];
        ++tracked;
        if (devio::SATELLITE_RECORD::IsUsed(sat.navStatus)) ++used;
    }
    if (IsWindowCreated()) Show();
}

void CStatusPositionPP::OnDateTime(const QDateTime& utc) {
    m_utc = utc;
    if (IsWindowCreated()) Show();
}

ustring CStatusPositionPP::PositionText() const {
    if (!m_last.geoValid && !m_last.xyzValid) return {};
    return FormatGeoText({m_last.lat, m_last.lon, m_last.height}) + L"\n" + FormatXyzText({m_last.x, m_last.y, m_last.z});
}

void CStatusPositionPP::OnCopyPosition() {
    const ustring text = PositionText();
    if (!text.empty()) QApplication::clipboard()->setText(text.ToQString());
}

void CStatusPositionPP::Show() {
    if (!m_list) return;
    std::vector<std::pair<unsigned, QString>> rows;
    const QString none = QStringLiteral("-");
    const bool geo = m_last.geoValid != 0, xyz = m_last.xyzValid != 0;
    rows.emplace_back(IDS_STATUS_LATITUDE, geo ? Number(m_last.lat, 9) : none);
    rows.emplace_back(IDS_STATUS_LONGITUDE, geo ? Number(m_last.lon, 9) : none);
    rows.emplace_back(IDS_HEIGHT, geo ? Number(m_last.height, 3) : none);
    rows.emplace_back(IDS_COORD_X, xyz ? Number(m_last.x, 3) : none);
    rows.emplace_back(IDS_COORD_Y, xyz ? Number(m_last.y, 3) : none);
    rows.emplace_back(IDS_COORD_Z, xyz ? Number(m_last.z, 3) : none);
    const std::uint32_t extra = geo ? m_last.geoExtra : m_last.xyzExtra;
    const unsigned quality = extra & 0xFFu;
    rows.emplace_back(IDS_FIX_QUALITY, geo || xyz ? LoadResString(quality < std::size(kFixNames) ? kFixNames[quality] : IDS_FIX_NONE).ToQString() : none);
    const unsigned hdop = extra >> 16;
    rows.emplace_back(IDS_HDOP, (geo || xyz) && hdop != 0xFFFFu ? Number(hdop / 100.0, 2) : none);
    rows.emplace_back(IDS_SATS_USED, geo || xyz ? QString::number((extra >> 8) & 0xFFu) : none);
    for (const auto& [system, counts] : m_perSystem) {
        const unsigned name = satlook::SystemNameId(system);
        rows.emplace_back(name ? name : IDS_SYSTEM_UNUSED, QStringLiteral("%1 / %2").arg(counts.first).arg(counts.second));
    }
    rows.emplace_back(IDS_UTC, m_utc.isValid() ? m_utc.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) : none);

    while (m_list->topLevelItemCount() > static_cast<int>(rows.size())) delete m_list->takeTopLevelItem(m_list->topLevelItemCount() - 1);
    for (size_t i = 0; i < rows.size(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(static_cast<int>(i));
        if (!item) item = new QTreeWidgetItem(m_list);
        item->setText(0, LoadResString(rows[i].first).ToQString());
        item->setText(1, rows[i].second);
    }
}
