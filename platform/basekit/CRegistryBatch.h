#pragma once
#include <QString>
#include <cstdint>
#include <memory>

#include "platform/basekit/Registry.h"

class QSettings;

namespace basekit {

// Several values of one per-user store read and written together: Commit() writes every Set()
// in one atomic replace of the store's file, so a process killed meanwhile leaves the old set
// or the new one, never a mix. Gets read the store as it is when the batch is opened.
class CRegistryBatch {
public:
    // storeKey: any key of the store ("Org\App\..."); the batch covers all of that store.
    CRegistryBatch(HKEY root, const ustring& storeKey);
    ~CRegistryBatch();
    CRegistryBatch(const CRegistryBatch&) = delete;
    CRegistryBatch& operator=(const CRegistryBatch&) = delete;

    // The store's file did not parse and was moved aside, in this process, to the returned path
    // (GuardStoreFile); the batch started from an empty store. Empty when the file was fine.
    QString SetAsidePath() const { return m_setAside; }

    bool Get(const ustring& key, const ustring& name, std::uint32_t& value) const;
    bool Get(const ustring& key, const ustring& name, ustring& value) const;
    void Set(const ustring& key, const ustring& name, std::uint32_t value);
    void Set(const ustring& key, const ustring& name, const ustring& value);
    bool Commit();

private:
    QString Path(const ustring& key, const ustring& name) const;

    std::unique_ptr<QSettings> m_settings;
    QString m_prefix;   // the store's "Org\App\" part of every key
    QString m_setAside;
};

}  // namespace basekit
