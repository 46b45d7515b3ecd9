// SPDX-License-Identifier: MIT
#include "com/late.h"

#include <gtest/gtest.h>

#include "com/automation/text.h"
#include "com/component.h"

namespace stockbook::testing {
namespace {

using com::ComPtr;

// Every test runs in an apartment, as a form does.
class ApartmentOfTests : public ::testing::Environment {
 public:
  void SetUp() override { OleInitialize(nullptr); }
  void TearDown() override { OleUninitialize(); }
};
const ::testing::Environment* const apartment_of_tests = ::testing::AddGlobalTestEnvironment(new ApartmentOfTests);

}  // namespace

com::ComPtr<_Stockbook> NewControl() {
  ComPtr<_Stockbook> made = NewStockbook<_Stockbook>();
  if (!made) ADD_FAILURE() << "the component makes no object";
  return made;
}

bool ComponentIsIdle() {
  using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();
  return reinterpret_cast<CanUnloadNow>(reinterpret_cast<void*>(ComponentExport("DllCanUnloadNow")))() == S_OK;
}

LateResult Late::Invoke(const char* name, WORD flags, std::vector<com::Variant> arguments) const {
  LateResult result;
  std::wstring wide = com::ToWide(name);
  LPOLESTR names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  result.code = object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(result.code)) return result;
  std::vector<VARIANT> reversed;
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
    reversed.push_back(argument->get());
  DISPID put = DISPID_PROPERTYPUT;
  const bool writing = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS parameters{reversed.data(), writing ? &put : nullptr, static_cast<UINT>(reversed.size()),
                        writing ? 1u : 0u};
  EXCEPINFO exception{};
  UINT wrong = 0;
  result.code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                writing ? nullptr : &result.value.get(), &exception, &wrong);
  if (result.code == DISP_E_EXCEPTION) {
    result.code = exception.scode;
    result.description = com::FromBstr(exception.bstrDescription);
  }
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  return result;
}

std::string LastDescription() {
  ComPtr<IErrorInfo> info;
  com::Bstr description;
  if (GetErrorInfo(0, info.PutTyped()) == S_OK && info) info->GetDescription(description.Put());
  return description.Text();
}

com::ComPtr<IPictureDisp> NewPicture(int pixels) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  // Of 24 bits a pixel: Wine writes pictures of 32 so that it cannot read them.
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = pixels;
  info.bmiHeader.biHeight = pixels;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 24;
  void* bits = nullptr;
  description.bmp.hbitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  ComPtr<IPictureDisp> picture;
  OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.Put());
  return picture;
}

ULONG ReferencesOf(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

com::Variant Missing() {
  com::Variant missing;
  missing.get().vt = VT_ERROR;
  missing.get().scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

}  // namespace stockbook::testing
