// Layouts by number: the wide one on a wide screen, and controls that follow the window's
// growth by their anchor factors.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QPushButton>
#include <QRadioButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/resources/StringIds.h"

namespace {

enum : unsigned { IDC_LIST = 10, IDC_BUTTON, IDC_BOX, IDC_A, IDC_B, IDC_C };
constexpr DLG_ITEM kItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 0, 0, 100, 80, uikit::kAnchorFill},
    {IDC_BUTTON, CtlKind::Button, IDS_REFRESH, 40, 84, 20, 10, uikit::kAnchorBottomCentre},
    {IDC_BOX, CtlKind::CheckBox, IDS_SLANT, 0, 84, 30, 10, uikit::kAnchorBottomLeft},
    {IDC_A, CtlKind::Radio, IDS_STATIC, 0, 96, 30, 10},
    {IDC_B, CtlKind::Radio, IDS_DYNAMIC, 30, 96, 30, 10},
    {IDC_C, CtlKind::CheckBox, IDS_SLANT, 60, 96, 30, 10},
};
constexpr DLG_ITEM kWideItems[] = {{IDC_LIST, CtlKind::ListView, 0, 0, 0, 150, 60, uikit::kAnchorFill}};
constexpr DLG_TEMPLATE kNormal{7000, 100, 108, kItems};
constexpr DLG_TEMPLATE kWide{7001, 150, 60, kWideItems};

TEST(Layout, TheScreenPicksTheLayout) {
    struct Case { const char* legend; const char* wide; unsigned number; };
    const Case cases[] = {{"forced wide", "1", 7001}, {"forced normal", "0", 7000}};
    for (const auto& c : cases) {
        qputenv("FENK_WIDE_SCREEN", c.wide);
        QDialog window;
        const CDialogControls controls = CLayoutFactory::Build(&window, kNormal, &kWide);
        EXPECT_EQ(controls.TemplateNumber(), c.number) << c.legend;
        EXPECT_EQ(controls.Has(IDC_BUTTON), c.number == 7000) << c.legend;
    }
    qunsetenv("FENK_WIDE_SCREEN");
}

TEST(Layout, ControlsFollowTheGrowthByTheirFactors) {
    qputenv("FENK_WIDE_SCREEN", "0");
    QDialog window;
    const CDialogControls controls = CLayoutFactory::Build(&window, kNormal, &kWide);
    qunsetenv("FENK_WIDE_SCREEN");
    const QSize design = window.layout()->minimumSize();
    window.resize(design);
    window.layout()->setGeometry(QRect(QPoint(0, 0), design));
    const QRect list0 = controls.Item(IDC_LIST)->geometry(), button0 = controls.Item(IDC_BUTTON)->geometry(),
                box0 = controls.Item(IDC_BOX)->geometry();
    window.layout()->setGeometry(QRect(0, 0, design.width() + 100, design.height() + 40));
    EXPECT_EQ(controls.Item(IDC_LIST)->geometry(), list0.adjusted(0, 0, 100, 40)) << "fill grows both ways";
    EXPECT_EQ(controls.Item(IDC_BUTTON)->geometry(), button0.translated(50, 40)) << "bottom centre moves half across";
    EXPECT_EQ(controls.Item(IDC_BOX)->geometry(), box0.translated(0, 40)) << "bottom left moves down only";
    window.layout()->setGeometry(QRect(0, 0, design.width() - 30, design.height() - 30));
    EXPECT_EQ(controls.Item(IDC_LIST)->geometry(), list0) << "never below the layout's own size";
}

TEST(Layout, NeighbouringRadiosFormOneGroup) {
    QDialog window;
    const CDialogControls controls = CLayoutFactory::Build(&window, kNormal);
    controls.Get<QRadioButton>(IDC_A)->setChecked(true);
    controls.Get<QRadioButton>(IDC_B)->setChecked(true);
    EXPECT_FALSE(controls.Get<QRadioButton>(IDC_A)->isChecked());
    EXPECT_EQ(controls.Get<QCheckBox>(IDC_BOX)->text(), QStringLiteral("Slant")) << "captions from the string table";
    EXPECT_THROW(controls.Get<QPushButton>(IDC_BOX), basekit::CStdException) << "a wrong kind is an error, not a crash";
}

}  // namespace
