// SPDX-License-Identifier: MIT
#include "com/automation/colour.h"

#include <windows.h>

#include <olectl.h>

namespace stockbook::com {

platform::Colour PlainColour(uint32_t given) {
  COLORREF plain = 0;
  return SUCCEEDED(OleTranslateColor(given, nullptr, &plain)) ? plain : given & 0x00FFFFFF;
}

}  // namespace stockbook::com
