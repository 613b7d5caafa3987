#include "fenklib/controller/CControllerPowerPP.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "platform/basekit/CStdException.h"
#include "platform/hwctl/CUniversalZed.h"
#include "platform/uikit/CMessageBoxService.h"

namespace {
using C = CControllerPowerPP;
constexpr unsigned kRuleIds[] = {C::IDC_RULE_CONNECT, C::IDC_RULE_DISCONNECT, C::IDC_RULE_EXIT};

// The rule texts differ per device, so the rows carry no caption; the page sets them.
constexpr DLG_ITEM kItems[] = {
    {C::IDC_POWER_GROUP, CtlKind::Group, IDS_POWER, 6, 6, 288, 56, uikit::kAnchorTopWide},
    {C::IDC_STATE, CtlKind::Static, 0, 14, 20, 272, 18, uikit::kAnchorTopWide},
    {C::IDC_POWER_ON, CtlKind::Button, IDS_POWER_ON, 14, 42, 70, 14, uikit::kAnchorTopLeft},
    {C::IDC_POWER_OFF, CtlKind::Button, IDS_POWER_OFF, 90, 42, 70, 14, uikit::kAnchorTopLeft},
    {C::IDC_RULES_GROUP, CtlKind::Group, IDS_POWER_RULES, 6, 68, 288, 72, uikit::kAnchorTopWide},
    {C::IDC_RULE_CONNECT, CtlKind::CheckBox, 0, 14, 82, 272, 14, uikit::kAnchorTopWide},
    {C::IDC_RULE_DISCONNECT, CtlKind::CheckBox, 0, 14, 100, 272, 14, uikit::kAnchorTopWide},
    {C::IDC_RULE_EXIT, CtlKind::CheckBox, 0, 14, 118, 272, 14, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kLayout{IDD_TOOLS_POWER, 300, 150, kItems};
// Wide: the switch at the left, its rules at the right.
constexpr DLG_ITEM kWideItems[] = {
    {C::IDC_POWER_GROUP, CtlKind::Group, IDS_POWER, 6, 6, 170, 72, {0, 0, 0.4, 0}},
    {C::IDC_STATE, CtlKind::Static, 0, 14, 20, 154, 30, {0, 0, 0.4, 0}},
    {C::IDC_POWER_ON, CtlKind::Button, IDS_POWER_ON, 14, 56, 70, 14, uikit::kAnchorTopLeft},
    {C::IDC_POWER_OFF, CtlKind::Button, IDS_POWER_OFF, 90, 56, 70, 14, uikit::kAnchorTopLeft},
    {C::IDC_RULES_GROUP, CtlKind::Group, IDS_POWER_RULES, 182, 6, 252, 72, {0.4, 0, 0.6, 0}},
    {C::IDC_RULE_CONNECT, CtlKind::CheckBox, 0, 190, 20, 236, 14, {0.4, 0, 0.6, 0}},
    {C::IDC_RULE_DISCONNECT, CtlKind::CheckBox, 0, 190, 38, 236, 14, {0.4, 0, 0.6, 0}},
    {C::IDC_RULE_EXIT, CtlKind::CheckBox, 0, 190, 56, 236, 14, {0.4, 0, 0.6, 0}},
};
constexpr DLG_TEMPLATE kWide{IDD_TOOLS_POWER_WIDE, 440, 86, kWideItems};
const CLayoutRegistration kRegistered("CControllerPowerPP", {{&kLayout, &kWide}});
}  // namespace

CControllerPowerPP::CControllerPowerPP(const POWER_DEVICE& device, unsigned toolName, bool backpack)
    : CResizablePropertyPage(CLayoutFactory::Choose(kLayout, &kWide).number, LoadResString(device.title)),
      m_device(device),
      m_toolName(toolName),
      m_backpack(backpack),
      m_controls(CLayoutFactory::Build(this, kLayout, &kWide)) {
    for (std::size_t i = 0; i < 3; ++i) {
        auto* box = m_controls.Get<QCheckBox>(kRuleIds[i]);
        box->setText(LoadResString(device.ruleTexts[i]).ToQString());
        connect(box, &QCheckBox::toggled, this, [this] { SetModified(); });
    }
    connect(m_controls.Get<QPushButton>(IDC_POWER_ON), &QPushButton::clicked, this, [this] { Switch(true); });
    connect(m_controls.Get<QPushButton>(IDC_POWER_OFF), &QPushButton::clicked, this, [this] { Switch(false); });
}

bool CControllerPowerPP::OnInitDialog() {
    const Zed_Settings rules = CFenkGlobalSettings::Ref().GetZedSettings();
    for (std::size_t i = 0; i < 3; ++i) m_controls.Get<QCheckBox>(kRuleIds[i])->setChecked(rules.Has(m_device.rules[i]));
    SetModified(false);
    ShowState();
    return CResizablePropertyPage::OnInitDialog();
}

// The switch may have changed elsewhere (the hooks, the other sheet) while another page showed.
bool CControllerPowerPP::OnSetActive() {
    ShowState();
    return true;
}

// Only this page's three bits change; the other device's page keeps its own.
bool CControllerPowerPP::OnApply() {
    Zed_Settings rules = CFenkGlobalSettings::Ref().GetZedSettings();
    for (std::size_t i = 0; i < 3; ++i) {
        rules.word &= ~static_cast<std::uint32_t>(m_device.rules[i]);
        if (m_controls.Get<QCheckBox>(kRuleIds[i])->isChecked()) rules.word |= m_device.rules[i];
    }
    CFenkGlobalSettings::Ref().SetZedSettings(rules);
    SetModified(false);
    return true;
}

void CControllerPowerPP::Switch(bool on) {
    try {
        hwctl::CUniversalZed zed;
        if (m_device.receiver) zed.GPS_SetPowerState(on, true);
        else zed.Modem_SetPowerState(on);
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
    }
    ShowState();
}

void CControllerPowerPP::ShowState() {
    m_present = false;
    m_powered = false;
    try {
        const hwctl::CUniversalZed zed;
        m_present = m_backpack ? zed.IsPad7() : zed.IsZed();
        if (m_present) m_powered = m_device.receiver ? zed.GPS_GetPowerState() : zed.Modem_GetPowerState();
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
    }
    const basekit::ustring text =
        !m_present ? basekit::ustring::Format(LoadResString(m_device.absentText).c_str(), LoadResString(m_toolName))
                   : LoadResString(m_powered ? IDS_POWER_IS_ON : IDS_POWER_IS_OFF);
    m_controls.Get<QLabel>(IDC_STATE)->setText(text.ToQString());
    UpdateControls();
}

void CControllerPowerPP::UpdateControls() {
    m_controls.Item(IDC_POWER_ON)->setEnabled(m_present && !m_powered);
    m_controls.Item(IDC_POWER_OFF)->setEnabled(m_present && m_powered);
}
