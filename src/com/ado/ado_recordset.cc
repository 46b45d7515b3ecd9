// SPDX-License-Identifier: MIT
#include "com/ado/ado_recordset.h"

#include <string>
#include <utility>
#include <vector>

#include "com/ado/ado_column.h"
#include "com/automation/automation_error.h"
#include "com/automation/text.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/error.h"

namespace stockbook::com {
namespace {

// So many rows of automation values exist at a time.
constexpr int32_t kPortionRows = 256;

[[noreturn]] void FailToRead(const char* why) {
  throw platform::Error("Execute", std::string("ADO 记录集没有给出完整的记录：") + why, 0,
                        platform::ErrorKind::kInputOutput);
}

// The array of a GetRows: fields by rows, each an automation value. Locked while it lives.
class RowsArray {
 public:
  explicit RowsArray(const Variant& rows, size_t fields) {
    if (rows.get().vt != (VT_ARRAY | VT_VARIANT) || rows.get().parray == nullptr) FailToRead("GetRows 没有返回数组");
    array_ = rows.get().parray;
    if (SafeArrayGetDim(array_) != 2 || array_->cbElements != sizeof(VARIANT))
      FailToRead("GetRows 返回的数组不是二维的");
    // The bounds stand in the descriptor the last dimension first.
    rows_ = array_->rgsabound[0].cElements;
    if (array_->rgsabound[1].cElements != fields) FailToRead("GetRows 返回的字段数不符");
    void* data = nullptr;
    Expect(SafeArrayAccessData(array_, &data));
    values_ = static_cast<const VARIANT*>(data);
  }
  RowsArray(const RowsArray&) = delete;
  RowsArray& operator=(const RowsArray&) = delete;
  ~RowsArray() { SafeArrayUnaccessData(array_); }

  size_t rows() const { return rows_; }
  // The fields of a row lie side by side.
  const VARIANT* Row(size_t row, size_t fields) const { return values_ + row * fields; }

 private:
  SAFEARRAY* array_ = nullptr;
  const VARIANT* values_ = nullptr;
  size_t rows_ = 0;
};

class RecordsetReader {
 public:
  RecordsetReader(LateBound& recordset, KnownClasses& classes) : recordset_(recordset), classes_(classes) {
    LateBound fields = Fields();
    const int32_t count = ToLong(fields.Call(AdoMember::kCount).get());
    for (int32_t index = 0; index < count; ++index) {
      LateBound field = fields.Object(AdoMember::kItem, classes_, index);
      names_.push_back(ToText(field.Call(AdoMember::kName).get()));
    }
    columns_.resize(names_.size());
  }

  platform::Recordset Read() {
    if (!names_.empty() && !AtEnd()) {
      // A recordset that cannot fetch ahead, or that is asked too late, is only slower.
      recordset_.TryToWrite(AdoMember::kCacheSize, Variant(kPortionRows));
      if (recordset_.Knows(AdoMember::kGetRows)) {
        do ReadPortion();
        while (!AtEnd());
      } else {
        do ReadRow();
        while (!AtEnd());
      }
    }
    std::vector<platform::Field> fields;
    for (size_t index = 0; index < names_.size(); ++index) {
      fields.push_back({std::move(names_[index]), columns_[index].Finish()});
    }
    return platform::Recordset(std::move(fields));
  }

 private:
  LateBound Fields() { return recordset_.Object(AdoMember::kFields, classes_); }
  bool AtEnd() { return ToBoolean(recordset_.Call(AdoMember::kEof).get()); }

  void ReadPortion() {
    const Variant portion = recordset_.Call(AdoMember::kGetRows, kPortionRows);
    const RowsArray array(portion, columns_.size());
    // A recordset that stands still would be read for ever.
    if (array.rows() == 0) FailToRead("GetRows 没有返回记录");
    for (size_t row = 0; row < array.rows(); ++row) {
      const VARIANT* values = array.Row(row, columns_.size());
      for (AdoColumn& column : columns_) column.Append(*values++);
    }
  }

  // Fields are fetched anew, because those of a recordset that somebody else wrote may not follow it.
  void ReadRow() {
    LateBound fields = Fields();
    for (size_t index = 0; index < columns_.size(); ++index) {
      LateBound field = fields.Object(AdoMember::kItem, classes_, static_cast<int32_t>(index));
      columns_[index].Append(field.Call(AdoMember::kValue).get());
    }
    recordset_.Call(AdoMember::kMoveNext);
  }

  LateBound& recordset_;
  KnownClasses& classes_;
  std::vector<std::string> names_;
  std::vector<AdoColumn> columns_;
};

void CloseQuietly(LateBound& recordset) {
  try {
    recordset.Call(AdoMember::kClose);
  } catch (const std::exception&) {
    // What was read has been read; and whoever failed before has told more.
  }
}

}  // namespace

platform::Recordset ReadRecordset(LateBound recordset, KnownClasses& classes) {
  const base::ScopeExit closed([&recordset] { CloseQuietly(recordset); });
  return RecordsetReader(recordset, classes).Read();
}

}  // namespace stockbook::com
