// SPDX-License-Identifier: MIT
// A program that shows the component in a window, placed there by AtlAxWin, over a small journal, for tests that use
// real keys and a real mouse. Its argument is the DLL. It executes commands from its standard input, one per line, and
// answers each with lines of state followed by a line with a full stop. What it tells of the control it has from
// outside: from the grid that the control hands out, and from what screen readers are told.
#include <windows.h>

#include <oleacc.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include "com/ado_double/ado_double.h"
#include "com/automation/text.h"
#include "com/automation/variant.h"
#include "com/library/identifiers.h"
#include "support/small_journal.h"

namespace stockbook::testing {
namespace {

using com::Bstr;
using com::ComPtr;
using com::Variant;

constexpr UINT kObey = WM_APP + 1;
constexpr const wchar_t* kClass = L"stockbook window host";

HWND ChildOfClass(HWND parent, const wchar_t* name) {
  struct Search {
    std::wstring name;
    HWND found = nullptr;
  } search{name};
  EnumChildWindows(
      parent,
      [](HWND child, LPARAM data) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(data);
        wchar_t its[64] = L"";
        GetClassNameW(child, its, 64);
        if (wanted.name == its) wanted.found = child;
        return wanted.found == nullptr;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Reads a property of a late-bound object, with arguments in their order.
template <typename... Arguments>
Variant Get(IDispatch* object, const wchar_t* name, Arguments... arguments) {
  Variant result;
  DISPID id = 0;
  auto* text = const_cast<wchar_t*>(name);
  if (FAILED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)))
    return Variant(std::string_view("no member"));
  Variant values[sizeof...(arguments) + 1] = {Variant(arguments)...};
  VARIANT reversed[sizeof...(arguments) + 1];
  for (size_t index = 0; index < sizeof...(arguments); ++index)
    reversed[index] = values[sizeof...(arguments) - 1 - index].get();
  DISPPARAMS parameters{reversed, nullptr, sizeof...(arguments), 0};
  object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &parameters, result.Put(),
                 nullptr, nullptr);
  return result;
}

std::string TextOfClipboard() {
  std::string text;
  if (OpenClipboard(nullptr) == 0) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
    text = com::FromWide(static_cast<const wchar_t*>(GlobalLock(data)));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

std::string OnOneLine(const std::string& text) {
  std::string line;
  for (const char unit : text)
    line += unit == '\t' ? "\\t" : unit == '\n' ? "\\n" : unit == '\r' ? "" : std::string(1, unit);
  return line;
}

// The items of the menu that is open: captions, "x" for checked, "-" for disabled.
std::string OpenMenu() {
  const HWND window = FindWindowW(L"#32768", nullptr);
  if (window == nullptr || IsWindowVisible(window) == 0) return {};
  constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
  std::string items;
  for (int index = 0; index < GetMenuItemCount(menu); ++index) {
    wchar_t caption[128] = L"";
    GetMenuStringW(menu, static_cast<UINT>(index), caption, 128, MF_BYPOSITION);
    const UINT state = GetMenuState(menu, static_cast<UINT>(index), MF_BYPOSITION);
    if (caption[0] == L'\0') continue;
    items +=
        com::FromWide(caption) + ((state & MF_CHECKED) != 0 ? " x" : "") + ((state & MF_GRAYED) != 0 ? " -" : "") + "|";
  }
  return items;
}

class Host {
 public:
  explicit Host(const std::string& library) {
    const HMODULE module = LoadLibraryW(com::ToWide(library).c_str());
    const HMODULE atl = LoadLibraryW(L"atl100.dll");
    const auto entry = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    const auto init = reinterpret_cast<BOOL(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxWinInit")));
    const auto attach = reinterpret_cast<HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxAttachControl")));
    if (entry == nullptr || init == nullptr || attach == nullptr) throw std::runtime_error("a library is missing");
    ComPtr<IClassFactory> factory;
    entry(CLSID_Stockbook, IID_IClassFactory, factory.Put());
    factory->CreateInstance(nullptr, IID__Stockbook, control_.Put());
    init();
    window_ = CreateWindowExW(0, kClass, L"库存明细账", WS_POPUP | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 1000, 620,
                              nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    before_ = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER, 4, 4, 200, 24, window_,
                              nullptr, nullptr, nullptr);
    // Without a text AtlAxWin makes no control of its own.
    frame_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin100", nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 32,
                             1000, 588, window_, nullptr, nullptr, nullptr);
    attached_ = attach(control_.get(), frame_, container_.PutTyped());
    control_->putref_Conn(MakeAdoDouble(log_, SmallJournal()).get());
    control_->get_Grid(grid_.PutTyped());
  }

  bool Belongs(MSG& message) {
    const auto active = control_.As<IOleInPlaceActiveObject>();
    const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    return (key && active && IsChild(frame_, message.hwnd) != 0 && active->TranslateAccelerator(&message) == S_OK) ||
           IsDialogMessageW(window_, &message) != 0;
  }

  void Obey(const std::string& line) {
    std::istringstream words(line);
    std::string what;
    LONG first = 0;
    LONG second = 0;
    words >> what >> first >> second;
    if (what == "load") Load();
    if (what == "size") Resize(static_cast<int>(first), static_cast<int>(second));
    if (what == "state") TellState();
    if (what == "cell") TellCell(first, second);
    if (what == "quit") PostQuitMessage(0);
    std::cout << ".\n" << std::flush;
  }

 private:
  void Load() {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    control_->Load(7, 0, nullptr, &loaded);
    std::cout << "attached=" << attached_ << "\nloaded=" << loaded << "\n";
    SetFocus(Sheet());
  }

  void Resize(int width, int height) {
    SetWindowPos(window_, nullptr, 0, 0, width, height, SWP_NOZORDER);
    SetWindowPos(frame_, nullptr, 0, 32, width, height - 32, SWP_NOZORDER);
  }

  HWND Sheet() const { return ChildOfClass(frame_, L"tqStockbookSheet"); }

  void TellState() {
    const auto number = [&](const wchar_t* name) { return com::ToText(Get(grid_.get(), name).get()); };
    const HWND focus = GetFocus();
    RECT view{};
    GetClientRect(Sheet(), &view);
    std::cout << "current=" << number(L"Row") << " " << number(L"Col") << "\nend=" << number(L"RowSel") << " "
              << number(L"ColSel") << "\ntop=" << number(L"TopRow") << "\nleft=" << number(L"LeftCol")
              << "\nfrozen=" << number(L"FrozenCols") << "\nclipboard=" << OnOneLine(TextOfClipboard())
              << "\nmenu=" << OpenMenu() << "\nview=" << view.right << " " << view.bottom << "\nfocus="
              << (focus == before_   ? "before"
                  : focus == Sheet() ? "grid"
                                     : "other")
              << "\n";
  }

  // The place of the cell on the screen, its text and its state, as a screen reader has them: the line counts from 0,
  // which is that of the captions.
  void TellCell(LONG line, LONG column) {
    ComPtr<IAccessible> table;
    AccessibleObjectFromWindow(Sheet(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, table.Put());
    LONG count = 0;
    if (!table || FAILED(table->get_accChildCount(&count))) return;
    Variant child(int32_t{0});
    // The captions come first, one for each column.
    LONG columns = 0;
    for (Variant role; columns < count; ++columns) {
      child.get().lVal = columns + 1;
      table->get_accRole(child.get(), role.Put());
      if (role.get().lVal != ROLE_SYSTEM_COLUMNHEADER) break;
    }
    child.get().lVal = line * columns + column + 1;
    LONG left = 0, top = 0, width = 0, height = 0;
    table->accLocation(&left, &top, &width, &height, child.get());
    Bstr name;
    table->get_accName(child.get(), name.Put());
    Variant state;
    table->get_accState(child.get(), state.Put());
    std::cout << "rect=" << left << " " << top << " " << width << " " << height << "\ntext=" << OnOneLine(name.Text())
              << "\nlines=" << (columns == 0 ? 0 : count / columns)
              << "\ncollapsed=" << ((state.get().lVal & STATE_SYSTEM_COLLAPSED) != 0) << "\n";
  }

  AdoLog log_;
  ComPtr<_Stockbook> control_;
  ComPtr<IDispatch> grid_;
  ComPtr<IUnknown> container_;
  HWND window_ = nullptr;
  HWND before_ = nullptr;
  HWND frame_ = nullptr;
  HRESULT attached_ = E_FAIL;
};

LRESULT CALLBACK HostProcedure(HWND window, UINT message, WPARAM wide, LPARAM data) {
  if (message != kObey) return DefWindowProcW(window, message, wide, data);
  const std::unique_ptr<std::string> line(reinterpret_cast<std::string*>(data));
  reinterpret_cast<Host*>(GetWindowLongPtrW(window, GWLP_USERDATA))->Obey(*line);
  return 0;
}

int Run(const std::string& library) {
  OleInitialize(nullptr);
  WNDCLASSW description{};
  description.lpfnWndProc = HostProcedure;
  description.lpszClassName = kClass;
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  RegisterClassW(&description);
  {
    Host host(library);
    const HWND window = FindWindowW(kClass, nullptr);
    // Menus have a message loop of their own, in which commands must be obeyed, too.
    std::thread([window] {
      for (std::string line; std::getline(std::cin, line);)
        PostMessageW(window, kObey, 0, reinterpret_cast<LPARAM>(new std::string(line)));
      PostMessageW(window, kObey, 0, reinterpret_cast<LPARAM>(new std::string("quit")));
    }).detach();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (host.Belongs(message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    DestroyWindow(window);
  }
  std::cout << "ended\n" << std::flush;
  TerminateProcess(GetCurrentProcess(), 0);  // the reader of the input still waits
  return 0;
}

}  // namespace
}  // namespace stockbook::testing

int main(int count, char** arguments) { return count < 2 ? 2 : stockbook::testing::Run(arguments[1]); }
