// The controller windows through the built libfenk.so, as a host calls them: the launchers run
// the sheets, the settings reach the per-user store when the library unloads, and the exported
// port hooks follow the power rules the tools sheet wrote.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <functional>

#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IPortAddr.h"

namespace {

using Launcher = int (*)(QWidget*);
using PortHook = bool (*)(basekit::CSmartPtr<devio::IPortAddr>);

// The one visible top-level window of that class (the library's modal window or its box).
template <typename W>
W* Shown() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* found = qobject_cast<W*>(w); found && found->isVisible()) return found;
    return nullptr;
}

void ClickOk(QDialog* sheet) { sheet->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click(); }

template <typename W>
void Click(QWidget* window, const char* text) {
    for (W* w : window->findChildren<W*>())
        if (w->text() == QString::fromUtf8(text)) return w->click();
    ADD_FAILURE() << "no control " << text;
}

class ControllerLibraryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QCoreApplication::setOrganizationName(QStringLiteral("FenkTest"));
        QCoreApplication::setApplicationName(QStringLiteral("Controller"));
        m_root = m_dir.path().toStdString() + "/hw";
        for (const char* d : {"receiver", "modem"}) QDir().mkpath(QString::fromStdString(m_root + "/" + d));
        Put("model", "Zed2");
        Put("receiver/port", "/dev/ttyS1");
        Put("modem/port", "/dev/ttyS2");
        Put("receiver/power", "0");
        Put("modem/power", "0");
        setenv("FENK_HWCTL_ROOT", m_root.c_str(), 1);
    }
    void TearDown() override { unsetenv("FENK_HWCTL_ROOT"); }
    void Put(const std::string& name, const char* text) const { std::ofstream(m_root + "/" + name) << text << "\n"; }
    std::string Actions() const {
        std::ifstream in(m_root + "/actions.log");
        return {std::istreambuf_iterator<char>(in), {}};
    }
    QVariant Stored(const char* key) const {
        const QSettings s(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("FenkTest"), QStringLiteral("Controller"));
        return s.value(QString::fromLatin1(key));
    }
    // Loads the library, hands it to use, unloads it (the settings are written then).
    void WithLibrary(const std::function<void(void*)>& use) {
        void* lib = dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(lib, nullptr) << dlerror();
        use(lib);
        ASSERT_EQ(dlclose(lib), 0);
        ASSERT_EQ(dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the library must really unload";
    }
    // Runs a launcher with script acting on its window once it shows.
    static int Launch(void* lib, const char* name, std::function<void(QDialog*)> script) {
        const auto run = reinterpret_cast<Launcher>(dlsym(lib, name));
        if (!run) {
            ADD_FAILURE() << name;
            return -1;
        }
        QTimer::singleShot(0, [script] {
            QDialog* window = Shown<QDialog>();
            if (!window) return ADD_FAILURE() << "no window";
            script(window);
        });
        return run(nullptr);
    }
    QTemporaryDir m_dir;
    std::string m_root;
};

// One load: the setup choices and the tools sheet's rules, then the exported hooks following them.
TEST_F(ControllerLibraryTest, ChoicesReachTheStoreAtUnloadAndTheHooksFollowThem) {
    WithLibrary([&](void* lib) {
        const auto open = reinterpret_cast<PortHook>(dlsym(lib, "PreOpenPort"));
        const auto close = reinterpret_cast<PortHook>(dlsym(lib, "PostClosePort"));
        ASSERT_TRUE(open && close);
        EXPECT_EQ(Launch(lib, "run_SetupPS", [](QDialog* sheet) {
            Click<QRadioButton>(sheet, "Cartesian (X, Y, Z)");
            sheet->findChild<QTabWidget*>()->setCurrentIndex(1);
            Click<QRadioButton>(sheet, "Manual Selection");
            ClickOk(sheet);
        }), 1);
        // Receiver: on-connect cleared, off-disconnect ticked.
        EXPECT_EQ(Launch(lib, "run_ZedToolsPS", [](QDialog* sheet) {
            Click<QCheckBox>(sheet, "Turn power ON when connecting to the internal receiver");
            Click<QCheckBox>(sheet, "Turn power OFF when disconnecting from the internal receiver");
            ClickOk(sheet);
        }), 1);
        QString refusal;
        QTimer::singleShot(0, [&refusal] {
            if (auto* box = Shown<QMessageBox>()) {
                refusal = box->text();
                box->accept();
            }
        });
        EXPECT_FALSE(open(devio::IPortAddr::Parse(L"serial:/dev/ttyS1"))) << "on-connect cleared refuses";
        EXPECT_TRUE(refusal.contains(QStringLiteral("Zed/Zer Tools, Receiver tab"))) << refusal.toStdString();
        EXPECT_TRUE(open(devio::IPortAddr::Parse(L"serial:/dev/ttyS2"))) << "the modem keeps its default";
        Put("receiver/power", "1");
        EXPECT_TRUE(close(devio::IPortAddr::Parse(L"serial:/dev/ttyS1")));
        EXPECT_FALSE(Stored("GlobalSettings/General/CoordSystem").isValid()) << "nothing is stored before the library unloads";
    });
    EXPECT_EQ(Stored("GlobalSettings/General/CoordSystem").toInt(), 1);
    EXPECT_EQ(Stored("GlobalSettings/General/ModemAutodetection").toInt(), 0);
    EXPECT_EQ(Actions(), "modem on\nreceiver off\n");
    EXPECT_EQ(Stored("GlobalSettings/General/Zed_Settings").toInt(), 10) << "bits 1 and 3";
}

}  // namespace
