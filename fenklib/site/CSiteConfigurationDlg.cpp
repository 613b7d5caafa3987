#include "fenklib/site/CSiteConfigurationDlg.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QLocale>
#include <QRadioButton>
#include <QStyle>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/frame/SiteEvents.h"
#include "platform/uikit/CKeypadLineEdit.h"
#include "platform/uikit/WideScreen.h"

using basekit::ustring;

namespace {

enum : unsigned {
    IDC_SITE_NAME = 3077,
    IDC_DESCRIPTION = 3078,
    IDC_ANTENNA_TYPE = 3079,
    IDC_ANTENNA_HEIGHT = 3080,
    IDC_SLANT = 3211,
    IDC_SITE_GROUP = 3212,
    IDC_ANTENNA_GROUP = 3213,
    IDC_STATIC_RADIO = 3232,
    IDC_DYNAMIC_RADIO = 3233,
    // labels
    IDC_NAME_LABEL = 100, IDC_DESCRIPTION_LABEL, IDC_TYPE_LABEL, IDC_HEIGHT_LABEL, IDC_DYNAMICS_LABEL,
};

using uikit::kAnchorTopLeft;
using uikit::kAnchorTopWide;
constexpr uikit::ANCHOR kTopRight{1, 0, 0, 0};

// Narrow: one column, the site above the antenna; the edits grow across.
constexpr DLG_ITEM kNarrowItems[] = {
    {IDC_SITE_GROUP, CtlKind::Group, IDS_SITE_PARAMETERS, 2, 2, 156, 76, kAnchorTopWide},
    {IDC_NAME_LABEL, CtlKind::Static, IDS_SITE_NAME, 8, 16, 50, 8},
    {IDC_SITE_NAME, CtlKind::TextEdit, 0, 60, 14, 92, 12, kAnchorTopWide},
    {IDC_DESCRIPTION_LABEL, CtlKind::Static, IDS_DESCRIPTION_LABEL, 8, 30, 80, 8},
    {IDC_DESCRIPTION, CtlKind::TextEdit, 0, 8, 40, 144, 12, kAnchorTopWide},
    {IDC_DYNAMICS_LABEL, CtlKind::Static, IDS_DYNAMICS, 8, 60, 46, 8},
    {IDC_STATIC_RADIO, CtlKind::Radio, IDS_STATIC, 56, 59, 40, 10},
    {IDC_DYNAMIC_RADIO, CtlKind::Radio, IDS_DYNAMIC, 98, 59, 56, 10},
    {IDC_ANTENNA_GROUP, CtlKind::Group, IDS_ANTENNA_PARAMETERS, 2, 82, 156, 48, kAnchorTopWide},
    {IDC_TYPE_LABEL, CtlKind::Static, IDS_ANTENNA_TYPE, 8, 96, 40, 8},
    {IDC_ANTENNA_TYPE, CtlKind::Combo, 0, 50, 94, 102, 12, kAnchorTopWide},
    {IDC_HEIGHT_LABEL, CtlKind::Static, IDS_HEIGHT_M, 8, 114, 46, 8},
    {IDC_ANTENNA_HEIGHT, CtlKind::RealEdit, 0, 56, 112, 46, 12},
    {IDC_SLANT, CtlKind::CheckBox, IDS_SLANT, 108, 113, 46, 10},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 26, 138, 50, 14, uikit::kAnchorBottomCentre},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 84, 138, 50, 14, uikit::kAnchorBottomCentre},
};
// Wide: the site and the antenna side by side, the buttons at the right.
constexpr DLG_ITEM kWideItems[] = {
    {IDC_SITE_GROUP, CtlKind::Group, IDS_SITE_PARAMETERS, 2, 2, 170, 76, kAnchorTopWide},
    {IDC_NAME_LABEL, CtlKind::Static, IDS_SITE_NAME, 8, 16, 50, 8},
    {IDC_SITE_NAME, CtlKind::TextEdit, 0, 60, 14, 106, 12, kAnchorTopWide},
    {IDC_DESCRIPTION_LABEL, CtlKind::Static, IDS_DESCRIPTION_LABEL, 8, 30, 80, 8},
    {IDC_DESCRIPTION, CtlKind::TextEdit, 0, 8, 40, 158, 12, kAnchorTopWide},
    {IDC_DYNAMICS_LABEL, CtlKind::Static, IDS_DYNAMICS, 8, 60, 48, 8},
    {IDC_STATIC_RADIO, CtlKind::Radio, IDS_STATIC, 58, 59, 48, 10},
    {IDC_DYNAMIC_RADIO, CtlKind::Radio, IDS_DYNAMIC, 108, 59, 56, 10},
    {IDC_ANTENNA_GROUP, CtlKind::Group, IDS_ANTENNA_PARAMETERS, 176, 2, 150, 76, kTopRight},
    {IDC_TYPE_LABEL, CtlKind::Static, IDS_ANTENNA_TYPE, 182, 16, 40, 8, kTopRight},
    {IDC_ANTENNA_TYPE, CtlKind::Combo, 0, 224, 14, 96, 12, kTopRight},
    {IDC_HEIGHT_LABEL, CtlKind::Static, IDS_HEIGHT_M, 181, 34, 43, 8, kTopRight},
    {IDC_ANTENNA_HEIGHT, CtlKind::RealEdit, 0, 224, 32, 50, 12, kTopRight},
    {IDC_SLANT, CtlKind::CheckBox, IDS_SLANT, 224, 50, 60, 10, kTopRight},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 216, 84, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 274, 84, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNarrow{IDD_SITE_CONFIGURATION, 160, 156, kNarrowItems};
constexpr DLG_TEMPLATE kWide{IDD_SITE_CONFIGURATION_WIDE, 328, 102, kWideItems};
const CLayoutRegistration kRegistered("CSiteConfigurationDlg", {{&kNarrow, &kWide}});

// The height as the person typed it: their own decimal sign, or the point.
std::optional<float> ParseHeight(const QString& text) {
    bool ok = false;
    QLocale own;   // "1.500" is not fifteen hundred in a comma-decimal locale
    own.setNumberOptions(QLocale::RejectGroupSeparator);
    const double value = own.toDouble(text.trimmed(), &ok);
    if (ok) return static_cast<float>(value);
    const double c = QLocale::c().toDouble(text.trimmed(), &ok);
    if (ok) return static_cast<float>(c);
    return std::nullopt;
}

ustring QuotesToApostrophes(ustring text) {
    for (wchar_t& c : text)
        if (c == L'"') c = L'\'';
    return text;
}

}  // namespace

