// SPDX-License-Identifier: MIT
#include "com/library/class_factory.h"

#include <gtest/gtest.h>

#include "com/component.h"
#include "com/library/identifiers.h"

namespace stockbook::com {
namespace {

class Factory : public ::testing::Test {
 protected:
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  using CanUnload = HRESULT(STDAPICALLTYPE*)();

  void SetUp() override {
    get_ = reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(testing::ComponentExport("DllGetClassObject")));
    can_unload_ = reinterpret_cast<CanUnload>(reinterpret_cast<void*>(testing::ComponentExport("DllCanUnloadNow")));
    ASSERT_NE(get_, nullptr);
    ASSERT_NE(can_unload_, nullptr);
    ASSERT_EQ(can_unload_(), S_OK) << "an earlier test has kept something";
  }

  testing::Apartment apartment_;
  GetClassObject get_ = nullptr;
  CanUnload can_unload_ = nullptr;
};

TEST_F(Factory, KnowsOneClass) {
  void* result = &result;
  EXPECT_EQ(get_(CLSID_NULL, IID_IClassFactory, &result), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(get_(CLSID_Stockbook, IID_IClassFactory, nullptr), E_POINTER);
  result = &result;
  EXPECT_EQ(get_(CLSID_Stockbook, IID_IDispatch, &result), E_NOINTERFACE);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(can_unload_(), S_OK);
}

TEST_F(Factory, KeepsTheDllWhileItOrItsObjectsOrALockLive) {
  ComPtr<IClassFactory> factory = testing::StockbookFactory();
  ASSERT_TRUE(factory);
  EXPECT_EQ(can_unload_(), S_FALSE);
  ComPtr<IUnknown> object;
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.Put()), S_OK);
  factory.Reset();
  EXPECT_EQ(can_unload_(), S_FALSE);
  object.Reset();
  EXPECT_EQ(can_unload_(), S_OK);
  factory = testing::StockbookFactory();
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  factory.Reset();
  EXPECT_EQ(can_unload_(), S_FALSE);
  factory = testing::StockbookFactory();
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  factory.Reset();
  EXPECT_EQ(can_unload_(), S_OK);
}

TEST_F(Factory, KeepsTheDllAfterOneUnlockingTooMany) {
  ComPtr<IClassFactory> factory = testing::StockbookFactory();
  ASSERT_TRUE(factory);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), E_UNEXPECTED);
  EXPECT_EQ(can_unload_(), S_FALSE);
  factory.Reset();
  EXPECT_EQ(can_unload_(), S_OK);
}

TEST_F(Factory, RefusesAnOuterObjectThatAsksForMoreThanIUnknown) {
  const ComPtr<IClassFactory> factory = testing::StockbookFactory();
  ASSERT_TRUE(factory);
  void* result = &result;
  EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IDispatch, &result), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(factory->CreateInstance(nullptr, CLSID_NULL, &result), E_NOINTERFACE);
  EXPECT_EQ(result, nullptr);
}

TEST_F(Factory, MakesObjectsThatAreTheirOwn) {
  const ComPtr<_Stockbook> one = testing::NewStockbook<_Stockbook>();
  const ComPtr<_Stockbook> other = testing::NewStockbook<_Stockbook>();
  ASSERT_TRUE(one && other);
  EXPECT_NE(one.As<IUnknown>().get(), other.As<IUnknown>().get());
}

}  // namespace
}  // namespace stockbook::com
