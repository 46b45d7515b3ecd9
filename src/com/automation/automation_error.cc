// SPDX-License-Identifier: MIT
#include "com/automation/automation_error.h"

#include <windows.h>

#include <oleauto.h>

#include <cstdio>

#include "com/automation/com_ptr.h"
#include "com/automation/text.h"

namespace stockbook::com {
namespace {

std::string DescriptionLeftBehind() {
  ComPtr<IErrorInfo> info;
  Bstr description;
  if (GetErrorInfo(0, info.PutTyped()) == S_OK && info) info->GetDescription(description.Put());
  return description.Text();
}

std::string DescriptionOfSystem(HRESULT result) {
  wchar_t text[512];
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      static_cast<DWORD>(result), 0, text, 512, nullptr);
  std::string said = FromWide({text, length});
  while (!said.empty() && (said.back() == '\n' || said.back() == '\r' || said.back() == ' ')) said.pop_back();
  return said;
}

}  // namespace

AutomationError ErrorOfCall(HRESULT result) {
  std::string message = DescriptionLeftBehind();
  if (message.empty()) {
    char number[16];
    std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(result));
    const std::string said = DescriptionOfSystem(result);
    message = "调用失败（" + std::string(number) + (said.empty() ? "" : "：" + said) + "）。";
  }
  return {result, message};
}

void Expect(HRESULT result) {
  if (FAILED(result)) throw ErrorOfCall(result);
}

}  // namespace stockbook::com
