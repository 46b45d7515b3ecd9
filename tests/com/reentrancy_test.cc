// SPDX-License-Identifier: MIT
// Listeners that do to the control, to its grid and to each other what nobody expects while they hear it.
#include <gtest/gtest.h>

#include "com/automation/text.h"
#include "com/bag_double.h"
#include "com/event_sink.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::Connect;
using testing::Disconnect;
using testing::EventSink;
using testing::HostedJournal;
using testing::Late;

constexpr DISPID kOfCommand = 4;
constexpr DISPID kOfNotice = 5;

struct Meddling {
  const char* name;
  void (*meddle)(const HostedJournal& host);
};

constexpr Meddling kMeddlings[] = {
    {"a load inside the load", [](const HostedJournal& host) { EXPECT_FALSE(host.Load()); }},
    {"no connection any more", [](const HostedJournal& host) { EXPECT_EQ(host->putref_Conn(nullptr), S_OK); }},
    {"no rows any more", [](const HostedJournal& host) { host.grid().Put("Rows", 1); }},
    {"no columns any more", [](const HostedJournal& host) { host.grid().Put("Cols", 1); }},
    {"no grid any more",
     [](const HostedJournal& host) {
       host.grid().Put("Rows", 0);
       host.grid().Put("Cols", 0);
     }},
    {"a row less", [](const HostedJournal& host) { host.grid().Call("RemoveItem", 1); }},
    {"a row more", [](const HostedJournal& host) { host.grid().Call("AddItem", "\t1\t2", 1); }},
    {"another layout", [](const HostedJournal& host) { EXPECT_EQ(host->DefaultFormat(), S_OK); }},
    {"another journal", [](const HostedJournal& host) { EXPECT_EQ(host->put_JournalType(SupplierJournal), S_OK); }},
    {"another product", [](const HostedJournal& host) { EXPECT_EQ(host->put_KeyID(2), S_OK); }},
    {"another row", [](const HostedJournal& host) { EXPECT_EQ(host->put_Row(2), S_OK); }},
    {"another column's order", [](const HostedJournal& host) { host.grid().Put("ColPosition", 3, 1); }},
    {"folded rows", [](const HostedJournal& host) { host.grid().Call("CollapseAll"); }},
    {"no mark of being busy", [](const HostedJournal& host) { host.grid().Put("Tag", ""); }},
    {"a search", [](const HostedJournal& host) { host.late().Call("Find", "1"); }},
    {"other columns for no amounts", [](const HostedJournal& host) { host.late().Put("AccRestrict", "True"); }},
    {"a form's bag",
     [](const HostedJournal& host) {
       testing::BagDouble bag;
       bag.values["RowHeightMax"] = Variant(int32_t{900});
       EXPECT_EQ(ComPtr<IUnknown>(host.get()).As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
     }},
};

TEST(Reentrancy, OfALoadLeavesAControlThatLoadsAgain) {
  for (const Meddling& meddling : kMeddlings) {
    for (const DISPID event : {1, 2, 3, 4, 5}) {
      SCOPED_TRACE(std::string(meddling.name) + ", event " + std::to_string(event));
      const HostedJournal host(HostedJournal::State::kEmpty);
      int meddled = 0;
      const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*>) {
        if (heard == event && meddled++ < 3) meddling.meddle(host);
        return S_OK;
      });
      const DWORD cookie = Connect(host.get(), sink.get());
      host.Load();
      EXPECT_GT(meddled, 0);
      EXPECT_EQ(Disconnect(host.get(), cookie), S_OK);
      EXPECT_EQ(host.grid().Get("Tag").Text(), "");
      EXPECT_TRUE(host.grid().Get("Redraw").Truth());
      // Whoever takes the caption row away has to bring it back.
      if (host.grid().Get("FixedRows").Long() == 0) {
        host.grid().Put("Rows", 2);
        host.grid().Put("FixedRows", 1);
      }
      EXPECT_EQ(host->putref_Conn(host.connection()), S_OK);
      EXPECT_EQ(host->put_JournalType(MaterialJournal), S_OK);
      EXPECT_TRUE(host.Load());
      EXPECT_EQ(host.late().Get("Rows").Long(), 16);
    }
  }
}

