#pragma once
// Settings of tests and benchmarks (window placements, the stored site, channel lists, the
// library's own store) go to fresh temporary folders, never to the user's own configuration.
//
// - Every test binary is sandboxed as a whole: its main (gui_main.cpp, test_main.cpp) installs
//   CSettingsSandboxEnvironment before the first test.
// - A test that needs a store of its own, empty at its start, derives from CSettingsSandboxTest.
// - A program that is not a test (a benchmark) holds a CSettingsSandbox for as long as it runs.
#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <memory>

namespace fenktest {

// While it lives, every per-user store of the process is a file in its temporary folder.
class CSettingsSandbox {
public:
    CSettingsSandbox() { Enter(); }
    void Enter() const { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path()); }
    bool IsValid() const { return m_store.isValid(); }
    QString Path() const { return m_store.path(); }

private:
    QTemporaryDir m_store;
};

// The store of the whole test binary. A library loaded by a test saves its settings when the
// process exits, after the tests: the folder stays until then.
inline const CSettingsSandbox& BinarySandbox() {
    static const CSettingsSandbox sandbox;
    return sandbox;
}

class CSettingsSandboxEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(BinarySandbox().IsValid());
        BinarySandbox().Enter();
    }
};

class CSettingsSandboxTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_store.IsValid()); }
    void TearDown() override { BinarySandbox().Enter(); }

    CSettingsSandbox m_store;
};

}  // namespace fenktest
