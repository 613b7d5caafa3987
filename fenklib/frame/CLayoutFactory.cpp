#include "fenklib/frame/CLayoutFactory.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTreeWidget>

#include "fenklib/frame/LibraryHelpers.h"
#include "platform/uikit/CKeypadLineEdit.h"
#include "platform/uikit/WideScreen.h"

namespace {

constexpr short kLineUnits = 8;   // a line of text, in dialog units down

QTreeWidget* MakeList(QWidget* window, bool report) {
    auto* list = new QTreeWidget(window);
    list->setRootIsDecorated(!report);
    if (report) {
        list->setSelectionBehavior(QAbstractItemView::SelectRows);
        list->setUniformRowHeights(true);
    } else {
        list->setHeaderHidden(true);
    }
    return list;
}

QWidget* MakeControl(const DLG_ITEM& item, QWidget* window, const QString& text, const CLayoutFactory::CustomMaker& custom) {
    using Keys = uikit::CKeypadLineEdit::Keys;
    switch (item.kind) {
        case CtlKind::Static: return new QLabel(text, window);
        case CtlKind::Group: return new QGroupBox(text, window);
        case CtlKind::Edit: return new QLineEdit(text, window);
        case CtlKind::NumberEdit: return new uikit::CKeypadLineEdit(window, Keys::Integer);
        case CtlKind::RealEdit: return new uikit::CKeypadLineEdit(window, Keys::Numeric);
        case CtlKind::TextEdit: return new uikit::CKeypadLineEdit(window, Keys::Alphanumeric);
        case CtlKind::CheckBox: return new QCheckBox(text, window);
        case CtlKind::Radio: return new QRadioButton(text, window);
        case CtlKind::Button: return new QPushButton(text, window);
        case CtlKind::DropList: return new QComboBox(window);
        case CtlKind::Combo: {
            auto* combo = new QComboBox(window);
            combo->setEditable(true);
            combo->setInsertPolicy(QComboBox::NoInsert);
            return combo;
        }
        case CtlKind::ListView: return MakeList(window, true);
        case CtlKind::Tree: return MakeList(window, false);
        case CtlKind::ListBox: return new QListWidget(window);
        case CtlKind::Progress: return new QProgressBar(window);
        case CtlKind::Slider: return new QSlider(Qt::Horizontal, window);
        case CtlKind::Custom: return custom ? custom(item, window) : new QWidget(window);
    }
    return new QWidget(window);
}

// Buttons 1 and 2 end a dialog as OK and Cancel do; a sheet's pages have no such buttons.
void WireDialogButton(const DLG_ITEM& item, QWidget* control, QWidget* window) {
    auto* dialog = qobject_cast<QDialog*>(window);
    auto* button = qobject_cast<QPushButton*>(control);
    if (!dialog || !button) return;
    if (item.id == IDOK_BUTTON) {
        button->setDefault(true);
        QObject::connect(button, &QPushButton::clicked, dialog, &QDialog::accept);
    } else if (item.id == IDCANCEL_BUTTON) {
        QObject::connect(button, &QPushButton::clicked, dialog, &QDialog::reject);
    }
}

}  // namespace

const DLG_TEMPLATE& CLayoutFactory::Choose(const DLG_TEMPLATE& normal, const DLG_TEMPLATE* wide) {
    return wide && uikit::IsWideScreen() ? *wide : normal;
}

CDialogControls CLayoutFactory::Build(QWidget* window, const DLG_TEMPLATE& normal, const DLG_TEMPLATE* wide,
                                      const CustomMaker& custom) {
    const DLG_TEMPLATE& chosen = Choose(normal, wide);
    auto* layout = new uikit::CAnchorLayout(window, QSize(chosen.width, chosen.height));
    CDialogControls controls;
    controls.SetTemplateNumber(chosen.number);
    // Radios that follow each other form one exclusive group, as in a resource script.
    QButtonGroup* radios = nullptr;
    for (const DLG_ITEM& item : chosen.items) {
        const QString text = item.textId ? LoadResString(item.textId).ToQString() : QString();
        QWidget* control = MakeControl(item, window, text, custom);
        control->setObjectName(QString::number(item.id));
        // As a resource script's static text does, a label with room for more lines than one
        // breaks its text into them rather than cutting it.
        if (auto* label = qobject_cast<QLabel*>(control); label && item.height >= 2 * kLineUnits) label->setWordWrap(true);
        if (item.kind == CtlKind::Radio) {
            if (!radios) radios = new QButtonGroup(window);
            radios->addButton(qobject_cast<QRadioButton*>(control), radios->buttons().size());
        } else if (item.kind != CtlKind::Static && item.kind != CtlKind::Group) {
            radios = nullptr;
        }
        WireDialogButton(item, control, window);
        layout->Add(control, QRect(item.x, item.y, item.width, item.height), item.anchor);
        if (item.kind == CtlKind::Group) control->lower();
        controls.Add(item.id, control);
    }
    return controls;
}
