#include "fenklib/site/CAutoSeed_NewPointDlg.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/PositionEditing.h"

using basekit::ustring;
using devio::vok::POS_GEO;

namespace {

enum : unsigned { IDC_NAME = 3341, IDC_POSITION, IDC_EDIT_POSITION, IDC_NAME_LABEL = 100, IDC_POSITION_LABEL };

constexpr DLG_ITEM kItems[] = {
    {IDC_NAME_LABEL, CtlKind::Static, IDS_POINT_NAME, 6, 8, 40, 8},
    {IDC_NAME, CtlKind::TextEdit, 0, 48, 6, 126, 12, uikit::kAnchorTopWide},
    {IDC_POSITION_LABEL, CtlKind::Static, IDS_ANTENNA_POINT, 6, 26, 40, 8},
    {IDC_POSITION, CtlKind::Static, 0, 48, 26, 126, 20, uikit::kAnchorTopWide},
    {IDC_EDIT_POSITION, CtlKind::Button, IDS_EDIT_ELLIPSIS, 134, 48, 40, 12, uikit::kAnchorTopRight},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 36, 68, 50, 14, uikit::kAnchorBottomCentre},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 94, 68, 50, 14, uikit::kAnchorBottomCentre},
};
constexpr DLG_TEMPLATE kLayout{IDD_AUTO_SEED_NEW_POINT, 180, 86, kItems};
const CLayoutRegistration kRegistered("CAutoSeed_NewPointDlg", {{&kLayout}});

}  // namespace

CAutoSeed_NewPointDlg::CAutoSeed_NewPointDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, int slot)
    : CFenkDialog(std::move(receiver), IDD_AUTO_SEED_NEW_POINT, parent, L"CAutoSeed_NewPointDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_slot(slot),
      m_editor(EditorUnlessCartesian(CFenkGlobalSettings::Ref().GetCoordSystem())) {
    setWindowTitle(LoadResString(IDS_NEW_POINT).ToQString());
    m_controls.Get<QLabel>(IDC_POSITION)->setWordWrap(true);
    m_controls.Get<QLineEdit>(IDC_NAME)->setMaxLength(kMaxNameLength);
    connect(m_controls.Get<QPushButton>(IDC_EDIT_POSITION), &QPushButton::clicked, this, [this] { EditPosition(); });
    connect(m_controls.Get<QLineEdit>(IDC_NAME), &QLineEdit::textChanged, this, [this] { UpdateControls(); });
}

CAutoSeed_NewPointDlg::~CAutoSeed_NewPointDlg() { DestroyWindow(); }

bool CAutoSeed_NewPointDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob([](CJobContext& job) { return job.Mate().GetCurrentPointGeo(L"arp"); },
           [this](const JOB_RESULT<POS_GEO>& r) {
               if (r.Ok()) SetPosition(*r.value);
           });
    return true;
}

void CAutoSeed_NewPointDlg::SetPosition(const POS_GEO& pos) {
    m_position = pos;
    ShowPosition();
    UpdateControls();
}

void CAutoSeed_NewPointDlg::ShowPosition() {
    m_controls.Get<QLabel>(IDC_POSITION)->setText(positionediting::Show(m_editor, *m_position).ToQString());
}

void CAutoSeed_NewPointDlg::EditPosition() {
    if (!m_position) return;
    if (positionediting::Edit(GetReceiver(), this, m_editor, *m_position)) ShowPosition();
}

void CAutoSeed_NewPointDlg::UpdateControls() {
    const bool ready = m_position.has_value() && !IsBusy();
    m_controls.Item(IDC_EDIT_POSITION)->setEnabled(ready);
    m_controls.Item(IDOK_BUTTON)->setEnabled(ready && !m_controls.Get<QLineEdit>(IDC_NAME)->text().trimmed().isEmpty());
}

// The name goes to the receiver as a bare word: no separators, no quotes, no blanks at the ends.
std::optional<ustring> CAutoSeed_NewPointDlg::TakeName() {
    auto* edit = m_controls.Get<QLineEdit>(IDC_NAME);
    const QString name = edit->text().trimmed();
    if (name.isEmpty() || name.contains(u',') || name.contains(u'"') || name.contains(u';') || name.contains(u'{') ||
        name.contains(u'}')) {
        uikit::CMessageBoxService::Show(this, LoadResString(IDS_ENTER_POINT_NAME), {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
        edit->setFocus();
        edit->selectAll();
        return std::nullopt;
    }
    return ustring::FromQString(name);
}

// The receiver stores its current point: the entry becomes the current point first. Both forms
// of its position are written, as the receiver keeps them apart.
void CAutoSeed_NewPointDlg::accept() {
    if (!m_position) return;
    const std::optional<ustring> name = TakeName();
    if (!name) return;
    const POS_GEO pos = *m_position;
    const int slot = m_slot;
    AcceptAsJob([name = *name, pos, slot](CJobContext& job) {
        devio::CVokReceiverMate& mate = job.Mate();
        mate.Set(devio::par::RefAvgCurPointName, name);
        mate.SetCurrentPointPosition(L"arp", pos);
        mate.SetCurrentPointPosition(L"arp", wgs84::ToXyz(pos));
        mate.Do(devio::par::RefAvgPointAdd, slot);
    });
}
