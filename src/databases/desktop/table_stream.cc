// SPDX-License-Identifier: MIT
#include "databases/desktop/table_stream.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace stockbook::databases {
namespace {

constexpr size_t kPortion = size_t{64} << 10;

enum Mark : char { kTableMark = 'T', kIndexMark = 'I', kRowMark = 'R', kEndMark = 'E', kFailureMark = 'F' };

// Reads the pieces of what was sent, and no more of them than a file can have.
class Receiver {
 public:
  explicit Receiver(ReadingProcess& process) : process_(process) {}

  char Byte() {
    if (at_ == filled_) Fill();
    return bytes_[at_++];
  }
  uint64_t Number() {
    uint64_t number = 0;
    char raw[sizeof number];
    for (char& byte : raw) byte = Byte();
    std::memcpy(&number, raw, sizeof number);
    return number;
  }
  uint64_t NumberBelow(uint64_t end) {
    const uint64_t number = Number();
    if (number >= end) Fail();
    return number;
  }
  std::string Text() {
    constexpr uint64_t kMostBytes = uint64_t{1} << 31;
    uint64_t left = NumberBelow(kMostBytes);
    std::string text;
    while (left > 0) {
      if (at_ == filled_) Fill();
      const size_t piece = std::min<uint64_t>(left, filled_ - at_);
      text.append(bytes_ + at_, piece);
      at_ += piece;
      left -= piece;
    }
    return text;
  }
  [[noreturn]] static void Fail() { throw ReadFailure(FailureCause::kDamaged, std::string()); }

 private:
  void Fill() {
    at_ = 0;
    filled_ = process_.Read(bytes_, sizeof bytes_);
    if (filled_ == 0) Fail();
  }

  ReadingProcess& process_;
  size_t at_ = 0;
  size_t filled_ = 0;
  char bytes_[kPortion];
};

constexpr uint64_t kColumnsEnd = 256;

DesktopTable ReceiveTable(Receiver& from) {
  DesktopTable table;
  table.name = from.Text();
  table.columns.resize(from.NumberBelow(kColumnsEnd));
  for (DesktopColumn& column : table.columns) {
    column.name = from.Text();
    column.kind = static_cast<ColumnKind>(from.NumberBelow(static_cast<uint64_t>(ColumnKind::kBytes) + 1));
  }
  return table;
}

DesktopIndex ReceiveIndex(Receiver& from, size_t columns) {
  DesktopIndex index;
  index.columns.resize(from.NumberBelow(kColumnsEnd));
  for (uint32_t& column : index.columns) column = static_cast<uint32_t>(from.NumberBelow(columns));
  index.repetition = static_cast<Repetition>(from.NumberBelow(2));
  return index;
}

DesktopValue ReceiveValue(Receiver& from) {
  switch (from.Byte()) {
    case 0:
      return {};
    case 1:
      return static_cast<int64_t>(from.Number());
    case 2: {
      const uint64_t bits = from.Number();
      double number = 0;
      std::memcpy(&number, &bits, sizeof number);
      return number;
    }
    case 3:
      return from.Text();
    case 4:
      return Bytes{from.Text()};
    default:
      Receiver::Fail();
  }
}

}  // namespace

void TableSender::BeginTable(const DesktopTable& table) {
  waiting_ += kTableMark;
  PutText(table.name);
  PutNumber(table.columns.size());
  for (const DesktopColumn& column : table.columns) {
    PutText(column.name);
    PutNumber(static_cast<uint64_t>(column.kind));
  }
  SendIfFull();
}

void TableSender::AddIndex(const DesktopIndex& index) {
  waiting_ += kIndexMark;
  PutNumber(index.columns.size());
  for (const uint32_t column : index.columns) PutNumber(column);
  PutNumber(static_cast<uint64_t>(index.repetition));
  SendIfFull();
}

void TableSender::AddRow(const std::vector<DesktopValue>& values) {
  waiting_ += kRowMark;
  for (const DesktopValue& value : values) PutValue(value);
  SendIfFull();
}

void TableSender::Finish() {
  waiting_ += kEndMark;
  Send();
}

void TableSender::Fail(const ReadFailure& failure) {
  waiting_ += kFailureMark;
  PutNumber(static_cast<uint64_t>(failure.cause()));
  PutText(failure.what());
  Send();
}

void TableSender::PutNumber(uint64_t number) {
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  waiting_.append(bytes, sizeof bytes);
}

void TableSender::PutText(std::string_view text) {
  PutNumber(text.size());
  waiting_ += text;
}

void TableSender::PutValue(const DesktopValue& value) {
  waiting_ += static_cast<char>(value.index());
  if (const auto* whole = std::get_if<int64_t>(&value)) {
    PutNumber(static_cast<uint64_t>(*whole));
  } else if (const auto* number = std::get_if<double>(&value)) {
    uint64_t bits = 0;
    std::memcpy(&bits, number, sizeof bits);
    PutNumber(bits);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    PutText(*text);
  } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
    PutText(bytes->content);
  }
}

void TableSender::SendIfFull() {
  if (waiting_.size() >= kPortion) Send();
}

void TableSender::Send() {
  for (size_t sent = 0; sent < waiting_.size();) {
    const ssize_t count = write(pipe_, waiting_.data() + sent, waiting_.size() - sent);
    if (count < 0 && errno == EINTR) continue;
    // Nobody listens any more.
    if (count <= 0) _exit(1);
    sent += static_cast<size_t>(count);
  }
  waiting_.clear();
}

void ReceiveTables(ReadingProcess& process, TableSink& sink) {
  const auto from = std::make_unique<Receiver>(process);
  size_t columns = 0;
  std::vector<DesktopValue> values;
  for (;;) {
    switch (from->Byte()) {
      case kTableMark: {
        const DesktopTable table = ReceiveTable(*from);
        columns = table.columns.size();
        values.resize(columns);
        sink.BeginTable(table);
        break;
      }
      case kIndexMark:
        sink.AddIndex(ReceiveIndex(*from, columns));
        break;
      case kRowMark:
        if (columns == 0) Receiver::Fail();
        for (DesktopValue& value : values) value = ReceiveValue(*from);
        sink.AddRow(values);
        break;
      case kEndMark:
        return;
      case kFailureMark: {
        const uint64_t cause = from->NumberBelow(static_cast<uint64_t>(FailureCause::kUnknownText) + 1);
        throw ReadFailure(static_cast<FailureCause>(cause), from->Text());
      }
      default:
        Receiver::Fail();
    }
  }
}

}  // namespace stockbook::databases
