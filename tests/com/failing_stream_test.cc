// SPDX-License-Identifier: MIT
// Saving to and loading from a host's stream or storage that fails in the middle.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "com/late.h"

namespace stockbook::com {
namespace {

using testing::NewControl;

// A stream in memory that fails at one of its calls. It lives where it is made.
class FailingStream final : public IStream {
 public:
  virtual ~FailingStream() = default;

  std::string bytes;
  size_t place = 0;
  int calls = 0;
  int fails_at = -1;  // the call that fails
  HRESULT failure = STG_E_ACCESSDENIED;
  size_t room = 1 << 20;  // for bytes
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    const bool known = id == IID_IUnknown || id == IID_IStream || id == IID_ISequentialStream;
    *result = known ? this : nullptr;
    if (known) ++references;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE Read(void* target, ULONG size, ULONG* read) override {
    if (calls++ == fails_at) return failure;
    const size_t count = std::min<size_t>(size, bytes.size() - place);
    std::memcpy(target, bytes.data() + place, count);
    place += count;
    if (read != nullptr) *read = static_cast<ULONG>(count);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG size, ULONG* written) override {
    if (calls++ == fails_at) return failure;
    const size_t count = std::min<size_t>(size, room - bytes.size());
    bytes.append(static_cast<const char*>(source), count);
    if (written != nullptr) *written = static_cast<ULONG>(count);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }
};

SHORT BorderWidthOf(const ComPtr<_Stockbook>& control) {
  SHORT width = -1;
  EXPECT_EQ(control->get_BorderWidth(&width), S_OK);
  return width;
}

TEST(FailingStreams, PassTheirFailureOnAtEveryCall) {
  const auto control = NewControl();
  ASSERT_EQ(control->put_BorderWidth(9), S_OK);
  const auto side = control.As<IPersistStreamInit>();
  int calls = 0;
  for (;; ++calls) {
    FailingStream stream;
    stream.fails_at = calls;
    const HRESULT saved = side->Save(&stream, TRUE);
    EXPECT_EQ(stream.references, 1u);
    if (stream.calls <= calls) {
      EXPECT_EQ(saved, S_OK);
      break;
    }
    EXPECT_EQ(saved, stream.failure);
    EXPECT_NE(testing::LastDescription(), "");
    EXPECT_EQ(side->IsDirty(), S_OK) << "what was not saved is still to be saved";
  }
  EXPECT_GT(calls, 0);
  FailingStream whole;
  ASSERT_EQ(side->Save(&whole, TRUE), S_OK);
  EXPECT_EQ(side->IsDirty(), S_FALSE);
  const auto other = NewControl();
  const SHORT fresh = BorderWidthOf(other);
  for (int call = 0; call < calls; ++call) {
    whole.place = 0;
    whole.calls = 0;
    whole.fails_at = call;
    EXPECT_EQ(other.As<IPersistStreamInit>()->Load(&whole), whole.failure);
    EXPECT_NE(testing::LastDescription(), "");
    EXPECT_EQ(BorderWidthOf(other), fresh);
  }
}

TEST(FailingStreams, AreFullForWhatHasNoRoom) {
  const auto control = NewControl();
  FailingStream stream;
  stream.room = 100;
  EXPECT_EQ(control.As<IPersistStreamInit>()->Save(&stream, TRUE), STG_E_MEDIUMFULL);
  EXPECT_EQ(testing::LastDescription(), "外观设置无法保存：存储空间已满。");
}

TEST(FailingStreams, AreThoseOfStoragesThatMayNotBeWritten) {
  ComPtr<ILockBytes> bytes;
  ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.PutTyped()), S_OK);
  ComPtr<IStorage> storage;
  ASSERT_EQ(StgCreateDocfileOnILockBytes(bytes.get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                         storage.PutTyped()),
            S_OK);
  storage.Reset();
  ASSERT_EQ(StgOpenStorageOnILockBytes(bytes.get(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0,
                                       storage.PutTyped()),
            S_OK);
  const auto control = NewControl();
  ASSERT_EQ(control->put_BorderWidth(9), S_OK);
  const auto side = control.As<IPersistStorage>();
  EXPECT_EQ(side->Save(storage.get(), TRUE), STG_E_ACCESSDENIED);
  EXPECT_NE(testing::LastDescription(), "");
  EXPECT_EQ(side->SaveCompleted(nullptr), S_OK);
  EXPECT_EQ(side->IsDirty(), S_OK);
}

}  // namespace
}  // namespace stockbook::com
