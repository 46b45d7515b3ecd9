// SPDX-License-Identifier: MIT
// The control and threads: it belongs to the apartment that made it, others call it through the system, and every
// apartment may have its own.
#include <gtest/gtest.h>

#include <olectl.h>

#include <functional>
#include <thread>

#include "com/automation/text.h"
#include "com/component.h"
#include "com/event_sink.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;

HRESULT CallEntrance(const char* name) {
  using Entrance = HRESULT(STDAPICALLTYPE*)();
  return reinterpret_cast<Entrance>(reinterpret_cast<void*>(testing::ComponentExport(name)))();
}

// What calls between apartments go by is found in the registry.
class RegisteredComponent {
 public:
  RegisteredComponent() { EXPECT_EQ(CallEntrance("DllRegisterServer"), S_OK); }
  ~RegisteredComponent() { CallEntrance("DllUnregisterServer"); }
  RegisteredComponent(const RegisteredComponent&) = delete;
  RegisteredComponent& operator=(const RegisteredComponent&) = delete;
};

// Runs the work on a thread of its own while this one answers calls, as a form's does.
void RunBeside(const std::function<void()>& work) {
  std::thread thread(work);
  const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread waiter([&] {
    thread.join();
    SetEvent(done);
  });
  while (MsgWaitForMultipleObjects(1, &done, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  }
  waiter.join();
  CloseHandle(done);
}

TEST(Apartments, CallTheControlOfAnotherThroughTheSystem) {
  const RegisteredComponent registered;
  {
    const HostedJournal host(HostedJournal::State::kLoaded);
    const auto sink = testing::EventSink::Make();
    testing::Connect(host.get(), sink.get());
    const DWORD own_thread = GetCurrentThreadId();
    DWORD event_thread = 0;
    sink->SetHear([&](DISPID, std::vector<VARIANT*>) {
      event_thread = GetCurrentThreadId();
      return S_OK;
    });
    ComPtr<IStream> parcel;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID__Stockbook, host.get(), parcel.PutTyped()), S_OK);
    RunBeside([&] {
      ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
      {
        ComPtr<_Stockbook> control;
        ASSERT_EQ(CoGetInterfaceAndReleaseStream(parcel.Detach(), IID__Stockbook, control.Put()), S_OK);
        EXPECT_NE(control.get(), host.get()) << "a proxy";
        EXPECT_EQ(control->put_MaterielTitle(Bstr("货品").get()), S_OK);
        Bstr title;
        EXPECT_EQ(control->get_MaterielTitle(title.Put()), S_OK);
        EXPECT_EQ(title.Text(), "货品");
        LONG rows = 0;
        EXPECT_EQ(control->get_Rows(&rows), S_OK);
        EXPECT_EQ(rows, 16);
        EXPECT_EQ(control->put_dpID(40000), CTL_E_OVERFLOW);
        EXPECT_EQ(control->Prompt(Bstr("远").get()), S_OK);
        EXPECT_EQ(Late(control.get()).Get("BillID", 3).Long(), 1003);
      }
      CoUninitialize();
    });
    EXPECT_EQ(sink->heard().back(), "5|远");
    EXPECT_EQ(event_thread, own_thread);
    EXPECT_EQ(testing::ReferencesOf(host.get()), 1u);
  }
  EXPECT_TRUE(testing::ComponentIsIdle());
}

TEST(Apartments, MayEachHaveControlsOfTheirOwnAtTheSameTime) {
  const auto work = [] {
    OleInitialize(nullptr);
    for (int time = 0; time < 20; ++time) {
      const HostedJournal host(HostedJournal::State::kLoaded);
      EXPECT_EQ(host.late().Get("Rows").Long(), 16);
      EXPECT_EQ(host.grid().Get("TextMatrix", 3, host.grid().Get("ColIndex", "BillNo").Long()).Text(), "入库单 3");
    }
    OleUninitialize();
  };
  std::thread one(work);
  std::thread other(work);
  one.join();
  other.join();
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
