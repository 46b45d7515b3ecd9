// SPDX-License-Identifier: MIT
#include "interaction/events.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace stockbook::interaction {
namespace {

class Listener : public EventListener {
 public:
  void Notify(const std::string& message) override {
    heard.push_back(message);
    if (on_notify) on_notify();
  }
  void CommandExecute(const std::string& /*name*/, bool& cancel) override { cancel = cancel || cancels; }

  std::vector<std::string> heard;
  std::function<void()> on_notify;
  bool cancels = false;
};

TEST(Events, ReachEveryListenerInOrderAndOnce) {
  Events events;
  Listener first;
  Listener second;
  events.AddListener(&first);
  events.AddListener(&second);
  events.AddListener(&first);
  first.on_notify = [&] { EXPECT_EQ(second.heard.size(), first.heard.size() - 1); };
  events.Notify("a");
  events.Notify("b");
  EXPECT_EQ(first.heard, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(second.heard, first.heard);
}

TEST(Events, LetAnyListenerWriteTheArgument) {
  Events events;
  Listener silent;
  Listener cancelling;
  cancelling.cancels = true;
  events.AddListener(&cancelling);
  events.AddListener(&silent);
  bool cancel = false;
  events.CommandExecute("Load", cancel);
  EXPECT_TRUE(cancel);
}

TEST(Events, MayAddAndRemoveListenersWhileOneIsDelivered) {
  Events events;
  Listener first;
  Listener second;
  Listener late;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_notify = [&] {
    events.RemoveListener(&second);
    events.RemoveListener(&first);
    events.AddListener(&late);
  };
  events.Notify("a");
  EXPECT_TRUE(second.heard.empty());
  EXPECT_TRUE(late.heard.empty());
  events.Notify("b");
  EXPECT_EQ(first.heard, (std::vector<std::string>{"a"}));
  EXPECT_EQ(late.heard, (std::vector<std::string>{"b"}));
}

TEST(Events, HandOnWhatAListenerThrowsWhenTheOthersHaveHeardIt) {
  Events events;
  Listener first;
  Listener second;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_notify = [&] {
    events.RemoveListener(&first);
    throw std::runtime_error("host failed");
  };
  EXPECT_THROW(events.Notify("a"), std::runtime_error);
  EXPECT_EQ(second.heard, (std::vector<std::string>{"a"}));
  events.Notify("b");
  EXPECT_EQ(first.heard, (std::vector<std::string>{"a"}));
  EXPECT_EQ(second.heard, (std::vector<std::string>{"a", "b"}));
  events.AddListener(&first);
  first.on_notify = nullptr;
  events.Notify("c");
  EXPECT_EQ(first.heard, (std::vector<std::string>{"a", "c"}));
}

TEST(Events, HandOnTheFirstOfSeveralThatAreThrown) {
  Events events;
  Listener first;
  Listener second;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_notify = [] { throw std::runtime_error("first"); };
  second.on_notify = [] { throw std::runtime_error("second"); };
  try {
    events.Notify("a");
    FAIL() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "first");
  }
  EXPECT_FALSE(events.IsRaising());
}

#ifndef NDEBUG
TEST(EventsDeathTest, TellThatAListenerDestroyedThem) {
  const auto destroy = [] {
    auto events = std::make_unique<Events>();
    Listener listener;
    events->AddListener(&listener);
    listener.on_notify = [&] { events.reset(); };
    events->Notify("a");
  };
  EXPECT_DEATH(destroy(), "a listener destroyed the events");
}
#endif

}  // namespace
}  // namespace stockbook::interaction
