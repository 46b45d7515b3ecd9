// SPDX-License-Identifier: MIT
// Connection strings of any bytes are read or refused, a value in quotes is what was put into them, and what is written
// of them again reads the same, or has no password.
#include "databases/connection_string.h"

#include "base/text.h"
#include "fuzzed_bytes.h"
#include "stockbook/platform/error.h"

namespace stockbook::fuzz {
namespace {

void ReadAny(std::string_view text, std::string_view key) {
  try {
    const databases::ConnectionString settings(text);
    const auto value = settings.Find(key);
    Require(value == settings.Find(base::AsciiLower(key)), "keys compare ignoring case", std::string(text));
    const databases::ConnectionString again(settings.Text());
    Require(again.settings() == settings.settings(), "settings read as they were written", std::string(text));
    databases::ConnectionString shown(databases::WithoutPassword(text));
    Require(!shown.RemovePasswords(), "no password is left", std::string(text));
  } catch (const platform::Error& error) {
    Require(!std::string_view(error.what()).empty(), "a refusal has a reason", std::string(text));
  }
}

void ReadQuoted(std::string_view value, std::string_view quote) {
  const std::string text = "First=1;Data Source = " + std::string(quote) +
                           base::ReplaceAll(value, quote, std::string(quote) + std::string(quote)) +
                           std::string(quote) + ";Last='2'";
  const databases::ConnectionString settings(text);
  Require(settings.Find("data source") == std::string(value), "a quoted value is kept", text);
  Require(settings.Find("last") == "2", "what follows is read", text);
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  stockbook::fuzz::FuzzedBytes bytes(data, size);
  const std::string_view key = bytes.TakeLine();
  const std::string_view text = bytes.TakeAll();
  stockbook::fuzz::ReadAny(text, key);
  stockbook::fuzz::ReadQuoted(text, "\"");
  stockbook::fuzz::ReadQuoted(text, "'");
  return 0;
}
