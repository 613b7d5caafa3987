#include "platform/basekit/Registry.h"

#include <QCoreApplication>
#include <QSettings>
#include <QStringList>
#include <memory>

#include "platform/basekit/StoreGuard.h"

namespace basekit {

namespace {

// Opens the store named by the key's first two parts and enters the group of the rest.
std::unique_ptr<QSettings> Open(HKEY root, const ustring& key) {
    const QStringList parts = key.ToQString().split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    if (parts.size() < 2) return nullptr;
    const QSettings::Scope scope = root == HKEY::CurrentUser ? QSettings::UserScope : QSettings::SystemScope;
    GuardStoreFile(QSettings(QSettings::NativeFormat, scope, parts[0], parts[1]).fileName());
    auto settings = std::make_unique<QSettings>(QSettings::NativeFormat, scope, parts[0], parts[1]);
    const QString group = parts.mid(2).join(QLatin1Char('/'));
    if (!group.isEmpty()) settings->beginGroup(group);
    return settings;
}

QString AppPart(const QString& value, const char* fallback) {
    return value.isEmpty() ? QString::fromLatin1(fallback) : value;
}

}  // namespace

ustring RegGetDefaultKeyName(const ustring& subKey) {
    const QString org = AppPart(QCoreApplication::organizationName(), "Fenk");
    const QString app = AppPart(QCoreApplication::applicationName(), "FenkLib");
    return ustring::FromQString(org + QLatin1Char('\\') + app + QLatin1Char('\\')) + subKey;
}

bool RegGetValue(HKEY root, const ustring& key, const ustring& name, std::uint32_t& value) {
    const auto settings = Open(root, key);
    if (!settings) return false;
    const QVariant v = settings->value(name.ToQString());
    if (!v.isValid()) return false;
    bool ok = false;
    const qlonglong n = v.toLongLong(&ok);
    if (!ok) return false;
    value = static_cast<std::uint32_t>(n);
    return true;
}

bool RegGetValue(HKEY root, const ustring& key, const ustring& name, ustring& value) {
    const auto settings = Open(root, key);
    if (!settings) return false;
    const QVariant v = settings->value(name.ToQString());
    if (!v.isValid()) return false;
    value = ustring::FromQString(v.toString());
    return true;
}

bool RegWriteValue(HKEY root, const ustring& key, const ustring& name, std::uint32_t value) {
    const auto settings = Open(root, key);
    if (!settings) return false;
    settings->setValue(name.ToQString(), static_cast<qulonglong>(value));
    settings->sync();
    return settings->status() == QSettings::NoError;
}

bool RegWriteValue(HKEY root, const ustring& key, const ustring& name, const ustring& value) {
    const auto settings = Open(root, key);
    if (!settings) return false;
    settings->setValue(name.ToQString(), value.ToQString());
    settings->sync();
    return settings->status() == QSettings::NoError;
}

}  // namespace basekit
