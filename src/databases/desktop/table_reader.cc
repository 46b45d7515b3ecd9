// SPDX-License-Identifier: MIT
#include "databases/desktop/table_reader.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "base/text.h"
#include "databases/desktop/desktop_file.h"
#include "databases/desktop/page_values.h"
#include "databases/desktop/read_failure.h"

namespace stockbook::databases {
namespace {

// The types of columns as the file numbers them.
struct StoredType {
  enum : int {
    kTruth = 0x01,
    kByte = 0x02,
    kShort = 0x03,
    kLong = 0x04,
    kCurrency = 0x05,
    kSingle = 0x06,
    kDouble = 0x07,
    kDateTime = 0x08,
    kBinary = 0x09,
    kShortText = 0x0A,
    kObject = 0x0B,
    kMemo = 0x0C,
    kUniqueNumber = 0x0F,
    kNumeric = 0x10,
    kComplex = 0x12,
    kBigNumber = 0x13,
  };
};

ColumnKind KindOfColumn(int type) {
  switch (type) {
    case StoredType::kTruth:
    case StoredType::kByte:
    case StoredType::kShort:
    case StoredType::kLong:
    case StoredType::kComplex:
    case StoredType::kBigNumber:
      return ColumnKind::kWhole;
    case StoredType::kSingle:
    case StoredType::kDouble:
      return ColumnKind::kReal;
    case StoredType::kCurrency:
      return ColumnKind::kMoney;
    case StoredType::kNumeric:
      return ColumnKind::kDecimal;
    case StoredType::kDateTime:
      return ColumnKind::kDate;
    case StoredType::kShortText:
    case StoredType::kMemo:
    case StoredType::kUniqueNumber:
      return ColumnKind::kText;
    default:
      return ColumnKind::kBytes;
  }
}

// Texts as bytes of a file's code page, or as the UTF-16 of later files.
class TextDecoder {
 public:
  explicit TextDecoder(const std::string& encoding) {
    if (encoding.empty()) return;
    converter_ = iconv_open("UTF-8", encoding.c_str());
    if (converter_ == kNone) throw ReadFailure(FailureCause::kUnknownText, encoding);
  }
  ~TextDecoder() {
    if (converter_ != kNone) iconv_close(converter_);
  }
  TextDecoder(const TextDecoder&) = delete;
  TextDecoder& operator=(const TextDecoder&) = delete;

  std::string Decode(std::string_view bytes) const {
    return converter_ == kNone ? CompressibleText(bytes) : Convert(bytes);
  }

 private:
  // Bytes that mean nothing become U+FFFD, one by one.
  std::string Convert(std::string_view bytes) const {
    std::string text;
    std::string input(bytes);
    char* from = input.data();
    size_t left = input.size();
    while (left > 0) {
      char piece[256];
      char* to = piece;
      size_t room = sizeof piece;
      const size_t done = iconv(converter_, &from, &left, &to, &room);
      const int problem = errno;
      text.append(piece, sizeof piece - room);
      if (done != static_cast<size_t>(-1) || problem == E2BIG) continue;
      text += "\xEF\xBF\xBD";
      ++from;
      --left;
      iconv(converter_, nullptr, nullptr, nullptr, nullptr);
    }
    return text;
  }

  static inline const iconv_t kNone = reinterpret_cast<iconv_t>(-1);
  iconv_t converter_ = kNone;
};

// Numbers of all sizes that whole numbers are stored in.
DesktopValue WholeNumber(int type, std::string_view bytes) {
  switch (type) {
    case StoredType::kByte:
      return static_cast<int64_t>(static_cast<uint8_t>(bytes[0]));
    case StoredType::kShort:
      return static_cast<int64_t>(static_cast<int16_t>(WordAt(bytes, 0)));
    case StoredType::kBigNumber:
      return static_cast<int64_t>(QuadAt(bytes, 0));
    default:
      return static_cast<int64_t>(static_cast<int32_t>(LongAt(bytes, 0)));
  }
}

float SingleAt(std::string_view bytes) {
  const uint32_t bits = LongAt(bytes, 0);
  float number = 0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}

size_t FewestBytes(int type) {
  switch (type) {
    case StoredType::kByte:
      return 1;
    case StoredType::kShort:
      return 2;
    case StoredType::kLong:
    case StoredType::kSingle:
    case StoredType::kComplex:
      return 4;
    case StoredType::kCurrency:
    case StoredType::kDouble:
    case StoredType::kDateTime:
    case StoredType::kBigNumber:
      return 8;
    case StoredType::kUniqueNumber:
      return 16;
    case StoredType::kNumeric:
      return 17;
    default:
      return 0;
  }
}

class TableReader {
 public:
  TableReader(const std::string& path, const std::string& text_encoding)
      : file_(path, text_encoding), texts_(text_encoding) {}

