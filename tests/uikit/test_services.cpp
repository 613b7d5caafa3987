#include <gtest/gtest.h>

#include <functional>

#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <thread>

#include "platform/basekit/CStdException.h"
#include "platform/uikit/CFileDialogResponder.h"
#include "platform/uikit/CFileDialogService.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/CResizablePropertyPage.h"
#include "platform/uikit/CScreenFit.h"
#include "platform/uikit/WideScreen.h"

using namespace uikit;
using basekit::ustring;

namespace {

TEST(MessageBox, ResponderSeesTheRequestAndAnswers) {
    CMessageBoxResponder responder([](const MessageBoxRequest& r) {
        return (r.flags & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
    });
    EXPECT_EQ(CMessageBoxService::Show(nullptr, L"Stop logging?", L"Status", MB_YESNO | MB_ICONQUESTION), IDYES);
    const auto requests = responder.Requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].text, L"Stop logging?");
    EXPECT_EQ(requests[0].caption, L"Status");
    EXPECT_EQ(requests[0].flags, unsigned{MB_YESNO | MB_ICONQUESTION});
}

// A plain sentence leads; the exception's own text (with its code) stays, under Details.
TEST(MessageBox, ReportErrorLeadsWithAPlainSentenceAndKeepsTheTechnicalTextUnderDetails) {
    struct ROW {
        const char* legend;
        std::function<void()> report;
        const wchar_t* textHas;
        const wchar_t* detailsHas;   // nullptr: no details
    };
    const ROW rows[] = {
        {"time-out", [] { CMessageBoxService::ReportError(nullptr, basekit::CWinException("t", 1, L"print,rcv/model", basekit::kErrorTimeout)); },
         L"did not answer in time", L"print,rcv/model"},
        {"lost link", [] { CMessageBoxService::ReportError(nullptr, basekit::CWinException("t", 1, L"devio::IReceiver::Subscribe", basekit::kErrorLinkLost)); },
         L"connection to the receiver was lost", L"(error 1236)"},
        {"receiver refused", [] { CMessageBoxService::ReportError(nullptr, basekit::CCommException("t", 1, L"set,x", L"{2,,wrong}", L"Receiver")); },
         L"refused the command", L"{2,,wrong}"},
        {"plain text of its own", [] { CMessageBoxService::ReportError(nullptr, basekit::CStdException(L"Disk full.")); },
         L"Disk full.", nullptr},
    };
    for (const ROW& row : rows) {
        CMessageBoxResponder responder;
        row.report();
        const auto requests = responder.Requests();
        ASSERT_EQ(requests.size(), 1u) << row.legend;
        EXPECT_NE(requests[0].text.find(row.textHas), std::wstring::npos) << row.legend;
        EXPECT_EQ(requests[0].flags & MB_ICONMASK, unsigned{MB_ICONERROR}) << row.legend;
        if (row.detailsHas) {
            EXPECT_NE(requests[0].details.find(row.detailsHas), std::wstring::npos) << row.legend;
        }
        else EXPECT_TRUE(requests[0].details.empty()) << row.legend;
    }
}

TEST(MessageBox, GuardsNestAndRestoreTheOuterResponder) {
    CMessageBoxResponder outer([](const MessageBoxRequest&) { return IDRETRY; });
    {
        CMessageBoxResponder inner([](const MessageBoxRequest&) { return IDIGNORE; });
        EXPECT_EQ(CMessageBoxService::Show(nullptr, L"a", L"", MB_ABORTRETRYIGNORE), IDIGNORE);
    }
    EXPECT_EQ(CMessageBoxService::Show(nullptr, L"b", L"", MB_ABORTRETRYIGNORE), IDRETRY);
    EXPECT_EQ(outer.Requests().size(), 1u) << "the inner guard's box is not the outer's";
}

TEST(MessageBox, DefaultResponderGivesTheAnswerThatChangesNothing) {
    const struct {
        unsigned flags;
        int answer;
        const char* legend;
    } cases[] = {
        {MB_OK, IDOK, "a notice can only be acknowledged"},
        {MB_YESNO | MB_DEFBUTTON1, IDNO, "a yes/no question is declined"},
        {MB_YESNOCANCEL, IDCANCEL, "yes/no/cancel is cancelled"},
    };
    CMessageBoxResponder responder;
    for (const auto& c : cases) EXPECT_EQ(CMessageBoxService::Show(nullptr, L"?", L"", c.flags), c.answer) << c.legend;
}

// The test main answers every box; these tests take the real path, with no responder at all.
struct WithoutResponder {
    MessageBoxResponder previous = CMessageBoxService::SetResponder({});
    ~WithoutResponder() { CMessageBoxService::SetResponder(std::move(previous)); }
};

TEST(MessageBox, RealBoxHonoursTheDefaultButtonAndTheIcon) {
    const WithoutResponder real;
    const struct {
        unsigned flags;
        int answer;
        QMessageBox::Icon icon;
        const char* legend;
    } cases[] = {
        {MB_YESNO | MB_ICONQUESTION, IDYES, QMessageBox::Question, "first button by default"},
        {MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2, IDNO, QMessageBox::Question, "DEFBUTTON2 is No"},
        {MB_OKCANCEL | MB_ICONERROR | MB_DEFBUTTON2, IDCANCEL, QMessageBox::Critical, "error icon"},
    };
    for (const auto& c : cases) {
        QMessageBox::Icon shownIcon = QMessageBox::NoIcon;
        QTimer::singleShot(0, qApp, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            shownIcon = box->icon();
            box->defaultButton()->click();   // what Enter does
        });
        EXPECT_EQ(CMessageBoxService::Show(nullptr, L"Confirm deletion.", L"", c.flags), c.answer) << c.legend;
        EXPECT_EQ(shownIcon, c.icon) << c.legend;
    }
}

