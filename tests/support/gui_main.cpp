// Entry point of the GUI tests: one QApplication for the whole binary, on the offscreen platform,
// its settings sandboxed.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

#include "platform/uikit/CMessageBoxResponder.h"
#include "support/SettingsSandbox.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new fenktest::CSettingsSandboxEnvironment);
    // No test may block on a real message box: an unexpected one is printed and answered no.
    const uikit::CMessageBoxResponder fallback([](const uikit::MessageBoxRequest& r) {
        std::fprintf(stderr, "message box: %s\n", r.text.ToUtf8().c_str());
        return uikit::CMessageBoxResponder::NegativeAnswer(r.flags);
    });
    return RUN_ALL_TESTS();
}
