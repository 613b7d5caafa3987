// The host program's pieces: binding the built library by name, and reconnecting when a
// launcher answers 4.
#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>

#include "tools/lyn-utility/CConnection.h"
#include "tools/lyn-utility/CMainWindow.h"

namespace {

bool Has(const std::vector<std::string>& names, const char* name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(Host, BindsWhatTheLibraryExportsAndReportsTheRest) {
    CFenkBinding binding;
    ASSERT_TRUE(binding.Load(QStringLiteral(FENK_LIBRARY_PATH))) << binding.ErrorText().toStdString();
    EXPECT_TRUE(Has(binding.Bound(), "run_ReceiverInfoDlg"));
    EXPECT_TRUE(Has(binding.Bound(), "PreOpenPort"));
    EXPECT_TRUE(Has(binding.Bound(), "OnExitApp"));
    EXPECT_TRUE(Has(binding.Missing(), "run_PositioningPS")) << "a dialog not built is reported, not fatal";
    ASSERT_EQ(binding.ReceiverLaunchers().size(), 2u);
    EXPECT_EQ(binding.ReceiverLaunchers()[0].name, "run_ReceiverInfoDlg");
    EXPECT_EQ(binding.ReceiverLaunchers()[1].name, "run_ReceiverStatusPS");
    CFenkBinding missing;
    EXPECT_FALSE(missing.Load(QStringLiteral("/nonexistent/libfenk.so")));
}

int AnswerReconnect(basekit::CSmartPtr<devio::IReceiver>, QWidget*) { return 4; }
int AnswerOk(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget*) { return receiver && receiver->IsReady() ? 1 : 3; }

TEST(Host, ALauncherAnsweringFourMakesTheHostReconnect) {
    QTemporaryDir store;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
    const CFenkBinding noLibrary;   // hooks absent: opening is always allowed
    CConnection connection(noLibrary);
    connection.Open(L"sim:");
    CMainWindow window(const_cast<CFenkBinding&>(noLibrary), connection);
    const basekit::CSmartPtr<devio::IReceiver> before = connection.Receiver();   // held, so its address stays taken
    EXPECT_EQ(window.RunLauncher({"run_Ok", &AnswerOk}), 1);
    EXPECT_EQ(connection.Receiver().Get(), before.Get()) << "other results keep the link";
    EXPECT_EQ(window.RunLauncher({"run_Reconfigure", &AnswerReconnect}), 4);
    ASSERT_TRUE(connection.IsOpen());
    EXPECT_NE(connection.Receiver().Get(), before.Get()) << "a new link was opened";
    EXPECT_EQ(connection.Url(), L"sim:");
    EXPECT_EQ(window.RunLauncher({"run_Ok", &AnswerOk}), 1) << "and it answers";
}

}  // namespace
