// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "stockbook/base/api.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/base/value.h"
#include "stockbook/journal/amount_texts.h"

namespace stockbook::platform {
class Connection;
class Grid;
}  // namespace stockbook::platform

namespace stockbook::control {

// Where a field of a row is read from: the cell's text, its reading as a number, or the hidden data beside it.
enum class FieldPlace { kText, kNumber, kData };

// What writing a field does: nothing can be written; its text is stored; its hidden data is stored, with a text that
// restricted amounts mask; the row that holds the value becomes current.
enum class FieldWriter { kNone, kText, kMasked, kSelectsRow };

// One field of a journal row: the key of its column, and in its type the value read, where it is read from, and what
// writing does.
template <typename Type, FieldPlace place, FieldWriter writer>
struct RowField {
  const char* key;
};

// The fields. Some name columns that no layout has (TaxRate, AccPeriod, Deadline, ProductDate, SerialNo); they read as
// empty until somebody adds the column.
namespace fields {

template <typename Type>
using Masked = RowField<Type, FieldPlace::kData, FieldWriter::kMasked>;
using Counted = RowField<double, FieldPlace::kNumber, FieldWriter::kText>;
using Texts = RowField<std::string, FieldPlace::kText, FieldWriter::kNone>;
using Key = RowField<int32_t, FieldPlace::kNumber, FieldWriter::kNone>;

inline constexpr Masked<double> Price{base::keys::kPrice};
inline constexpr Counted Quantity{base::keys::kQuantity};
inline constexpr Masked<base::Money> Account{base::keys::kAccount};
inline constexpr Counted RevQty{base::keys::kRevQty};
inline constexpr Masked<base::Money> RevAcc{base::keys::kRevAcc};
inline constexpr Counted IssQty{base::keys::kIssQty};
inline constexpr Masked<base::Money> IssAcc{base::keys::kIssAcc};
inline constexpr Masked<double> StoPrice{base::keys::kStoPrice};
inline constexpr Counted StoQty{base::keys::kStoQty};
inline constexpr Masked<base::Money> StoAcc{base::keys::kStoAcc};
// An amount of money like the others, despite its name.
inline constexpr Masked<base::Money> TaxRate{base::keys::kTaxRate};
inline constexpr Masked<base::Money> Tax{base::keys::kTax};
inline constexpr Masked<double> TaxPrice{base::keys::kTaxPrice};
inline constexpr Masked<base::Money> TaxAccount{base::keys::kTaxAccount};

inline constexpr Texts AccPeriod{base::keys::kAccPeriod};
inline constexpr RowField<base::Date, FieldPlace::kText, FieldWriter::kNone> BillDate{base::keys::kBillDate};
inline constexpr Texts BillNo{base::keys::kBillNo};
inline constexpr Texts BillKind{base::keys::kBillKind};
inline constexpr Texts Explain{base::keys::kExplain};
inline constexpr Texts Field0{base::keys::kField0};
inline constexpr Texts Field1{base::keys::kField1};
inline constexpr Texts Field2{base::keys::kField2};
inline constexpr Texts Field3{base::keys::kField3};
inline constexpr Texts Deadline{base::keys::kDeadline};
inline constexpr Texts ProductDate{base::keys::kProductDate};
inline constexpr Texts SerialNo{base::keys::kSerialNo};
inline constexpr Texts Depot{base::keys::kDepot};
inline constexpr Texts Enterprise{base::keys::kEnterprise};
inline constexpr Texts Project{base::keys::kProject};
inline constexpr Texts ProjNo{base::keys::kProjNo};
inline constexpr Texts Inputor{base::keys::kInputor};
inline constexpr Texts InputDate{base::keys::kInputDate};
inline constexpr Texts Auditor{base::keys::kAuditor};
inline constexpr Texts AuditDate{base::keys::kAuditDate};

inline constexpr Key RecID{base::keys::kRecID};
inline constexpr Key dpID{base::keys::kDpID};
inline constexpr Key ksID{base::keys::kKsID};
inline constexpr Key pjID{base::keys::kPjID};
inline constexpr Key OtherID{base::keys::kOtherID};
inline constexpr RowField<int32_t, FieldPlace::kNumber, FieldWriter::kSelectsRow> pdID{base::keys::kPdID};
inline constexpr Key BillID{base::keys::kBillID};
inline constexpr Texts BillName{base::keys::kBillName};
inline constexpr RowField<int16_t, FieldPlace::kNumber, FieldWriter::kNone> Flag{base::keys::kFlag};

}  // namespace fields

using journal::AmountTexts;

// Reads and writes the fields of a grid's rows by name: Get(fields::Price, row). A row below 0 is the grid's current
// one. Nothing fails: what cannot be read is 0, "" or the zero date, and a failing writer leaves what it has written so
// far; `tell` hears of errors that are not of a cell or a statement. To be created for each use;
// it borrows the grid and the connection. A field costs one column lookup and one cell; writing pdID takes one pass
// over its column.
class STOCKBOOK_API RowFields {
 public:
  // Hears one sentence for the user.
  using Tell = std::function<void(const std::string& message)>;

