// SPDX-License-Identifier: MIT
#include "interaction/events.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "support/event_recorder.h"

namespace stockbook::interaction {
namespace {

using testing::EventRecorder;

TEST(Events, ReachEveryListenerInOrderAndOnce) {
  Events events;
  EventRecorder first;
  EventRecorder second;
  events.AddListener(&first);
  events.AddListener(&second);
  events.AddListener(&first);
  first.on_hearing = [&](const std::string&) { EXPECT_EQ(second.lines.size(), first.lines.size() - 1); };
  events.Notify("a");
  events.Notify("b");
  EXPECT_EQ(first.lines, (std::vector<std::string>{"Notify a", "Notify b"}));
  EXPECT_EQ(second.lines, first.lines);
}

TEST(Events, LetAnyListenerWriteTheArgument) {
  Events events;
  EventRecorder silent;
  EventRecorder cancelling;
  cancelling.cancels = true;
  events.AddListener(&cancelling);
  events.AddListener(&silent);
  bool cancel = false;
  events.CommandExecute("Load", cancel);
  EXPECT_TRUE(cancel);
}

TEST(Events, MayAddAndRemoveListenersWhileOneIsDelivered) {
  Events events;
  EventRecorder first;
  EventRecorder second;
  EventRecorder late;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_hearing = [&](const std::string&) {
    events.RemoveListener(&second);
    events.RemoveListener(&first);
    events.AddListener(&late);
  };
  events.Notify("a");
  EXPECT_TRUE(second.lines.empty());
  EXPECT_TRUE(late.lines.empty());
  events.Notify("b");
  EXPECT_EQ(first.lines, (std::vector<std::string>{"Notify a"}));
  EXPECT_EQ(late.lines, (std::vector<std::string>{"Notify b"}));
}

TEST(Events, HandOnWhatAListenerThrowsWhenTheOthersHaveHeardIt) {
  Events events;
  EventRecorder first;
  EventRecorder second;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_hearing = [&](const std::string&) {
    events.RemoveListener(&first);
    throw std::runtime_error("host failed");
  };
  EXPECT_THROW(events.Notify("a"), std::runtime_error);
  EXPECT_EQ(second.lines, (std::vector<std::string>{"Notify a"}));
  events.Notify("b");
  EXPECT_EQ(first.lines, (std::vector<std::string>{"Notify a"}));
  EXPECT_EQ(second.lines, (std::vector<std::string>{"Notify a", "Notify b"}));
  events.AddListener(&first);
  first.on_hearing = nullptr;
  events.Notify("c");
  EXPECT_EQ(first.lines, (std::vector<std::string>{"Notify a", "Notify c"}));
}

TEST(Events, HandOnTheFirstOfSeveralThatAreThrown) {
  Events events;
  EventRecorder first;
  EventRecorder second;
  events.AddListener(&first);
  events.AddListener(&second);
  first.on_hearing = [](const std::string&) { throw std::runtime_error("first"); };
  second.on_hearing = [](const std::string&) { throw std::runtime_error("second"); };
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
    EventRecorder listener;
    events->AddListener(&listener);
    listener.on_hearing = [&](const std::string&) { events.reset(); };
    events->Notify("a");
  };
  EXPECT_DEATH(destroy(), "a listener destroyed the events");
}
#endif

}  // namespace
}  // namespace stockbook::interaction
