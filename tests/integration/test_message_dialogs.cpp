// The output message dialogs offscreen against the simulator over loopback.
#include <gtest/gtest.h>

#include <cstdlib>

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "SimLink.h"
#include "fenklib/frame/DialogTemplate.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/messages/CLoggingMessagesDlg.h"
#include "fenklib/msglist/CMessageListDlg.h"
#include "fenklib/msglist/CRcvMessageDlg.h"
#include "fenklib/msglist/CRcvMessageListDlg.h"
#include "fenklib/msglist/CRcvMessageMulListDlg.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ModalDriver.h"

using basekit::ustring;
using devio::vok::MSG;
using fenktest::SimLink;

namespace {

// The shipped data files, as an installed library finds them.
const bool kDataFound = [] {
    qputenv("XDG_DATA_DIRS", qgetenv("FENK_BUILD_DIR") + "/share");
    return true;
}();

bool Idle(const QWidget& w) { return w.property("fenkIdle").toBool(); }

void Shot(QWidget& w, const char* name) {
    w.grab().save(QString::fromUtf8(qgetenv("FENK_BUILD_DIR")) + QStringLiteral("/tour-%1.png").arg(QLatin1String(name)));
}

QTreeWidgetItem* Child(QTreeWidget* tree, const QString& group, int index) {
    for (int g = 0; g < tree->topLevelItemCount(); ++g)
        if (tree->topLevelItem(g)->text(0) == group) return tree->topLevelItem(g)->child(index);
    return nullptr;
}

}  // namespace

TEST(MessagePicker, CatalogueTreeAndOkOnlyOnAMessage) {
    ASSERT_TRUE(kDataFound);
    SimLink link;
    ustring name;
    CRcvMessageListDlg dlg(link.Receiver(), nullptr, name);
    QStringList groups;
    QString gga;
    bool okOnGroup = true;
    const int result = fenktest::DriveModal(dlg, [&] {
        if (!Idle(dlg) || dlg.Tree()->topLevelItemCount() == 0) return false;
        for (int g = 0; g < dlg.Tree()->topLevelItemCount(); ++g) groups << dlg.Tree()->topLevelItem(g)->text(0);
        gga = Child(dlg.Tree(), QStringLiteral("nmea"), 0)->text(0);
        dlg.Tree()->setCurrentItem(dlg.Tree()->topLevelItem(1));
        okOnGroup = dlg.IsOkEnabled();
        dlg.Tree()->setCurrentItem(Child(dlg.Tree(), QStringLiteral("rtcm3"), 0));
        Shot(dlg, "RcvMessageListDlg");
        dlg.accept();
        return true;
    });
    EXPECT_EQ(groups, (QStringList{"qls", "nmea", "rtcm", "rtcm3", "cmr", "binex"})) << "the six groups in order";
    EXPECT_EQ(gga, QStringLiteral("GGA (GPS fix data)")) << "name with its description";
    EXPECT_FALSE(okOnGroup) << "a group node cannot be chosen";
    EXPECT_EQ(result, 1);
    EXPECT_EQ(name, L"rtcm3/1004") << "the full name";
}

TEST(MessageMultiPicker, AddsOnceWithTheDefaultScheduleAndDeletesAfterAsking) {
    SimLink link;
    std::vector<MSG> list{{L"/msg/nmea/GGA", 2, 0, 0, 0}};
    CRcvMessageMulListDlg dlg(link.Receiver(), nullptr, list);
    std::vector<ustring> shownRow;
    bool adding = true;
    const int result = fenktest::DriveModal(dlg, [&] {
        if (!Idle(dlg) || dlg.Tree()->topLevelItemCount() == 0) return false;
        if (adding) {   // the add reads the default schedule as a job: the next step comes when it has ended
            adding = false;
            dlg.OnAddNode(Child(dlg.Tree(), QStringLiteral("nmea"), 0));   // GGA, already listed in the port's form
            dlg.OnAddNode(Child(dlg.Tree(), QStringLiteral("nmea"), 3));   // GSV
            dlg.OnAddNode(Child(dlg.Tree(), QStringLiteral("nmea"), 3));   // GSV again, while the first add runs
            EXPECT_FALSE(Idle(dlg)) << "the add runs as a job";
            return false;
        }
        dlg.OnAddNode(Child(dlg.Tree(), QStringLiteral("nmea"), 3));   // GSV once more
        dlg.OnAddNode(dlg.Tree()->topLevelItem(0));                    // a group node adds nothing
        for (int c = 0; c < 6; ++c) shownRow.push_back(ustring::FromQString(dlg.List()->topLevelItem(1)->text(c)));
        Shot(dlg, "RcvMessageMulListDlg");
        {
            const uikit::CMessageBoxResponder no;   // No keeps the rows
            dlg.List()->topLevelItem(0)->setSelected(true);
            dlg.OnDelete();
            EXPECT_EQ(dlg.Chosen().size(), 2u);
            EXPECT_EQ(no.Requests().size(), 1u);
            if (!no.Requests().empty()) {
                EXPECT_EQ(no.Requests()[0].text, LoadResString(IDS_CONFIRM_DELETION));
            }
        }
        const uikit::CMessageBoxResponder yes([](const uikit::MessageBoxRequest&) { return uikit::IDYES; });
        dlg.OnDelete();
        dlg.accept();
        return true;
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(shownRow, (std::vector<ustring>{L"nmea/GSV", L"5.00", L"0.00", L"0", L"0x0", L"GNSS satellites in view"}))
        << "the receiver's default schedule of GSV, formatted";
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0], (MSG{L"nmea/GSV", 5, 0, 0, 0}));
}

