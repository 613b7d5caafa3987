#include "platform/uikit/CResizablePropertySheet.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/uikit/CResizablePropertyPage.h"
#include "platform/uikit/MessageBoxTypes.h"

namespace uikit {

CResizablePropertySheet::CResizablePropertySheet(QWidget* parent, const basekit::ustring& caption,
                                                 basekit::ustring windowName, ApplyButton applyButton,
                                                 const QIcon& icon)
    : CWindowFrame<QDialog>(parent),
      m_modal(std::move(windowName)),
      m_tabs(new QTabWidget(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setSizeGripEnabled(true);
    SetCaption(caption);
    if (!icon.isNull()) setWindowIcon(icon);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_buttons);
    connect(m_tabs, &QTabWidget::currentChanged, this, &CResizablePropertySheet::OnTabChanged);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &CResizablePropertySheet::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &CResizablePropertySheet::reject);
    if (applyButton == ApplyButton::Shown) {
        QPushButton* apply = m_buttons->addButton(QDialogButtonBox::Apply);
        apply->setEnabled(false);
        connect(apply, &QPushButton::clicked, this, [this] { ApplyNow(); });
    }
}

CResizablePropertySheet::~CResizablePropertySheet() {
    DestroyWindow();
    // Pages still here belong to someone else: take them out before Qt deletes our children.
    m_switching = true;
    for (CResizablePropertyPage* page : m_pages) {
        page->m_sheet = nullptr;
        m_tabs->removeTab(m_tabs->indexOf(page));
        page->setParent(nullptr);
    }
}

void CResizablePropertySheet::AddPage(CResizablePropertyPage* page) {
    if (!page || page->m_sheet == this) return;
    page->m_sheet = this;
    m_pages.push_back(page);
    m_switching = true;
    m_tabs->addTab(page, page->GetTitle().ToQString());
    m_switching = false;
}

CResizablePropertyPage* CResizablePropertySheet::GetPage(int index) const {
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<size_t>(index)] : nullptr;
}

int CResizablePropertySheet::GetPageIndex(const CResizablePropertyPage* page) const {
    const auto it = std::find(m_pages.begin(), m_pages.end(), page);
    return it == m_pages.end() ? -1 : static_cast<int>(it - m_pages.begin());
}

bool CResizablePropertySheet::SetActivePage(int index) {
    CResizablePropertyPage* page = GetPage(index);
    if (!page) return false;
    if (!IsWindowCreated()) {
        m_startPage = index;
        return true;
    }
    if (page == m_activePage) return true;
    if (!SwitchTo(page)) return false;
    ShowTabOf(page);
    return true;
}

void CResizablePropertySheet::SetCaption(const basekit::ustring& caption) {
    setWindowTitle(caption.ToQString());
}

QPushButton* CResizablePropertySheet::GetButton(int id) const {
    switch (id) {
        case IDOK: return m_buttons->button(QDialogButtonBox::Ok);
        case IDCANCEL: return m_buttons->button(QDialogButtonBox::Cancel);
        case ID_APPLY_NOW: return m_buttons->button(QDialogButtonBox::Apply);
        default: return nullptr;
    }
}

bool CResizablePropertySheet::OnInitDialog() {
    ActivateStartPage();
    return true;
}

int CResizablePropertySheet::DoModal() {
    CreateWindowLife();
    m_activePage = nullptr;
    setResult(IDCANCEL);
    for (CResizablePropertyPage* page : m_pages) page->m_modified = false;
    UpdateApplyButton();
    const int result = m_modal.Run(*this, [this] {
        OnInitDialog();
        if (!m_activePage && !m_modal.EndedEarly()) ActivateStartPage();
    });
    DestroyWindow();
    return result;
}

void CResizablePropertySheet::EndDialog(int result) { m_modal.End(*this, result); }

bool CResizablePropertySheet::ApplyNow() { return StartApply(false) != ApplyStep::Refused; }

void CResizablePropertySheet::accept() { StartApply(true); }

void CResizablePropertySheet::reject() {
    SetApplying(nullptr);
    ForEachInitialisedPage([](CResizablePropertyPage* page) { page->OnCancel(); });
    done(IDCANCEL);
}

void CResizablePropertySheet::done(int result) {
    SetApplying(nullptr);
    m_modal.KeepPlacement(*this);
    QDialog::done(result);
}

CResizablePropertySheet::ApplyStep CResizablePropertySheet::StartApply(bool thenClose) {
    if (m_waitingFor) return ApplyStep::Waiting;   // the running sequence ends first
    m_closeAfterApply = thenClose;
    if (m_activePage && !m_activePage->OnKillActive()) {
        m_lastApplyOk = false;
        return ApplyStep::Refused;
    }
    const ApplyStep step = ApplyFrom(0);
    if (step != ApplyStep::Waiting) FinishApply(step == ApplyStep::Applied);
    return step;
}

CResizablePropertySheet::ApplyStep CResizablePropertySheet::ApplyFrom(size_t first) {
    for (size_t i = first; i < m_pages.size(); ++i) {
        CResizablePropertyPage* page = m_pages[i];
        if (!page->IsWindowCreated()) continue;
        page->m_applyLater = false;
        if (!page->OnApply()) {
            page->m_applyLater = false;
            ShowRefusingPage(page);
            return ApplyStep::Refused;
        }
        if (page->m_applyLater) {
            page->m_applyLater = false;
            m_resumeAt = i + 1;
            SetApplying(page);
            return ApplyStep::Waiting;
        }
    }
    return ApplyStep::Applied;
}

