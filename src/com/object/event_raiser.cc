// SPDX-License-Identifier: MIT
#include "com/object/event_raiser.h"

#include <algorithm>
#include <array>

#include "com/automation/variant.h"

namespace stockbook::com {
namespace {

enum EventId : DISPID {
  kProcess = 1,
  kAfterLoaded,
  kAfterFormatted,
  kCommandExecute,
  kNotify,
  kAfterRowChanged,
  kAfterRangeSelected,
  kMouseUp,
  kFindMsg,
};

constexpr size_t kMostArguments = 4;

VARIANTARG ByReference(int16_t& number) {
  VARIANTARG argument;
  argument.vt = VT_BYREF | VT_I2;
  argument.piVal = &number;
  return argument;
}

VARIANTARG ByReference(float& number) {
  VARIANTARG argument;
  argument.vt = VT_BYREF | VT_R4;
  argument.pfltVal = &number;
  return argument;
}

}  // namespace

void EventRaiser::Raise(DISPID event, VARIANTARG* arguments, UINT count) {
  if (frozen_ > 0) return;
  sinks_.ForEach<IDispatch>([&](IDispatch& sink) {
    // Each has a list of its own, whatever it does to it: what others hear and what is freed stays the same.
    std::array<VARIANTARG, kMostArguments> own{};
    std::copy_n(arguments, count, own.begin());
    DISPPARAMS parameters{own.data(), nullptr, count, 0};
    Variant result;
    EXCEPINFO exception{};
    UINT wrong_argument = 0;
    sink.Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result.get(), &exception,
                &wrong_argument);
    // The listener's own failure is its own; what describes it belongs to the caller.
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
  });
}

void EventRaiser::RaiseText(DISPID event, const std::string& text) {
  if (!sinks_.HasSinks()) return;
  Variant argument{std::string_view(text)};
  Raise(event, &argument.get(), 1);
}

void EventRaiser::Process(int16_t Indicator) {
  Variant argument(Indicator);
  Raise(kProcess, &argument.get(), 1);
}

void EventRaiser::AfterLoaded() { Raise(kAfterLoaded, nullptr, 0); }

void EventRaiser::AfterFormatted() { Raise(kAfterFormatted, nullptr, 0); }

void EventRaiser::CommandExecute(const std::string& CommandName, bool& Cancel) {
  if (!sinks_.HasSinks()) return;
  const Variant name{std::string_view(CommandName)};
  VARIANT_BOOL cancel = Cancel ? VARIANT_TRUE : VARIANT_FALSE;
  VARIANTARG arguments[2];
  arguments[0].vt = VT_BYREF | VT_BOOL;
  arguments[0].pboolVal = &cancel;
  arguments[1] = name.get();
  Raise(kCommandExecute, arguments, 2);
  Cancel = cancel != VARIANT_FALSE;
}

void EventRaiser::Notify(const std::string& Msg) { RaiseText(kNotify, Msg); }

void EventRaiser::AfterRowChanged() { Raise(kAfterRowChanged, nullptr, 0); }

void EventRaiser::AfterRangeSelected() { Raise(kAfterRangeSelected, nullptr, 0); }

void EventRaiser::MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) {
  VARIANTARG arguments[] = {ByReference(Y), ByReference(X), ByReference(Shift), ByReference(Button)};
  Raise(kMouseUp, arguments, 4);
}

void EventRaiser::FindMsg(const std::string& rMsg) { RaiseText(kFindMsg, rMsg); }

}  // namespace stockbook::com
