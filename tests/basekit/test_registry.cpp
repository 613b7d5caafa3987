#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include "platform/basekit/Registry.h"

using namespace basekit;

namespace {

class RegistryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QCoreApplication::setOrganizationName(QStringLiteral("FenkTest"));
        QCoreApplication::setApplicationName(QStringLiteral("RegistryTest"));
    }
    QTemporaryDir m_dir;
};

TEST_F(RegistryTest, TheDefaultKeyIsAGroupOfTheHostsStoreAndValuesRoundTrip) {
    const ustring key = RegGetDefaultKeyName(L"GlobalSettings\\SiteParameters");
    EXPECT_EQ(key, L"FenkTest\\RegistryTest\\GlobalSettings\\SiteParameters");
    ASSERT_TRUE(RegWriteValue(HKEY_CURRENT_USER, key, L"Slant", 1u));
    ASSERT_TRUE(RegWriteValue(HKEY_CURRENT_USER, key, L"SiteName", ustring(L"Hill \u00b0 1")));
    const QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("FenkTest"),
                          QStringLiteral("RegistryTest"));
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/SiteParameters/Slant")).toUInt(), 1u);
    std::uint32_t n = 42;
    ustring text = L"unchanged";
    EXPECT_TRUE(RegGetValue(HKEY_CURRENT_USER, key, L"Slant", n));
    EXPECT_EQ(n, 1u);
    EXPECT_TRUE(RegGetValue(HKEY_CURRENT_USER, key, L"SiteName", text));
    EXPECT_EQ(text, L"Hill \u00b0 1");
    n = 42;
    EXPECT_FALSE(RegGetValue(HKEY_CURRENT_USER, key, L"Missing", n));
    EXPECT_EQ(n, 42u) << "a missing value leaves the default";
    EXPECT_FALSE(RegGetValue(HKEY_CURRENT_USER, key, L"SiteName", n)) << "a text is not a number";
    EXPECT_EQ(n, 42u);
}

}  // namespace