void CResizablePropertySheet::PageApplyEnded(CResizablePropertyPage* page, bool applied) {
    if (page != m_waitingFor) return;
    SetApplying(nullptr);
    if (!applied) {
        ShowRefusingPage(page);
        return FinishApply(false);
    }
    const ApplyStep step = ApplyFrom(m_resumeAt);
    if (step != ApplyStep::Waiting) FinishApply(step == ApplyStep::Applied);
}

// The page that refused is shown, so the user sees what to correct.
void CResizablePropertySheet::ShowRefusingPage(CResizablePropertyPage* page) {
    if (page == m_activePage) return;
    m_activePage = page;
    ShowTabOf(page);
    page->OnSetActive();
}

void CResizablePropertySheet::FinishApply(bool applied) {
    m_lastApplyOk = applied;
    if (!applied) return;
    for (CResizablePropertyPage* page : m_pages) page->m_modified = false;
    UpdateApplyButton();
    if (!m_closeAfterApply) return;
    ForEachInitialisedPage([](CResizablePropertyPage* page) { page->OnOK(); });
    done(IDOK);
}

void CResizablePropertySheet::SetApplying(CResizablePropertyPage* page) {
    if (!page && !m_waitingFor) return;   // the buttons are the pages' own outside a sequence
    m_waitingFor = page;
    if (QPushButton* ok = GetButton(IDOK)) ok->setEnabled(!page);
    if (page) {
        if (QPushButton* apply = GetButton(ID_APPLY_NOW)) apply->setEnabled(false);
    } else {
        UpdateApplyButton();
    }
}

QSize CResizablePropertySheet::sizeHint() const {
    QSize hint = CWindowFrame<QDialog>::sizeHint();
    // A tab widget that can scroll its tabs caps its own hint at 200 pixels.
    const QMargins margins = layout()->contentsMargins();
    const int frame = m_tabs->width() - m_tabs->contentsRect().width() + 2 * m_tabs->style()->pixelMetric(QStyle::PM_TabBarBaseOverlap);
    const int tabs = m_tabs->tabBar()->sizeHint().width() + margins.left() + margins.right() + frame;
    hint.setWidth(std::max(hint.width(), tabs));
    return hint;
}

void CResizablePropertySheet::OnFrameDestroyed() {
    ForEachInitialisedPage([](CResizablePropertyPage* page) { page->DestroyWindow(); });
    m_activePage = nullptr;
}

void CResizablePropertySheet::ForgetPage(CResizablePropertyPage* page) {
    const auto it = std::find(m_pages.begin(), m_pages.end(), page);
    if (it == m_pages.end()) return;
    if (m_waitingFor == page) SetApplying(nullptr);
    m_pages.erase(it);
    if (m_activePage == page) m_activePage = nullptr;
    m_switching = true;
    m_tabs->removeTab(m_tabs->indexOf(page));
    m_switching = false;
    UpdateApplyButton();
}

void CResizablePropertySheet::UpdateApplyButton() {
    QPushButton* apply = GetButton(ID_APPLY_NOW);
    if (!apply) return;
    apply->setEnabled(std::any_of(m_pages.begin(), m_pages.end(),
                                  [](const CResizablePropertyPage* p) { return p->IsModified(); }));
}

void CResizablePropertySheet::OnTabChanged(int index) {
    // Tabs also change while pages are added or removed and after the window ended: only a
    // change on a live sheet is a user's page switch.
    if (m_switching || !IsWindowCreated()) return;
    CResizablePropertyPage* next = GetPage(index);
    if (!next || next == m_activePage) return;
    if (!SwitchTo(next)) ShowTabOf(m_activePage);
}

bool CResizablePropertySheet::SwitchTo(CResizablePropertyPage* next) {
    CResizablePropertyPage* previous = m_activePage;
    if (previous && !previous->OnKillActive()) return false;
    m_activePage = next;
    next->EnsureInitialised();
    if (next->OnSetActive()) return true;
    m_activePage = previous;
    if (previous) previous->OnSetActive();
    return false;
}

void CResizablePropertySheet::ShowTabOf(CResizablePropertyPage* page) {
    if (!page) return;
    m_switching = true;
    m_tabs->setCurrentWidget(page);
    m_switching = false;
}

void CResizablePropertySheet::ActivateStartPage() {
    CResizablePropertyPage* first = GetPage(m_startPage) ? GetPage(m_startPage) : GetPage(0);
    if (!first || m_activePage) return;
    ShowTabOf(first);
    SwitchTo(first);
}

template <typename F>
void CResizablePropertySheet::ForEachInitialisedPage(F&& f) {
    // Guarded copies: a hook may end the sheet or destroy a page while we go through them.
    const std::vector<QPointer<CResizablePropertyPage>> pages(m_pages.begin(), m_pages.end());
    for (const auto& page : pages)
        if (page && page->IsWindowCreated()) f(page.data());
}

}  // namespace uikit