TEST(Reentrancy, OfALoadWithoutItsConnectionGoesOnToTheEnd) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*>) {
    if (heard == 1) host->putref_Conn(nullptr);
    return S_OK;
  });
  Connect(host.get(), sink.get());
  EXPECT_TRUE(host.Load());
  EXPECT_EQ(host.late().Get("Rows").Long(), 16);
  EXPECT_FALSE(host.Load()) << "the next one has none";
}

TEST(Listeners, MayLeaveWhileTheyHear) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  DWORD cookie = 0;
  const auto leaver = EventSink::Make([&](DISPID, std::vector<VARIANT*>) { return Disconnect(host.get(), cookie); });
  const auto stayer = EventSink::Make();
  cookie = Connect(host.get(), leaver.get());
  Connect(host.get(), stayer.get());
  EXPECT_EQ(host->Prompt(nullptr), S_OK);
  EXPECT_EQ(host->Prompt(nullptr), S_OK);
  EXPECT_EQ(leaver->Count(kOfNotice), 1);
  EXPECT_EQ(stayer->Count(kOfNotice), 2);
  EXPECT_EQ(leaver->references(), 1u);
}

// One that writes into its list of arguments what it likes, as it must not.
TEST(Listeners, HearWhatWasSaidWhateverAnotherDoesToItsArguments) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const auto spoiler = EventSink::Make([](DISPID, std::vector<VARIANT*> arguments) -> HRESULT {
    for (VARIANT* argument : arguments) {
      argument->vt = VT_I4;
      argument->lVal = 7;
    }
    return DISP_E_TYPEMISMATCH;
  });
  const auto other = EventSink::Make();
  Connect(host.get(), spoiler.get());
  Connect(host.get(), other.get());
  EXPECT_EQ(host->Prompt(Bstr("甲").get()), S_OK);
  EXPECT_EQ(other->heard().back(), "5|甲");
  EXPECT_TRUE(host.Load()) << "nobody has cancelled it";
  EXPECT_EQ(other->Count(kOfCommand), 1);
}

TEST(Listeners, CancelByAnyTruthValue) {
  for (const int value : {-1, 1, 255}) {
    const HostedJournal host(HostedJournal::State::kEmpty);
    const auto sink = EventSink::Make([&](DISPID heard, std::vector<VARIANT*> arguments) {
      if (heard == kOfCommand) *arguments[1]->pboolVal = static_cast<VARIANT_BOOL>(value);
      return S_OK;
    });
    Connect(host.get(), sink.get());
    EXPECT_FALSE(host.Load());
  }
}

// A listener that drops the control when it is asked whether it hears its events.
class DroppingSink final : public IDispatch {
 public:
  virtual ~DroppingSink() = default;
  HostedJournal* host = nullptr;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (host != nullptr) host->control().Reset();
    *result = id == DIID___Stockbook ? this : nullptr;
    if (*result != nullptr) AddRef();
    return *result == nullptr ? E_NOINTERFACE : S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
};

TEST(Listeners, MayDropTheControlBeforeTheyAreConnected) {
  DroppingSink sink;
  HostedJournal host(HostedJournal::State::kEmpty);
  sink.host = &host;
  // The point is not held, which its counting with the control makes as bad as it can be.
  ComPtr<IConnectionPoint> held;
  ComPtr<IUnknown>(host.get()).As<IConnectionPointContainer>()->FindConnectionPoint(DIID___Stockbook, held.PutTyped());
  IConnectionPoint* const point = held.get();
  held.Reset();
  DWORD cookie = 0;
  EXPECT_EQ(point->Advise(&sink, &cookie), S_OK);
  EXPECT_EQ(sink.references, 1u) << "the control has ended and let go of it";
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
