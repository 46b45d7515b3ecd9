// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "com/automation/text.h"
#include "com/event_sink.h"
#include "com/hosted_journal.h"
#include "com/object/event_raiser.h"
#include "com/object/event_source.h"

namespace stockbook::com {
namespace {

using testing::Connect;
using testing::Disconnect;
using testing::EventSink;
using testing::HostedJournal;
using testing::NewControl;

constexpr DISPID kHeardProcess = 1;
constexpr DISPID kHeardLoaded = 2;
constexpr DISPID kHeardFormatted = 3;
constexpr DISPID kHeardCommand = 4;
constexpr DISPID kHeardNotify = 5;
constexpr DISPID kHeardRow = 6;
constexpr DISPID kHeardFind = 9;

bool Heard(const EventSink& sink, const std::string& line) {
  return std::find(sink.heard().begin(), sink.heard().end(), line) != sink.heard().end();
}

TEST(Events, AreHeardWithTheirArguments) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const auto sink = EventSink::Make();
  const DWORD cookie = Connect(host.get(), sink.get());
  ASSERT_NE(cookie, 0u);
  EXPECT_TRUE(host.Load());
  EXPECT_GT(sink->Count(kHeardProcess), 2);
  EXPECT_TRUE(Heard(*sink.get(), "1|0"));
  EXPECT_TRUE(Heard(*sink.get(), "1|-1"));
  EXPECT_EQ(sink->Count(kHeardLoaded), 1);
  EXPECT_GT(sink->Count(kHeardFormatted), 0);
  EXPECT_EQ(sink->heard().front(), "4|Load|False");
  host->put_Row(4);
  EXPECT_EQ(sink->Count(kHeardRow), 1);
  host.late().Call("Prompt", "甲\xF0\xA0\xAE\xB7");
  EXPECT_EQ(sink->heard().back(), "5|甲\xF0\xA0\xAE\xB7");
  host.late().Call("Find", "入库单");
  EXPECT_TRUE(Heard(*sink.get(), "9|#BEGIN#"));
  EXPECT_TRUE(Heard(*sink.get(), "9|#END#"));
  EXPECT_EQ(Disconnect(host.get(), cookie), S_OK);
  const size_t before = sink->heard().size();
  host.late().Call("Prompt", "乙");
  EXPECT_EQ(sink->heard().size(), before);
  EXPECT_EQ(sink->references(), 1u);
}

TEST(Events, CancelALoadThroughTheArgumentByReference) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const auto sink = EventSink::Make([](DISPID event, std::vector<VARIANT*> arguments) -> HRESULT {
    if (event == kHeardCommand) {
      EXPECT_EQ(arguments[1]->vt, VT_BYREF | VT_BOOL);
      *arguments[1]->pboolVal = VARIANT_TRUE;
    }
    return S_OK;
  });
  Connect(host.get(), sink.get());
  EXPECT_FALSE(host.Load());
  EXPECT_EQ(host.late().Get("Rows").Long(), 1);
  EXPECT_EQ(host.grid().Get("Tag").Text(), "");
  EXPECT_TRUE(host.grid().Get("Redraw").Truth());
}

TEST(Events, GoToEveryListenerInTheOrderTheyCame) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  std::string order;
  const auto first = EventSink::Make([&](DISPID, std::vector<VARIANT*>) { return order += "1", S_OK; });
  // One that fails does not keep the others from hearing.
  const auto second = EventSink::Make([&](DISPID, std::vector<VARIANT*>) { return order += "2", E_FAIL; });
  const auto third = EventSink::Make([&](DISPID, std::vector<VARIANT*>) { return order += "3", S_OK; });
  for (const auto* sink : {&first, &second, &third}) Connect(host.get(), sink->get());
  EXPECT_EQ(host->Prompt(nullptr), S_OK);
  EXPECT_EQ(order, "123");
}

