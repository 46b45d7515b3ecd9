// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "platform/error.h"

namespace stockbook::interaction {

// The nine events of the control, in the order of its event interface. A host derives from it and overrides what it
// wants to hear of. Arguments by reference may be written by the receiver.
class EventListener {
 public:
  virtual ~EventListener() = default;
  // Progress while loading, 0 to 100; -1 ends it.
  virtual void Process(int16_t /*Indicator*/) {}
  virtual void AfterLoaded() {}
  virtual void AfterFormatted() {}
  // Before a named command. Only "Load" reads Cancel.
  virtual void CommandExecute(const std::string& /*CommandName*/, bool& /*Cancel*/) {}
  // A message for the user; the control shows none itself.
  virtual void Notify(const std::string& /*Msg*/) {}
  virtual void AfterRowChanged() {}
  virtual void AfterRangeSelected() {}
  virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*X*/, float& /*Y*/) {}
  virtual void FindMsg(const std::string& /*rMsg*/) {}
};

// Delivers events to every listener in the order in which they were added. A listener may add or remove listeners, and
// call back into the control, while an event is delivered; one that is removed hears no more of the same event. What a
// listener throws goes on to who raised the event, after the others have heard of it too; of several the first. Where a
// listener destroyed the control, and with it the events, the others hear no more and platform::Abandoned goes on.
class Events {
 public:
  Events() : state_(std::make_shared<State>()), life_(std::make_shared<char>()) {}
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
  bool IsRaising() const { return state_->delivering > 0; }
  // Expires when the events are destroyed: for who lets others run without raising an event, as a menu does.
  std::weak_ptr<const void> Life() const { return life_; }

 private:
  // Outlives the events while one is delivered.
  struct State {
    std::vector<EventListener*> listeners;
    int delivering = 0;
    bool removed = false;

    void Compact();
  };

  // Counts the deliveries under way, also when a listener throws.
  class Delivery {
   public:
    explicit Delivery(State& state) : state_(state) { ++state_.delivering; }
    ~Delivery() {
      if (--state_.delivering == 0 && state_.removed) state_.Compact();
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

   private:
    State& state_;
  };

  template <typename Call>
  void Deliver(Call call) {
    const std::shared_ptr<State> state = state_;
    const std::weak_ptr<const void> life = life_;
    const Delivery delivery(*state);
    std::exception_ptr thrown;
    // Listeners added meanwhile hear the next event; removed ones leave an empty place until the delivery is over.
    const size_t count = state->listeners.size();
    for (size_t index = 0; index < count; ++index) {
      if (state->listeners[index] == nullptr) continue;
      try {
        call(*state->listeners[index]);
      } catch (...) {
        if (thrown == nullptr) thrown = std::current_exception();
      }
      if (life.expired()) throw platform::Abandoned();
    }
    if (thrown != nullptr) std::rethrow_exception(thrown);
  }

  std::shared_ptr<State> state_;
  std::shared_ptr<const void> life_;
};

// Runs what may raise events, for an object that they may destroy: gives its result, or an empty one where the object
// is gone. Nothing of the object may be touched behind it then.
template <typename Call>
auto UnlessAbandoned(Call call) -> decltype(call()) {
  try {
    return call();
  } catch (const platform::Abandoned&) {
    return decltype(call())();
  }
}

}  // namespace stockbook::interaction
