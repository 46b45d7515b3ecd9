// SPDX-License-Identifier: MIT
#include "contract/shown_cells.h"

#include <algorithm>

#include "stockbook/control/row_fields.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::testing {

std::string JournalAsked::Text() const {
  return "journal " + std::to_string(type) + " of " + std::to_string(key) + ", " + std::to_string(second_key) + ", \"" +
         class_code + "\"" + (quantity2 ? ", second quantities" : "") + (taxes ? ", taxes" : "") +
         (restricted ? ", restricted" : "");
}

std::vector<std::string> ShownCells(std::shared_ptr<platform::Connection> connection, const JournalAsked& asked) {
  constexpr int kSourcesTold = 4;
  ControlOverFakes fakes;
  control::Stockbook& control = *fakes.control;
  EventRecorder heard;
  control.SetConn(std::move(connection));
  control.SetJournalType(asked.type);
  control.SetAllowQty2(asked.quantity2);
  control.SetAllowInv(asked.taxes);
  if (asked.restricted) control.SetAccRestrict("true");
  control.AddListener(&heard);
  const bool loaded = control.Load(asked.key, asked.second_key, asked.class_code);
  control.RemoveListener(&heard);
  std::vector<std::string> lines = {loaded ? "loaded" : "not loaded", control.Caption(), control.KeyName(),
                                    control.AccPeriod()};
  lines.insert(lines.end(), heard.lines.begin(), heard.lines.end());
  for (int row = 0; row < fakes.fg.Rows(); ++row) {
    std::string& line = lines.emplace_back("row " + std::to_string(row) + (fakes.fg.IsSubtotal(row) ? " node " : " ") +
                                           std::to_string(fakes.fg.RowOutlineLevel(row)) + ": ");
    for (int column = 0; column < fakes.fg.Cols(); ++column) {
      line += fakes.fg.ColKey(column) + "=" + fakes.fg.TextMatrix(row, column) + " (" +
              fakes.fg.FormatValue(column, fakes.fg.CellData(row, column)) + ") ";
    }
  }
  int told = 0;
  for (int row = 1; row < fakes.fg.Rows() && told < kSourcesTold; ++row) {
    const std::string source = control.Fields().IssueSource(row);
    if (source.empty()) continue;
    lines.push_back("row " + std::to_string(row) + ": " + source);
    ++told;
  }
  return lines;
}

std::string Difference(const std::vector<std::string>& shown, const std::vector<std::string>& expected,
                       const JournalAsked& asked) {
  const auto [at, other] = std::mismatch(shown.begin(), shown.end(), expected.begin(), expected.end());
  if (at == shown.end() && other == expected.end()) return {};
  return asked.Text() + "\nshown:    " + (at == shown.end() ? "nothing" : *at) +
         "\nexpected: " + (other == expected.end() ? "nothing" : *other);
}

}  // namespace stockbook::testing
