// SPDX-License-Identifier: MIT
#include "stockbook/copy/copy_progress.h"

#include <ostream>

namespace stockbook::app {
namespace {

constexpr const char* kClearLine = "\r\033[K";

}  // namespace

CopyProgress::~CopyProgress() {
  if (shown_ && style_ == ProgressStyle::kOneLine) out_ << kClearLine << std::flush;
}

void CopyProgress::Show(std::string_view step, std::string_view table, size_t done, size_t rows,
                        Clock::time_point now) {
  if (style_ == ProgressStyle::kLines && now - last_ < kPause) return;
  last_ = now;
  shown_ = true;
  if (style_ == ProgressStyle::kOneLine) out_ << kClearLine;
  out_ << step;
  if (!table.empty()) out_ << " " << table;
  if (rows > 0) out_ << " " << done << "/" << rows;
  if (style_ == ProgressStyle::kLines) out_ << "\n";
  out_ << std::flush;
}

}  // namespace stockbook::app
