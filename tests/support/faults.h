// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <new>
#include <string>
#include <utility>

#include "stockbook/platform/error.h"

namespace stockbook::testing {

// What goes wrong: an error of what was asked, one of the engine, no memory, or something that is no std::exception.
enum class Fault { kStatement, kEngine, kMemory, kAlien };

// Counts the calls that a control makes of its surroundings, whatever port they go through, and lets the n-th one fail.
// The faulty ports share one.
class Faults {
 public:
  explicit Faults(std::string message = "refused") : message_(std::move(message)) {}

  // Counts anew; 0 lets nothing fail.
  void FailCall(int number, Fault fault = Fault::kStatement) {
    failing_ = number;
    fault_ = fault;
    calls_ = 0;
  }
  int Calls() const { return calls_; }
  bool HasFailed() const { return failing_ > 0 && calls_ >= failing_; }

  // To be called by a port before it does what the call of that name is for.
  void Meet(const char* call) {
    if (on_call) on_call(call);
    if (++calls_ != failing_) return;
    switch (fault_) {
      case Fault::kStatement:
        throw platform::Error(call, message_);
      case Fault::kEngine:
        throw platform::Error(call, message_, 0, platform::ErrorKind::kBusy);
      case Fault::kMemory:
        throw std::bad_alloc();
      case Fault::kAlien:
        throw 7;
    }
  }

  std::function<void(const std::string& call)> on_call;

 private:
  std::string message_;
  int failing_ = 0;
  Fault fault_ = Fault::kStatement;
  int calls_ = 0;
};

}  // namespace stockbook::testing
