// SPDX-License-Identifier: MIT
// What hosts get when a piece of memory is refused: the n-th, for every n. No exception leaves a function, a failure
// has its number, and the object goes on. The object is made by the code that the tests are linked with, whose requests
// can be refused.
#include <gtest/gtest.h>

#include <functional>

#include "com/automation/text.h"
#include "com/late.h"
#include "com/library/module.h"
#include "com/object/stockbook_object.h"
#include "memory/refused_memory.h"

namespace stockbook::com {
namespace {

using testing::RefusedMemory;

ComPtr<_Stockbook> NewLinkedControl() {
  ComPtr<_Stockbook> control;
  EXPECT_EQ(CreateStockbookObject(nullptr, IID__Stockbook, control.Put()), S_OK);
  return control;
}

// Runs the attempt with the first request refused, then with the second and so on until it needs no more.
void AtEveryRequest(
    const std::function<HRESULT()>& attempt, const std::function<void()>& check = [] {}) {
  for (long request = 1; request < 100'000; request += 1 + request / 400) {
    SCOPED_TRACE("request " + std::to_string(request));
    HRESULT result = S_OK;
    bool refused = false;
    {
      const RefusedMemory memory(testing::Refusal::kOne, request);
      result = attempt();
      refused = RefusedMemory::HasRefused();
    }
    EXPECT_TRUE(result == E_OUTOFMEMORY || result == S_OK) << result;
    check();
    if (::testing::Test::HasFailure()) return;
    if (refused) continue;
    EXPECT_EQ(result, S_OK);
    return;
  }
  ADD_FAILURE() << "it never came to an end";
}

TEST(WithoutMemory, NoObjectIsMadeAndNoneIsLeft) {
  ComPtr<_Stockbook> control;
  AtEveryRequest(
      [&] {
        const HRESULT made = CreateStockbookObject(nullptr, IID__Stockbook, control.Put());
        return SUCCEEDED(made) == (control.get() != nullptr) ? made : E_FAIL;
      },
      [&] {
        control.Reset();
        EXPECT_FALSE(ModuleIsInUse());
      });
}

TEST(WithoutMemory, MembersFailWithTheirNumber) {
  const auto control = NewLinkedControl();
  const Bstr text("一段说明文字，长到不能放在字符串对象自己里面");
  AtEveryRequest([&] { return control->put_Caption(text.get()); });
  AtEveryRequest([&] { return control->put_JournalType(ProjectJournal); });
  AtEveryRequest([&] { return control->DefaultFormat(); });
  AtEveryRequest([&] { return control->put_RowHeight(300); });
  AtEveryRequest([&] { return control->put_BackColor(5); });
  Bstr read;
  AtEveryRequest([&] { return control->get_Caption(read.Put()); });
  AtEveryRequest([&] { return control->Statistics(read.Put()); });
  AtEveryRequest([&] { return control->Prompt(text.get()); });
  SAFEARRAY* parameters = SafeArrayCreateVector(VT_VARIANT, 0, 3);
  Variant result;
  const Bstr command("SetColFont");
  AtEveryRequest([&] { return control->DoCommand(command.get(), &parameters, result.Put()); });
  SafeArrayDestroy(parameters);
}

TEST(WithoutMemory, PicturesFailWithTheirNumber) {
  const auto control = NewLinkedControl();
  ComPtr<IPictureDisp> read;
  AtEveryRequest([&] { return control->get_RevPicture(read.PutTyped()); });
  const auto picture = testing::NewPicture(5);
  AtEveryRequest([&] { return control->putref_RevPicture(picture.get()); });
  EXPECT_EQ(control->get_RevPicture(read.PutTyped()), S_OK);
  EXPECT_EQ(read.get(), picture.get());
}

TEST(WithoutMemory, SavedPropertiesStayWhatTheyWere) {
  const auto control = NewLinkedControl();
  ASSERT_EQ(control->put_BorderWidth(3), S_OK);
  const auto side = control.As<IPersistStreamInit>();
  ComPtr<IStream> stream;
  AtEveryRequest([&] {
    CreateStreamOnHGlobal(nullptr, TRUE, stream.PutTyped());
    return side->Save(stream.get(), FALSE);
  });
  const auto other = NewLinkedControl();
  SHORT fresh = 0;
  ASSERT_EQ(other->get_BorderWidth(&fresh), S_OK);
  HRESULT loaded = S_OK;
  AtEveryRequest(
      [&] {
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        return loaded = other.As<IPersistStreamInit>()->Load(stream.get());
      },
      [&] {
        SHORT width = 0;
        EXPECT_EQ(other->get_BorderWidth(&width), S_OK);
        EXPECT_EQ(width, FAILED(loaded) ? fresh : 3);
      });
}

// A listener that needs no memory.
class QuietSink final : public IDispatch {
 public:
  virtual ~QuietSink() = default;
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
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return S_OK;
  }
};

TEST(WithoutMemory, ListenersAreConnectedOrNotHeld) {
  QuietSink sink;
  {
    const auto control = NewLinkedControl();
    const auto container = control.As<IConnectionPointContainer>();
    ComPtr<IEnumConnectionPoints> points;
    AtEveryRequest([&] { return container->EnumConnectionPoints(points.PutTyped()); });
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(container->FindConnectionPoint(DIID___Stockbook, point.PutTyped()), S_OK);
    DWORD cookie = 0;
    ULONG before = sink.references;
    AtEveryRequest(
        [&] {
          before = sink.references;
          return point->Advise(&sink, &cookie);
        },
        [&] { EXPECT_EQ(sink.references, before + (cookie == 0 ? 0 : 1)); });
    AtEveryRequest([&] { return control->Prompt(nullptr); });
    AtEveryRequest([&] { return control->DefaultFormat(); });
  }
  EXPECT_EQ(sink.references, 1u);
}

TEST(WithoutMemory, TheGridObjectFailsWithItsNumber) {
  const auto control = NewLinkedControl();
  ComPtr<IDispatch> grid;
  AtEveryRequest([&] { return control->get_Grid(grid.PutTyped()); });
  constexpr DISPID kRowsMember = 1;
  const auto put_rows = [&](int32_t rows) {
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = rows;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &put, 1, 1};
    return grid->Invoke(kRowsMember, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr);
  };
  int32_t rows = 50;
  AtEveryRequest([&] { return put_rows(++rows); });
  LONG read = 0;
  EXPECT_EQ(control->get_Rows(&read), S_OK);
  EXPECT_EQ(read, rows);
}

}  // namespace
}  // namespace stockbook::com
