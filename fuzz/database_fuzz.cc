// SPDX-License-Identifier: MIT
// A database file made to harm: any bytes, an inventory with some of its bytes changed, or one whose tables, views and
// rows are what a hostile SQL text makes of them. Every journal is loaded from it, or refused with a message.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"
#include "fuzzed_bytes.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::fuzz {
namespace {

constexpr int kMostSteps = 200000;

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
void WriteFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// An inventory in small pages, so that a changed byte matters.
std::string GoodInventory() {
  ::testing::GTEST_FLAG(throw_on_failure) = true;
  testing::DatabaseFile file;
  file.Run("PRAGMA page_size=512");
  CreateInventory(file);
  FillInventory(file);
  return ReadFile(file.path());
}

std::string Patched(std::string image, FuzzedBytes& bytes) {
  while (!bytes.IsEmpty()) {
    const size_t at = (bytes.Take<uint16_t>() | size_t{bytes.Take<uint8_t>()} << 16) % image.size();
    const std::string_view patch = bytes.TakeBytes(1 + bytes.Take<uint8_t>() % 16);
    image.replace(at, std::min(patch.size(), image.size() - at), patch.substr(0, image.size() - at));
  }
  return image;
}

// What the file's maker may do is bounded as well: no other file, no endless statement.
void RunHostile(const std::string& path, std::string_view sql) {
  sqlite3* database = nullptr;
  sqlite3_open(path.c_str(), &database);
  sqlite3_set_authorizer(
      database,
      [](void*, int action, const char*, const char*, const char*, const char*) {
        return action == SQLITE_ATTACH || action == SQLITE_PRAGMA ? SQLITE_DENY : SQLITE_OK;
      },
      nullptr);
  int portions = 0;
  sqlite3_progress_handler(
      database, 1000, [](void* count) { return ++*static_cast<int*>(count) > kMostSteps / 1000 ? 1 : 0; }, &portions);
  sqlite3_limit(database, SQLITE_LIMIT_LENGTH, 100000);
  // Statement by statement: one that is refused does not keep the next from running.
  while (!sql.empty()) {
    const std::string statement(sql.substr(0, sql.find('\n')));
    sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr);
    sql.remove_prefix(std::min(statement.size() + 1, sql.size()));
  }
  sqlite3_close(database);
}

void LoadEveryJournal(const std::string& connection_string) {
  testing::ControlOverFakes fakes;
  testing::EventRecorder heard;
  fakes.control->AddListener(&heard);
  try {
    fakes.control->SetConn(std::make_shared<databases::EmbeddedConnection>(connection_string));
  } catch (const platform::Error& error) {
    Require(!std::string_view(error.what()).empty(), "a refusal has a reason");
    return;
  }
  for (int type = 0; type <= 3; ++type) {
    fakes.control->SetJournalType(static_cast<control::tqJournalTypeContants>(type));
    fakes.control->SetKeyID(type == 0 ? 1 : -1);
    const bool loaded = fakes.control->Load(type == 0 ? 1 : 0, type % 2, "01");
    Require(loaded || !heard.Of("Notify").empty(), "a load that fails says why");
    Require(fakes.fg.CheckInvariants(), "the sheet is whole");
    Require(fakes.fg.Redraw() && fakes.fg.Tag().empty(), "the sheet is free again");
    (void)fakes.control->Find("1");
    (void)fakes.control->Statistics();
    (void)fakes.control->DepotName();
  }
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace stockbook;
  static const std::string good = fuzz::GoodInventory();
  static const stockbook::testing::DatabaseFile file;
  fuzz::FuzzedBytes bytes(data, size);
  switch (bytes.Take<char>()) {
    case 'F':
      fuzz::WriteFile(file.path(), bytes.TakeAll());
      break;
    case 'S':
      fuzz::WriteFile(file.path(), good);
      fuzz::RunHostile(file.path(), bytes.TakeAll());
      break;
    default:
      fuzz::WriteFile(file.path(), fuzz::Patched(good, bytes));
  }
  fuzz::LoadEveryJournal((size % 2 == 0 ? file.DesktopString() : file.ServerString()) + ";Timeout=2");
  return 0;
}
