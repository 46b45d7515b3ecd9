// SPDX-License-Identifier: MIT
#include "stockbook/command/output_check.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "stockbook/command/command_line.h"
#include "stockbook/inventory/database_companions.h"

namespace stockbook::app {
namespace {

namespace fs = std::filesystem;

bool AreSame(const fs::path& left, const fs::path& right) {
  std::error_code ignored;
  return fs::equivalent(left, right, ignored);
}

// The name behind all links, also of a file that does not exist yet.
fs::path Resolved(const std::string& name) {
  std::error_code error;
  fs::path path = fs::weakly_canonical(name, error);
  return error ? fs::path(name) : path;
}

bool BeginsLikeADatabase(const fs::path& path) {
  constexpr std::string_view kMagic("SQLite format 3\0", 16);
  std::error_code ignored;
  // Opening a pipe would wait for its writer.
  if (!fs::is_regular_file(path, ignored)) return false;
  std::array<char, kMagic.size()> front{};
  std::ifstream file(path, std::ios::binary);
  return file.read(front.data(), front.size()) && std::string_view(front.data(), front.size()) == kMagic;
}

bool BelongsToInput(const std::string& target, const std::string& input) {
  const fs::path resolved = Resolved(target);
  for (const std::string_view ending : kDatabaseCompanions) {
    fs::path companion = Resolved(input);
    companion += ending;
    if (resolved == companion || AreSame(target, companion)) return true;
  }
  return false;
}

bool BelongsToADatabase(const std::string& target) {
  const std::string name = Resolved(target).string();
  for (const std::string_view ending : kDatabaseCompanions) {
    if (name.ends_with(ending) && BeginsLikeADatabase(name.substr(0, name.size() - ending.size()))) return true;
  }
  return false;
}

}  // namespace

void CheckOutput(const std::string& target, const std::string& input, Replaces replaces) {
  if (target == "-") return;
  const std::string name = "'" + target + "'";
  if (!input.empty() && AreSame(target, input))
    throw UsageError("The output " + name + " is the same file as the input '" + input + "'; name another file.");
  if (!input.empty() && BelongsToInput(target, input))
    throw UsageError("The output " + name + " is a part of the input '" + input + "'; name another file.");
  if (BelongsToADatabase(target))
    throw UsageError("The output " + name + " is a part of the database beside it; name another file.");
  if (replaces == Replaces::kNoInventory && BeginsLikeADatabase(target))
    throw UsageError("The output " + name + " is a database and would be lost; name another file, or delete it first.");
}

}  // namespace stockbook::app
