// SPDX-License-Identifier: MIT
// What a form hears of properties that change, and its say in it.
#include <gtest/gtest.h>

#include <olectl.h>

#include <functional>
#include <string>

#include "com/bag_double.h"
#include "com/event_sink.h"
#include "com/late.h"

namespace stockbook::com {
namespace {

using testing::Connect;
using testing::Late;
using testing::NewControl;

// A listener that lives where it is made.
class ChangeSink final : public IPropertyNotifySink {
 public:
  virtual ~ChangeSink() = default;

  std::string heard;
  HRESULT answer = S_OK;
  std::function<void()> meanwhile;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    const bool known = id == IID_IUnknown || id == IID_IPropertyNotifySink;
    *result = known ? this : nullptr;
    if (known) ++references;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override {
    heard += "changed " + std::to_string(id) + "; ";
    if (meanwhile) meanwhile();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID id) override {
    heard += "may " + std::to_string(id) + "; ";
    return answer;
  }
};

TEST(Notices, AskFirstAndTellAfterwards) {
  const auto control = NewControl();
  ChangeSink sink;
  const DWORD cookie = Connect(control.get(), &sink, IID_IPropertyNotifySink);
  ASSERT_NE(cookie, 0u);
  const Late late(control.get());
  EXPECT_TRUE(late.Put("BackColor", 5).Succeeded());
  EXPECT_EQ(sink.heard, "may 52; changed 52; ");
  sink.heard.clear();
  EXPECT_TRUE(late.Put("Outlinebar", 2).Succeeded());
  EXPECT_EQ(sink.heard, "may 65; changed 65; ") << "whose saved key is spelled otherwise";
  sink.heard.clear();
  EXPECT_EQ(control->putref_MarkBackPicture(testing::NewPicture(4).get()), S_OK);
  EXPECT_EQ(sink.heard, "may 82; changed 82; ");
  sink.heard.clear();
  EXPECT_TRUE(late.Put("Caption", "x").Succeeded());
  EXPECT_TRUE(late.Put("RowHeight", 300).Succeeded());
  EXPECT_EQ(sink.heard, "") << "they are not saved";
  // What is read from a form's own bag is no change that the form has to save.
  testing::BagDouble bag;
  bag.values["BackColor"] = Variant(int32_t{9});
  EXPECT_EQ(control.As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(sink.heard, "");
  EXPECT_EQ(testing::Disconnect(control.get(), cookie, IID_IPropertyNotifySink), S_OK);
  EXPECT_TRUE(late.Put("BackColor", 6).Succeeded());
  EXPECT_EQ(sink.heard, "");
  EXPECT_EQ(sink.references, 1u);
}

TEST(Notices, LetAFormRefuseAChange) {
  const auto control = NewControl();
  ChangeSink sink;
  Connect(control.get(), &sink, IID_IPropertyNotifySink);
  const Late late(control.get());
  const int before = late.Get("BackColor").Long();
  sink.answer = S_FALSE;
  for (const char* name : {"BackColor", "GridLines", "BorderWidth", "RowHeightMin"}) {
    SCOPED_TRACE(name);
    const int kept = late.Get(name).Long();
    sink.heard.clear();
    const auto refused = late.Put(name, kept == 2 ? 3 : 2);
    EXPECT_EQ(refused.code, CTL_E_SETNOTPERMITTED);
    EXPECT_EQ(refused.description, std::string("窗体不允许更改属性 ") + name + "。");
    EXPECT_EQ(late.Get(name).Long(), kept);
    EXPECT_EQ(sink.heard.find("changed"), std::string::npos);
  }
  EXPECT_EQ(control->putref_BillPicture(nullptr), CTL_E_SETNOTPERMITTED);
  EXPECT_EQ(control.As<IPersistStreamInit>()->IsDirty(), S_FALSE);
  sink.answer = S_OK;
  EXPECT_TRUE(late.Put("BackColor", before + 1).Succeeded());
  EXPECT_EQ(control.As<IPersistStreamInit>()->IsDirty(), S_OK);
}

TEST(Notices, LetAListenerReleaseTheControl) {
  auto control = NewControl();
  ChangeSink sink;
  Connect(control.get(), &sink, IID_IPropertyNotifySink);
  _Stockbook* const called = control.get();
  sink.meanwhile = [&] { control.Reset(); };
  EXPECT_EQ(called->put_BorderWidth(4), S_OK);
  EXPECT_EQ(sink.references, 1u) << "the control has ended and let go of its listener";
  EXPECT_TRUE(testing::ComponentIsIdle());
}

}  // namespace
}  // namespace stockbook::com
