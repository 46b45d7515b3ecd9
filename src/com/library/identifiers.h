// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

#include "tq_stockbook.h"

// The interfaces of the type library tqStockbook, and its identifiers: LIBID_tqStockbook, CLSID_Stockbook,
// IID__Stockbook, DIID___Stockbook. Whoever needs them includes this header, since the generated one brings too little
// of Windows along.
namespace stockbook::com {

// Of the library, and the only one of its registration.
inline constexpr WORD kLibraryMajor = 1;
inline constexpr WORD kLibraryMinor = 0;
// The class as scripts and forms name it; with ".1" the name of this version.
inline constexpr const wchar_t* kProgramIdentifier = L"tqStockbook.Stockbook";
// OLEMISC: active as soon as it is visible and inside out, wants its site before its properties, is drawn anew when
// resized and is no target of links.
inline constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                     OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
// The resource with the picture for the tool boxes of form designers.
inline constexpr int kToolboxBitmap = 101;

}  // namespace stockbook::com