CSiteConfigurationDlg::CSiteConfigurationDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_SITE_CONFIGURATION, parent, L"CSiteConfigurationDlg"),
      m_controls(CLayoutFactory::Build(this, kNarrow, &kWide)) {
    setWindowTitle(LoadResString(IDS_SITE_CONFIGURATION).ToQString());
    m_controls.Get<QLineEdit>(IDC_SITE_NAME)->setMaxLength(kMaxNameLength);
    m_controls.Get<QLineEdit>(IDC_DESCRIPTION)->setMaxLength(kMaxDescriptionLength);
    // The antenna type is typed on a handheld as the other texts are: with the on-screen keypad.
    auto* type = m_controls.Get<QComboBox>(IDC_ANTENNA_TYPE);
    type->setEditable(true);
    type->setLineEdit(new uikit::CKeypadLineEdit(type, uikit::CKeypadLineEdit::Keys::Alphanumeric));
}

CSiteConfigurationDlg::~CSiteConfigurationDlg() { DestroyWindow(); }

// The list can take many seconds on a slow line, so it is read once, before the window shows.
// Without it the dialog still opens: the antenna type can be typed.
int CSiteConfigurationDlg::DoModal() {
    WithReceiver([this](devio::CVokReceiverMate& mate) { m_antennaIds = mate.ListAntennaIds(); });
    return CFenkDialog::DoModal();
}

bool CSiteConfigurationDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    PutValues(CFenkGlobalSettings::Ref().GetSiteParameters());
    return true;
}

