// The script-port pages and dialogs against a scripted receiver.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>

#include "fenklib/ports/CComPortPS.h"
#include "fenklib/ports/CComUpdateDriverDlg.h"
#include "fenklib/ports/CComVariablesDlg.h"
#include "fenklib/ports/DriverVersion.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"

using basekit::ustring;
using fenktest::CScriptedReceiver;

namespace {

constexpr const wchar_t* kWrongFirst = L"{2,,wrong 1st parameter}";

bool WasSent(const CScriptedReceiver& rcv, const ustring& command) {
    const auto sent = rcv.Sent();
    return std::find(sent.begin(), sent.end(), command) != sent.end();
}

}  // namespace

TEST(DriverVersion, SplitsEntriesAndKeysWithoutCase) {
    struct Row {
        const char* legend;
        const char* file;
        DRIVER_VERSION expected;
    };
    const Row rows[] = {
        {"the three keys", "name=FNK UHF;version=2.1.4;description=UHF radio", {L"FNK UHF", L"2.1.4", L"UHF radio"}},
        {"keys in any case", "NAME=a;Version=b;DESCRIPTION=c", {L"a", L"b", L"c"}},
        {"an entry without '=' or with two is ignored", "name;version=2=x;description=d", {L"", L"", L"d"}},
        {"unknown keys are ignored, a line end does not stick", "vendor=z;name=n\r\n", {L"n", L"", L""}},
        {"an empty file", "", {}},
    };
    for (const Row& row : rows) {
        const DRIVER_VERSION v = ParseDriverVersion(row.file);
        EXPECT_EQ(v.name, row.expected.name) << row.legend;
        EXPECT_EQ(v.version, row.expected.version) << row.legend;
        EXPECT_EQ(v.description, row.expected.description) << row.legend;
    }
}

// Uninstall asks first, No being the default, and clears the port only on Yes.
TEST(ComDriverPage, UninstallClearsOnlyOnYes) {
    for (const int answer : {uikit::IDYES, uikit::IDNO}) {
        basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
        rcv->On(L"list,/par/com", CScriptedReceiver::Reply(L"{a=x}"));
        rcv->On(L"print,\"/com/a/script/version\"&size", CScriptedReceiver::Error(kWrongFirst));
        rcv->Otherwise(CScriptedReceiver::Reply(L""));
        const uikit::CMessageBoxResponder boxes([&](const uikit::MessageBoxRequest&) { return answer; });
        CComPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), devio::vok::COM_A, nullptr);
        QTimer::singleShot(0, &sheet, [&] {
            sheet.SetActivePage(1);
            EXPECT_TRUE(fenktest::WaitIdle(&sheet));
            sheet.DriverPage().OnUninstall();
            EXPECT_TRUE(fenktest::WaitIdle(&sheet));
            sheet.reject();
        });
        sheet.DoModal();
        EXPECT_EQ(WasSent(*rcv, L"set,/par/com/a/clr,y"), answer == uikit::IDYES);
        ASSERT_EQ(boxes.Requests().size(), 1u);
        EXPECT_EQ(boxes.Requests()[0].text, L"Confirm deletion of the driver.");
        EXPECT_EQ(boxes.Requests()[0].flags & uikit::MB_DEFMASK, static_cast<unsigned>(uikit::MB_DEFBUTTON2));
    }
}

// The variables are read until the receiver refuses the next number; an edited value goes back.
TEST(ComVariablesDlg, ReadsUntilTheToleratedErrorAndWritesAnEditBack) {
    struct Row {
        const char* legend;
        const wchar_t* thirdName;   // the reply to the third name: an error ends the list
        bool tolerated;
        int rows;
    };
    const Row rows[] = {
        {"the refusal of a missing variable ends the list", kWrongFirst, true, 2},
        {"any other error is a failure shown in a box", L"{2,,wrong command}", false, 0},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
        rcv->On(L"print,com/a/var/1/name", CScriptedReceiver::Reply(L"APN"));
        rcv->On(L"print,com/a/var/1/value", CScriptedReceiver::Reply(L"internet"));
        rcv->On(L"print,com/a/var/2/name", CScriptedReceiver::Reply(L"USER"));
        rcv->On(L"print,com/a/var/2/value", CScriptedReceiver::Reply(L""));
        rcv->On(L"print,com/a/var/3/name", CScriptedReceiver::Error(row.thirdName));
        rcv->Otherwise(CScriptedReceiver::Reply(L""));
        const uikit::CMessageBoxResponder boxes;
        CComVariablesDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), devio::vok::COM_A, nullptr);
        bool done = false;
        const fenktest::CIdleTrigger idle(&dlg, [&] {
            if (std::exchange(done, true)) return;
            EXPECT_EQ(dlg.List()->topLevelItemCount(), row.rows) << row.legend;
            if (row.rows > 1) dlg.List()->topLevelItem(1)->setText(1, QStringLiteral("alice"));
            dlg.accept();
        });
        fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
        EXPECT_EQ(dlg.DoModal(), 1) << row.legend;
        EXPECT_FALSE(WasSent(*rcv, L"print,com/a/var/4/name")) << row.legend << ": read past the end";
        EXPECT_EQ(WasSent(*rcv, L"set,com/a/var/2/value,\"alice\""), row.tolerated) << row.legend;
        EXPECT_FALSE(WasSent(*rcv, L"set,com/a/var/1/value,\"internet\"")) << row.legend << ": an unchanged value was written";
        EXPECT_EQ(boxes.Requests().size(), row.tolerated ? 0u : 1u) << row.legend;
    }
}

// A driver folder goes up scripts first, profiles from its "profiles" folder, the version last.
TEST(ComUpdateDriverDlg, InstallsTheFolderWithTheVersionLast) {
    const QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("profiles"));
    for (const auto& [name, bytes] : {std::pair{"version", "name=X"}, std::pair{"init", "ATZ"}, std::pair{"profiles/base", "ch=3"}}) {
        QFile file(QDir(dir.path()).filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
    rcv->Otherwise(CScriptedReceiver::Reply(L""));
    CComUpdateDriverDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), devio::vok::COM_A, nullptr);
    QTimer::singleShot(0, &dlg, [&] {
        dlg.SetFolder(dir.path());
        dlg.Install();
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
    EXPECT_EQ(dlg.DoModal(), 1);
    std::vector<ustring> commits;
    for (const ustring& c : rcv->Sent())
        if (c.Contains(L"&commit,")) commits.push_back(c);
    const std::vector<ustring> expected = {L"set,\"/com/a/script/init\"&commit,3", L"set,\"/com/a/profile/base\"&commit,4",
                                           L"set,\"/com/a/script/version\"&commit,6"};
    EXPECT_EQ(commits, expected);
}
