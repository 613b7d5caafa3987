#pragma once
#include <cstdint>

#include "platform/basekit/ustring.h"

namespace basekit {

// The per-user store, realised over QSettings. A key path "Org\App\A\B" names the settings of
// organisation Org and application App, group "A/B"; value names are kept as they are.
enum class HKEY { CurrentUser, LocalMachine };
inline constexpr HKEY HKEY_CURRENT_USER = HKEY::CurrentUser;
inline constexpr HKEY HKEY_LOCAL_MACHINE = HKEY::LocalMachine;

// The host application's own per-user key followed by subKey.
ustring RegGetDefaultKeyName(const ustring& subKey);

// Each read gives false and leaves value unchanged when the value is missing or unreadable.
bool RegGetValue(HKEY root, const ustring& key, const ustring& name, std::uint32_t& value);
bool RegGetValue(HKEY root, const ustring& key, const ustring& name, ustring& value);
bool RegWriteValue(HKEY root, const ustring& key, const ustring& name, std::uint32_t value);
bool RegWriteValue(HKEY root, const ustring& key, const ustring& name, const ustring& value);

}  // namespace basekit
