// SPDX-License-Identifier: MIT
#include "com/object/property_notices.h"

#include <olectl.h>

#include <string>

#include "com/automation/automation_error.h"
#include "com/automation/text.h"

namespace stockbook::com {

DISPID PropertyNotices::IdOf(std::string_view property) const {
  // The names of saved keys and of properties differ in upper and lower case alone, which is not looked at.
  std::wstring name = ToWide(property);
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  if (described_) DispGetIDsOfNames(described_.get(), names, 1, &id);
  return id;
}

void PropertyNotices::ExpectMayChange(std::string_view property) {
  if (!sinks_.HasSinks()) return;
  const DISPID id = IdOf(property);
  bool refused = false;
  sinks_.ForEach<IPropertyNotifySink>(
      [&](IPropertyNotifySink& sink) { refused = refused || sink.OnRequestEdit(id) == S_FALSE; });
  if (refused) throw AutomationError(CTL_E_SETNOTPERMITTED, "窗体不允许更改属性 " + std::string(property) + "。");
}

void PropertyNotices::PropertyChanged(std::string_view key) {
  if (!sinks_.HasSinks()) return;
  const DISPID id = IdOf(key);
  sinks_.ForEach<IPropertyNotifySink>([&](IPropertyNotifySink& sink) { sink.OnChanged(id); });
}

}  // namespace stockbook::com
