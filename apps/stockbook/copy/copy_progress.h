// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>

namespace stockbook::app {

// A terminal gets one line that changes, everybody else a line every few seconds.
enum class ProgressStyle { kOneLine, kLines };

// Tells how far a long command has come.
class CopyProgress {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::seconds kPause{3};

  CopyProgress(std::ostream& out, ProgressStyle style) : out_(out), style_(style), last_(Clock::now()) {}
  // Clears the line that changes.
  ~CopyProgress();
  CopyProgress(const CopyProgress&) = delete;
  CopyProgress& operator=(const CopyProgress&) = delete;

  void Show(std::string_view step, std::string_view table, size_t done, size_t rows, Clock::time_point now);

 private:
  std::ostream& out_;
  ProgressStyle style_;
  Clock::time_point last_;
  bool shown_ = false;
};

}  // namespace stockbook::app
