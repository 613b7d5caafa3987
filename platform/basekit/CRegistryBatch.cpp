#include "platform/basekit/CRegistryBatch.h"

#include <QSettings>
#include <QStringList>

#include "platform/basekit/StoreGuard.h"

namespace basekit {

namespace {

std::unique_ptr<QSettings> OpenStore(HKEY root, const QStringList& parts) {
    const QSettings::Scope scope = root == HKEY::CurrentUser ? QSettings::UserScope : QSettings::SystemScope;
    return std::make_unique<QSettings>(QSettings::NativeFormat, scope, parts.value(0), parts.value(1));
}

}  // namespace

CRegistryBatch::CRegistryBatch(HKEY root, const ustring& storeKey) {
    const QStringList parts = storeKey.ToQString().split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    m_prefix = parts.value(0) + QLatin1Char('\\') + parts.value(1) + QLatin1Char('\\');
    // Checked before the store is read, so junk is never taken for keys and written back.
    m_setAside = GuardStoreFile(OpenStore(root, parts)->fileName());
    m_settings = OpenStore(root, parts);
}

CRegistryBatch::~CRegistryBatch() = default;

QString CRegistryBatch::Path(const ustring& key, const ustring& name) const {
    QString group = key.ToQString();
    if (group.startsWith(m_prefix)) group = group.mid(m_prefix.size());
    group.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return group.isEmpty() ? name.ToQString() : group + QLatin1Char('/') + name.ToQString();
}

bool CRegistryBatch::Get(const ustring& key, const ustring& name, std::uint32_t& value) const {
    const QVariant v = m_settings->value(Path(key, name));
    bool ok = false;
    const qlonglong n = v.toLongLong(&ok);
    if (!v.isValid() || !ok) return false;
    value = static_cast<std::uint32_t>(n);
    return true;
}

bool CRegistryBatch::Get(const ustring& key, const ustring& name, ustring& value) const {
    const QVariant v = m_settings->value(Path(key, name));
    if (!v.isValid()) return false;
    value = ustring::FromQString(v.toString());
    return true;
}

void CRegistryBatch::Set(const ustring& key, const ustring& name, std::uint32_t value) {
    m_settings->setValue(Path(key, name), static_cast<qulonglong>(value));
}

void CRegistryBatch::Set(const ustring& key, const ustring& name, const ustring& value) {
    m_settings->setValue(Path(key, name), value.ToQString());
}

// QSettings writes its file through a temporary file renamed into place.
bool CRegistryBatch::Commit() {
    m_settings->sync();
    return m_settings->status() == QSettings::NoError;
}

}  // namespace basekit
