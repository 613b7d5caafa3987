#include "fenklib/site/CGeoCoordEditDlg.h"

#include <QComboBox>
#include <cmath>
#include <QLabel>
#include <QLineEdit>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/CoordInput.h"
#include "fenklib/site/Wgs84.h"

enum : unsigned {
    IDC_LAT_HEMI = 3001, IDC_LAT_DEG, IDC_LAT_MIN, IDC_LAT_SEC, IDC_LAT_DEC,
    IDC_LON_HEMI, IDC_LON_DEG, IDC_LON_MIN, IDC_LON_SEC, IDC_LON_DEC,
    IDC_HEIGHT, IDC_OTHER_FORM,
    IDC_LAT_LABEL = 100, IDC_LON_LABEL, IDC_HEIGHT_LABEL, IDC_DEG_HEAD, IDC_MIN_HEAD, IDC_SEC_HEAD, IDC_DEC_HEAD,
};

// One angle's controls and limits: latitude to 90, longitude to 180.
struct CGeoCoordEditDlg::ANGLE_ROW {
    unsigned hemi, deg, min, sec, dec;
    unsigned positive, negative;   // hemisphere letters
    double limit;
};

namespace {

constexpr CGeoCoordEditDlg::ANGLE_ROW kLat{IDC_LAT_HEMI, IDC_LAT_DEG, IDC_LAT_MIN, IDC_LAT_SEC, IDC_LAT_DEC, IDS_NORTH, IDS_SOUTH, 90};
constexpr CGeoCoordEditDlg::ANGLE_ROW kLon{IDC_LON_HEMI, IDC_LON_DEG, IDC_LON_MIN, IDC_LON_SEC, IDC_LON_DEC, IDS_EAST, IDS_WEST, 180};

constexpr DLG_ITEM kItems[] = {
    {IDC_DEG_HEAD, CtlKind::Static, IDS_DEGREES_SHORT, 34, 4, 36, 8},
    {IDC_MIN_HEAD, CtlKind::Static, IDS_MINUTES_SHORT, 72, 4, 32, 8},
    {IDC_SEC_HEAD, CtlKind::Static, IDS_SECONDS_SHORT, 106, 4, 62, 8},
    {IDC_DEC_HEAD, CtlKind::Static, IDS_DECIMAL_DEGREES, 170, 4, 106, 8},
    {IDC_LAT_LABEL, CtlKind::Static, IDS_LATITUDE, 4, 14, 60, 8},
    {IDC_LAT_HEMI, CtlKind::DropList, 0, 4, 24, 28, 12},
    {IDC_LAT_DEG, CtlKind::NumberEdit, 0, 34, 24, 36, 12},
    {IDC_LAT_MIN, CtlKind::NumberEdit, 0, 72, 24, 32, 12},
    {IDC_LAT_SEC, CtlKind::RealEdit, 0, 106, 24, 62, 12},
    {IDC_LAT_DEC, CtlKind::RealEdit, 0, 170, 24, 106, 12, uikit::kAnchorTopWide},
    {IDC_LON_LABEL, CtlKind::Static, IDS_LONGITUDE, 4, 40, 60, 8},
    {IDC_LON_HEMI, CtlKind::DropList, 0, 4, 50, 28, 12},
    {IDC_LON_DEG, CtlKind::NumberEdit, 0, 34, 50, 36, 12},
    {IDC_LON_MIN, CtlKind::NumberEdit, 0, 72, 50, 32, 12},
    {IDC_LON_SEC, CtlKind::RealEdit, 0, 106, 50, 62, 12},
    {IDC_LON_DEC, CtlKind::RealEdit, 0, 170, 50, 106, 12, uikit::kAnchorTopWide},
    {IDC_HEIGHT_LABEL, CtlKind::Static, IDS_HEIGHT_M, 4, 70, 50, 8},
    {IDC_HEIGHT, CtlKind::RealEdit, 0, 56, 68, 70, 12},
    {IDC_OTHER_FORM, CtlKind::Static, 0, 4, 86, 272, 10, uikit::kAnchorTopWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 86, 102, 50, 14, uikit::kAnchorBottomCentre},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 144, 102, 50, 14, uikit::kAnchorBottomCentre},
};
constexpr DLG_TEMPLATE kLayout{IDD_GEO_COORD_EDIT, 280, 120, kItems};
const CLayoutRegistration kRegistered("CGeoCoordEditDlg", {{&kLayout}});

}  // namespace

CGeoCoordEditDlg::CGeoCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_GEO& pos)
    : CFenkDialog(std::move(receiver), IDD_GEO_COORD_EDIT, parent, L"CGeoCoordEditDlg"),
      m_pos(pos),
      m_controls(CLayoutFactory::Build(this, kLayout)) {
    setWindowTitle(LoadResString(IDS_GEODETIC_COORDINATES).ToQString());
    for (const ANGLE_ROW* row : {&kLat, &kLon}) {
        auto* hemi = m_controls.Get<QComboBox>(row->hemi);
        hemi->addItems({LoadResString(row->positive).ToQString(), LoadResString(row->negative).ToQString()});
        connect(hemi, &QComboBox::activated, this, [this, row] { DmsEdited(*row); });
        for (const unsigned id : {row->deg, row->min, row->sec})
            connect(m_controls.Get<QLineEdit>(id), &QLineEdit::textEdited, this, [this, row] { DmsEdited(*row); });
        connect(m_controls.Get<QLineEdit>(row->dec), &QLineEdit::textEdited, this, [this, row] { DecimalEdited(*row); });
    }
    connect(m_controls.Get<QLineEdit>(IDC_HEIGHT), &QLineEdit::textEdited, this, [this] { ShowOtherForm(); });
}

