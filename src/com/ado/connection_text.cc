// SPDX-License-Identifier: MIT
#include "com/ado/connection_text.h"

#include <algorithm>
#include <cstddef>

#include "base/text.h"

namespace stockbook::com {
namespace {

// `Password`, `PWD`, and what providers have beside them, such as `Jet OLEDB:Database Password`.
bool NamesPassword(std::string_view key) {
  const std::string lower = base::AsciiLower(base::TrimBlanks(key));
  return lower == "pwd" || lower.ends_with("password");
}

// Where the setting that begins at `at` ends: at its semicolon or at the end of the text. A value in quotes may hold
// semicolons, and quotes that are doubled.
size_t EndOfSetting(std::string_view text, size_t at) {
  const size_t equals = std::min(text.find('=', at), text.size());
  const size_t semicolon = std::min(text.find(';', at), text.size());
  if (semicolon < equals) return semicolon;
  size_t value = equals + 1;
  while (value < text.size() && text[value] == ' ') ++value;
  if (value >= text.size() || (text[value] != '"' && text[value] != '\'')) return semicolon;
  const char quote = text[value];
  for (++value; value < text.size(); ++value) {
    if (text[value] != quote) continue;
    if (value + 1 >= text.size() || text[value + 1] != quote) return std::min(text.find(';', value), text.size());
    ++value;
  }
  return text.size();
}

}  // namespace

std::string WithoutPasswords(std::string_view connection_string) {
  std::string kept;
  for (size_t at = 0; at < connection_string.size();) {
    const size_t end = EndOfSetting(connection_string, at);
    const std::string_view setting = connection_string.substr(at, end - at);
    const size_t next = std::min(end + 1, connection_string.size());
    if (!NamesPassword(setting.substr(0, std::min(setting.find('='), setting.size())))) {
      kept += connection_string.substr(at, next - at);
    }
    at = next;
  }
  return kept;
}

}  // namespace stockbook::com
