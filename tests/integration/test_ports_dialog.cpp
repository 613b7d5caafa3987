// The ports dialog offscreen against the simulator over loopback: a serial and a universal
// sheet opened from the tree's menu, one Apply, and what the receiver holds afterwards.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTimer>
#include <functional>

#include "SimLink.h"
#include "fenklib/ports/CPortList.h"
#include "fenklib/ports/CReceiverPortsDlg.h"
#include "fenklib/ports/CSerialPortPS.h"
#include "fenklib/ports/CUniversalPortPS.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"

namespace {

// Runs action once on the window when it has ended the work it started on opening.
void WhenIdle(QWidget* window, std::function<void()> action) {
    if (window->property("fenkIdle").toBool()) return action();
    auto* trigger = new fenktest::CIdleTrigger(window, [action = std::move(action), done = false]() mutable {
        if (done) return;
        done = true;
        action();
    });
    trigger->setParent(window);
}

}  // namespace

TEST(PortsDialog, SheetsOpenedFromTheMenuAndOneApplyReachTheReceiver) {
    fenktest::SimLink link;   // TCP: the controller talks through dev/tcp/a
    int usbRate = -1;
    const std::pair<const char*, std::function<void(QWidget*)>> rows[] = {
        {"dev/ser/b", [](QWidget* w) {   // the serial page at 9600, applied
             auto& sheet = dynamic_cast<CSerialPortPS&>(*w);
             sheet.SetActivePage(1);
             WhenIdle(&sheet, [&sheet] {
                 auto* rate = sheet.SerialPage().Controls().Get<QComboBox>(CReceiverPortSerialPP::IDC_BAUD_RATE);
                 rate->setCurrentIndex(rate->findText(QStringLiteral("9600")));
                 sheet.SerialPage().SetModified();
                 EXPECT_TRUE(sheet.ApplyNow());
                 sheet.reject();
             });
         }},
        {"dev/usb/a", [&usbRate](QWidget* w) {   // the load on the port's own rate
             auto& sheet = dynamic_cast<CUniversalPortPS&>(*w);
             usbRate = sheet.GeneralPage().LineRate();
             EXPECT_FALSE(sheet.GeneralPage().Controls().Get<QLabel>(CReceiverPortGeneralPP::IDC_LOAD)->text().isEmpty());
             sheet.reject();
         }},
    };
    CReceiverPortsDlg dlg(link.Receiver(), nullptr);
    WhenIdle(&dlg, [&] {
        for (const auto& [port, inSheet] : rows) {
            dlg.PortList()->setCurrentItem(dlg.PortList()->findItems(port, Qt::MatchExactly | Qt::MatchRecursive).value(0));
            QTimer::singleShot(0, &dlg, [&inSheet] {
                QWidget* sheet = QApplication::activeModalWidget();
                WhenIdle(sheet, [&inSheet, sheet] { inSheet(sheet); });
            });
            dlg.PortList()->PropertiesAction()->trigger();
        }
        dlg.EndDialog(2);
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(99); });
    EXPECT_EQ(dlg.DoModal(), 2) << "another port's change does not end the dialog";
    EXPECT_EQ(link.sim->Core().Execute("print,dev/ser/b/rate", "dev/ser/a").text, "9600");
    EXPECT_EQ(link.sim->Core().Execute("print,dev/ser/b/parity", "dev/ser/a").text, "N") << "the rest as it was";
    EXPECT_EQ(usbRate, 115200);
}

// A receiver with serial ports only refuses the other groups' listings: the tree shows the
// serial group alone, and a refused group is no error.
TEST(PortsDialog, ASerialOnlyReceiverShowsItsSerialGroupAlone) {
    rcvsim::SimOptions options;
    options.serialPortsOnly = true;
    fenktest::SimLink link(fenktest::SimLink::Over::Pty, options);
    const uikit::CMessageBoxResponder boxes;
    CReceiverPortsDlg dlg(link.Receiver(), nullptr);
    QStringList groups;
    int serialPorts = 0;
    WhenIdle(&dlg, [&] {
        for (int i = 0; i < dlg.PortList()->topLevelItemCount(); ++i) groups << dlg.PortList()->topLevelItem(i)->text(0);
        if (dlg.PortList()->topLevelItemCount() > 0) serialPorts = dlg.PortList()->topLevelItem(0)->childCount();
        dlg.EndDialog(2);
    });
    EXPECT_EQ(dlg.DoModal(), 2);
    EXPECT_EQ(groups, QStringList{QStringLiteral("Serial")});
    EXPECT_EQ(serialPorts, 4);
    EXPECT_TRUE(boxes.Requests().empty());
}