TEST(MessageBox, RealBoxStaysOnScreenWhenItsOwnerSitsAtTheEdge) {
    const WithoutResponder real;
    QWidget owner;
    const QRect available = CScreenFit::AvailableFor(owner);
    owner.setGeometry(available.right() - 60, available.bottom() - 60, 120, 120);
    owner.show();
    QRect shown;
    QTimer::singleShot(0, qApp, [&] {
        QTimer::singleShot(0, qApp, [&] {   // after the box has placed itself
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            shown = box->frameGeometry();
            box->defaultButton()->click();
        });
    });
    CMessageBoxService::Show(&owner, L"Saved 300 KB to /home/surveyor/receiver-settings/FNK-600-0123456789.txt", L"", MB_OK);
    EXPECT_TRUE(available.contains(shown)) << "box at " << shown.x() << "," << shown.y();
}

TEST(MessageBox, WorkerThreadWithoutResponderGetsTheNegativeAnswer) {
    const WithoutResponder real;
    int answer = 0;
    std::thread([&] { answer = CMessageBoxService::Show(nullptr, L"?", L"", MB_YESNO); }).join();
    EXPECT_EQ(answer, IDNO);
}

TEST(FileDialog, ResponderSeesTheRequestAndTheDefaultExtensionIsAdded) {
    CFileDialogResponder responder([](const FileDialogRequest&) { return ustring(L"/tmp/A123"); });
    const ustring path = CFileDialogService::GetSaveFileName(nullptr, L"/home/user/info.txt",
                                                             L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||", L".txt");
    EXPECT_EQ(path, L"/tmp/A123.txt");
    ASSERT_EQ(responder.Requests().size(), 1u);
    const FileDialogRequest& r = responder.Requests()[0];
    EXPECT_EQ(r.kind, FileDialogRequest::Kind::Save);
    EXPECT_EQ(r.defaultPath, L"/home/user/info.txt");
    EXPECT_EQ(r.filter, L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||");
    const CFileDialogResponder cancel([](const FileDialogRequest&) { return ustring(); });
    EXPECT_TRUE(CFileDialogService::GetOpenFileName(nullptr, L"", L"", L"txt").empty()) << "cancel: no extension added";
    EXPECT_EQ(cancel.Requests().at(0).kind, FileDialogRequest::Kind::Open);
}

TEST(FileDialog, ClassicFiltersBecomeQtFilters) {
    const struct {
        const wchar_t* classic;
        QStringList qt;
        const char* legend;
    } cases[] = {
        {L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||", {"Text Files (*.txt)", "All Files (*)"}, "*.* is every file"},
        {L"Logs|*.log;*.fnk||", {"Logs (*.log *.fnk)"}, "several patterns, no decoration"},
        {L"Data (*.xml)|*.xml", {"Data (*.xml)"}, "no closing bars"},
        {L"", {}, "no filter"},
    };
    for (const auto& c : cases) EXPECT_EQ(CFileDialogService::ConvertFilter(c.classic), c.qt) << c.legend;
}

TEST(FileDialog, DefaultExtensionOnlyForNamesWithoutOne) {
    const struct {
        const wchar_t* path;
        const wchar_t* extension;
        const wchar_t* result;
        const char* legend;
    } cases[] = {
        {L"/d/info", L".txt", L"/d/info.txt", "dotted extension"},
        {L"/d/info", L"txt", L"/d/info.txt", "bare extension gets its dot"},
        {L"/d/info.log", L".txt", L"/d/info.log", "a chosen extension stays"},
        {L"/d.x/info", L".txt", L"/d.x/info.txt", "a dotted folder is not an extension"},
        {L"", L".txt", L"", "cancel stays empty"},
    };
    for (const auto& c : cases) EXPECT_EQ(CFileDialogService::WithDefaultExtension(c.path, c.extension), c.result) << c.legend;
}

TEST(WideScreen, ForcedByEnvironmentOrSettings) {
    const struct {
        const char* env;       // nullptr: not set
        int setting;           // -1: not set
        bool wide;
        const char* legend;
    } cases[] = {
        {"1", -1, true, "environment forces wide"},
        {"0", -1, false, "environment forces narrow"},
        {nullptr, 1, true, "setting forces wide"},
        {nullptr, 0, false, "setting forces narrow"},
        {"0", 1, false, "environment wins over the setting"},
    };
    for (const auto& c : cases) {
        c.env ? qputenv("FENK_WIDE_SCREEN", c.env) : qunsetenv("FENK_WIDE_SCREEN");
        if (c.setting < 0) QSettings().remove(QStringLiteral("uikit/WideScreen"));
        else QSettings().setValue(QStringLiteral("uikit/WideScreen"), c.setting == 1);
        EXPECT_EQ(IsWideScreen(), c.wide) << c.legend;
        EXPECT_EQ(CResizablePropertyPage::ChooseTemplate(3416), c.wide ? 3417u : 3416u) << c.legend;
    }
    qunsetenv("FENK_WIDE_SCREEN");
    QSettings().remove(QStringLiteral("uikit/WideScreen"));
}

}  // namespace
