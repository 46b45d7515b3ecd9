// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "com/ado_double/ado_double.h"
#include "com/late.h"

namespace stockbook::testing {

// A control with the small journal behind a connection of ADO's members, loaded where asked.
class HostedJournal {
 public:
  enum class State { kEmpty, kLoaded };
  explicit HostedJournal(State state);

  _Stockbook* operator->() const { return control_.get(); }
  _Stockbook* get() const { return control_.get(); }
  Late late() const { return Late(control_.get()); }
  Late grid() const;
  IDispatch* connection() const { return connection_.get(); }
  com::ComPtr<_Stockbook>& control() { return control_; }
  bool Load() const;

 private:
  AdoLog log_;
  com::ComPtr<IDispatch> connection_;
  com::ComPtr<_Stockbook> control_;
};

}  // namespace stockbook::testing
