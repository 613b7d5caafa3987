#pragma once
// A test whose settings (window placements, the stored site, channel lists) go to a fresh
// temporary folder, never to the user's own configuration.
#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>

namespace fenktest {

class CSettingsSandboxTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    QTemporaryDir m_store;
};

}  // namespace fenktest
