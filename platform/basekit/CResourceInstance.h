#pragma once
#include <functional>
#include <string>

namespace basekit {

// A module's string table. Modules register theirs once; a launcher makes the library's table
// current for its thread with CResourceScope, so ustring::load finds the library's texts.
class CResourceInstance {
public:
    using Lookup = const wchar_t* (*)(unsigned id);   // nullptr when the id is not in the table

    CResourceInstance(const char* name, Lookup lookup) : m_name(name), m_lookup(lookup) {}
    const char* Name() const { return m_name; }
    // The text of entry id, or nullptr when the table has none.
    const wchar_t* Find(unsigned id) const { return m_lookup ? m_lookup(id) : nullptr; }

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