// The user's own gestures on the catalogue: space or a double-click adds a message once, a group never.
TEST(MessageMultiPicker, SpaceAndDoubleClickAddOnce) {
    SimLink link;
    struct ROW {
        const char* legend;
        bool space;       // else a double-click
        int child;        // -1: the group node
        std::size_t chosen;
    };
    const ROW rows[] = {{"space on GSV, twice", true, 3, 2}, {"double-click on GSV, twice", false, 3, 2},
                        {"space on a group", true, -1, 1}, {"double-click on a group", false, -1, 1}};
    for (const ROW& row : rows) {
        std::vector<MSG> list{{L"nmea/GGA", 1, 0, 0, 0}};
        CRcvMessageMulListDlg dlg(link.Receiver(), nullptr, list);
        bool asked = false;
        fenktest::DriveModal(dlg, [&] {
            if (!Idle(dlg) || dlg.Tree()->topLevelItemCount() == 0) return false;
            if (asked) {   // the add reads the default schedule as a job: counted once it has ended
                EXPECT_EQ(dlg.Chosen().size(), row.chosen) << row.legend;
                dlg.reject();
                return true;
            }
            asked = true;
            QTreeWidget* tree = dlg.Tree();
            tree->setCurrentItem(row.child < 0 ? tree->topLevelItem(1) : Child(tree, QStringLiteral("nmea"), row.child));
            const QPointF at = tree->visualItemRect(tree->currentItem()).center();
            for (int i = 0; i < 2; ++i) {
                QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
                if (row.space) QApplication::sendEvent(tree, &space);
                for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
                    QMouseEvent click(type, at, tree->viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
                    if (!row.space) QApplication::sendEvent(tree->viewport(), &click);
                }
            }
            return false;
        });
    }
}

TEST(MessageEditor, RangesAndFlags) {
    SimLink link;
    struct Case { const char* period; const char* phase; const char* count; bool accepted; const char* legend; };
    const Case cases[] = {
        {"1", "0", "-256", true, "lowest count"},
        {"1", "0", "32767", true, "highest count"},
        {"1", "0", "-257", false, "count below the range"},
        {"1", "0", "32768", false, "count above the range"},
        {"86400", "86400", "0", true, "a day is the longest period and phase"},
        {"86400.5", "0", "0", false, "period above a day"},
        {"1", "-0.1", "0", false, "negative phase"},
        {"x", "0", "0", false, "not a number"},
    };
    for (const Case& c : cases) {
        MSG msg{L"nmea/GGA", 1, 0, 0, 0x100};
        CRcvMessageDlg dlg(link.Receiver(), nullptr, msg);
        const uikit::CMessageBoxResponder boxes;
        const int result = fenktest::DriveModal(dlg, [&] {
            qobject_cast<QLineEdit*>(dlg.Control(CRcvMessageDlg::IDC_PERIOD))->setText(QString::fromLatin1(c.period));
            qobject_cast<QLineEdit*>(dlg.Control(CRcvMessageDlg::IDC_PHASE))->setText(QString::fromLatin1(c.phase));
            qobject_cast<QLineEdit*>(dlg.Control(CRcvMessageDlg::IDC_COUNT))->setText(QString::fromLatin1(c.count));
            for (unsigned bit : {0u, 3u, 7u}) qobject_cast<QCheckBox*>(dlg.Control(CRcvMessageDlg::IDC_FLAG0 + bit))->setChecked(true);
            dlg.accept();
            if (!boxes.Requests().empty()) dlg.reject();   // refused: the dialog stayed open
            return true;
        });
        EXPECT_EQ(result, c.accepted ? 1 : 2) << c.legend;
        EXPECT_EQ(boxes.Requests().size(), c.accepted ? 0u : 1u) << c.legend;
        if (c.accepted) {
            EXPECT_EQ(msg.count, std::atoi(c.count)) << c.legend;
            EXPECT_EQ(msg.flags, 0x89u) << "the word rebuilt from the eight boxes; bit 8 dropped";
        } else {
            EXPECT_EQ(msg, (MSG{L"nmea/GGA", 1, 0, 0, 0x100})) << "unchanged: " << c.legend;
        }
    }
}

