#include "platform/system/Registry.h"

#include <windows.h>

namespace {

/// Query and set values, create and enumerate sub keys, notify, create links.
/// Kept on purpose: "Reading asks for permission to write".
constexpr REGSAM readAndWrite = 0x2003F;

HKEY Handle(const Registry::Key& key)
{
    return static_cast<HKEY>(key.get());
}

} // namespace

void Registry::KeyCloser::operator()(void* key) const noexcept
{
    RegCloseKey(static_cast<HKEY>(key));
}

Registry::Key Registry::CreateKey(const std::string& path)
{
    std::string keyClass = "1";
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, keyClass.data(),
                                           REG_OPTION_NON_VOLATILE, readAndWrite, nullptr, &key, nullptr);
    return Key(status == ERROR_SUCCESS ? key : nullptr);
}

Registry::Key Registry::OpenKey(const std::string& path)
{
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, readAndWrite, &key);
    return Key(status == ERROR_SUCCESS ? key : nullptr);
}

bool Registry::WriteText(const Key& key, const std::string& valueName, const std::string& text, std::size_t size)
{
    // RegSetValueEx stores one byte more if a null follows the data, so another character follows it here.
    std::string data = text;
    data.resize(size, '\0');
    data += '.';
    return RegSetValueExA(Handle(key), valueName.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(data.data()),
                          static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

bool Registry::ReadValue(const Key& key, const std::string& valueName, std::string& buffer)
{
    DWORD type = 0;
    auto size = static_cast<DWORD>(buffer.size());
    return RegQueryValueExA(Handle(key), valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()),
                            &size) == ERROR_SUCCESS;
}
