// Every uikit test writes its settings (placements, forced screen shape) into a temporary
// folder, never into the user's own configuration.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <memory>

namespace {

class SettingsSandbox : public ::testing::Environment {
public:
    void SetUp() override {
        m_dir = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(m_dir->isValid());
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
        QCoreApplication::setOrganizationName(QStringLiteral("FenkTests"));
        QCoreApplication::setApplicationName(QStringLiteral("uikit"));
        qunsetenv("FENK_WIDE_SCREEN");
    }
    void TearDown() override { m_dir.reset(); }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

[[maybe_unused]] const auto* const kSandbox = ::testing::AddGlobalTestEnvironment(new SettingsSandbox);

}  // namespace
