#include "fenklib/files/CExplorerFrontPanelPP.h"

#include <QCheckBox>
#include <QComboBox>
#include <span>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

using P = CExplorerFrontPanelPP;
constexpr unsigned IDC_LABEL = 0xFFFF;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_DYNAMICS, 7, 7, 196, 9},
    {P::IDC_DYNAMICS, CtlKind::DropList, 0, 7, 17, 196, 14, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_ACTION, 7, 36, 196, 9},
    {P::IDC_ACTION, CtlKind::DropList, 0, 7, 46, 196, 14, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_AUTO, 7, 65, 196, 9},
    {P::IDC_AUTO, CtlKind::DropList, 0, 7, 75, 196, 14, uikit::kAnchorTopWide},
    {P::IDC_POWERUP, CtlKind::CheckBox, IDS_POWERUP_MODE, 7, 96, 196, 12, uikit::kAnchorTopWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_DYNAMICS, 7, 9, 110, 9},
    {P::IDC_DYNAMICS, CtlKind::DropList, 0, 120, 7, 183, 14, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_ACTION, 7, 27, 110, 9},
    {P::IDC_ACTION, CtlKind::DropList, 0, 120, 25, 183, 14, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_BUTTON_AUTO, 7, 45, 110, 9},
    {P::IDC_AUTO, CtlKind::DropList, 0, 120, 43, 183, 14, uikit::kAnchorTopWide},
    {P::IDC_POWERUP, CtlKind::CheckBox, IDS_POWERUP_MODE, 7, 64, 296, 12, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_EXPLORER_FRONT_PANEL, 210, 120, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_EXPLORER_FRONT_PANEL_WIDE, 310, 90, kWideItems};
const CLayoutRegistration kRegistered("CExplorerFrontPanelPP", {{&kNormal, &kWide}});

struct CHOICE {
    const wchar_t* keyword;
    unsigned textId;
};
constexpr CHOICE kDynamics[] = {{L"static", IDS_KW_STATIC}, {L"dynamic", IDS_KW_DYNAMIC}};
constexpr CHOICE kActions[] = {{L"none", IDS_KW_NONE}, {L"log", IDS_KW_LOG}, {L"event", IDS_KW_EVENT}, {L"reset", IDS_KW_RESET}};
constexpr CHOICE kAuto[] = {{L"off", IDS_KW_OFF}, {L"log", IDS_KW_LOG}, {L"static", IDS_KW_STATIC}};

void Fill(QComboBox* box, std::span<const CHOICE> choices) {
    for (const CHOICE& c : choices) box->addItem(LoadResString(c.textId).ToQString(), QString::fromWCharArray(c.keyword));
}
// A keyword the list does not know is shown as the receiver gave it, and written back as is.
void Select(QComboBox* box, const ustring& keyword) {
    const QString k = keyword.ToQString();
    int at = box->findData(k);
    if (at < 0) {
        box->addItem(k, k);
        at = box->count() - 1;
    }
    box->setCurrentIndex(at);
}
ustring Chosen(const QComboBox* box) { return ustring::FromQString(box->currentData().toString()); }

}  // namespace

CExplorerFrontPanelPP::CExplorerFrontPanelPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, LoadResString(IDS_PAGE_FRONT_PANEL)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)) {
    Fill(m_controls.Get<QComboBox>(IDC_DYNAMICS), kDynamics);
    Fill(m_controls.Get<QComboBox>(IDC_ACTION), kActions);
    Fill(m_controls.Get<QComboBox>(IDC_AUTO), kAuto);
    for (const unsigned id : {IDC_DYNAMICS, IDC_ACTION, IDC_AUTO})
        connect(m_controls.Get<QComboBox>(id), &QComboBox::activated, this, [this] { SetModified(); });
    connect(m_controls.Get<QCheckBox>(IDC_POWERUP), &QCheckBox::clicked, this, [this] { SetModified(); });
}

CExplorerFrontPanelPP::~CExplorerFrontPanelPP() { DestroyWindow(); }

bool CExplorerFrontPanelPP::OnSetActive() {
    if (!m_read && !IsBusy()) Read();
    return CFenkPropertyPage::OnSetActive();
}

namespace {
struct PANEL {
    bool dynamic = false;
    ustring action;
    ustring automatic;
    bool powerUp = false;
};
}  // namespace

void CExplorerFrontPanelPP::Read() {
    RunJob(
        [](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            PANEL p;
            p.dynamic = mate.Get(par::ButtonDyn) == devio::vok::BUTTON_DYNAMIC;
            p.action = mate.Get(par::ButtonAction);
            p.automatic = mate.Get(par::ButtonAuto);
            p.powerUp = mate.Get(par::ExtPowerupMode);
            return p;
        },
        [this](const JOB_RESULT<PANEL>& r) {
            if (!r.Ok()) return;
            m_controls.Get<QComboBox>(IDC_DYNAMICS)->setCurrentIndex(r.value->dynamic ? 1 : 0);
            Select(m_controls.Get<QComboBox>(IDC_ACTION), r.value->action);
            Select(m_controls.Get<QComboBox>(IDC_AUTO), r.value->automatic);
            m_controls.Get<QCheckBox>(IDC_POWERUP)->setChecked(r.value->powerUp);
            m_read = true;
        });
}

bool CExplorerFrontPanelPP::OnApply() {
    const PANEL p{m_controls.Get<QComboBox>(IDC_DYNAMICS)->currentIndex() == 1, Chosen(m_controls.Get<QComboBox>(IDC_ACTION)),
                  Chosen(m_controls.Get<QComboBox>(IDC_AUTO)), m_controls.Get<QCheckBox>(IDC_POWERUP)->isChecked()};
    ApplyAsJob(
        [p](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            mate.Set(par::ButtonDyn, p.dynamic ? devio::vok::BUTTON_DYNAMIC : devio::vok::BUTTON_STATIC);
            mate.Set(par::ButtonAction, p.action);
            mate.Set(par::ButtonAuto, p.automatic);
            mate.Set(par::ExtPowerupMode, p.powerUp);
        },
        [] {});
    return true;
}

void CExplorerFrontPanelPP::UpdateControls() {
    for (const unsigned id : {IDC_DYNAMICS, IDC_ACTION, IDC_AUTO, IDC_POWERUP}) m_controls.Item(id)->setEnabled(!IsBusy());
}
