// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace stockbook::databases {

// A shared library that is loaded when one of its functions is called for the first time, and stays. So a program
// starts without the libraries, and all those below them, that most of its users never need.
class LateLibrary {
 public:
  // `file` by the name that the system's loader knows it by.
  explicit constexpr LateLibrary(const char* file) : file_(file) {}

  // Throws platform::Error, a sentence that says which library to install, if it is not here.
  void* Find(const char* function) const;

 private:
  const char* file_;
};

template <typename Signature>
class LateFunction;

// A function of such a library, which is called like the function itself. An object of the function's own name, in the
// namespace of whoever calls it, hides the function.
template <typename Result, typename... Arguments>
class LateFunction<Result(Arguments...)> {
 public:
  constexpr LateFunction(const LateLibrary& library, const char* name) : library_(library), name_(name) {}

  // Finds the function, so that no later call has to. Throws as LateLibrary does.
  void Load() const { Address(); }
  // Throws as LateLibrary does where no function of the library was called before.
  Result operator()(Arguments... arguments) const {
    return reinterpret_cast<Result (*)(Arguments...)>(Address())(arguments...);
  }

 private:
  void* Address() const {
    void* address = address_.load(std::memory_order_acquire);
    if (address != nullptr) return address;
    address = library_.Find(name_);
    address_.store(address, std::memory_order_release);
    return address;
  }

  const LateLibrary& library_;
  const char* name_;
  mutable std::atomic<void*> address_{nullptr};
};

}  // namespace stockbook::databases
