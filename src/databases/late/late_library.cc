// SPDX-License-Identifier: MIT
#include "databases/late/late_library.h"

#include <dlfcn.h>

#include <string>

#include "stockbook/platform/error.h"

namespace stockbook::databases {

// The loader counts how often it is asked for a library; what it gives is never closed.
void* LateLibrary::Find(const char* function) const {
  void* const library = dlopen(file_, RTLD_LAZY | RTLD_LOCAL);
  void* const address = library == nullptr ? nullptr : dlsym(library, function);
  if (address == nullptr) {
    throw platform::Error("Open", "这里需要的程序库“" + std::string(file_) + "”没有安装或版本不对，请安装它再试");
  }
  return address;
}

}  // namespace stockbook::databases
