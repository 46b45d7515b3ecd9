// SPDX-License-Identifier: MIT
// Statements of any text are parsed, translated and executed: all plans give the same rows or the same error.
#include <gtest/gtest.h>

#include <optional>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"
#include "fuzzed_bytes.h"
#include "stockbook/platform/error.h"

namespace stockbook::fuzz {
namespace {

using databases::EmbeddedConnection;
using databases::Strategy;

constexpr const char* kSeconds = ";Timeout=2";

// One inventory, and a connection for every plan in both dialects.
class World {
 public:
  World() {
    ::testing::GTEST_FLAG(throw_on_failure) = true;
    CreateInventory(file_);
    FillInventory(file_);
  }
  void Compare(bool server, std::string_view statement) {
    Plans& plans = server ? server_ : desktop_;
    const auto reference = Outcome(plans.statement, statement);
    const auto same = [&](const std::optional<std::string>& other) {
      return !reference || !other || other == reference;
    };
    Require(same(Outcome(plans.fastest, statement)), "the fastest plan gives the same", reference.value_or(""));
    Require(same(Outcome(plans.arms, statement)), "the plan by arms gives the same", reference.value_or(""));
  }

 private:
  struct Plans {
    explicit Plans(const std::string& text)
        : statement(text, Strategy::kStatement), fastest(text, Strategy::kFastest), arms(text, Strategy::kArms) {}
    EmbeddedConnection statement;
    EmbeddedConnection fastest;
    EmbeddedConnection arms;
  };

  // Nothing where the time was up.
  static std::optional<std::string> Outcome(EmbeddedConnection& connection, std::string_view statement) {
    try {
      std::string text;
      for (const std::string& row : testing::ExactRows(connection.Execute(statement))) text += row + "\n";
      return text;
    } catch (const platform::Error& error) {
      if (error.kind() == platform::ErrorKind::kInterrupted) return std::nullopt;
      const std::string reason = error.what();
      // Whatever the parser accepts, SQLite must accept. A refusal of ours quotes the statement.
      constexpr std::string_view kOfSqlite = "syntax error";
      const bool ours = reason.find(kOfSqlite) == std::string::npos || statement.find(kOfSqlite) != std::string::npos;
      Require(!reason.empty() && ours, "a refusal is ours", reason);
      return "error: " + reason;
    }
  }

  testing::DatabaseFile file_;
  Plans desktop_{file_.DesktopString() + kSeconds};
  Plans server_{file_.ServerString() + kSeconds};
};

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static stockbook::fuzz::World world;
  stockbook::fuzz::FuzzedBytes bytes(data, size);
  const bool server = bytes.Take<char>() == 'S';
  world.Compare(server, bytes.TakeAll());
  return 0;
}
