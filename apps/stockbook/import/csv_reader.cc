// SPDX-License-Identifier: MIT
#include "stockbook/import/csv_reader.h"

#include <algorithm>

#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr size_t kReadAtOnce = size_t{1} << 16;

}  // namespace

CsvReader::CsvReader(ByteSource& source, char delimiter)
    : source_(source), delimiter_(static_cast<unsigned char>(delimiter)), buffer_(kReadAtOnce) {}

int CsvReader::Peek() {
  if (at_ == end_) {
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(record_at_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
    end_ -= record_at_;
    at_ = end_;
    record_at_ = 0;
    if (buffer_.size() < end_ + kReadAtOnce) buffer_.resize(end_ + kReadAtOnce);
    const size_t more = source_.Read(buffer_.data() + end_, kReadAtOnce);
    if (more == 0) return kEnd;
    end_ += more;
  }
  return static_cast<unsigned char>(buffer_[at_]);
}

void CsvReader::SkipByteOrderMark() {
  begun_ = true;
  if (Peek() == kEnd) return;
  // A source may deliver its first bytes one by one.
  while (end_ < 3) {
    const size_t more = source_.Read(buffer_.data() + end_, buffer_.size() - end_);
    if (more == 0) break;
    end_ += more;
  }
  const std::string_view front(buffer_.data(), end_);
  if (front.starts_with("\xFF\xFE") || front.starts_with("\xFE\xFF")) {
    throw platform::Error("read", "The table is UTF-16 text; save it as UTF-8 and import that.");
  }
  if (front.starts_with("\xEF\xBB\xBF")) at_ = 3;
}

void CsvReader::EndLine() {
  last_line_ = line_++;
  const bool carriage_return = Peek() == '\r';
  Skip();
  if (carriage_return && Peek() == '\n') Skip();
}

bool CsvReader::Next(CsvRecord& record) {
  if (!begun_) SkipByteOrderMark();
  record.fields.clear();
  record_at_ = at_;
  record_line_ = record.line = line_;
  if (Peek() == kEnd) return false;
  text_.clear();
  ends_.clear();
  record.fault = ReadRecord();
  record.line_count = last_line_ - record.line + 1;
  if (record.fault != CsvFault::None) GiveUpRecord();
  size_t from = 0;
  for (const size_t end : ends_) {
    record.fields.push_back(std::string_view(text_).substr(from, end - from));
    from = end;
  }
  return true;
}

CsvFault CsvReader::ReadRecord() {
  for (;;) {
    const CsvFault fault = Peek() == '"' ? ReadQuoted() : ReadPlain();
    last_line_ = line_;
    if (fault != CsvFault::None) return fault;
    EndField();
    const int next = Peek();
    if (next == kEnd) return CsvFault::None;
    if (next != delimiter_) {
      EndLine();
      return CsvFault::None;
    }
    Skip();
    // Empty fields count as well, so that a line of nothing but separators stays within bounds.
    if (ends_.size() > kLongestRecord) return CsvFault::TooLong;
  }
}

CsvFault CsvReader::ReadPlain() {
  while (!AtFieldEnd(Peek())) {
    const char* const begin = buffer_.data() + at_;
    const char* const end = std::find_if(begin, static_cast<const char*>(buffer_.data() + end_),
                                         [this](char c) { return AtFieldEnd(static_cast<unsigned char>(c)); });
    text_.append(begin, end);
    at_ += static_cast<size_t>(end - begin);
    if (text_.size() > kLongestRecord) return CsvFault::TooLong;
  }
  return CsvFault::None;
}

CsvFault CsvReader::ReadQuoted() {
  Skip();
  bool after_carriage_return = false;
  while (text_.size() <= kLongestRecord) {
    const int next = Peek();
    if (next == kEnd) return CsvFault::UnclosedQuote;
    Skip();
    if (next == '"' && Peek() != '"') return AtFieldEnd(Peek()) ? CsvFault::None : CsvFault::TextAfterQuote;
    if (next == '"') Skip();
    if (next == '\r' || (next == '\n' && !after_carriage_return)) ++line_;
    after_carriage_return = next == '\r';
    text_.push_back(static_cast<char>(next));
  }
  return CsvFault::TooLong;
}

void CsvReader::GiveUpRecord() {
  at_ = record_at_;
  line_ = record_line_;
  for (int next = Peek(); next != kEnd; next = Peek()) {
    if (next == '\n' || next == '\r') return EndLine();
    Skip();
    // Nothing goes back to this line any more.
    record_at_ = at_;
  }
}

}  // namespace stockbook::app
