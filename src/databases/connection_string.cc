// SPDX-License-Identifier: MIT
#include "databases/connection_string.h"

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

[[noreturn]] void Reject(std::string_view text, size_t at, const char* reason) {
  const size_t character = base::CharacterCount(text.substr(0, at)) + 1;
  throw platform::Error("Open", "连接字符串第 " + std::to_string(character) + " 个字符处" + reason +
                                    "，应为“Provider=Stockbook.Embedded;Data Source=文件”");
}

// The quoted value at `at`, which moves to just after the closing quote.
std::string TakeQuoted(std::string_view text, size_t& at) {
  const size_t start = at;
  const char quote = text[at++];
  std::string value;
  for (; at < text.size(); ++at) {
    if (text[at] != quote) {
      value += text[at];
    } else if (at + 1 < text.size() && text[at + 1] == quote) {
      value += text[at++];
    } else {
      ++at;
      return value;
    }
  }
  Reject(text, start, "的引号没有结尾");
}

// Where the value in braces at `at` ends: after the closing brace, a doubled one being none. Without one the brace is a
// character like any other, and ends nowhere.
size_t EndOfBraces(std::string_view text, size_t at) {
  for (++at; at < text.size(); ++at) {
    if (text[at] != '}') continue;
    if (at + 1 == text.size() || text[at + 1] != '}') return at + 1;
    ++at;
  }
  return 0;
}

// `Password`, `PWD`, and what drivers have beside them, such as `sslpassword`.
bool IsPasswordKey(std::string_view key) {
  const std::string lower = base::AsciiLower(key);
  return lower == "pwd" || lower.ends_with("password") || lower.ends_with("passwd");
}

// Whether a value is a connection string of its own, or an address, with a password in it.
bool MayHoldPassword(std::string_view value) {
  const std::string lower = base::AsciiLower(base::ReplaceAll(value, " ", ""));
  for (const std::string_view sign : {"password=", "passwd=", "pwd="}) {
    if (lower.find(sign) != std::string::npos) return true;
  }
  const size_t scheme = value.find("://");
  return scheme != std::string_view::npos && value.find('@', scheme) != std::string_view::npos;
}

bool NeedsQuotes(std::string_view value) {
  if (value.empty()) return false;
  constexpr std::string_view kSpecial = "'\"{";
  return value.find(';') != std::string_view::npos || value.front() == ' ' || value.back() == ' ' ||
         kSpecial.find(value.front()) != std::string_view::npos;
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  size_t at = 0;
  const auto skip_blanks = [&] {
    while (at < text.size() && text[at] == ' ') ++at;
  };
  for (;;) {
    while (at < text.size() && (text[at] == ' ' || text[at] == ';')) ++at;
    if (at >= text.size()) return;
    const size_t equals = text.find('=', at);
    if (equals == std::string_view::npos || text.substr(at, equals - at).find(';') != std::string_view::npos) {
      Reject(text, at, "缺少等号");
    }
    std::string key(base::TrimBlanks(text.substr(at, equals - at)));
    if (key.empty()) Reject(text, at, "缺少名称");
    at = equals + 1;
    skip_blanks();
    std::string value;
    if (at < text.size() && (text[at] == '"' || text[at] == '\'')) {
      value = TakeQuoted(text, at);
      skip_blanks();
      if (at < text.size() && text[at] != ';') Reject(text, at, "应为分号");
    } else {
      const size_t braced = at < text.size() && text[at] == '{' ? EndOfBraces(text, at) : at;
      const size_t end = std::min(text.find(';', std::max(at, braced)), text.size());
      value = base::TrimBlanks(text.substr(at, end - at));
      at = end;
    }
    settings_.emplace_back(std::move(key), std::move(value));
  }
}

std::optional<std::string> ConnectionString::Find(std::string_view key) const {
  const auto found = std::find_if(settings_.rbegin(), settings_.rend(),
                                  [&](const auto& setting) { return base::EqualsIgnoringCase(setting.first, key); });
  return found == settings_.rend() ? std::nullopt : std::optional(found->second);
}

void ConnectionString::Set(std::string_view key, std::string value) {
  std::erase_if(settings_, [&](const Setting& setting) { return base::EqualsIgnoringCase(setting.first, key); });
  settings_.emplace_back(key, std::move(value));
}

bool ConnectionString::RemovePasswords() {
  return std::erase_if(settings_, [](const Setting& setting) {
           const bool is_file = base::EqualsIgnoringCase(setting.first, "Data Source");
           return IsPasswordKey(setting.first) || (!is_file && MayHoldPassword(setting.second));
         }) > 0;
}

std::string ConnectionString::Text() const {
  std::string text;
  for (const auto& [key, value] : settings_) {
    if (!text.empty()) text += ';';
    text.append(key).append("=");
    if (NeedsQuotes(value)) {
      text.append("\"").append(base::ReplaceAll(value, "\"", "\"\"")).append("\"");
    } else {
      text += value;
    }
  }
  return text;
}

std::string WithoutPassword(std::string_view connection_string) {
  ConnectionString settings(connection_string);
  return settings.RemovePasswords() ? settings.Text() : std::string(connection_string);
}

}  // namespace stockbook::databases
