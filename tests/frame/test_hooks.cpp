// The port hooks' power decisions on a file-backed controller.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <fstream>
#include <optional>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/PortHooks.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "platform/devio/IPortAddr.h"
#include "platform/hwctl/IControllerBackend.h"
#include "platform/uikit/CMessageBoxResponder.h"

namespace {

// The settings store and the controller folder live until the process ends, after the
// settings singleton has written itself back.
QTemporaryDir& Scratch() {
    static QTemporaryDir dir;
    return dir;
}

struct Controller {
    const char* model;        // "" : not a controller of the family
    bool receiverPowered;
    bool modemPowered;
};

class HooksTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Scratch().path());
        m_root = QDir(Scratch().path()).filePath(QStringLiteral("hw%1").arg(++s_counter));
        hwctl::SetBackendRoot(m_root.toStdString());
    }
    void TearDown() override { hwctl::SetBackendRoot({}); }
    void Make(const Controller& c) {
        QDir().mkpath(m_root + QStringLiteral("/receiver"));
        QDir().mkpath(m_root + QStringLiteral("/modem"));
        Put("model", c.model);
        Put("receiver/port", "/dev/ttyS1");
        Put("modem/port", "/dev/ttyS2");
        Put("receiver/power", c.receiverPowered ? "1" : "0");
        Put("modem/power", c.modemPowered ? "1" : "0");
    }
    void Put(const char* name, const char* text) const {
        std::ofstream(QDir(m_root).filePath(QString::fromLatin1(name)).toStdString()) << text << "\n";
    }
    std::string Actions() const {
        QFile f(QDir(m_root).filePath(QStringLiteral("actions.log")));
        return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
    }
    QString m_root;
    static inline int s_counter = 0;
};

basekit::CSmartPtr<devio::IPortAddr> Port(const wchar_t* url) { return devio::IPortAddr::Parse(url); }

TEST_F(HooksTest, OpeningDecisions) {
    struct Case {
        const char* legend;
        Controller controller;
        std::uint32_t rules;
        const wchar_t* url;        // nullptr: an empty address
        bool result;
        const char* actions;
        std::optional<unsigned> message;
    };
    const Case cases[] = {
        {"empty address: true, no hardware", {"Zed2", false, false}, 9, nullptr, true, "", {}},
        {"network port: true whatever the rules", {"Zed2", false, false}, 0, L"tcp://127.0.0.1:9", true, "", {}},
        {"not of the family: nothing powered", {"", false, false}, 9, L"serial:/dev/ttyS1", true, "", {}},
        {"default rules power the receiver silently", {"Zed2", false, true}, 9, L"serial:/dev/ttyS1", true, "receiver on\n", {}},
        {"default rules power the modem silently", {"Zed2", true, false}, 9, L"serial:/dev/ttyS2", true, "modem on\n", {}},
        {"already powered: no switching", {"Zed2", true, true}, 9, L"serial:/dev/ttyS1", true, "", {}},
        {"another serial port is not internal", {"Zed2", false, false}, 9, L"serial:/dev/ttyUSB0", true, "", {}},
        {"bit 0 clear refuses, Zed/Zer text", {"Zed2", false, false}, 8, L"serial:/dev/ttyS1", false, "", IDS_UNPOWERED_RECEIVER_ZED},
        {"bit 0 clear on a Pad7: Backpack text", {"Pad7", false, false}, 8, L"serial:/dev/ttyS1", false, "", IDS_UNPOWERED_RECEIVER_BACKPACK},
        {"bit 3 clear refuses the modem", {"Zer1", false, false}, 1, L"serial:/dev/ttyS2", false, "", IDS_UNPOWERED_MODEM},
    };
    for (const auto& c : cases) {
        Make(c.controller);
        CFenkGlobalSettings::Ref().SetZedSettings(Zed_Settings(c.rules));
        const uikit::CMessageBoxResponder boxes([](const uikit::MessageBoxRequest&) { return uikit::IDOK; });
        EXPECT_EQ(PreOpenPort(c.url ? Port(c.url) : nullptr), c.result) << c.legend;
        EXPECT_EQ(Actions(), c.actions) << c.legend;
        ASSERT_EQ(boxes.Requests().size(), c.message ? 1u : 0u) << c.legend;
        if (c.message) {
            EXPECT_EQ(boxes.Requests()[0].text, LoadResString(*c.message)) << c.legend;
            EXPECT_EQ(boxes.Requests()[0].caption, L"Lyn Utility") << c.legend;
            EXPECT_TRUE(boxes.Requests()[0].flags & uikit::MB_ICONERROR) << c.legend;
        }
        SetUp();
    }
}

TEST_F(HooksTest, ClosingAndExitDecisions) {
    struct Case {
        const char* legend;
        Controller controller;
        std::uint32_t rules;
        int hook;                  // 0 close the receiver port, 1 close the modem port, 2 exit
        const char* actions;
    };
    const Case cases[] = {
        {"default rules leave the receiver on at close", {"Zed2", true, true}, 9, 0, ""},
        {"default rules leave both on at exit", {"Zed2", true, true}, 9, 2, ""},
        {"bit 1 powers the receiver off at close", {"Zed2", true, true}, 2, 0, "receiver off\n"},
        {"bit 1 but already off: nothing", {"Zed2", false, true}, 2, 0, ""},
        {"bit 4 powers the modem off at close", {"Zed2", true, true}, 16, 1, "modem off\n"},
        {"bit 4 does not touch the receiver port", {"Zed2", true, true}, 16, 0, ""},
        {"bit 2 at exit, without asking first", {"Zed2", false, false}, 4, 2, "receiver off\n"},
        {"bits 2 and 5 at exit", {"Pad7", true, true}, 36, 2, "receiver off\nmodem off\n"},
        {"not of the family: exit switches nothing", {"", true, true}, 63, 2, ""},
    };
    for (const auto& c : cases) {
        Make(c.controller);
        CFenkGlobalSettings::Ref().SetZedSettings(Zed_Settings(c.rules));
        if (c.hook == 2) {
            OnExitApp();
        } else {
            EXPECT_TRUE(PostClosePort(Port(c.hook == 0 ? L"serial:/dev/ttyS1" : L"serial:/dev/ttyS2"))) << c.legend;
        }
        EXPECT_EQ(Actions(), c.actions) << c.legend;
        SetUp();
    }
    EXPECT_TRUE(PostClosePort(nullptr));
}

TEST_F(HooksTest, ExitNeverFailsEvenWhenTheSwitchDoes) {
    Make({"Zed2", true, true});
    QDir(m_root + QStringLiteral("/receiver")).removeRecursively();   // its switch cannot be written now
    CFenkGlobalSettings::Ref().SetZedSettings(Zed_Settings(36));
    EXPECT_NO_THROW(OnExitApp());
    EXPECT_EQ(Actions(), "modem off\n") << "the modem is still switched after the receiver failed";
}

}  // namespace
