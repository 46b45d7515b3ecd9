// SPDX-License-Identifier: MIT
#include "com/ado/ado_error.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "base/text.h"
#include "com/automation/com_ptr.h"
#include "com/automation/text.h"

namespace stockbook::com {
namespace {

using platform::ErrorKind;

struct KindOfNumber {
  uint32_t number;
  ErrorKind kind;
};

// ADO's own numbers, OLE DB's, and those of the system; everything else is of the statement.
constexpr std::array kKinds = {
    KindOfNumber{0x80004005, ErrorKind::kInputOutput},  // unspecified: what drivers say when the server is gone
    KindOfNumber{0x8000FFFF, ErrorKind::kInputOutput},  // catastrophic
    KindOfNumber{0x800A0E78, ErrorKind::kInputOutput},  // ADO: the object is closed
    KindOfNumber{0x800A0E7A, ErrorKind::kInputOutput},  // ADO: no such provider
    KindOfNumber{0x800A0E7D, ErrorKind::kInputOutput},  // ADO: the connection is closed or invalid
    KindOfNumber{0x800A0E7F, ErrorKind::kBusy},         // ADO: still executing
    KindOfNumber{0x800A0EAE, ErrorKind::kBusy},         // ADO: still connecting
    KindOfNumber{0x80040E31, ErrorKind::kInterrupted},  // OLE DB: the time is up
    KindOfNumber{0x80040E4E, ErrorKind::kInterrupted},  // OLE DB: cancelled
    KindOfNumber{0x80040E4D, ErrorKind::kInputOutput},  // OLE DB: the login was refused
    KindOfNumber{0x80040E02, ErrorKind::kBusy},         // OLE DB: locks
    KindOfNumber{0x80040E38, ErrorKind::kBusy},         // OLE DB: changed by somebody else
    KindOfNumber{0x8007000E, ErrorKind::kMemory},
    KindOfNumber{0x80070008, ErrorKind::kMemory},
    KindOfNumber{0x80070020, ErrorKind::kBusy},  // shared by others
    KindOfNumber{0x80070021, ErrorKind::kBusy},  // locked
    KindOfNumber{0x80070570, ErrorKind::kDamaged},
    KindOfNumber{0x80070057, ErrorKind::kStatement},  // an invalid argument
    KindOfNumber{0x80010001, ErrorKind::kBusy},       // the other apartment refuses the call
    KindOfNumber{0x8001010A, ErrorKind::kBusy},       // or wants it later
    KindOfNumber{0x800401FD, ErrorKind::kInputOutput},
    KindOfNumber{0x80020006, ErrorKind::kInputOutput},  // no member of that name: not a connection at all
    KindOfNumber{0x80020003, ErrorKind::kInputOutput},
    KindOfNumber{0x800A01B6, ErrorKind::kInputOutput},  // the same, as scripts say it
};

const char* SentenceOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::kBusy:
      return "数据库正被其他程序占用，请稍后再试";
    case ErrorKind::kInputOutput:
      return "无法通过 ADO 连接读取数据库，请检查连接是否仍然打开";
    case ErrorKind::kDamaged:
      return "数据库已损坏，请从备份恢复";
    case ErrorKind::kMemory:
      return "内存不足，结果的行数太多，请缩小查询的范围";
    case ErrorKind::kInterrupted:
      return "数据库停止了语句，请缩小查询的范围，或调大连接的超时时间";
    case ErrorKind::kStatement:
      break;
  }
  return "数据库没有执行语句";
}

std::string TakeText(BSTR& text) {
  std::string taken = FromBstr(text);
  SysFreeString(text);
  text = nullptr;
  return taken;
}

// Objects with a dual interface may leave their description here even when a late-bound call failed.
std::string TakeDescription() {
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.PutTyped()) != S_OK || !info) return {};
  Bstr description;
  return FAILED(info->GetDescription(description.Put())) ? std::string() : description.Text();
}

}  // namespace

CallFailure TakeFailure(HRESULT result, EXCEPINFO& exception) {
  CallFailure failure{result, {}};
  if (result != DISP_E_EXCEPTION) {
    failure.description = TakeDescription();
    return failure;
  }
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  failure.description = TakeText(exception.bstrDescription);
  TakeText(exception.bstrSource);
  TakeText(exception.bstrHelpFile);
  // A small number instead of a result is one of the automation's errors, as Visual Basic raises them.
  if (FAILED(exception.scode)) {
    failure.code = exception.scode;
  } else if (exception.wCode != 0) {
    failure.code = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, exception.wCode);
  }
  return failure;
}

ErrorKind KindOfAdoError(HRESULT code) {
  const auto number = static_cast<uint32_t>(code);
  const auto* known = std::find_if(kKinds.begin(), kKinds.end(),
                                   [number](const KindOfNumber& candidate) { return candidate.number == number; });
  if (known != kKinds.end()) return known->kind;
  const auto facility = static_cast<int>(HRESULT_FACILITY(code));
  const bool is_of_system = facility == FACILITY_WIN32 || facility == FACILITY_RPC;
  return is_of_system ? ErrorKind::kInputOutput : ErrorKind::kStatement;
}

platform::Error ErrorOfFailure(const char* operation, const CallFailure& failure) {
  const ErrorKind kind = KindOfAdoError(failure.code);
  char number[16];
  std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(static_cast<uint32_t>(failure.code)));
  const std::string told(base::TrimBlanks(base::OneLine(failure.description, " ")));
  std::string message = SentenceOf(kind);
  if (!told.empty()) message += "：" + told;
  message.append("（错误 ").append(number).append("）");
  return {operation, message, static_cast<int>(failure.code), kind};
}

}  // namespace stockbook::com
