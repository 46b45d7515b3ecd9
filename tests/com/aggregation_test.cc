// SPDX-License-Identifier: MIT
// The control as a part of another object, as forms make it that add properties of their own to every control.
#include <gtest/gtest.h>

#include "com/component.h"
#include "com/event_sink.h"
#include "com/late.h"

namespace stockbook::com {
namespace {

// An object that has everything from the control inside it. It lives where it is made.
class OuterObject final : public IUnknown {
 public:
  virtual ~OuterObject() = default;

  ComPtr<IUnknown> inner;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (id != IID_IUnknown) return inner->QueryInterface(id, result);
    *result = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
};

TEST(Aggregation, GivesTheInterfacesTheOuterObjectsIdentity) {
  OuterObject outer;
  ASSERT_EQ(testing::StockbookFactory()->CreateInstance(&outer, IID_IUnknown, outer.inner.Put()), S_OK);
  EXPECT_EQ(outer.references, 1u) << "a part does not hold what it is a part of";
  EXPECT_EQ(outer.inner.As<IUnknown>().get(), outer.inner.get());
  EXPECT_NE(outer.inner.get(), static_cast<IUnknown*>(&outer));
  {
    const auto control = ComPtr<IUnknown>(&outer).As<_Stockbook>();
    ASSERT_TRUE(control);
    EXPECT_EQ(outer.references, 2u);
    EXPECT_EQ(control.As<IUnknown>().get(), static_cast<IUnknown*>(&outer));
    EXPECT_EQ(control.As<IPersistStreamInit>().As<IDispatch>().get(), static_cast<IDispatch*>(control.get()));
    const auto sink = testing::EventSink::Make();
    EXPECT_NE(testing::Connect(control.get(), sink.get()), 0u);
    EXPECT_EQ(control->Prompt(nullptr), S_OK);
    EXPECT_EQ(sink->Count(5), 1);
    EXPECT_TRUE(testing::Late(control.get()).Get("Grid").Object());
  }
  EXPECT_EQ(outer.references, 1u);
  outer.inner.Reset();
  EXPECT_EQ(outer.references, 1u);
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
