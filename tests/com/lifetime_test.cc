// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <windows.h>

#include <psapi.h>

#include <olectl.h>

#include "com/automation/text.h"
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

// Calls of every kind that hand something over, or fail and say why.
void CallAndFail(const HostedJournal& host, const Late& grid, int times) {
  const ComPtr<IUnknown> object(host.get());
  for (int time = 0; time < times; ++time) {
    Bstr text;
    host->get_ColsFilter(text.Put());
    EXPECT_EQ(host->put_dpID(40000), CTL_E_OVERFLOW);
    EXPECT_EQ(host->get_KeyID(nullptr), E_POINTER);
    EXPECT_EQ(host.late().Put("AccRestrict", "x").code, static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(host.late().Put("KeyID", "x").code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(host.late().Get("BillName", 3).Text(), "入库单");
    EXPECT_EQ(grid.Get("TextMatrix", 99, 1).code, CTL_E_INVALIDPROPERTYARRAYINDEX);
    EXPECT_EQ(grid.Put("CellData", 3, 2, "一个值").code, S_OK);
    EXPECT_TRUE(host.late().Get("Grid").Object());
    EXPECT_TRUE(grid.Get("C1EBody").Object());
    EXPECT_TRUE(host.late().Get("BillPicture").Object());
    EXPECT_EQ(host.late().Call("Prompt", "一句话").code, S_OK);
    ComPtr<IEnumConnectionPoints> points;
    EXPECT_EQ(object.As<IConnectionPointContainer>()->EnumConnectionPoints(points.PutTyped()), S_OK);
  }
}

// A listener that fails with a description, which belongs to who called it.
class ComplainingSink final : public IDispatch {
 public:
  virtual ~ComplainingSink() = default;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** result) override {
    *result = this;
    return AddRef(), S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO* exception,
                                   UINT*) override {
    *exception = {};
    exception->scode = E_FAIL;
    exception->bstrSource = SysAllocString(L"a host's form, with a name that is not short");
    exception->bstrDescription = SysAllocString(L"a reason that is not short either, so that it would be missed");
    result->vt = VT_BSTR;
    result->bstrVal = SysAllocString(L"a result that nobody asked for");
    return DISP_E_EXCEPTION;
  }
};

TEST(Lifetime, DoesNotGrowOverCallsThatFail) {
  ComplainingSink sink;
  {
    const HostedJournal host(HostedJournal::State::kLoaded);
    const Late grid = host.grid();
    testing::Connect(host.get(), &sink);
    CallAndFail(host, grid, 3000);
    const Holdings once;
    CallAndFail(host, grid, 6000);
    const Holdings twice;
    EXPECT_LE(twice.gdi, once.gdi);
    EXPECT_LE(twice.bytes, once.bytes + 150'000);
  }
  EXPECT_EQ(sink.references, 1u);
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
