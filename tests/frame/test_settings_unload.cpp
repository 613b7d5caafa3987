// The settings singleton of the built library: loaded on the first Ref(), written back when the
// library unloads. Each case loads and unloads libfenk.so.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <functional>

#include "fenklib/frame/CFenkGlobalSettings.h"

namespace {

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QCoreApplication::setOrganizationName(QStringLiteral("FenkTest"));
        QCoreApplication::setApplicationName(QStringLiteral("Settings"));
    }
    QSettings Store() const { return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("FenkTest"), QStringLiteral("Settings")); }
    void Write(const char* key, const QVariant& value) {
        QSettings s(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("FenkTest"), QStringLiteral("Settings"));
        s.setValue(QString::fromLatin1(key), value);
    }
    // Loads the library, hands its settings object to `use`, and unloads it again.
    void WithLibrary(const std::function<void(CFenkGlobalSettings&, void*)>& use) {
        void* lib = dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(lib, nullptr) << dlerror();
        using RefFn = CFenkGlobalSettings& (*)();
        const auto ref = reinterpret_cast<RefFn>(dlsym(lib, "_ZN19CFenkGlobalSettings3RefEv"));
        ASSERT_NE(ref, nullptr);
        use(ref(), lib);
        ASSERT_EQ(dlclose(lib), 0);
        ASSERT_EQ(dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the library must really unload";
    }
    QTemporaryDir m_dir;
};

TEST_F(SettingsTest, EmptyStoreGivesDefaultsAndUnloadWritesAllTen) {
    WithLibrary([](CFenkGlobalSettings& s, void*) {
        EXPECT_EQ(s.GetApplicationMode(), 1);
        EXPECT_EQ(s.GetCoordSystem(), COORD_GEODETIC);
        EXPECT_TRUE(s.GetModemAutodetection());
        EXPECT_EQ(s.GetZedSettings().word, 9u);
        const SiteParameters site = s.GetSiteParameters();
        EXPECT_TRUE(site.SiteName.empty() && site.Description.empty() && site.AntennaType.empty());
        EXPECT_EQ(site.AntennaHeight, 0.0f);
        EXPECT_FALSE(site.Slant || site.Dynamics);
    });
    const QSettings store = Store();
    const char* expected[][2] = {
        {"GlobalSettings/General/AppMode", "1"}, {"GlobalSettings/General/CoordSystem", "0"},
        {"GlobalSettings/General/ModemAutodetection", "1"}, {"GlobalSettings/General/Zed_Settings", "9"},
        {"GlobalSettings/SiteParameters/SiteName", ""}, {"GlobalSettings/SiteParameters/Description", ""},
        {"GlobalSettings/SiteParameters/AntennaType", ""}, {"GlobalSettings/SiteParameters/AntennaHeight", "0.000000"},
        {"GlobalSettings/SiteParameters/Slant", "0"}, {"GlobalSettings/SiteParameters/Dynamics", "0"},
    };
    for (const auto& [key, value] : expected) {
        EXPECT_TRUE(store.contains(QString::fromLatin1(key))) << key;
        EXPECT_EQ(store.value(QString::fromLatin1(key)).toString().toStdString(), value) << key;
    }
}

TEST_F(SettingsTest, OddStoredValues) {
    struct Case { const char* legend; const char* key; QVariant stored; std::function<void(CFenkGlobalSettings&)> check; const char* savedAs; };
    const Case cases[] = {
        {"height text abc reads 0", "GlobalSettings/SiteParameters/AntennaHeight", QStringLiteral("abc"),
         [](auto& s) { EXPECT_EQ(s.GetSiteParameters().AntennaHeight, 0.0f); }, "0.000000"},
        {"height 1.5 stays 1.5", "GlobalSettings/SiteParameters/AntennaHeight", QStringLiteral("1.500000"),
         [](auto& s) { EXPECT_EQ(s.GetSiteParameters().AntennaHeight, 1.5f); }, "1.500000"},
        {"coordinate system 2 is kept", "GlobalSettings/General/CoordSystem", 2,
         [](auto& s) { EXPECT_EQ(static_cast<int>(s.GetCoordSystem()), 2); }, "2"},
        {"modem autodetection 5 reads true, saved 1", "GlobalSettings/General/ModemAutodetection", 5,
         [](auto& s) { EXPECT_TRUE(s.GetModemAutodetection()); }, "1"},
        {"power rules as stored", "GlobalSettings/General/Zed_Settings", 63,
         [](auto& s) { EXPECT_EQ(s.GetZedSettings().word, 63u); }, "63"},
    };
    for (const auto& c : cases) {
        Write(c.key, c.stored);
        WithLibrary([&](CFenkGlobalSettings& s, void*) { c.check(s); });
        EXPECT_EQ(Store().value(QString::fromLatin1(c.key)).toString().toStdString(), c.savedAs) << c.legend;
    }
}

