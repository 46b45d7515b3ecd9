// SPDX-License-Identifier: MIT
#include "com/object/member_calls.h"

#include <string>

#include "com/automation/automation_error.h"

namespace stockbook::com {

HRESULT MemberCalls::GetPicture(IPictureDisp** result, platform::PictureRef (Control::*read)() const) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = nullptr;
  return Call([&](Control& control) { *result = parts_.pictures().ObjectOf((control.*read)()).Detach(); });
}

HRESULT MemberCalls::PutPicture(const char* name, void (Control::*write)(platform::PictureRef), IPictureDisp* value) {
  return Call([&](Control& control) {
    platform::PictureRef picture = parts_.pictures().PictureOf(value);
    notices_.ExpectMayChange(name);
    (control.*write)(std::move(picture));
  });
}

void MemberCalls::ExpectCode(const CodeRange& range, LONG value) {
  if (value >= 0 && value <= range.most) return;
  throw AutomationError(CTL_E_INVALIDPROPERTYVALUE, std::string(range.name) + " 须在 0 与 " +
                                                        std::to_string(range.most) + " 之间，收到的是 " +
                                                        std::to_string(value) + "。");
}

}  // namespace stockbook::com
