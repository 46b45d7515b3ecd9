// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "databases/desktop/desktop_connection.h"
#include "desktop/desktop_file_maker.h"
#include "stockbook/platform/error.h"
#include "support/test_folder.h"

namespace stockbook::testing {

// A folder of its own for desktop files, with the user's cache in it.
class DesktopFixture : public ::testing::Test, protected TestFolder {
 protected:
  using Maker = DesktopFileMaker;

  DesktopFixture() {
    if (const char* cache = getenv("XDG_CACHE_HOME")) cache_before_ = cache;
    setenv("XDG_CACHE_HOME", PathOf("cache").c_str(), 1);
  }
  ~DesktopFixture() override {
    if (cache_before_) {
      setenv("XDG_CACHE_HOME", cache_before_->c_str(), 1);
    } else {
      unsetenv("XDG_CACHE_HOME");
    }
  }

  std::string file() const { return PathOf("store.mdb"); }
  std::string Put(const Maker& maker) const { return Write("store.mdb", maker.Bytes()); }
  static std::unique_ptr<platform::Connection> Open(const std::string& path, const std::string& settings = {}) {
    return databases::OpenDesktop("Provider=Stockbook.Desktop;Tables=*;" + settings + ";Data Source=" + path);
  }
  // All rows, a line each with blanks between the values and "~" for null.
  static std::string Rows(platform::Connection& connection, const std::string& statement) {
    platform::Recordset rows = connection.Execute(statement);
    std::string text;
    for (; !rows.AtEnd(); rows.MoveNext()) {
      for (size_t field = 0; field < rows.FieldCount(); ++field) {
        const base::Value value = rows.FieldValue(field);
        text += (field == 0 ? "" : " ") + (value.IsNull() ? std::string("~") : value.Text());
      }
      text += "\n";
    }
    return text;
  }
  // What opening the file says and of which kind that is; "" when it can be opened.
  struct Refusal {
    std::string text;
    platform::ErrorKind kind = platform::ErrorKind::kStatement;
  };
  static Refusal RefusalOf(const std::string& path, const std::string& settings = {}) {
    try {
      Open(path, settings);
    } catch (const platform::Error& error) {
      return {error.what(), error.kind()};
    }
    return {};
  }
  std::vector<std::string> Copies() const {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator at(PathOf("cache/stockbook"), error), end; at != end; ++at)
      names.push_back(at->path().string());
    return names;
  }
  // One table `t` with a key and a text.
  static Maker TwoColumns(const std::vector<std::u16string>& texts) {
    Maker maker;
    const size_t table =
        maker.AddTable(WideBytes(u"t"), {{WideBytes(u"id"), Maker::kLong}, {WideBytes(u"name"), Maker::kText}});
    for (size_t index = 0; index < texts.size(); ++index)
      maker.AddRow(table, {LittleEndian(index + 1, 4), WideBytes(texts[index])});
    return maker;
  }

 private:
  std::optional<std::string> cache_before_;
};

}  // namespace stockbook::testing
