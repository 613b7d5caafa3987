// Every layout of every window, as the windows register them: ids that tell the controls apart,
// controls inside their window, a wide layout with the controls of the normal one, and texts
// that fit their controls at the normal font and at twice its size.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QWidget>
#include <set>
#include <string>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LayoutRegistry.h"

namespace {

constexpr unsigned kLabelId = 0xFFFF;   // the id labels share: never looked up, so never unique

std::string Legend(const WINDOW_LAYOUTS& window, const DLG_TEMPLATE& layout) {
    return window.window + " layout " + std::to_string(layout.number);
}

std::set<unsigned> Ids(const DLG_TEMPLATE& layout) {
    std::set<unsigned> ids;
    for (const DLG_ITEM& item : layout.items) ids.insert(item.id);
    return ids;
}

// Every layout once, normal and wide alike, with the window it belongs to.
std::vector<std::pair<const WINDOW_LAYOUTS*, const DLG_TEMPLATE*>> AllLayouts() {
    std::vector<std::pair<const WINDOW_LAYOUTS*, const DLG_TEMPLATE*>> all;
    for (const WINDOW_LAYOUTS& window : RegisteredLayouts())
        for (const LAYOUT_PAIR& pair : window.layouts) {
            all.emplace_back(&window, pair.normal);
            if (pair.wide) all.emplace_back(&window, pair.wide);
        }
    return all;
}

TEST(AllLayouts, EveryWindowOfTheLibraryRegisteredItsLayouts) {
    std::set<std::string> windows;
    for (const WINDOW_LAYOUTS& window : RegisteredLayouts()) EXPECT_TRUE(windows.insert(window.window).second) << window.window;
    // A sample from each window folder: a folder's windows missing here would go unchecked.
    for (const char* window : {"CReceiverInfoDlg", "CSetupGeneralPP", "CCopyFileDlg", "CRcvMessageDlg", "CChannelsListDlg",
                               "CReceiverPortGeneralPP", "CSiteConfigurationDlg", "CStatusPositionPP"})
        EXPECT_TRUE(windows.count(window)) << window;
}

TEST(AllLayouts, IdsAreUniqueAndControlsLieInsideTheirWindow) {
    std::set<unsigned> numbers;
    for (const auto& [window, layout] : AllLayouts()) {
        const std::string legend = Legend(*window, *layout);
        EXPECT_TRUE(numbers.insert(layout->number).second) << legend << ": its number is another layout's";
        std::set<unsigned> seen;
        for (const DLG_ITEM& item : layout->items) {
            if (item.id != kLabelId) {
                EXPECT_TRUE(seen.insert(item.id).second) << legend << ": id " << item.id << " twice";
            }
            EXPECT_GE(item.x, 0) << legend << ": id " << item.id;
            EXPECT_GE(item.y, 0) << legend << ": id " << item.id;
            EXPECT_LE(item.x + item.width, layout->width) << legend << ": id " << item.id << " beyond the right edge";
            EXPECT_LE(item.y + item.height, layout->height) << legend << ": id " << item.id << " below the bottom";
        }
    }
}

TEST(AllLayouts, WideLayoutsHoldTheControlsOfTheNormalOnes) {
    for (const WINDOW_LAYOUTS& window : RegisteredLayouts())
        for (const LAYOUT_PAIR& pair : window.layouts)
            if (pair.wide) {
                EXPECT_EQ(Ids(*pair.wide), Ids(*pair.normal)) << Legend(window, *pair.wide);
            }
}

// The width a control's text needs on one line: a button's text within its frame (the style's
// smallest button width is no text of it), any other control's size hint.
int TextWidth(QWidget* control) {
    if (auto* button = qobject_cast<QPushButton*>(control)) {
        const int frame = button->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, button);
        return button->fontMetrics().horizontalAdvance(button->text()) + 2 * frame;
    }
    return control->sizeHint().width();
}

// Whether a control's text fits its rectangle: on one line or, for a label that wraps, in the
// lines it has.
bool TextFits(QWidget* control) {
    const QRect at = control->geometry();
    if (auto* label = qobject_cast<QLabel*>(control); label && label->wordWrap()) return label->heightForWidth(at.width()) <= at.height();
    return TextWidth(control) <= at.width();
}

TEST(AllLayouts, TextsFitTheirControlsAtNormalAndDoubleSize) {
    const struct {
        const char* legend;
        double scale;
    } scales[] = {{"normal size", 1.0}, {"2x", 2.0}};
    for (const auto& s : scales)
        for (const auto& [window, layout] : AllLayouts()) {
            QWidget host;
            QFont font = host.font();
            font.setPointSizeF(font.pointSizeF() * s.scale);
            host.setFont(font);
            CLayoutFactory::Build(&host, *layout);
            host.layout()->setGeometry(QRect(QPoint(0, 0), host.layout()->minimumSize()));
            for (std::size_t i = 0; i < layout->items.size(); ++i) {
                const DLG_ITEM& item = layout->items[i];
                QWidget* control = host.layout()->itemAt(static_cast<int>(i))->widget();   // the layout's own order
                if (!item.textId) continue;
                if (!qobject_cast<QLabel*>(control) && !qobject_cast<QAbstractButton*>(control) && !qobject_cast<QGroupBox*>(control))
                    continue;
                EXPECT_TRUE(TextFits(control)) << Legend(*window, *layout) << " at " << s.legend << ": id " << item.id << " \""
                                                     << control->property("text").toString().toStdString()
                                                     << control->property("title").toString().toStdString() << "\" needs "
                                                     << TextWidth(control) << " px, has " << control->width();
            }
        }
}

}  // namespace
