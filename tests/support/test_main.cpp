// Entry point of the tests without a user interface: the binary's settings are sandboxed.
#include <gtest/gtest.h>

#include "support/SettingsSandbox.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new fenktest::CSettingsSandboxEnvironment);
    return RUN_ALL_TESTS();
}