void CSiteConfigurationDlg::PutValues(const SiteParameters& site) {
    m_controls.Get<QLineEdit>(IDC_SITE_NAME)->setText(site.SiteName.ToQString());
    m_controls.Get<QLineEdit>(IDC_DESCRIPTION)->setText(site.Description.ToQString());
    QLocale own;
    own.setNumberOptions(QLocale::OmitGroupSeparator);
    m_controls.Get<QLineEdit>(IDC_ANTENNA_HEIGHT)->setText(own.toString(static_cast<double>(site.AntennaHeight)));
    m_controls.Get<QCheckBox>(IDC_SLANT)->setChecked(site.Slant);
    m_controls.Get<QRadioButton>(site.Dynamics ? IDC_DYNAMIC_RADIO : IDC_STATIC_RADIO)->setChecked(true);

    auto* combo = m_controls.Get<QComboBox>(IDC_ANTENNA_TYPE);
    int match = -1;   // the last identifier equal to the stored type, case aside
    for (const ustring& id : m_antennaIds) {
        combo->addItem(id.ToQString());
        if (id.EqualsNoCase(site.AntennaType)) match = combo->count() - 1;
    }
    combo->setCurrentIndex(match);
    if (match < 0) combo->setEditText(site.AntennaType.ToQString());

    if (m_controls.TemplateNumber() == IDD_SITE_CONFIGURATION) {
        // A handheld's screen is short: the drop-down must at least show a whole line.
        QAbstractItemView* view = combo->view();
        view->setMinimumHeight(view->sizeHintForRow(0) + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    }
}

void CSiteConfigurationDlg::Refuse(QLineEdit* edit, const ustring& why) {
    uikit::CMessageBoxService::Show(this, why, {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
    edit->setFocus();
    edit->selectAll();
}

std::optional<SiteParameters> CSiteConfigurationDlg::TakeValues() {
    struct LIMITED { unsigned id; int maxLength; };
    for (const LIMITED& field : {LIMITED{IDC_SITE_NAME, kMaxNameLength}, LIMITED{IDC_DESCRIPTION, kMaxDescriptionLength}}) {
        auto* edit = m_controls.Get<QLineEdit>(field.id);
        if (ustring::FromQString(edit->text()).size() > static_cast<size_t>(field.maxLength)) {
            Refuse(edit, ustring::Format(LoadResString(IDS_ENTER_NO_MORE_CHARS).c_str(), field.maxLength));
            return std::nullopt;
        }
    }
    auto* heightEdit = m_controls.Get<QLineEdit>(IDC_ANTENNA_HEIGHT);
    const std::optional<float> height = ParseHeight(heightEdit->text());
    if (!height) {
        Refuse(heightEdit, LoadResString(IDS_ENTER_A_NUMBER));
        return std::nullopt;
    }
    // Name and description travel inside a quoted command argument.
    SiteParameters site;
    site.SiteName = QuotesToApostrophes(ustring::FromQString(m_controls.Get<QLineEdit>(IDC_SITE_NAME)->text()));
    site.Description = QuotesToApostrophes(ustring::FromQString(m_controls.Get<QLineEdit>(IDC_DESCRIPTION)->text()));
    site.AntennaType = ustring::FromQString(m_controls.Get<QComboBox>(IDC_ANTENNA_TYPE)->currentText());
    site.AntennaHeight = *height;
    site.Slant = m_controls.Get<QCheckBox>(IDC_SLANT)->isChecked();
    site.Dynamics = m_controls.Get<QRadioButton>(IDC_DYNAMIC_RADIO)->isChecked();
    return site;
}

// Everything is checked before anything is kept or sent. The settings are kept before the
// events are sent; when an event cannot be written the error is shown and the dialog closes, so
// that a partial set of events is never written a second time.
void CSiteConfigurationDlg::accept() {
    const std::optional<SiteParameters> site = TakeValues();
    if (!site) return;
    try {
        CheckSiteEvents(*site);
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
        m_controls.Get<QComboBox>(IDC_ANTENNA_TYPE)->setFocus();
        return;
    }
    CFenkGlobalSettings::Ref().SetSiteParameters(*site);
    if (!WithReceiver([&](devio::CVokReceiverMate& mate) { WriteSiteEvents(mate, *site); })) {
        EndDialog(2);
        return;
    }
    CFenkDialog::accept();
}
