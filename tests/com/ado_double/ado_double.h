// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "com/ado_double/ado_rows.h"
#include "com/ado_double/named_object.h"
#include "com/automation/com_ptr.h"
#include "stockbook/platform/connection.h"

namespace stockbook::testing {

// How objects of the double differ from those of ADO.
struct AdoManner {
  enum class Type { kNamed, kNone };  // whether their type information names their class
  Type type = Type::kNamed;
  enum class Fetch { kPortions, kRowByRow };  // whether there is a GetRows
  Fetch fetch = Fetch::kPortions;
  // The row at which reading fails, by GetRows, Value or MoveNext.
  std::optional<size_t> dies_at_row;
  AdoFailure death{static_cast<HRESULT>(0x80004005), "网络连接中断"};
  // GetRows gives something else, or nothing.
  std::function<com::Variant()> instead_of_rows;
  // Called with every statement before it runs, and with every portion.
  std::function<void()> meanwhile;
};

// A connection with the members of ADO's that the control uses, and no others: Execute and ConnectionString; of its
// recordsets EOF, MoveNext, Close, RecordCount, CacheSize, GetRows and Fields; of these Count, Item, Name, Type and
// Value. The log must outlive every object.
using RunStatement = std::function<std::shared_ptr<AdoRows>(const std::string& statement)>;
com::ComPtr<IDispatch> MakeAdoDouble(AdoLog& log, std::string connection_string, RunStatement run,
                                     AdoManner manner = {});

// The same over a connection of the program's own, whose errors it passes on with ADO's numbers.
com::ComPtr<IDispatch> MakeAdoDouble(AdoLog& log, std::shared_ptr<platform::Connection> connection,
                                     AdoManner manner = {});

}  // namespace stockbook::testing
