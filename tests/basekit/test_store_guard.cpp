// A settings file that does not parse is set aside under a dated name before anything reads it;
// a file that parses is left alone.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>

#include "platform/basekit/Registry.h"
#include "platform/basekit/StoreGuard.h"
#include "support/SettingsSandbox.h"

namespace {

QByteArray RandomBytes(int count, unsigned seed) {
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        seed = seed * 1103515245u + 12345u;
        bytes.append(static_cast<char>(seed >> 16));
    }
    return bytes;
}

TEST(StoreGuard, WhatASettingsFileHolds) {
    struct ROW {
        const char* legend;
        QByteArray text;
        bool parses;
    };
    const ROW rows[] = {
        {"empty", "", true},
        {"as the store writes it", "[GlobalSettings]\nGeneral\\AppMode=1\n\n[WindowPlacement]\nCInfo=@ByteArray(\\x1\\xd9\\xd0\\xcb)\n", true},
        {"comments and indented keys", "; kept by hand\n# too\n[General]\n  key = value \r\n", true},
        {"a site name with accents", "[GlobalSettings]\nSiteParameters\\SiteName=Col de l'Is\xc3\xa9ran\n", true},
        {"a group never closed", "[GlobalSettings\nkey=1\n", false},
        {"a line without a value", "[General]\nthis line has no value\n", false},
        {"a value without a key", "[General]\n=5\n", false},
        {"not UTF-8", "[General]\nkey=\xff\xfe\n", false},
        {"a NUL byte", QByteArray("[General]\nkey=1\0\n", 16), false},
        {"random bytes of a power cut", RandomBytes(512, 7), false},
        {"random bytes after good lines", QByteArray("[General]\nkey=1\n") + RandomBytes(64, 11), false},
    };
    for (const ROW& row : rows) EXPECT_EQ(basekit::StoreTextParses(row.text), row.parses) << row.legend;
}

class StoreGuardFile : public fenktest::CSettingsSandboxTest {
protected:
    QString Write(const char* name, const QByteArray& content) const {
        const QString path = QDir(m_store.Path()).filePath(QString::fromLatin1(name));
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
        return path;
    }
    QStringList Entries() const { return QDir(m_store.Path()).entryList(QDir::Files, QDir::Name); }
};

TEST_F(StoreGuardFile, JunkIsSetAsideUnderADatedNameWithItsBytesKept) {
    const QByteArray junk = RandomBytes(300, 3);
    const QString file = Write("Lyn Utility.conf", junk);
    const QString aside = basekit::GuardStoreFile(file);
    ASSERT_FALSE(aside.isEmpty());
    EXPECT_FALSE(QFile::exists(file)) << "nothing of the junk is read as settings";
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Lyn Utility\\.conf\\.\\d{8}-\\d{6}\\.bad$")).match(QDir(m_store.Path()).relativeFilePath(aside)).hasMatch())
        << aside.toStdString();
    QFile kept(aside);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), junk) << "the user's file is kept as it was";
    EXPECT_EQ(basekit::GuardStoreFile(file), aside) << "a later look still says where it went";
}

TEST_F(StoreGuardFile, AFileThatParsesAndAMissingOneAreLeftAlone) {
    const QString file = Write("good.conf", "[General]\nkey=1\n");
    EXPECT_TRUE(basekit::GuardStoreFile(file).isEmpty());
    EXPECT_TRUE(basekit::GuardStoreFile(QDir(m_store.Path()).filePath(QStringLiteral("missing.conf"))).isEmpty());
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("good.conf")});
}

TEST_F(StoreGuardFile, TwoJunkFilesInOneSecondKeepBoth) {
    const QString file = Write("store.conf", RandomBytes(40, 5));
    const QString first = basekit::GuardStoreFile(file);
    Write("store.conf", RandomBytes(40, 6));
    const QString second = basekit::GuardStoreFile(file);
    EXPECT_FALSE(first.isEmpty());
    EXPECT_FALSE(second.isEmpty());
    EXPECT_NE(first, second);
    EXPECT_EQ(Entries().size(), 2) << Entries().join(QLatin1Char(' ')).toStdString();
}

// Through the store's own reads and writes: the junk never comes back as keys.
TEST_F(StoreGuardFile, TheStoreStartsFromTheDefaultsAndNeverWritesTheJunkBack) {
    const QString file = QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Fenk"), QStringLiteral("Junk")).fileName();
    QDir().mkpath(QFileInfo(file).absolutePath());
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[GlobalSettings]\nGeneral\\AppMode=7\n" + RandomBytes(200, 9));
    }
    std::uint32_t mode = 1;
    EXPECT_FALSE(basekit::RegGetValue(basekit::HKEY_CURRENT_USER, L"Fenk\\Junk\\GlobalSettings\\General", L"AppMode", mode));
    EXPECT_EQ(mode, 1u) << "the default stays";
    ASSERT_TRUE(basekit::RegWriteValue(basekit::HKEY_CURRENT_USER, L"Fenk\\Junk\\GlobalSettings\\General", L"CoordSystem", 1u));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray now = written.readAll();
    EXPECT_TRUE(basekit::StoreTextParses(now)) << now.toStdString();
    EXPECT_FALSE(now.contains("AppMode")) << now.toStdString();
    EXPECT_TRUE(now.contains("CoordSystem=1")) << now.toStdString();
}

}  // namespace
