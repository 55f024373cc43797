#include "platform/settings_apart.h"

#include <windows.h>

#include <string>

namespace {

// No volatile key: whatever is made below one would have to be volatile, too, which QSettings
// doesn't ask for.
std::wstring ownKey()
{
    return L"Software\\Tarnel apart\\" + std::to_wstring(::GetCurrentProcessId());
}

} // namespace

CSettingsApart::CSettingsApart(const QString& /*folder*/)
{
    const std::wstring name = ownKey();
    ::RegDeleteTreeW(HKEY_CURRENT_USER, name.c_str());
    HKEY key = nullptr;
    if (::RegCreateKeyExW(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                          &key, nullptr) == ERROR_SUCCESS) {
        ::RegOverridePredefKey(HKEY_CURRENT_USER, key);
        ::RegCloseKey(key);
    }
}

CSettingsApart::~CSettingsApart()
{
    ::RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, ownKey().c_str());
}
