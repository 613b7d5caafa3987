#include "fenklib/config/CParamPage.h"

#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"

CParamPage::CParamPage(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned titleId, const DLG_TEMPLATE& layout,
                       std::vector<PARAM_FIELD> fields, const DLG_TEMPLATE* wide)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(layout, wide).number, LoadResString(titleId)),
      m_controls(CLayoutFactory::Build(this, layout, wide)),
      m_fields(std::move(fields)) {
    m_fields.Prepare(m_controls);
    m_fields.WatchEdits(m_controls, this, [this] { SetModified(true); });
}

CParamPage::~CParamPage() { DestroyWindow(); }

bool CParamPage::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    Reread();
    return true;
}

void CParamPage::Reread() {
    m_shown.reset();
    RunJob([this](CJobContext& job) { return m_fields.Read(job.Mate()); },
           [this](const JOB_RESULT<CParamFields::Values>& r) {
               if (!r.Ok()) return;
               m_fields.Show(m_controls, *r.value);
               // Compared with what the controls show, so that a number shown rounded is not
               // written back unless the user changed it.
               m_shown = m_fields.Collect(m_controls);
           });
}

bool CParamPage::OnApply() {
    if (IsBusy()) return false;
    if (!m_shown) return true;   // never read: nothing of this page is written
    const auto now = m_fields.Collect(m_controls);
    if (!now) return false;
    ApplyAsJob([this, was = *m_shown, now = *now](CJobContext& job) { m_fields.WriteChanged(job.Mate(), was, now); },
               [this, now] {
                   m_shown = now;
                   SetModified(false);
               });
    return true;
}

void CParamPage::UpdateControls() {
    const bool usable = !IsBusy() && m_shown.has_value();
    m_fields.Enable(m_controls, usable);
    UpdateOwnControls(usable);
    if (GetSheet())
        if (QPushButton* ok = GetSheet()->GetButton(1)) ok->setEnabled(!IsBusy());
}
