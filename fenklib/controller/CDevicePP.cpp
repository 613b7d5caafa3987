#include "fenklib/controller/CDevicePP.h"

#include <QLabel>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"

CDevicePP::CDevicePP(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, const char* device,
                     unsigned absentText)
    : CFenkPropertyPage({}, CLayoutFactory::Choose(layout, &wide).number, LoadResString(title)),
      m_controls(CLayoutFactory::Build(this, layout, &wide)),
      m_device(device),
      m_absentText(absentText) {
    connect(m_controls.Get<QPushButton>(IDC_ACTION), &QPushButton::clicked, this, [this] { OnAction(); });
}

bool CDevicePP::OnInitDialog() {
    m_present = hwctl::CreateBackend()->HasDevice(m_device);
    if (!m_present) ShowState(LoadResString(m_absentText));
    CFenkPropertyPage::OnInitDialog();
    UpdateControls();
    return true;
}

void CDevicePP::OnAction() {
    ACTION action = Prepare();
    if (!action.work) return;
    RunJob([work = std::move(action.work)](CJobContext&) { return work(*hwctl::CreateBackend()); },
           [this, show = std::move(action.show)](const JOB_RESULT<QVariant>& r) {
               if (!r.Ok()) return;
               const basekit::ustring state = show(*r.value);
               if (!state.empty()) ShowState(state);
           });
}

void CDevicePP::ShowState(const basekit::ustring& text) { m_controls.Get<QLabel>(IDC_STATE)->setText(text.ToQString()); }

void CDevicePP::UpdateControls() {
    const bool usable = m_present && !IsBusy();
    m_controls.Item(IDC_ACTION)->setEnabled(usable);
    if (m_controls.Has(IDC_SECOND_ACTION)) m_controls.Item(IDC_SECOND_ACTION)->setEnabled(usable);
}
