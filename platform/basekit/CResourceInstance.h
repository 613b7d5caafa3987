#pragma once
#include <functional>
#include <span>
#include <string>

namespace basekit {

// One entry of a small string table given as data.
struct StringEntry {
    unsigned id;
    const wchar_t* text;
};

// A module's string table. Modules register theirs once; a launcher makes the library's table
// current for its thread with CResourceScope, so ustring::load finds the library's texts.
class CResourceInstance {
public:
    using Lookup = const wchar_t* (*)(unsigned id);   // nullptr when the id is not in the table

    CResourceInstance(const char* name, Lookup lookup) : m_name(name), m_lookup(lookup) {}
    // A small table searched entry by entry.
    CResourceInstance(const char* name, std::span<const StringEntry> entries) : m_name(name), m_lookup(nullptr), m_entries(entries) {}
    const char* Name() const { return m_name; }
    // The text of entry id, or nullptr when the table has none.
    const wchar_t* Find(unsigned id) const {
        if (m_lookup) return m_lookup(id);
        for (const StringEntry& e : m_entries)
            if (e.id == id) return e.text;
        return nullptr;
    }

    static const CResourceInstance& Current();
    static void SetDefault(const CResourceInstance* instance);

    // Translation hook applied by ustring::xload (identity unless a host installs one).
    using Translator = std::function<std::wstring(const std::wstring&)>;
    static void SetTranslator(Translator translator);
    static std::wstring Translate(const std::wstring& text);

private:
    friend class CResourceScope;
    const char* m_name;
    Lookup m_lookup;
    std::span<const StringEntry> m_entries;
};

// Makes an instance current for this thread until the scope ends; the previous one comes back.
class CResourceScope {
public:
    explicit CResourceScope(const CResourceInstance& instance);
    ~CResourceScope();
    CResourceScope(const CResourceScope&) = delete;
    CResourceScope& operator=(const CResourceScope&) = delete;

private:
    const CResourceInstance* m_previous;
};

}  // namespace basekit
