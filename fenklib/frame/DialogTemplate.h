#pragma once
#include <initializer_list>
#include <span>

#include "platform/uikit/CAnchorLayout.h"

// A dialog layout as data, the way a resource script describes one: the layout's number, its
// size in dialog units, and one row per control (id, kind, caption string, rectangle, anchor).
// A window names its normal and wide layouts; CLayoutFactory builds the one the screen needs.
enum class CtlKind {
    Static,        // QLabel
    Group,         // QGroupBox, drawn behind the controls it frames
    Edit,          // QLineEdit
    NumberEdit,    // uikit::CKeypadLineEdit, integer keys
    RealEdit,      // uikit::CKeypadLineEdit, numeric keys
    TextEdit,      // uikit::CKeypadLineEdit, alphanumeric keys
    CheckBox,      // QCheckBox
    Radio,         // QRadioButton (radios of one group share the window's exclusive group by order)
    Button,        // QPushButton; ids 1 and 2 accept and reject a dialog
    DropList,      // QComboBox, not editable
    Combo,         // QComboBox, editable
    ListView,      // QTreeWidget without root decoration: a report list with columns
    ListBox,       // QListWidget
    Tree,          // QTreeWidget
    Progress,      // QProgressBar
    Slider,        // QSlider, horizontal
    Custom,        // made by the window (a plot, a chart)
};

struct DLG_ITEM {
    unsigned id;
    CtlKind kind;
    unsigned textId;   // string-table number of the caption; 0 for none
    short x, y, width, height;
    uikit::ANCHOR anchor = uikit::kAnchorTopLeft;
};

struct DLG_TEMPLATE {
    unsigned number;
    short width, height;
    std::span<const DLG_ITEM> items;
};

inline constexpr unsigned IDOK_BUTTON = 1;
inline constexpr unsigned IDCANCEL_BUTTON = 2;

// A window's layouts made reachable for the checks that go over every layout of the library
// (LayoutRegistry.h): one line beside the window's templates, e.g.
//     const CLayoutRegistration kRegistered("CToolsDlg", {{&kNormal, &kWide}});
struct LAYOUT_PAIR {
    const DLG_TEMPLATE* normal;
    const DLG_TEMPLATE* wide = nullptr;   // the same controls for wide screens, when the window has one
};
class CLayoutRegistration {
public:
    CLayoutRegistration(const char* window, std::initializer_list<LAYOUT_PAIR> layouts);
};
