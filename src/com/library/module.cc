// SPDX-License-Identifier: MIT
#include "com/library/module.h"

#include <atomic>

namespace stockbook::com {
namespace {

// COM asks the DLL as a whole whether it may be unloaded, so this is a fact of the DLL as a whole.
std::atomic<long> module_uses{0};

// Longer ones than Windows allows do not exist.
constexpr size_t kLongestPath = 32768;

}  // namespace

HINSTANCE ModuleInstance() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&module_uses), &module);
  return module;
}

std::wstring ModulePath() {
  for (std::wstring path(MAX_PATH, L'\0'); path.size() <= kLongestPath; path.resize(path.size() * 2)) {
    const DWORD length = GetModuleFileNameW(ModuleInstance(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
  }
  return {};
}

ModuleUse::ModuleUse() { LockModule(); }

ModuleUse::ModuleUse(const ModuleUse& /*other*/) { LockModule(); }

ModuleUse::~ModuleUse() { UnlockModule(); }

void LockModule() { ++module_uses; }

void UnlockModule() { --module_uses; }

bool ModuleIsInUse() { return module_uses > 0; }

}  // namespace stockbook::com
