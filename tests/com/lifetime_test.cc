// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <windows.h>

#include <psapi.h>

#include "com/bag_double.h"
#include "com/event_sink.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::EventSink;
using testing::HostedJournal;
using testing::Late;
using testing::NewControl;
using testing::ReferencesOf;

TEST(Lifetime, LeavesNoReferenceBehind) {
  const auto sink = EventSink::Make();
  const auto picture = testing::NewPicture(5);
  const ULONG before = ReferencesOf(picture.get());
  testing::BagDouble bag;
  {
    const HostedJournal host(HostedJournal::State::kLoaded);
    EXPECT_FALSE(testing::ComponentIsIdle());
    testing::Connect(host.get(), sink.get());
    host->putref_BillPicture(picture.get());
    host.late().Get("Grid");
    host.late().Get("Conn");
    ComPtr<IUnknown>(host.get()).As<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE);
    bag.values.clear();
    EXPECT_EQ(ReferencesOf(host.get()), 1u);
  }
  EXPECT_EQ(sink->references(), 1u);
  EXPECT_EQ(ReferencesOf(picture.get()), before);
  EXPECT_EQ(bag.references(), 1u);
  EXPECT_TRUE(testing::ComponentIsIdle());
}

TEST(Lifetime, LetsGoOfAPictureThatIsReplaced) {
  const auto control = NewControl();
  const auto picture = testing::NewPicture(5);
  const ULONG before = ReferencesOf(picture.get());
  EXPECT_EQ(control->putref_BillPicture(picture.get()), S_OK);
  EXPECT_GT(ReferencesOf(picture.get()), before);
  EXPECT_EQ(control->putref_BillPicture(nullptr), S_OK);
  EXPECT_EQ(ReferencesOf(picture.get()), before);
}

TEST(Lifetime, HasOneIdentityForAllInterfaces) {
  const auto control = NewControl();
  const auto identity = control.As<IUnknown>();
  const IID ids[] = {IID_IDispatch,         IID__Stockbook,          IID_IConnectionPointContainer,
                     IID_IProvideClassInfo, IID_IProvideClassInfo2,  IID_ISupportErrorInfo,
                     IID_IPersist,          IID_IPersistPropertyBag, IID_IPersistStreamInit,
                     IID_IPersistStorage,   IID_IOleObject,          IID_IOleControl,
                     IID_IOleWindow,        IID_IOleInPlaceObject,   IID_IOleInPlaceActiveObject,
                     IID_IViewObject,       IID_IViewObject2,        IID_IUnknown};
  for (const IID& id : ids) {
    ComPtr<IUnknown> other;
    ASSERT_EQ(control->QueryInterface(id, other.Put()), S_OK);
    ASSERT_TRUE(other);
    EXPECT_EQ(other.As<IUnknown>().get(), identity.get());
    // From everywhere to everywhere.
    for (const IID& next : ids) {
      ComPtr<IUnknown> reached;
      EXPECT_EQ(other->QueryInterface(next, reached.Put()), S_OK);
    }
  }
  ComPtr<IUnknown> none;
  EXPECT_EQ(control->QueryInterface(IID_IMarshal, none.Put()), E_NOINTERFACE);
  EXPECT_FALSE(none);
  EXPECT_EQ(control->QueryInterface(IID_IDispatch, nullptr), E_POINTER);
}

// Handles of the two kinds that Windows counts, and the memory of the process.
struct Holdings {
  DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  size_t bytes = 0;

  Holdings() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    bytes = counters.PagefileUsage;
  }
};

void MakeLoadAndEnd(int times) {
  for (int time = 0; time < times; ++time) {
    const HostedJournal host(HostedJournal::State::kLoaded);
    ASSERT_EQ(host.late().Get("Rows").Long(), 16);
  }
}

TEST(Lifetime, DoesNotGrowOverTwiceAThousandControls) {
  MakeLoadAndEnd(1000);
  const Holdings once;
  MakeLoadAndEnd(1000);
  const Holdings twice;
  EXPECT_TRUE(testing::ComponentIsIdle());
  EXPECT_LE(twice.gdi, once.gdi);
  EXPECT_LE(twice.user, once.user);
  // Two hundred bytes a control would be a leak.
  EXPECT_LE(twice.bytes, once.bytes + 200'000);
}

}  // namespace
}  // namespace stockbook::com
