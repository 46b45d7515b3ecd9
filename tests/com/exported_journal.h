// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::testing {

// A journal that the program has exported, see tools/export-journals.
struct ExportedJournal {
  std::string name;
  int type = 0;
  int product = 0;
  int second = 0;
  std::string class_code;
  std::string dialect;  // for a connection string
};

// The folder with the exports and the inventory that they are of, with a slash at its end.
std::string ExportFolder();
// Empty where there are no exports.
std::vector<ExportedJournal> ExportedJournals();
// The lines of an export: the first one is about the whole journal, each of the others about a row.
std::vector<std::string> LinesOf(const ExportedJournal& journal);

// What is compared of a line: the row, its place in the outline, and its texts as stored and as shown.
std::string ComparedPart(const std::string& line);

// How a loaded journal is read back.
struct JournalReader {
  int cols = 0;
  std::function<std::string(int col)> key;
  std::function<std::string(int row, int col)> text;
  std::function<std::string(int row, int col)> shown;
  std::function<bool(int row)> is_node;
  std::function<int(int row)> level;
};
// The same part of a row that was read back.
std::string ComparedPartOf(const JournalReader& reader, int row);

// The value of a text of the first line, such as "caption", still as JSON writes it.
std::string FirstLineText(const std::string& line, std::string_view member);
// A text as JSON writes it, without its quotes.
std::string JsonText(std::string_view text);

}  // namespace stockbook::testing
