// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/interaction/event_listener.h"

namespace stockbook::interaction {

// Delivers events to every listener in the order in which they were added. While an event is delivered a listener may
// add or remove listeners and call back into the control; a removed listener no longer receives the same event. An
// exception of a listener reaches the caller after the others have received the event; of several exceptions, the
// first. The owner keeps the events alive until the delivery is over.
class STOCKBOOK_API Events {
 public:
  Events() = default;
  ~Events() { assert(!IsRaising() && "a listener destroyed the events it was hearing one of"); }
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;

  void AddListener(EventListener* listener);
  void RemoveListener(EventListener* listener);

  void Process(int16_t indicator);
  void AfterLoaded();
  void AfterFormatted();
  void CommandExecute(const std::string& command_name, bool& cancel);
  void Notify(const std::string& message);
  void AfterRowChanged();
  void AfterRangeSelected();
  void MouseUp(int16_t& button, int16_t& shift, float& x, float& y);
  void FindMsg(const std::string& message);

  // Whether an event is being delivered.
  bool IsRaising() const { return deliveries_ > 0; }

 private:
  template <typename Call>
  void Deliver(Call call) {
    ++deliveries_;
    const base::ScopeExit delivered([this] {
      if (--deliveries_ == 0) std::erase(listeners_, nullptr);
    });
    std::exception_ptr thrown;
    // Listeners added meanwhile receive the next event; removed ones leave a null pointer until the delivery is over.
    const size_t count = listeners_.size();
    for (size_t index = 0; index < count; ++index) {
      if (listeners_[index] == nullptr) continue;
      try {
        call(*listeners_[index]);
      } catch (...) {
        if (thrown == nullptr) thrown = std::current_exception();
      }
    }
    if (thrown != nullptr) std::rethrow_exception(thrown);
  }

  std::vector<EventListener*> listeners_;
  int deliveries_ = 0;  // under way, one inside another
};

}  // namespace stockbook::interaction
