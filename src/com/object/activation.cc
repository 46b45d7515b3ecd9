// SPDX-License-Identifier: MIT
#include "com/object/activation.h"

#include <algorithm>
#include <utility>

#include "com/automation/guarded.h"
#include "com/window/fonts.h"

namespace stockbook::com {
namespace {

constexpr int kHundredthsPerInch = 2540;
constexpr int kDotsPerInch = 96;
constexpr SIZE kUsualSize{1000, 600};  // pixels of 1/96 inch

LONG ToHundredths(LONG pixels) { return MulDiv(pixels, kHundredthsPerInch, kDotsPerInch); }

// The keys that the sheet wants although a form would use them itself.
bool IsKeyOfSheet(WPARAM key) {
  switch (key) {
    case VK_UP:
    case VK_DOWN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
      return true;
    case 'A':
    case 'C':
    case VK_INSERT:
      return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
    default:
      return false;
  }
}

DWORD KeyModifiers() {
  constexpr DWORD kShift = 1;
  constexpr DWORD kControl = 2;
  constexpr DWORD kAlt = 4;
  return (GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
         (GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

}  // namespace

Activation::Activation(ObjectParts& parts, IOleInPlaceActiveObject& active)
    : parts_(parts), active_(active), extent_{ToHundredths(kUsualSize.cx), ToHundredths(kUsualSize.cy)} {
  parts_.AddSite(*this);
}

Activation::~Activation() {
  // A form that hears of a window's end might ask the object for what has ended already.
  site_.Reset();
  CloseWindow();
  parts_.RemoveSite(*this);
}

void Activation::SetSite(IOleClientSite* site) {
  if (site != site_.get()) DeactivateInPlace();
  site_ = ComPtr<IOleClientSite>(site);
  if (site_) ReadAmbient();
}

void Activation::ReadAmbient() {
  ambient_ = Ambient::Of(site_);
  if (ambient_.font) parts_.FollowFont(GridFontFor(*ambient_.font));
  if (window_ != nullptr) window_->SetLooks(Looks());
}

FrameLooks Activation::Looks() const {
  FrameLooks looks = DefaultFrameLooks();
  if (ambient_.font) looks.font = GridFontFor(*ambient_.font);
  if (ambient_.back_colour) looks.desk_colour = *ambient_.back_colour;
  return looks;
}

void Activation::SetExtent(const SIZEL& extent) {
  extent_ = extent;
  TellViewListener();
}

HRESULT Activation::OpenWindow(const ComPtr<IOleInPlaceSite>& place) {
  HWND parent = nullptr;
  if (const HRESULT result = place->GetWindow(&parent); FAILED(result)) return result;
  RECT position{};
  RECT clip{};
  OLEINPLACEFRAMEINFO information{};
  information.cb = sizeof information;
  frame_.Reset();
  document_.Reset();
  place->GetWindowContext(frame_.PutTyped(), document_.PutTyped(), &position, &clip, &information);
  return Guarded(IID_IOleObject, [&] {
    WindowHost& host = *this;
    window_ = std::make_shared<ControlWindow>(host, parts_.control(), parts_.fg());
    window_->SetLooks(Looks());
    window_->Open(parent, position);
    Place(position, clip);
    ShowWindow(window_->handle(), SW_SHOW);
    const auto sheet = [kept = std::weak_ptr<ControlWindow>(window_)] {
      const auto window = kept.lock();
      return window == nullptr ? nullptr : &window->sheet_window();
    };
    const auto owner = [sheet] {
      const SheetWindow* window = sheet();
      return window == nullptr ? nullptr : window->handle();
    };
    parts_.menu().SetOwner(owner);
    parts_.menu().SetPlace([sheet] { return sheet() == nullptr ? POINT{} : sheet()->MenuPlace(); });
    parts_.clipboard().SetOwner(owner);
  });
}

void Activation::CloseWindow() {
  if (window_ == nullptr) return;
  parts_.menu().SetOwner({});
  parts_.menu().SetPlace({});
  parts_.clipboard().SetOwner({});
  const auto window = std::exchange(window_, nullptr);
  window->Destroy();
}

HRESULT Activation::ActivateInPlace() {
  // A form's window takes ours with it when it goes first.
  if (window_ != nullptr && window_->handle() == nullptr) DeactivateInPlace();
  if (state_ != ActivationState::kLoaded) {
    if (window_ != nullptr) ShowWindow(window_->handle(), SW_SHOW);
    return S_OK;
  }
  const auto place = site_.As<IOleInPlaceSite>();
  if (!place || place->CanInPlaceActivate() != S_OK) return E_FAIL;
  if (const HRESULT result = place->OnInPlaceActivate(); FAILED(result)) return result;
  state_ = ActivationState::kInPlace;
  if (const HRESULT result = OpenWindow(place); FAILED(result)) {
    DeactivateInPlace();
    return result;
  }
  if (site_) site_->ShowObject();
  return S_OK;
}

HRESULT Activation::ActivateUi() {
  if (const HRESULT result = ActivateInPlace(); FAILED(result)) return result;
  const auto place = site_.As<IOleInPlaceSite>();
  if (state_ == ActivationState::kInPlace && place) {
    state_ = ActivationState::kUiActive;
    if (const HRESULT result = place->OnUIActivate(); FAILED(result)) {
      state_ = ActivationState::kInPlace;
      return result;
    }
    if (frame_) {
      frame_->SetActiveObject(&active_, L"Stockbook");
      frame_->SetBorderSpace(nullptr);
    }
    if (document_) {
      document_->SetActiveObject(&active_, L"Stockbook");
      document_->SetBorderSpace(nullptr);
    }
  }
  const HWND sheet = window_ == nullptr ? nullptr : window_->sheet_window().handle();
  if (sheet != nullptr && GetFocus() != sheet) SetFocus(sheet);
  return S_OK;
}

HRESULT Activation::DeactivateUi() {
  if (state_ != ActivationState::kUiActive) return S_OK;
  state_ = ActivationState::kInPlace;
  if (document_) document_->SetActiveObject(nullptr, nullptr);
  if (frame_) frame_->SetActiveObject(nullptr, nullptr);
  if (const auto place = site_.As<IOleInPlaceSite>()) place->OnUIDeactivate(FALSE);
  return S_OK;
}

HRESULT Activation::DeactivateInPlace() {
  if (state_ == ActivationState::kLoaded) return S_OK;
  DeactivateUi();
  // The form may have gone on by itself when it heard of that.
  if (state_ == ActivationState::kLoaded) return S_OK;
  state_ = ActivationState::kLoaded;
  CloseWindow();
  frame_.Reset();
  document_.Reset();
  if (const auto place = site_.As<IOleInPlaceSite>()) place->OnInPlaceDeactivate();
  return S_OK;
}

void Activation::Place(const RECT& place, const RECT& clip) {
  if (window_ == nullptr || window_->handle() == nullptr) return;
  const HWND handle = window_->handle();
  RECT seen{};
  HRGN region = nullptr;
  // A region only where the form cuts something off, which may be all of it: a window with a region is drawn more
  // slowly. A form that says nothing of it gives an empty rectangle.
  IntersectRect(&seen, &place, &clip);
  if (IsRectEmpty(&clip) == 0 && EqualRect(&seen, &place) == 0) {
    OffsetRect(&seen, static_cast<int>(-place.left), static_cast<int>(-place.top));
    region = CreateRectRgnIndirect(&seen);
  }
  SetWindowRgn(handle, region, TRUE);
  SetWindowPos(handle, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
               static_cast<int>(std::max(0L, place.right - place.left)),
               static_cast<int>(std::max(0L, place.bottom - place.top)), SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Activation::IsDirty() const {
  const auto persistent = parts_.Pin().As<IPersistStreamInit>();
  return persistent && persistent->IsDirty() == S_OK;
}

void Activation::Close(DWORD save) {
  // There is nobody to be asked by a control; whoever would ask is taken to say yes.
  if (save != OLECLOSE_NOSAVE && site_ && IsDirty()) site_->SaveObject();
  DeactivateInPlace();
  if (advise_holder_) advise_holder_->SendOnClose();
  view_listener_ = {};
}

HRESULT Activation::TranslateKey(const MSG& message) {
  const bool down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  const bool ours = window_ != nullptr && message.hwnd != nullptr && message.hwnd == window_->sheet_window().handle();
  // The key that ends a drag must not also close the form.
  const bool ends_drag = ours && message.wParam == VK_ESCAPE && GetCapture() == message.hwnd;
  if (message.message == WM_KEYDOWN && ours && (ends_drag || IsKeyOfSheet(message.wParam))) {
    SendMessageW(message.hwnd, message.message, message.wParam, message.lParam);
    return S_OK;
  }
  const auto control_site = site_.As<IOleControlSite>();
  if (!down || !control_site) return S_FALSE;
  MSG copy = message;
  return control_site->TranslateAccelerator(&copy, KeyModifiers()) == S_OK ? S_OK : S_FALSE;
}

void Activation::FocusChanged(Focus focus) {
  if (focus == Focus::kGained && state_ == ActivationState::kInPlace) ActivateUi();
  if (const auto control_site = site_.As<IOleControlSite>())
    control_site->OnFocus(focus == Focus::kGained ? TRUE : FALSE);
}

void Activation::PropertyChanged(std::string_view /*key*/) {
  if (window_ != nullptr) window_->UpdateFrames();
  TellViewListener();
}

void Activation::FrameChanged() {
  if (window_ != nullptr) window_->UpdateFrames();
  TellViewListener();
}

// An active window shows by itself what has changed.
void Activation::TellViewListener() {
  if (!view_listener_.sink || window_ != nullptr) return;
  const ComPtr<IAdviseSink> sink = view_listener_.sink;
  if ((view_listener_.flags & ADVF_ONLYONCE) != 0) view_listener_ = {};
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace stockbook::com