  void ReadAll(TableSink& sink) {
    size_t linked = 0;
    for (const auto& table : Catalog(linked)) ReadTable(table, sink);
    if (tables_ == 0 && linked > 0) throw ReadFailure(FailureCause::kLinkedTables, std::string());
  }

 private:
  struct NamedTable {
    std::string name;
    uint32_t page = 0;
  };

  std::vector<NamedTable> Catalog(size_t& linked) {
    DesktopFile::Scan scan(file_, "MSysObjects", DesktopFile::kCatalogPage);
    const auto place = [&](std::string_view name) {
      for (size_t index = 0; index < scan.columns().size(); ++index) {
        if (base::EqualsIgnoringCase(scan.columns()[index].name, name)) return index;
      }
      throw ReadFailure(FailureCause::kDamaged, "MSysObjects");
    };
    const size_t id_at = place("Id");
    const size_t name_at = place("Name");
    const size_t type_at = place("Type");
    const size_t flags_at = place("Flags");
    std::vector<NamedTable> tables;
    while (scan.Next()) {
      const auto whole = [&](size_t column) {
        const DesktopValue value = ValueOf(scan, column);
        const auto* number = std::get_if<int64_t>(&value);
        return number != nullptr ? *number : int64_t{0};
      };
      constexpr int64_t kTable = 1;
      constexpr int64_t kLinkedByDriver = 4;
      constexpr int64_t kLinked = 6;
      constexpr uint32_t kOfSystem = 0x80000002;
      const int64_t type = whole(type_at);
      if (type == kLinkedByDriver || type == kLinked) ++linked;
      if (type != kTable || (static_cast<uint32_t>(whole(flags_at)) & kOfSystem) != 0) continue;
      const DesktopValue name = ValueOf(scan, name_at);
      const auto* text = std::get_if<std::string>(&name);
      if (text == nullptr || text->empty()) throw ReadFailure(FailureCause::kDamaged, "MSysObjects");
      constexpr int64_t kPageBits = 0x00FFFFFF;
      if (IsOfUser(*text)) tables.push_back({*text, static_cast<uint32_t>(whole(id_at) & kPageBits)});
    }
    return tables;
  }

  // Not those of the file itself, nor those that a program left half deleted.
  static bool IsOfUser(const std::string& name) {
    const std::string lower = base::AsciiLower(name);
    return !lower.starts_with("msys") && !lower.starts_with("~") && !lower.starts_with("sqlite_");
  }

  void ReadTable(const NamedTable& named, TableSink& sink) {
    DesktopFile::Scan scan(file_, named.name, named.page);
    DesktopTable table{named.name, {}};
    for (const StoredColumn& column : scan.columns()) table.columns.push_back({column.name, KindOfColumn(column.type)});
    sink.BeginTable(table);
    ++tables_;
    for (const DesktopIndex& index : scan.indexes()) sink.AddIndex(index);
    std::vector<DesktopValue> values(scan.columns().size());
    while (scan.Next()) {
      for (size_t column = 0; column < values.size(); ++column) values[column] = ValueOf(scan, column);
      sink.AddRow(values);
    }
  }

  DesktopValue ValueOf(const DesktopFile::Scan& scan, size_t index) const {
    const StoredColumn& column = scan.columns()[index];
    const auto field = scan.Field(index);
    constexpr int64_t kTrue = -1;
    if (column.type == StoredType::kTruth) return field ? kTrue : int64_t{0};
    if (!field) return {};
    if (field->size() < FewestBytes(column.type)) return {};
    switch (column.type) {
      case StoredType::kShortText:
        return texts_.Decode(*field);
      case StoredType::kMemo:
        return texts_.Decode(scan.LongValue(*field));
      case StoredType::kObject:
        return Bytes{scan.LongValue(*field)};
      default:
        return FixedValue(column, *field);
    }
  }

  static DesktopValue FixedValue(const StoredColumn& column, std::string_view bytes) {
    switch (column.type) {
      case StoredType::kCurrency:
        return MoneyText(static_cast<int64_t>(QuadAt(bytes, 0)));
      case StoredType::kNumeric:
        return DecimalText(bytes, column.scale);
      case StoredType::kUniqueNumber:
        return UniqueNumberText(bytes);
      case StoredType::kSingle:
        return FromSingle(SingleAt(bytes));
      case StoredType::kDouble:
        return DoubleAt(bytes, 0);
      case StoredType::kDateTime: {
        const std::string text = DayText(DoubleAt(bytes, 0));
        return text.empty() ? DesktopValue() : DesktopValue(text);
      }
      default:
        return KindOfColumn(column.type) == ColumnKind::kWhole ? WholeNumber(column.type, bytes)
                                                               : DesktopValue(Bytes{std::string(bytes)});
    }
  }

  DesktopFile file_;
  TextDecoder texts_;
  size_t tables_ = 0;
};

}  // namespace

void ReadTables(const std::string& path, const std::string& text_encoding, TableSink& sink) {
  TableReader(path, text_encoding).ReadAll(sink);
}

}  // namespace stockbook::databases
