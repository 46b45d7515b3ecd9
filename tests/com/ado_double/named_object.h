// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "com/automation/variant.h"

namespace stockbook::testing {

// What the objects of one connection have been asked, together.
struct AdoLog {
  int objects = 0;  // alive
  int name_lookups = 0;
  int statements = 0;
  int portions = 0;  // calls of GetRows
  int moves = 0;
  int closed = 0;
  int cache_size = 0;
  int last_options = 0;
  std::string last_statement;
};

// Raised by a member: what the caller is told.
struct AdoFailure {
  HRESULT code;  // a result, or a number of Visual Basic below 0x10000
  std::string description;
};

// An object that can only be called by name, with the members that it is given. Its ids begin where it is told, so that
// two objects without type information need not agree on any.
class NamedObject : public IDispatch {
 public:
  // Arguments in the order in which they are written; throws AdoFailure.
  using Member = std::function<com::Variant(const std::vector<const VARIANT*>& arguments)>;

  NamedObject(AdoLog& log, std::optional<GUID> type, DISPID first_id = 1);
  virtual ~NamedObject() { --log_.objects; }
  NamedObject(const NamedObject&) = delete;
  NamedObject& operator=(const NamedObject&) = delete;

  void Add(const wchar_t* name, Member member) { members_.push_back({name, std::move(member)}); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override;

 protected:
  AdoLog& log() { return log_; }

 private:
  struct NamedMember {
    std::wstring name;
    Member call;
  };

  AdoLog& log_;
  std::optional<GUID> type_;
  DISPID first_id_;
  std::vector<NamedMember> members_;
  std::atomic<ULONG> references_ = 0;
};

}  // namespace stockbook::testing
