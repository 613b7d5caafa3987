#pragma once
// A scratch settings store and a file-backed controller for the controller windows' tests.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <fstream>
#include <functional>
#include <string>

#include "platform/hwctl/IControllerBackend.h"

// The store lives until the process ends, after the settings singleton has written itself back.
inline QTemporaryDir& Scratch() {
    static QTemporaryDir dir;
    return dir;
}

struct CONTROLLER {
    const char* model;          // "" : not a controller of the family
    bool receiverPowered;
    bool modemPowered;
    const char* devices;        // folders present among "laser camera compass"
};

// Runs window modally with script started once its loop runs; a forgotten close ends it.
template <typename Window>
int ControllerTestRun(Window& window, std::function<void()> script) {
    QTimer::singleShot(0, &window, std::move(script));
    QTimer::singleShot(20000, &window, [&window] { window.EndDialog(99); });
    return window.DoModal();
}

// The picture of a window for the headless tour, beside the build.
inline void SaveShot(QWidget& window, const char* name) {
    const QByteArray dir = qgetenv("FENK_BUILD_DIR");
    if (!dir.isEmpty()) window.grab().save(QString::fromLocal8Bit(dir) + QStringLiteral("/tour-%1.png").arg(QLatin1String(name)));
}

class ControllerTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Scratch().path());
        m_root = QDir(Scratch().path()).filePath(QStringLiteral("hw%1").arg(++s_counter));
        hwctl::SetBackendRoot(m_root.toStdString());
    }
    void TearDown() override { hwctl::SetBackendRoot({}); }

    void Make(const CONTROLLER& c) {
        for (const char* d : {"receiver", "modem"}) QDir().mkpath(m_root + QLatin1Char('/') + QLatin1String(d));
        for (const QString& d : QString::fromLatin1(c.devices).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            QDir().mkpath(m_root + QLatin1Char('/') + d);
        Put("model", c.model);
        Put("receiver/port", "/dev/ttyS1");
        Put("modem/port", "/dev/ttyS2");
        Put("receiver/power", c.receiverPowered ? "1" : "0");
        Put("modem/power", c.modemPowered ? "1" : "0");
    }
    void Put(const char* name, const std::string& text) const {
        std::ofstream(QDir(m_root).filePath(QString::fromLatin1(name)).toStdString()) << text << "\n";
    }
    std::string Get(const char* name) const {
        QFile f(QDir(m_root).filePath(QString::fromLatin1(name)));
        return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
    }
    std::string Actions() const { return Get("actions.log"); }


    QString m_root;
    static inline int s_counter = 0;
};
