// SPDX-License-Identifier: MIT
#include "com/library/module.h"

#include <atomic>

namespace stockbook::com {
namespace {

// COM asks the DLL as a whole whether it may be unloaded, so this is a fact of the DLL as a whole.
std::atomic<long> module_uses{0};
std::atomic<long> module_locks{0};

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

ModuleUse::ModuleUse() { ++module_uses; }

ModuleUse::ModuleUse(const ModuleUse& /*other*/) { ++module_uses; }

ModuleUse::~ModuleUse() { --module_uses; }

void LockModule() { ++module_locks; }

bool UnlockModule() {
  long locks = module_locks;
  while (locks > 0 && !module_locks.compare_exchange_weak(locks, locks - 1)) {
  }
  return locks > 0;
}

bool ModuleIsInUse() { return module_uses > 0 || module_locks > 0; }

}  // namespace stockbook::com