TEST(Events, LetListenersComeAndGoWhileTheyHear) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const auto late_comer = EventSink::Make();
  const auto leaver = EventSink::Make();
  DWORD leaving = 0;
  const auto first = EventSink::Make([&](DISPID, std::vector<VARIANT*>) {
    Connect(host.get(), late_comer.get());
    return Disconnect(host.get(), leaving);
  });
  const DWORD cookie = Connect(host.get(), first.get());
  leaving = Connect(host.get(), leaver.get());
  host->Prompt(nullptr);
  EXPECT_EQ(leaver->Count(kHeardNotify), 0) << "one that has left";
  EXPECT_EQ(late_comer->Count(kHeardNotify), 0) << "one that came during the event";
  EXPECT_EQ(Disconnect(host.get(), cookie), S_OK);
  host->Prompt(nullptr);
  EXPECT_EQ(late_comer->Count(kHeardNotify), 1);
}

// What a test does to have an event raised while a listener drops the last reference.
struct Provocation {
  DISPID event;
  std::function<void(_Stockbook*)> provoke;
};

TEST(Events, LetAListenerReleaseTheControlInTheMiddleOfEach) {
  const Provocation provocations[] = {
      {kHeardProcess,
       [](_Stockbook* control) {
         VARIANT_BOOL loaded = VARIANT_FALSE;
         control->Load(1, -1, nullptr, &loaded);
       }},
      {kHeardLoaded,
       [](_Stockbook* control) {
         VARIANT_BOOL loaded = VARIANT_FALSE;
         control->Load(1, -1, nullptr, &loaded);
       }},
      {kHeardFormatted, [](_Stockbook* control) { control->DefaultFormat(); }},
      {kHeardCommand,
       [](_Stockbook* control) {
         VARIANT_BOOL loaded = VARIANT_FALSE;
         control->Load(1, -1, nullptr, &loaded);
       }},
      {kHeardNotify, [](_Stockbook* control) { control->Prompt(nullptr); }},
      {kHeardRow, [](_Stockbook* control) { control->put_Row(4); }},
      {kHeardFind,
       [](_Stockbook* control) {
         VARIANT_BOOL found = VARIANT_FALSE;
         control->Find(Bstr("入库单").get(), -1, &found);
       }},
  };
  for (const Provocation& provocation : provocations) {
    SCOPED_TRACE(provocation.event);
    HostedJournal host(HostedJournal::State::kLoaded);
    const auto grid = host.late().Get("Grid").Object();
    bool released = false;
    const auto sink = EventSink::Make([&](DISPID event, std::vector<VARIANT*>) {
      if (event == provocation.event && !released) {
        released = true;
        host.control().Reset();
      }
      return S_OK;
    });
    Connect(host.get(), sink.get());
    provocation.provoke(host.get());
    EXPECT_TRUE(released);
    EXPECT_EQ(sink->references(), 1u) << "the control has ended and let go of its listener";
    EXPECT_EQ(testing::Late(grid.get()).Get("Rows").code, CO_E_OBJNOTCONNECTED);
  }
}

TEST(Events, LetAListenerReleaseTheControlWhileTheGridMoves) {
  HostedJournal host(HostedJournal::State::kLoaded);
  const auto grid = host.late().Get("Grid").Object();
  const auto sink = EventSink::Make([&](DISPID event, std::vector<VARIANT*>) {
    if (event == kHeardRow) host.control().Reset();
    return S_OK;
  });
  Connect(host.get(), sink.get());
  EXPECT_TRUE(testing::Late(grid.get()).Put("Row", 5).Succeeded());
  EXPECT_EQ(sink->references(), 1u);
}

// The events that only the mouse raises, by the class that raises all of them.
class RaisedEvents : public ::testing::Test {
 protected:
  ComPtr<_Stockbook> anything_ = NewControl();  // something that counts references
  EventSource source_{*anything_.get()};
  ComPtr<EventSink> sink_ = EventSink::Make();

  void Advise() {
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(source_.FindConnectionPoint(DIID___Stockbook, point.PutTyped()), S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(sink_.get(), &cookie), S_OK);
  }
};

