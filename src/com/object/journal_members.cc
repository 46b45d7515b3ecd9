// SPDX-License-Identifier: MIT
#include "com/object/journal_members.h"

#include <utility>

#include "com/ado/ado_connection.h"

namespace stockbook::com {

HRESULT JournalMembers::get_Conn(IDispatch** result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = ComPtr<IDispatch>(connection_).Detach();
  return S_OK;
}

HRESULT JournalMembers::putref_Conn(IDispatch* value) {
  return Call([&](Control& control) {
    // Letting go of the old one may run code of the host's, which finds the new one everywhere.
    const ComPtr<IDispatch> before = connection_;
    control.SetConn(value == nullptr ? nullptr : OpenAdoConnection(value));
    connection_ = ComPtr<IDispatch>(value);
  });
}

HRESULT JournalMembers::put_JournalType(tqJournalTypeContants value) {
  return Call([&](Control& control) { control.SetJournalType(static_cast<base::tqJournalTypeContants>(value)); });
}

HRESULT JournalMembers::get_JournalType(tqJournalTypeContants* result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = MaterialJournal;
  return Call([&](Control& control) { *result = static_cast<tqJournalTypeContants>(control.JournalType()); });
}

}  // namespace stockbook::com