// Only a flag changed: period and phase go back exactly as they came, not as the edits show
// them with two decimals; a number the user typed is taken as typed.
TEST(MessageEditor, UntouchedNumbersStayExact) {
    SimLink link;
    struct Case { const char* legend; double period; double phase; const char* typedPeriod; double periodAfter; };
    const Case cases[] = {
        {"a fortieth of a second", 0.025, 0.0125, nullptr, 0.025},
        {"a third of a second", 1.0 / 3.0, 0.001, nullptr, 1.0 / 3.0},
        {"typed by the user", 0.025, 0.0125, "0.5", 0.5},
    };
    for (const Case& c : cases) {
        MSG msg{L"nmea/GGA", c.period, c.phase, 0, 0x0};
        CRcvMessageDlg dlg(link.Receiver(), nullptr, msg);
        const int result = fenktest::DriveModal(dlg, [&] {
            if (c.typedPeriod)
                qobject_cast<QLineEdit*>(dlg.Control(CRcvMessageDlg::IDC_PERIOD))->setText(QLocale().toString(QString::fromLatin1(c.typedPeriod).toDouble()));
            qobject_cast<QCheckBox*>(dlg.Control(CRcvMessageDlg::IDC_FLAG0))->setChecked(true);
            dlg.accept();
            return true;
        });
        EXPECT_EQ(result, 1) << c.legend;
        EXPECT_EQ(msg.period, c.periodAfter) << c.legend;
        EXPECT_EQ(msg.phase, c.phase) << c.legend;
        EXPECT_EQ(msg.flags, 0x1u) << c.legend;
    }
}

TEST(MessageEditor, NameGivenOrChosen) {
    SimLink link;
    struct Case { const wchar_t* name; bool browse; bool ok; const char* shown; const char* legend; };
    const Case cases[] = {
        {L"nmea/GGA", false, true, "nmea/GGA (GPS fix data)", "a name: shown described, ... off"},
        {L"nmea/XYZ", false, true, "nmea/XYZ", "a name without description: bare"},
        {L"", true, false, "", "no name: ... on, OK off until one is chosen"},
    };
    for (const Case& c : cases) {
        MSG msg{c.name, 1, 0, 0, 0};
        CRcvMessageDlg dlg(link.Receiver(), nullptr, msg);
        fenktest::DriveModal(dlg, [&] {
            EXPECT_EQ(dlg.Control(CRcvMessageDlg::IDC_BROWSE)->isEnabled(), c.browse) << c.legend;
            EXPECT_EQ(dlg.Control(IDOK_BUTTON)->isEnabled(), c.ok) << c.legend;
            EXPECT_EQ(qobject_cast<QLineEdit*>(dlg.Control(CRcvMessageDlg::IDC_NAME))->text(), QString::fromUtf8(c.shown)) << c.legend;
            if (*c.name) Shot(dlg, "RcvMessageDlg");
            dlg.reject();
            return true;
        });
    }
}

