// SPDX-License-Identifier: MIT
#include "com/exported_journal.h"

#include <fstream>

namespace stockbook::testing {
namespace {

std::vector<std::string> ReadLines(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

void AppendMember(const std::string& name, const std::string& text, std::string& json) {
  json.append(json.back() == '{' ? "\"" : ",\"").append(JsonText(name)).append("\":\"");
  json.append(JsonText(text)).append("\"");
}

const char* Truth(bool truth) { return truth ? "true" : "false"; }

}  // namespace

// Wine shows the whole system as drive Z.
std::string ExportFolder() { return "Z:" STOCKBOOK_SOURCE_DIR "/build/journals/"; }

std::vector<ExportedJournal> ExportedJournals() {
  std::ifstream list(ExportFolder() + "journals.txt");
  std::vector<ExportedJournal> journals;
  for (ExportedJournal journal; list >> journal.name >> journal.type >> journal.product >> journal.second >>
                                journal.class_code >> journal.dialect;) {
    if (journal.class_code == "-") journal.class_code.clear();
    if (journal.dialect == "-") journal.dialect.clear();
    journals.push_back(journal);
  }
  return journals;
}

std::vector<std::string> LinesOf(const ExportedJournal& journal) {
  return ReadLines(ExportFolder() + journal.name + ".ndjson");
}

// No text can contain these marks, since quotes within texts are escaped.
std::string ComparedPart(const std::string& line) {
  return line.substr(0, line.find(",\"hidden\":")) + line.substr(line.find(",\"text\":{"));
}

std::string ComparedPartOf(const JournalReader& reader, int row) {
  std::string part = "{\"row\":" + std::to_string(row) + ",\"node\":" + Truth(reader.is_node(row)) +
                     ",\"level\":" + std::to_string(reader.level(row)) + ",\"text\":{";
  std::string shown = "},\"display\":{";
  for (int col = 0; col < reader.cols; ++col) {
    const std::string text = reader.text(row, col);
    if (text.empty()) continue;
    AppendMember(reader.key(col), text, part);
    AppendMember(reader.key(col), reader.shown(row, col), shown);
  }
  return part + shown + "}}";
}

std::string FirstLineText(const std::string& line, std::string_view member) {
  const std::string begin = "\"" + std::string(member) + "\":\"";
  const size_t at = line.find(begin);
  if (at == std::string::npos) return {};
  size_t end = at + begin.size();
  while (end < line.size() && line[end] != '"') end += line[end] == '\\' ? size_t{2} : size_t{1};
  return line.substr(at + begin.size(), end - at - begin.size());
}

std::string JsonText(std::string_view text) {
  constexpr std::string_view kSpecial = "\"\\\n\r\t";
  constexpr std::string_view kLetters = "\"\\nrt";
  std::string json;
  for (const char c : text) {
    const size_t special = kSpecial.find(c);
    if (special == std::string_view::npos) {
      json += c;
    } else {
      json.append("\\").append(1, kLetters[special]);
    }
  }
  return json;
}

}  // namespace stockbook::testing
