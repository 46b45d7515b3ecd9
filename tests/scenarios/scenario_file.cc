// SPDX-License-Identifier: MIT
#include "scenarios/scenario_file.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "base/text.h"

namespace stockbook::scenarios {
namespace {

struct Opening {
  const char* word;
  Step::Kind kind;
};
constexpr Opening kOpenings[] = {{"Title: ", Step::Kind::kTitle},
                                 {"Dialect: ", Step::Kind::kDialect},
                                 {"Given ", Step::Kind::kGiven},
                                 {"When ", Step::Kind::kWhen},
                                 {"Then ", Step::Kind::kThen}};

const Opening& OpeningOf(Step::Kind kind) {
  return *std::find_if(std::begin(kOpenings), std::end(kOpenings),
                       [&](const Opening& opening) { return opening.kind == kind; });
}

bool HasBody(const Step& step) { return step.kind == Step::Kind::kGiven || step.kind == Step::Kind::kThen; }

size_t WidthOf(std::string_view text) {
  size_t width = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if ((byte & 0xC0) != 0x80) width += byte >= 0xE3 ? 2 : 1;
  }
  return width;
}

std::string Padded(const std::string& text, size_t width) {
  return text + std::string(width - std::min(width, WidthOf(text)), ' ');
}

std::string Normalised(const std::string& line) {
  if (!line.starts_with("|")) return Trimmed(line);
  std::string cells;
  for (const std::string_view cell : base::Split(line, '|')) cells += Trimmed(cell) + "|";
  return cells;
}

}  // namespace

std::string Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

ScenarioFile::ScenarioFile(std::string path) : path_(std::move(path)) {
  std::ifstream file(path_);
  std::vector<std::string> leading;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.starts_with("  ") && !steps_.empty() && leading.empty() && HasBody(steps_.back())) {
      steps_.back().body.push_back(Trimmed(line));
      continue;
    }
    if (Trimmed(line).empty() || line.starts_with("#")) {
      leading.push_back(Trimmed(line));
      continue;
    }
    const auto* opening = std::find_if(std::begin(kOpenings), std::end(kOpenings),
                                       [&](const Opening& one) { return line.starts_with(one.word); });
    if (opening == std::end(kOpenings))
      throw std::runtime_error(path_ + ":" + std::to_string(number) + ": no step begins like this: " + line);
    Step step{opening->kind, Trimmed(std::string_view(line).substr(std::string_view(opening->word).size())), {}, {}};
    if (HasBody(step) && step.head.ends_with(":")) step.head.pop_back();
    step.leading = std::exchange(leading, {});
    steps_.push_back(std::move(step));
  }
  trailing_ = std::move(leading);
  if (steps_.empty() || steps_[0].kind != Step::Kind::kTitle)
    throw std::runtime_error(path_ + ": a scenario begins with a line \"Title: ...\".");
}

std::string ScenarioFile::Title() const { return steps_[0].head; }

std::string ScenarioFile::Dialect() const {
  for (const Step& step : steps_)
    if (step.kind == Step::Kind::kDialect) return step.head;
  return "desktop";
}

void ScenarioFile::Write() const {
  std::ofstream file(path_);
  for (const Step& step : steps_) {
    for (const std::string& line : step.leading) file << line << "\n";
    file << OpeningOf(step.kind).word << step.head << (HasBody(step) ? ":" : "") << "\n";
    for (const std::string& line : step.body) file << "  " << line << "\n";
  }
  for (const std::string& line : trailing_) file << line << "\n";
}

Table ParseTable(const std::vector<std::string>& lines) {
  Table table;
  for (const std::string& line : lines) {
    const auto pieces = base::Split(line, '|');
    if (pieces.size() < 3) throw std::runtime_error("A line of a table is written | a | b |, not: " + line);
    std::vector<std::string> cells;
    for (size_t index = 1; index + 1 < pieces.size(); ++index) cells.push_back(Trimmed(pieces[index]));
    if (!table.empty() && cells.size() != table[0].size())
      throw std::runtime_error("This line of a table has another number of cells than its captions: " + line);
    table.push_back(std::move(cells));
  }
  return table;
}

std::vector<std::string> TableLines(const Table& table) {
  std::vector<size_t> widths(table.empty() ? 0 : table[0].size());
  for (const auto& row : table)
    for (size_t column = 0; column < row.size(); ++column)
      widths[column] = std::max(widths[column], WidthOf(row[column]));
  std::vector<std::string> lines;
  for (const auto& row : table) {
    std::string line = "|";
    for (size_t column = 0; column < row.size(); ++column) line += " " + Padded(row[column], widths[column]) + " |";
    lines.push_back(std::move(line));
  }
  return lines;
}

bool SameLines(const std::vector<std::string>& left, const std::vector<std::string>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const auto& one, const auto& other) { return Normalised(one) == Normalised(other); });
}

std::string SideBySide(const std::vector<std::string>& expected, const std::vector<std::string>& actual) {
  size_t width = 8;
  for (const std::string& line : expected) width = std::max(width, WidthOf(line));
  std::string text = "  " + Padded("expected", width) + "    actual\n";
  for (size_t index = 0; index < std::max(expected.size(), actual.size()); ++index) {
    const std::string left = index < expected.size() ? expected[index] : "";
    const std::string right = index < actual.size() ? actual[index] : "";
    const bool same = index < expected.size() && index < actual.size() && Normalised(left) == Normalised(right);
    text += (same ? "  " : "! ") + Padded(left, width) + (same ? "    " : " !  ") + right + "\n";
  }
  return text;
}

std::string Visible(std::string_view text) {
  std::string visible = base::ReplaceAll(text, "\r", "\\r");
  visible = base::ReplaceAll(visible, "\n", "\\n");
  return base::ReplaceAll(visible, "\t", "\\t");
}

}  // namespace stockbook::scenarios