TEST(MessageListDialog, AddMergesEditDeleteAndOkCopiesBack) {
    SimLink link;
    std::vector<MSG> list{{L"/msg/nmea/GGA", 1, 0, 0, 0}, {L"/msg/nmea/ZDA", 1, 0, 0, 0}};
    const std::vector<MSG> original = list;
    CMessageListDlg dlg(link.Receiver(), nullptr, list);
    dlg.SetLineRate(9600);
    int stage = 0;
    bool keepEdit = false;
    bool picked = false;
    const int result = fenktest::DriveModal(dlg, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* picker = dynamic_cast<CRcvMessageMulListDlg*>(modal)) {
            if (!Idle(*picker) || picker->Tree()->topLevelItemCount() == 0) return false;
            if (!picked) {
                picked = true;
                picker->OnAddNode(Child(picker->Tree(), QStringLiteral("nmea"), 0));   // GGA: already in the list
                picker->OnAddNode(Child(picker->Tree(), QStringLiteral("rtcm3"), 0));  // 1004
                return false;
            }
            picker->accept();
            return false;
        }
        if (auto* editor = dynamic_cast<CRcvMessageDlg*>(modal)) {
            qobject_cast<QLineEdit*>(editor->Control(CRcvMessageDlg::IDC_PERIOD))->setText(QStringLiteral("0.5"));
            if (keepEdit) editor->accept(); else editor->reject();
            return false;
        }
        if (modal != &dlg) return false;
        auto* rows = dlg.findChild<QTreeWidget*>();
        switch (stage++) {
            case 0: QTimer::singleShot(0, &dlg, [&] { dlg.Editor().OnAdd(); }); return false;
            case 1:
                EXPECT_EQ(dlg.Editor().Messages().size(), 3u) << "GGA merged by name, 1004 added";
                rows->setCurrentItem(rows->topLevelItem(0));
                QTimer::singleShot(0, &dlg, [&] { dlg.Editor().OnEdit(); });   // cancelled
                return false;
            case 2:
                EXPECT_EQ(rows->topLevelItem(0)->text(1), QStringLiteral("1.00")) << "not refreshed on Cancel";
                keepEdit = true;
                QTimer::singleShot(0, &dlg, [&] { dlg.Editor().OnEdit(); });   // accepted
                return false;
            case 3: {
                EXPECT_EQ(rows->topLevelItem(0)->text(1), QStringLiteral("0.50")) << "refreshed on OK";
                Shot(dlg, "MessageListDlg");
                rows->clearSelection();
                rows->topLevelItem(1)->setSelected(true);
                const uikit::CMessageBoxResponder yes([](const uikit::MessageBoxRequest&) { return uikit::IDYES; });
                dlg.Editor().OnDelete();
                dlg.accept();   // 148 + 200 bytes a second on 9600 bit/s: below the line rate, no question
                EXPECT_EQ(yes.Requests().size(), 1u);
                return true;
            }
        }
        dlg.reject();
        return true;
    });
    EXPECT_EQ(result, 1);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], (MSG{L"/msg/nmea/GGA", 0.5, 0, 0, 0}));
    EXPECT_EQ(list[1].name, L"rtcm3/1004");
    EXPECT_NE(list, original);
}

TEST(MessageListDialog, OverloadedPortAsksBeforeKeeping) {
    SimLink link;
    struct Case { int rate; int answer; int result; std::size_t questions; const char* legend; };
    const Case cases[] = {
        {115200, uikit::IDNO, 1, 0, "fits the line: no question"},
        {9600, uikit::IDNO, 2, 1, "overloaded, No: stays open (then cancelled)"},
        {9600, uikit::IDYES, 1, 1, "overloaded, Yes: kept"},
    };
    for (const Case& c : cases) {
        std::vector<MSG> list{{L"rtcm3/1004", 0.1, 0, 0, 0}, {L"rtcm3/1012", 0.1, 0, 0, 0}};   // 3500 bytes a second
        CMessageListDlg dlg(link.Receiver(), nullptr, list);
        dlg.SetLineRate(c.rate);
        const uikit::CMessageBoxResponder boxes([&](const uikit::MessageBoxRequest&) { return c.answer; });
        const int result = fenktest::DriveModal(dlg, [&] {
            dlg.accept();
            if (c.answer == uikit::IDNO && !boxes.Requests().empty()) dlg.reject();   // No: it stayed open
            return true;
        });
        EXPECT_EQ(result, c.result) << c.legend;
        EXPECT_EQ(boxes.Requests().size(), c.questions) << c.legend;
    }
}

TEST(LoggingMessages, ReadsAndWritesBothLogFiles) {
    SimLink link;
    {
        devio::CVokReceiverMate mate(link.Receiver());
        mate.SetPortMessages(devio::vok::CUR_FILE_A, {{L"qls/RT", 1, 0, 0, 0}, {L"qls/PV", 1, 0, 0, 0}});
    }
    CLoggingMessagesDlg dlg(link.Receiver(), nullptr);
    std::size_t readA = 99, readB = 99;
    const int result = fenktest::DriveModal(dlg, [&] {
        if (!Idle(dlg) || !dlg.findChild<QPushButton*>()->isEnabled()) return false;
        readA = dlg.EditorA().Messages().size();
        readB = dlg.EditorB().Messages().size();
        dlg.EditorB().SetMessages({{L"nmea/GGA", 5, 0, 10, 0x1}});
        Shot(dlg, "LoggingMessagesDlg");
        dlg.accept();
        return true;
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(readA, 2u);
    EXPECT_EQ(readB, 0u) << "an empty reply is an empty list";
    devio::CVokReceiverMate mate(link.Receiver());
    const auto a = mate.GetPortMessages(devio::vok::CUR_FILE_A);
    const auto b = mate.GetPortMessages(devio::vok::CUR_FILE_B);
    ASSERT_EQ(a.size(), 2u);
    ASSERT_EQ(b.size(), 1u);
    EXPECT_EQ(b[0], (MSG{L"/msg/nmea/GGA", 5, 0, 10, 0x1}));
}
