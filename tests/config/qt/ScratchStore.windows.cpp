#include "config/qt/ScratchStore.h"

#include <stdexcept>
#include <windows.h>

namespace corvel::test {

namespace {

constexpr const wchar_t* scratchKey = L"Software\\Corvel test";
constexpr const wchar_t* stateKey = L"Software\\Voskar Drennix\\Corvel2";

} // namespace

// In this process a key of the test's own stands for the user's branch of the registry.
ScratchStore::ScratchStore() {
    RegDeleteTreeW(HKEY_CURRENT_USER, scratchKey);
    HKEY scratch = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, scratchKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &scratch, nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, scratch) != ERROR_SUCCESS) {
        throw std::runtime_error("the registry cannot be redirected");
    }
    RegCloseKey(scratch);
}

ScratchStore::~ScratchStore() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, scratchKey);
}

bool ScratchStore::has(const std::string& key) const {
    const std::wstring name(key.begin(), key.end());
    return RegGetValueW(HKEY_CURRENT_USER, stateKey, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                        nullptr) == ERROR_SUCCESS;
}

} // namespace corvel::test