CGeoCoordEditDlg::~CGeoCoordEditDlg() { DestroyWindow(); }

bool CGeoCoordEditDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    PutAngle(kLat, m_pos.lat);
    PutAngle(kLon, m_pos.lon);
    m_controls.Get<QLineEdit>(IDC_HEIGHT)->setText(coordinput::Show(m_pos.height, 4));
    ShowOtherForm();
    return true;
}

void CGeoCoordEditDlg::PutAngle(const ANGLE_ROW& row, double degrees) {
    const wgs84::DMS dms = wgs84::ToDms(degrees, kSecondDecimals);
    m_controls.Get<QComboBox>(row.hemi)->setCurrentIndex(dms.negative ? 1 : 0);
    m_controls.Get<QLineEdit>(row.deg)->setText(QString::number(dms.degrees));
    m_controls.Get<QLineEdit>(row.min)->setText(QString::number(dms.minutes));
    m_controls.Get<QLineEdit>(row.sec)->setText(coordinput::Show(dms.seconds, kSecondDecimals));
    m_controls.Get<QLineEdit>(row.dec)->setText(coordinput::Show(std::fabs(degrees), kDegreeDecimals));
}

// The decimal form follows the sexagesimal one; an incomplete entry leaves it as it was.
void CGeoCoordEditDlg::DmsEdited(const ANGLE_ROW& row) {
    const auto d = coordinput::Parse(m_controls.Get<QLineEdit>(row.deg)->text());
    const auto m = coordinput::Parse(m_controls.Get<QLineEdit>(row.min)->text());
    const auto s = coordinput::Parse(m_controls.Get<QLineEdit>(row.sec)->text());
    if (d && m && s)
        m_controls.Get<QLineEdit>(row.dec)->setText(coordinput::Show(*d + *m / 60.0 + *s / 3600.0, kDegreeDecimals));
    ShowOtherForm();
}

void CGeoCoordEditDlg::DecimalEdited(const ANGLE_ROW& row) {
    const auto value = coordinput::Parse(m_controls.Get<QLineEdit>(row.dec)->text());
    if (value) {
        const wgs84::DMS dms = wgs84::ToDms(*value, kSecondDecimals);
        if (dms.negative) m_controls.Get<QComboBox>(row.hemi)->setCurrentIndex(1);
        m_controls.Get<QLineEdit>(row.deg)->setText(QString::number(dms.degrees));
        m_controls.Get<QLineEdit>(row.min)->setText(QString::number(dms.minutes));
        m_controls.Get<QLineEdit>(row.sec)->setText(coordinput::Show(dms.seconds, kSecondDecimals));
        if (dms.negative) m_controls.Get<QLineEdit>(row.dec)->setText(coordinput::Show(-*value, kDegreeDecimals));
    }
    ShowOtherForm();
}

void CGeoCoordEditDlg::ShowOtherForm() {
    auto* other = m_controls.Get<QLabel>(IDC_OTHER_FORM);
    double v[3] = {};
    const unsigned decimals[] = {IDC_LAT_DEC, IDC_LON_DEC, IDC_HEIGHT};
    for (int i = 0; i < 3; ++i) {
        const auto parsed = coordinput::Parse(m_controls.Get<QLineEdit>(decimals[i])->text());
        if (!parsed) return other->clear();
        v[i] = *parsed;
    }
    if (m_controls.Get<QComboBox>(IDC_LAT_HEMI)->currentIndex() == 1) v[0] = -v[0];
    if (m_controls.Get<QComboBox>(IDC_LON_HEMI)->currentIndex() == 1) v[1] = -v[1];
    other->setText(FormatXyzText(wgs84::ToXyz({v[0], v[1], v[2]})).ToQString());
}

// The sexagesimal fields decide: whole degrees and minutes, seconds below 60, and the whole
// angle within its limit (90°00'00" is a latitude, 90°00'01" is not).
std::optional<double> CGeoCoordEditDlg::TakeAngle(const ANGLE_ROW& row) {
    auto* degEdit = m_controls.Get<QLineEdit>(row.deg);
    auto* minEdit = m_controls.Get<QLineEdit>(row.min);
    const auto d = coordinput::Take(this, degEdit, 0, row.limit);
    if (!d) return std::nullopt;
    if (*d != std::floor(*d)) return coordinput::RefuseRange(this, degEdit, 0, row.limit), std::nullopt;
    const auto m = coordinput::Take(this, minEdit, 0, 59);
    if (!m) return std::nullopt;
    if (*m != std::floor(*m)) return coordinput::RefuseRange(this, minEdit, 0, 59), std::nullopt;
    const auto s = coordinput::Take(this, m_controls.Get<QLineEdit>(row.sec), 0, 60, false);
    if (!s) return std::nullopt;
    const wgs84::DMS dms{m_controls.Get<QComboBox>(row.hemi)->currentIndex() == 1, static_cast<int>(*d), static_cast<int>(*m), *s};
    const double value = wgs84::FromDms(dms);
    if (std::fabs(value) > row.limit) return coordinput::RefuseRange(this, degEdit, 0, row.limit), std::nullopt;
    return value;
}

void CGeoCoordEditDlg::accept() {
    const auto lat = TakeAngle(kLat);
    if (!lat) return;
    const auto lon = TakeAngle(kLon);
    if (!lon) return;
    const auto height = coordinput::Take(this, m_controls.Get<QLineEdit>(IDC_HEIGHT), -10000, 100000);
    if (!height) return;
    m_pos = {*lat, *lon, *height};
    CFenkDialog::accept();
}
