// SPDX-License-Identifier: MIT
#include "journal/opening_row.h"

#include "base/column_keys.h"
#include "base/number.h"
#include "journal/periods.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

constexpr const char* kOpeningWord = "期初";

// The fields of the balance that a journal opens with.
struct OpeningFields {
  const char* quantity;
  const char* quantity2;
  const char* amount;
};

OpeningFields FieldsOf(base::tqJournalTypeContants type) {
  if (type == base::SupplierJournal) return {keys::kRevQty, keys::kRevQty2, keys::kRevAcc};
  if (type == base::CustomerJournal) return {keys::kIssQty, keys::kIssQty2, keys::kIssAcc};
  return {"LastQty", "LastQty2", "LastAcc"};
}

base::Money MoneyOrZero(const base::Value& value) {
  if (const auto money = value.AsMoney()) return *money;
  if (value.Number()) base::Money::ThrowOverflow();
  return {};
}

Totals ReadTotals(const platform::Recordset& balance, const OpeningFields& fields) {
  const auto number = [&](const char* field) { return balance.FieldValue(field).Number().value_or(0); };
  Totals totals;
  totals.quantity = number(fields.quantity);
  totals.quantity2 = number(fields.quantity2);
  totals.amount = MoneyOrZero(balance.FieldValue(fields.amount));
  return totals;
}

}  // namespace

Totals WriteOpeningRow(const OpeningBalance& balance, base::tqJournalTypeContants type, platform::GridTable& grid) {
  if (!balance.result) return {};
  const int row = grid.FixedRows();
  grid.AddItem("", row);
  const auto set_text = [&](const char* key, std::string_view text) {
    grid.SetTextMatrix(row, grid.ColIndex(key), text);
  };
  const auto set_period = [&](std::string_view period) {
    set_text(keys::kPeriod, period);
    set_text(keys::kBillNo, PeriodCaption(period, kOpeningWord));
  };
  if (balance.result->AtEnd()) {
    set_period(balance.first_period);
    for (const char* key : keys::kRunning) set_text(key, "0");
    return {};
  }
  const std::string period = balance.result->FieldValue(keys::kPeriod).Text();
  const Totals opening = ReadTotals(*balance.result, FieldsOf(type));
  const double price = base::SafeDivide(opening.amount.ToDouble(), opening.quantity);
  set_period(period);
  set_text(keys::kStoQty, base::NumberText(opening.quantity));
  set_text(keys::kStoQty2, base::NumberText(opening.quantity2));
  set_text(keys::kStoAcc, opening.amount.Text());
  set_text(keys::kStoPrice, base::NumberText(price));
  grid.SetCellData(row, grid.ColIndex(keys::kStoAcc), base::Value(opening.amount));
  grid.SetCellData(row, grid.ColIndex(keys::kStoPrice), base::Value(price));
  return opening;
}

}  // namespace stockbook::journal
