// Windows kept within the screen's available area, whatever its shape.
#include <gtest/gtest.h>

#include <QDialog>
#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "platform/uikit/CScreenFit.h"

using uikit::CScreenFit;

namespace {

TEST(ScreenFit, WindowsAreMovedAndShrunkIntoTheAvailableArea) {
    struct ROW {
        const char* legend;
        QRect wanted, available, fitted;
    };
    const ROW rows[] = {
        {"fits: left alone", {100, 100, 400, 300}, {0, 0, 1280, 800}, {100, 100, 400, 300}},
        {"wide screen 1280x480: too tall", {200, 50, 700, 600}, {0, 0, 1280, 480}, {200, 0, 700, 480}},
        {"2x scale on 1280x800 (640x400 logical)", {0, 0, 700, 500}, {0, 0, 640, 400}, {0, 0, 640, 400}},
        {"portrait 480x640: too wide", {-50, 100, 600, 400}, {0, 0, 480, 640}, {0, 100, 480, 400}},
        {"off the right and bottom edges", {1000, 700, 400, 300}, {0, 0, 1280, 800}, {880, 500, 400, 300}},
        {"below a top panel", {10, 0, 300, 200}, {0, 32, 1280, 768}, {10, 32, 300, 200}},
    };
    for (const ROW& row : rows) EXPECT_EQ(CScreenFit::Fit(row.wanted, row.available), row.fitted) << row.legend;
}

TEST(ScreenFit, ADialogLargerThanTheScreenKeepsItsButtonsOnIt) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* content = new QWidget(&dialog);
    content->setMinimumSize(3000, 2000);
    layout->addWidget(content);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    layout->addWidget(buttons);
    CScreenFit::Apply(dialog);
    const QRect available = CScreenFit::AvailableFor(dialog);
    EXPECT_TRUE(available.contains(dialog.geometry())) << "the window within the screen";
    EXPECT_TRUE(CScreenFit::IsSmall(QRect(0, 0, 480, 640))) << "portrait controller";
    EXPECT_FALSE(CScreenFit::IsSmall(QRect(0, 0, 1280, 800)));
}

}  // namespace