  // Without a connection no issue line has a source.
  RowFields(platform::Grid& grid, platform::Connection* connection, AmountTexts amounts, Tell tell = {})
      : grid_(grid), connection_(connection), amounts_(amounts), tell_(std::move(tell)) {}

  // The value in the field's own type; 0, "" or the zero date where the row or the column is not there.
  template <typename Type, FieldPlace place, FieldWriter writer>
  Type Get(const RowField<Type, place, writer>& field, int32_t row = -1) const {
    if constexpr (std::is_same_v<Type, base::Money>)
      return MoneyOf(field.key, row);
    else if constexpr (std::is_same_v<Type, base::Date>)
      return DateOf(field.key, row);
    else if constexpr (std::is_same_v<Type, std::string>)
      return TextOf(field.key, row);
    else if constexpr (place == FieldPlace::kData)
      return DoubleDataOf(field.key, row);
    else if constexpr (std::is_same_v<Type, double>)
      return NumberOf(field.key, row);
    else
      return IntegerOf<Type>(field.key, row);
  }

  // Read-only fields have no Set.
  template <typename Type, FieldPlace place, FieldWriter writer>
  requires(writer != FieldWriter::kNone) void Set(const RowField<Type, place, writer>& field, int32_t row,
                                                  std::type_identity_t<Type> value) const {
    if constexpr (writer == FieldWriter::kMasked)
      WriteMasked(field.key, row, base::Value(value));
    else if constexpr (writer == FieldWriter::kText)
      WriteText(field.key, row, base::Value(value));
    else
      SelectRowWith(field.key, value);
  }

  // Where the stock of an issue line came from according to the database: a receipt, or the opening stock of a month.
  // "" if the line has no source or it is not found. Here row 0 means the current row, and a row below 0 gives "".
  std::string IssueSource(int32_t row) const;

 private:
  int RowOrCurrent(int32_t row) const;
  std::string TextOf(const char* key, int32_t row) const;
  double NumberOf(const char* key, int32_t row) const;
  double DoubleDataOf(const char* key, int32_t row) const;
  base::Money MoneyOf(const char* key, int32_t row) const;
  base::Date DateOf(const char* key, int32_t row) const;
  template <typename Integer>
  Integer IntegerOf(const char* key, int32_t row) const;
  void WriteMasked(const char* key, int32_t row, const base::Value& value) const;
  void WriteText(const char* key, int32_t row, const base::Value& value) const;
  void SelectRowWith(const char* key, int32_t value) const;

  platform::Grid& grid_;
  platform::Connection* connection_;
  AmountTexts amounts_;
  Tell tell_;
};

}  // namespace stockbook::control