TEST_F(SettingsTest, ChangesReachTheStoreOnlyAtUnload) {
    WithLibrary([&](CFenkGlobalSettings& s, void* lib) {
        s.SetCoordSystem(COORD_CARTESIAN);
        SiteParameters site;
        site.SiteName = L"Hill \u00b07";
        site.AntennaHeight = 1.5f;
        site.Slant = true;
        using SetSite = void (*)(CFenkGlobalSettings*, const SiteParameters&);
        const auto set = reinterpret_cast<SetSite>(dlsym(lib, "_ZN19CFenkGlobalSettings17SetSiteParametersERK14SiteParameters"));
        ASSERT_NE(set, nullptr);
        set(&s, site);
        EXPECT_FALSE(Store().contains(QStringLiteral("GlobalSettings/General/CoordSystem"))) << "nothing written yet";
    });
    const QSettings store = Store();
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/General/CoordSystem")).toInt(), 1);
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/SiteParameters/SiteName")).toString(), QStringLiteral("Hill \u00b07"));
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/SiteParameters/AntennaHeight")).toString(), QStringLiteral("1.500000"));
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/SiteParameters/Slant")).toInt(), 1);
    WithLibrary([](CFenkGlobalSettings& s, void*) {
        EXPECT_EQ(s.GetCoordSystem(), COORD_CARTESIAN);
        EXPECT_EQ(s.GetSiteParameters().SiteName, L"Hill \u00b07");
    });
}

// A second instance that saved while this one ran keeps what it saved, unless this one changed
// the same value.
TEST_F(SettingsTest, AnotherInstancesSavedChangesSurvive) {
    WithLibrary([&](CFenkGlobalSettings& s, void*) {
        s.SetCoordSystem(COORD_CARTESIAN);
        Write("GlobalSettings/SiteParameters/SiteName", QStringLiteral("from the other instance"));
        Write("GlobalSettings/General/Zed_Settings", 41);
        Write("GlobalSettings/General/CoordSystem", 0);
    });
    const QSettings store = Store();
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/SiteParameters/SiteName")).toString(), QStringLiteral("from the other instance"));
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/General/Zed_Settings")).toInt(), 41);
    EXPECT_EQ(store.value(QStringLiteral("GlobalSettings/General/CoordSystem")).toInt(), 1) << "this instance's own change";
    EXPECT_TRUE(store.contains(QStringLiteral("GlobalSettings/SiteParameters/Dynamics"))) << "all ten are written";
}

// A store that does not parse (a power cut can leave random bytes in it) is set aside under a
// dated name, the defaults are in effect, the user is told once, and the junk is never written
// back as keys.
TEST_F(SettingsTest, AnUnreadableStoreIsKeptAsideAndToldOnce) {
    QByteArray random;
    for (unsigned seed = 17, i = 0; i < 400; ++i) random.append(static_cast<char>((seed = seed * 1103515245u + 12345u) >> 16));
    struct ROW {
        const char* legend;
        QByteArray content;
    };
    const ROW rows[] = {
        {"a group never closed", "[GlobalSettings\nthis line has no value\n"},
        {"random bytes after a good value", "[GlobalSettings]\nGeneral\\Zed_Settings=63\n" + random},
    };
    for (const ROW& row : rows) {
        const QString file = Store().fileName();
        const QDir folder = QFileInfo(file).absoluteDir();
        for (const QString& old : folder.entryList(QDir::Files)) QFile::remove(folder.filePath(old));
        QDir().mkpath(folder.path());
        {
            QFile broken(file);
            ASSERT_TRUE(broken.open(QIODevice::WriteOnly)) << row.legend;
            broken.write(row.content);
        }
        WithLibrary([&](CFenkGlobalSettings& s, void*) {
            const std::wstring told = s.TakeStoreProblem();
            EXPECT_NE(told.find(L".bad"), std::wstring::npos) << row.legend;
            EXPECT_TRUE(s.TakeStoreProblem().empty()) << row.legend << ": said once";
            EXPECT_EQ(s.GetZedSettings().word, 9u) << row.legend << ": defaults in use";
        });
        const QStringList aside = folder.entryList({QFileInfo(file).fileName() + QStringLiteral(".*.bad")}, QDir::Files);
        ASSERT_EQ(aside.size(), 1) << row.legend;
        EXPECT_TRUE(QRegularExpression(QStringLiteral("\\.\\d{8}-\\d{6}\\.bad$")).match(aside[0]).hasMatch()) << aside[0].toStdString();
        QFile kept(folder.filePath(aside[0]));
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), row.content) << row.legend << ": the user's file is kept as it was";
        QFile saved(file);
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly)) << row.legend;
        const QByteArray now = saved.readAll();
        EXPECT_FALSE(now.contains(random.left(8))) << row.legend << ": no junk written back";
        EXPECT_EQ(Store().value(QStringLiteral("GlobalSettings/General/Zed_Settings")).toInt(), 9) << row.legend;
    }
}

}  // namespace
