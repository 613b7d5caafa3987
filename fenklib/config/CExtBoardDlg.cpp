#include "fenklib/config/CExtBoardDlg.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"

CExtBoardDlg::CExtBoardDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const WINDOW& window,
                           std::vector<PARAM_FIELD> fields)
    : CFenkDialog(std::move(receiver), CLayoutFactory::Choose(window.normal, &window.wide).number, parent, window.className),
      m_controls(CLayoutFactory::Build(this, window.normal, &window.wide)),
      m_fields(std::move(fields)) {
    setWindowTitle(LoadResString(window.titleId).ToQString());
    auto* absent = m_controls.Get<QLabel>(kAbsentLabel);
    absent->setText(LoadResString(window.absentTextId).ToQString());
    absent->setWordWrap(true);
    absent->hide();
    m_fields.Prepare(m_controls);
}

CExtBoardDlg::~CExtBoardDlg() { DestroyWindow(); }

bool CExtBoardDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    Reread();
    return true;
}

void CExtBoardDlg::Reread() {
    m_shown.reset();
    RunJob(
        [this](CJobContext& job) {
            READING r;
            r.ext = job.Mate().IsExtFamilyModel();
            try {
                r.values = m_fields.Read(job.Mate());
            } catch (const basekit::CCommException& e) {
                if (!devio::CVokReceiverMateCore::IsUnknownParameter(e)) throw;
            }
            return r;
        },
        [this](const JOB_RESULT<READING>& r) {
            if (!r.Ok()) return;
            m_ext = r.value->ext;
            m_absent = !r.value->values;
            if (m_absent) {
                ShowAbsent();
                return;
            }
            m_fields.Show(m_controls, *r.value->values);
            // Compared with what the controls show, so that only the user's edits are written.
            m_shown = m_fields.Collect(m_controls);
        });
}

// Only the sentence and the buttons stay: the group's controls have nothing to show.
void CExtBoardDlg::ShowAbsent() {
    const QString kept[] = {QString::number(kAbsentLabel), QString::number(IDOK_BUTTON), QString::number(IDCANCEL_BUTTON)};
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (!child->objectName().isEmpty()) child->setVisible(std::find(std::begin(kept), std::end(kept), child->objectName()) != std::end(kept));
}

void CExtBoardDlg::Write(devio::CVokReceiverMate& mate, const CParamFields::Values& was, const CParamFields::Values& now) const {
    m_fields.WriteChanged(mate, was, now);
}

void CExtBoardDlg::accept() {
    if (IsBusy()) return;
    if (m_absent) {
        CFenkDialog::accept();   // nothing to write on a receiver without the board
        return;
    }
    if (!m_shown) return;
    const auto now = m_fields.Collect(m_controls);
    if (!now) return;
    RunJob(
        [this, was = *m_shown, edited = *now](CJobContext& job) {
            Write(job.Mate(), was, edited);
            return true;
        },
        [this](const JOB_RESULT<bool>& r) {
            if (r.Ok()) CFenkDialog::accept();
        });
}

void CExtBoardDlg::RunOrder(std::function<void(devio::CVokReceiverMate&)> order, bool reread) {
    RunJob(
        [order = std::move(order)](CJobContext& job) {
            order(job.Mate());
            return true;
        },
        [this, reread](const JOB_RESULT<bool>& r) {
            if (r.Ok() && reread) Reread();
        });
}

void CExtBoardDlg::UpdateControls() {
    const bool usable = m_shown.has_value() && !IsBusy();
    m_fields.Enable(m_controls, usable);
    UpdateOwnControls(usable);
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(!IsBusy() && (usable || m_absent));
}
