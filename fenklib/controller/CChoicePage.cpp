#include "fenklib/controller/CChoicePage.h"

#include <QRadioButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"

CChoicePage::CChoicePage(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, unsigned firstRadio)
    : CResizablePropertyPage(CLayoutFactory::Choose(layout, &wide).number, LoadResString(title)),
      m_controls(CLayoutFactory::Build(this, layout, &wide)),
      m_firstRadio(firstRadio) {
    QButtonGroup* group = m_controls.Get<QRadioButton>(m_firstRadio)->group();
    connect(group, &QButtonGroup::idClicked, this, [this](int) { SetModified(); });
}

int CChoicePage::Choice() const {
    return m_controls.Get<QRadioButton>(m_firstRadio)->group()->checkedId();
}

void CChoicePage::ShowChoice(int choice) {
    QButtonGroup* group = m_controls.Get<QRadioButton>(m_firstRadio)->group();
    if (QAbstractButton* button = group->button(choice)) {
        button->setChecked(true);
        return;
    }
    // An exclusive group cannot uncheck its last checked button by itself.
    group->setExclusive(false);
    for (QAbstractButton* b : group->buttons()) b->setChecked(false);
    group->setExclusive(true);
}