TEST_F(RaisedEvents, WriteTheMouseArgumentsBack) {
  Advise();
  sink_->SetHear([](DISPID, std::vector<VARIANT*> arguments) -> HRESULT {
    if (arguments.size() != 4) return S_OK;
    EXPECT_EQ(arguments[0]->vt, VT_BYREF | VT_I2);
    EXPECT_EQ(arguments[2]->vt, VT_BYREF | VT_R4);
    *arguments[0]->piVal += 10;
    *arguments[1]->piVal += 10;
    *arguments[2]->pfltVal += 10;
    *arguments[3]->pfltVal += 10;
    return S_OK;
  });
  int16_t button = 1;
  int16_t shift = 2;
  float x = 3.5F;
  float y = 4.5F;
  source_.raiser().MouseUp(button, shift, x, y);
  EXPECT_EQ(sink_->heard().back(), "8|1|2|3.5|4.5");
  EXPECT_EQ(button, 11);
  EXPECT_EQ(shift, 12);
  EXPECT_EQ(x, 13.5F);
  EXPECT_EQ(y, 14.5F);
  source_.raiser().AfterRangeSelected();
  EXPECT_EQ(sink_->heard().back(), "7");
}

TEST_F(RaisedEvents, RestWhileTheFormHasThemFrozen) {
  Advise();
  source_.raiser().Freeze();
  source_.raiser().Freeze();
  source_.raiser().Thaw();
  source_.raiser().AfterLoaded();
  EXPECT_TRUE(sink_->heard().empty());
  source_.raiser().Thaw();
  source_.raiser().Thaw();
  source_.raiser().AfterLoaded();
  EXPECT_EQ(sink_->heard().size(), 1u);
}

TEST(ConnectionPoints, AreListedAndRefuseWhatDoesNotFit) {
  const auto control = NewControl();
  const auto container = control.As<IConnectionPointContainer>();
  ASSERT_TRUE(container);
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.PutTyped()), S_OK);
  IConnectionPoint* two[3] = {};
  ULONG fetched = 0;
  EXPECT_EQ(points->Next(3, two, &fetched), S_FALSE);
  ASSERT_EQ(fetched, 2u);
  IID id{};
  EXPECT_EQ(two[0]->GetConnectionInterface(&id), S_OK);
  EXPECT_EQ(id, DIID___Stockbook);
  ComPtr<IConnectionPointContainer> owner;
  EXPECT_EQ(two[1]->GetConnectionPointContainer(owner.PutTyped()), S_OK);
  EXPECT_EQ(owner.get(), container.get());
  DWORD cookie = 5;
  EXPECT_EQ(two[0]->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(two[0]->Advise(two[1], &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(two[0]->Unadvise(77), CONNECT_E_NOCONNECTION);
  const auto sink = EventSink::Make();
  EXPECT_EQ(two[1]->Advise(sink.get(), &cookie), CONNECT_E_CANNOTCONNECT) << "it hears no property changes";
  EXPECT_EQ(two[0]->Advise(sink.get(), &cookie), S_OK);
  ComPtr<IEnumConnections> connections;
  ASSERT_EQ(two[0]->EnumConnections(connections.PutTyped()), S_OK);
  CONNECTDATA connected{};
  EXPECT_EQ(connections->Next(1, &connected, nullptr), S_OK);
  EXPECT_EQ(connected.dwCookie, cookie);
  connected.pUnk->Release();
  EXPECT_EQ(connections->Next(1, &connected, nullptr), S_FALSE);
  two[0]->Release();
  two[1]->Release();
  IConnectionPoint* none = nullptr;
  EXPECT_EQ(container->FindConnectionPoint(IID_IUnknown, &none), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(container->FindConnectionPoint(DIID___Stockbook, nullptr), E_POINTER);
}

TEST(ClassInfo, NamesTheClassAndItsEvents) {
  const auto control = NewControl();
  const auto info = control.As<IProvideClassInfo2>();
  ASSERT_TRUE(info);
  GUID events{};
  EXPECT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_EQ(events, DIID___Stockbook);
  EXPECT_EQ(info->GetGUID(99, &events), E_INVALIDARG);
  EXPECT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
  ComPtr<ITypeInfo> described;
  ASSERT_EQ(info->GetClassInfo(described.PutTyped()), S_OK);
  TYPEATTR* facts = nullptr;
  ASSERT_EQ(described->GetTypeAttr(&facts), S_OK);
  EXPECT_EQ(facts->typekind, TKIND_COCLASS);
  EXPECT_EQ(facts->guid, CLSID_Stockbook);
  described->ReleaseTypeAttr(facts);
}

}  // namespace
}  // namespace stockbook::com
