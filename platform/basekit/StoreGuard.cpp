#include "platform/basekit/StoreGuard.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QSettings>
#include <QStringDecoder>
#include <QVariantMap>
#include <map>
#include <mutex>

namespace basekit {

namespace {

std::mutex g_lock;
std::map<QString, QString> g_setAside;   // file -> where it went, when there is no application object

// The host and libfenk each hold their own copy of this code; the application object they share
// keeps the record, so the library tells what the host set aside at its start.
constexpr char kRecord[] = "fenkStoreSetAside";

void Record(const QString& file, const QString& aside) {
    if (QCoreApplication* app = QCoreApplication::instance()) {
        QVariantMap record = app->property(kRecord).toMap();
        record.insert(file, aside);
        app->setProperty(kRecord, record);
    } else {
        g_setAside[file] = aside;
    }
}

QString Recorded(const QString& file) {
    if (const QCoreApplication* app = QCoreApplication::instance()) return app->property(kRecord).toMap().value(file).toString();
    const auto found = g_setAside.find(file);
    return found == g_setAside.end() ? QString() : found->second;
}

bool LineParses(const QByteArray& raw) {
    const QByteArray line = raw.trimmed();
    if (line.isEmpty() || line.startsWith(';') || line.startsWith('#')) return true;
    if (line.startsWith('[')) return line.endsWith(']') && line.size() > 2;
    const qsizetype equals = line.indexOf('=');
    return equals > 0 && !line.left(equals).trimmed().isEmpty();
}

QString DatedAsideName(const QString& file) {
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = file + QLatin1Char('.') + stamp + QStringLiteral(".bad");
    for (int n = 2; QFile::exists(name); ++n)   // a second one within the same second
        name = file + QLatin1Char('.') + stamp + QLatin1Char('-') + QString::number(n) + QStringLiteral(".bad");
    return name;
}

}  // namespace

bool StoreTextParses(const QByteArray& text) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8.decode(text);
    if (utf8.hasError()) return false;
    for (const QChar c : decoded)
        if (c.category() == QChar::Other_Control && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            return false;
    for (const QByteArray& line : text.split('\n'))
        if (!LineParses(line)) return false;
    return true;
}

QString GuardStoreFile(const QString& file) {
    const std::lock_guard<std::mutex> hold(g_lock);
    QFile f(file);
    if (f.open(QIODevice::ReadOnly) && !StoreTextParses(f.readAll())) {
        f.close();
        const QString aside = DatedAsideName(file);
        if (QFile::rename(file, aside)) Record(file, aside);
    }
    return Recorded(file);
}

QString GuardDefaultStore() { return GuardStoreFile(QSettings().fileName()); }

}  // namespace basekit
