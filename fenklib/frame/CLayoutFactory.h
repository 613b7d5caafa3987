#pragma once
#include <functional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/DialogTemplate.h"

// Builds a window's controls from its layout: the wide one on a wide screen when the window has
// one, the normal one otherwise.
class CLayoutFactory {
public:
    // Makes the control of a CtlKind::Custom row, parented to the window.
    using CustomMaker = std::function<QWidget*(const DLG_ITEM& item, QWidget* window)>;

    static const DLG_TEMPLATE& Choose(const DLG_TEMPLATE& normal, const DLG_TEMPLATE* wide);
    static CDialogControls Build(QWidget* window, const DLG_TEMPLATE& normal, const DLG_TEMPLATE* wide = nullptr,
                                 const CustomMaker& custom = {});
};
