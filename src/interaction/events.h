// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
// listener throws goes on to who raised the event; the listeners behind it do not hear that event.
class Events {
 public:
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

 private:
  template <typename Call>
  void Deliver(Call call) {
    // Listeners added meanwhile hear the next event; removed ones leave an empty place until the delivery is over.
    const Delivery delivery(*this);
    const size_t count = listeners_.size();
    for (size_t index = 0; index < count; ++index) {
      if (listeners_[index] != nullptr) call(*listeners_[index]);
    }
  }
  void Compact();

  // Counts the deliveries under way, also when a listener throws.
  class Delivery {
   public:
    explicit Delivery(Events& events) : events_(events) { ++events_.delivering_; }
    ~Delivery() {
      if (--events_.delivering_ == 0 && events_.removed_) events_.Compact();
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

   private:
    Events& events_;
  };

  std::vector<EventListener*> listeners_;
  int delivering_ = 0;
  bool removed_ = false;
};

}  // namespace stockbook::interaction
