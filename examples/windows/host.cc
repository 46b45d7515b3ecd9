// SPDX-License-Identifier: MIT
// A window with the control in it, whose events are written to the standard output.
//   host [--dll PATH] [--connection TEXT PRODUCT] [--seconds N]
// --dll takes the control from that file, without the registry; --seconds closes the window by itself. Without a
// connection the journal is empty. The last line says that nothing went wrong.
#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "event_sink.h"
#include "tq_stockbook.h"

namespace {

struct Options {
  std::wstring dll;
  std::wstring connection;
  long product = 0;
  UINT seconds = 0;
};

Options ReadOptions(int count, wchar_t** words) {
  Options options;
  for (int at = 1; at < count; ++at) {
    const std::wstring word = words[at];
    if (word == L"--dll" && at + 1 < count) options.dll = words[++at];
    if (word == L"--seconds" && at + 1 < count)
      options.seconds = static_cast<UINT>(std::wcstoul(words[++at], nullptr, 10));
    if (word == L"--connection" && at + 2 < count) {
      options.connection = words[++at];
      options.product = std::wcstol(words[++at], nullptr, 10);
    }
  }
  return options;
}

// Ends the program with what failed.
void Need(HRESULT result, const char* what) {
  if (SUCCEEDED(result)) return;
  std::printf("host: %s failed with %08lx\n", what, static_cast<unsigned long>(result));
  std::exit(1);
}

template <typename Function>
Function Find(HMODULE module, const char* name) {
  const auto found = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  Need(found == nullptr ? HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND) : S_OK, name);
  return found;
}

_Stockbook* CreateControl(const std::wstring& dll) {
  _Stockbook* book = nullptr;
  if (dll.empty()) {
    Need(CoCreateInstance(__uuidof(Stockbook), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Stockbook),
                          reinterpret_cast<void**>(&book)),
         "CoCreateInstance");
    return book;
  }
  const HMODULE module = LoadLibraryW(dll.c_str());
  Need(module == nullptr ? HRESULT_FROM_WIN32(GetLastError()) : S_OK, "LoadLibrary");
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  IClassFactory* factory = nullptr;
  Need(Find<GetClassObject>(module, "DllGetClassObject")(__uuidof(Stockbook), __uuidof(IClassFactory),
                                                         reinterpret_cast<void**>(&factory)),
       "DllGetClassObject");
  Need(factory->CreateInstance(nullptr, __uuidof(_Stockbook), reinterpret_cast<void**>(&book)), "CreateInstance");
  factory->Release();
  return book;
}

// A window of the system's own that is the site of a control.
HWND PlaceControl(_Stockbook* book) {
  HMODULE library = LoadLibraryW(L"atl100.dll");
  if (library == nullptr) library = LoadLibraryW(L"atl.dll");
  Need(library == nullptr ? HRESULT_FROM_WIN32(GetLastError()) : S_OK, "loading atl.dll");
  Find<BOOL(STDAPICALLTYPE*)()>(library, "AtlAxWinInit")();
  const wchar_t* kind = GetModuleHandleW(L"atl100.dll") == library ? L"AtlAxWin100" : L"AtlAxWin";
  const HWND window = CreateWindowExW(0, kind, nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN,
                                      CW_USEDEFAULT, CW_USEDEFAULT, 1000, 600, nullptr, nullptr, nullptr, nullptr);
  Need(window == nullptr ? HRESULT_FROM_WIN32(GetLastError()) : S_OK, "CreateWindow");
  SetWindowTextW(window, L"Stockbook");
  using Attach = HRESULT(STDAPICALLTYPE*)(IUnknown*, HWND, IUnknown**);
  IUnknown* site = nullptr;
  Need(Find<Attach>(library, "AtlAxAttachControl")(book, window, &site), "AtlAxAttachControl");
  if (site != nullptr) site->Release();
  return window;
}

IConnectionPoint* Hear(_Stockbook* book, EventSink* sink, DWORD* cookie) {
  IConnectionPointContainer* points = nullptr;
  IConnectionPoint* point = nullptr;
  Need(book->QueryInterface(__uuidof(IConnectionPointContainer), reinterpret_cast<void**>(&points)),
       "connection points");
  Need(points->FindConnectionPoint(__uuidof(__Stockbook), &point), "FindConnectionPoint");
  points->Release();
  Need(point->Advise(sink, cookie), "Advise");
  return point;
}

// Late-bound, as the control uses it.
IDispatch* OpenConnection(const std::wstring& text) {
  CLSID id;
  IDispatch* connection = nullptr;
  Need(CLSIDFromProgID(L"ADODB.Connection", &id), "ADODB.Connection");
  Need(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), reinterpret_cast<void**>(&connection)),
       "ADODB.Connection");
  wchar_t name[] = L"Open";
  LPOLESTR names[] = {name};
  DISPID open = 0;
  Need(connection->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &open), "Open");
  VARIANT argument;
  VariantInit(&argument);
  argument.vt = VT_BSTR;
  argument.bstrVal = SysAllocString(text.c_str());
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  Need(connection->Invoke(open, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, nullptr, nullptr, nullptr),
       "Open");
  VariantClear(&argument);
  return connection;
}

void ShowJournal(_Stockbook* book, const Options& options) {
  Need(book->put_JournalType(MaterialJournal), "JournalType");
  if (!options.connection.empty()) {
    IDispatch* connection = OpenConnection(options.connection);
    Need(book->putref_Conn(connection), "Conn");
    connection->Release();
  }
  BSTR code = SysAllocString(L"");
  VARIANT_BOOL loaded = VARIANT_FALSE;
  Need(book->Load(options.product, -1, code, &loaded), "Load");
  SysFreeString(code);
  long rows = 0;
  Need(book->get_Rows(&rows), "Rows");
  std::printf("loaded: %s, rows: %ld\n", loaded != VARIANT_FALSE ? "yes" : "no", rows);
}

void RunUntilClosed(HWND window, UINT seconds) {
  if (seconds > 0) SetTimer(window, 1, seconds * 1000, nullptr);
  MSG message;
  while (IsWindow(window) != FALSE && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_TIMER && message.hwnd == window && message.wParam == 1) {
      DestroyWindow(window);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

int wmain(int count, wchar_t** words) {
  const Options options = ReadOptions(count, words);
  Need(OleInitialize(nullptr), "OleInitialize");
  _Stockbook* book = CreateControl(options.dll);
  auto* sink = new EventSink();
  DWORD cookie = 0;
  IConnectionPoint* point = Hear(book, sink, &cookie);
  const HWND window = PlaceControl(book);
  ShowJournal(book, options);
  RunUntilClosed(window, options.seconds);
  point->Unadvise(cookie);
  point->Release();
  sink->Release();
  const ULONG left = book->Release();
  std::printf("references left: %lu\n", left);
  OleUninitialize();
  std::puts("host: done");
  return 0;
}
