// SPDX-License-Identifier: MIT
#include "com/automation/guarded.h"

#include <windows.h>

#include <oleauto.h>
#include <olectl.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "com/automation/com_ptr.h"
#include "com/automation/text.h"
#include "stockbook/base/money.h"
#include "stockbook/platform/error.h"

namespace stockbook::com {
namespace {

constexpr wchar_t kErrorSource[] = L"tqStockbook";

// A platform's number is a result by itself, or one of the numbers that programs of this platform know from their own
// language (6 overflow, 13 type mismatch). What has none is a value that a grid refused.
HRESULT ResultOf(int native_code) {
  if (native_code < 0) return native_code;
  if (native_code > 0 && native_code <= 0xFFFF) return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, native_code);
  return CTL_E_INVALIDPROPERTYVALUE;
}

// The grid engine tells programmers in English what it refused; the user of a form reads Chinese first.
std::string ChineseSentence(const platform::Error& error) {
  const std::string said = error.what();
  const bool is_english =
      std::all_of(said.begin(), said.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
  if (!is_english) return said;
  return "“" + error.operation() + "”：行、列或数值超出了允许的范围（" + said + "）。";
}

HRESULT Tell(REFIID interface_id, HRESULT result, std::string_view message) noexcept {
  try {
    ComPtr<ICreateErrorInfo> created;
    if (FAILED(CreateErrorInfo(created.PutTyped()))) return result;
    const Bstr description(message);
    std::wstring source = kErrorSource;
    created->SetGUID(interface_id);
    created->SetSource(source.data());
    created->SetDescription(description.get());
    if (const auto info = created.As<IErrorInfo>()) SetErrorInfo(0, info.get());
  } catch (...) {
    // Without memory for the sentence there is still the number.
  }
  return result;
}

HRESULT TellError(REFIID interface_id, const platform::Error& error) noexcept {
  const HRESULT result = ResultOf(error.native_code());
  try {
    return Tell(interface_id, result, ChineseSentence(error));
  } catch (...) {
    return result;
  }
}

}  // namespace

HRESULT RefuseNull(REFIID interface_id) noexcept {
  return Tell(interface_id, E_POINTER, "空指针：调用没有给出存放结果或提供数据的地方。");
}

HRESULT ReportCurrentException(REFIID interface_id) noexcept {
  try {
    throw;
  } catch (const AutomationError& error) {
    return Tell(interface_id, error.code(), error.what());
  } catch (const platform::Error& error) {
    return TellError(interface_id, error);
  } catch (const std::bad_alloc&) {
    return Tell(interface_id, E_OUTOFMEMORY, "内存不足：请关闭其他程序后重试。");
  } catch (const base::ArithmeticError& error) {
    return Tell(interface_id, CTL_E_OVERFLOW, error.what());
  } catch (const std::out_of_range&) {
    return Tell(interface_id, MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 9), "下标越界：数组中没有这个元素。");
  } catch (const std::exception& error) {
    return Tell(interface_id, E_FAIL, error.what());
  } catch (...) {
    return Tell(interface_id, E_UNEXPECTED, "发生未知错误。");
  }
}

}  // namespace stockbook::com
