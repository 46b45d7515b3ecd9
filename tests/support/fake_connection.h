// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {

// Rows of values under field names.
inline platform::Recordset MakeRecordset(const std::vector<std::string>& names,
                                         const std::vector<std::vector<base::Value>>& rows) {
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < names.size(); ++index) {
    columns::ColumnBuilder builder;
    for (const auto& row : rows) builder.Append(row[index]);
    fields.push_back({names[index], builder.Finish()});
  }
  return platform::Recordset(std::move(fields));
}

inline base::Value Text(const char* text) { return base::Value(std::string(text)); }
inline base::Value Whole(int64_t number) { return base::Value(number); }

// A connection that answers statements from a table and records them. Unknown statements fail.
class FakeConnection : public platform::Connection {
 public:
  explicit FakeConnection(std::string text = "Provider=Stockbook.Embedded;Data Source=fake")
      : connection_string(std::move(text)) {}

  // Answers every statement that begins with `prefix`; longer prefixes win.
  void Answer(const std::string& prefix, std::vector<std::string> names, std::vector<std::vector<base::Value>> rows) {
    answers_[prefix] = [names = std::move(names), rows = std::move(rows)] { return MakeRecordset(names, rows); };
  }
  void Fail(const std::string& prefix, const std::string& message,
            platform::ErrorKind kind = platform::ErrorKind::kStatement) {
    Do(prefix, [message, kind]() -> platform::Recordset { throw platform::Error("execute", message, 0, kind); });
  }
  void Do(const std::string& prefix, std::function<platform::Recordset()> answer) {
    answers_[prefix] = std::move(answer);
  }

  std::string ConnectionString() const override { return connection_string; }
  platform::Recordset Execute(std::string_view statement, int option) override {
    sent_.emplace_back(statement);
    options.push_back(option);
    moments_of_statements.push_back(open_moments);
    const std::function<platform::Recordset()>* best = nullptr;
    size_t longest = 0;
    for (const auto& [prefix, answer] : answers_) {
      if (statement.starts_with(prefix) && prefix.size() >= longest) {
        best = &answer;
        longest = prefix.size();
      }
    }
    if (best == nullptr) throw platform::Error("execute", "unknown statement: " + std::string(statement));
    return (*best)();
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override {
    if (busy) throw platform::Error("begin", "数据库正忙", 5, platform::ErrorKind::kBusy);
    if (!has_moments) return nullptr;
    class Counted : public platform::Moment {
     public:
      explicit Counted(int& open) : open_(open) { ++open_; }
      ~Counted() override { --open_; }

     private:
      int& open_;
    };
    return std::make_unique<Counted>(open_moments);
  }
  const std::vector<std::string>& Sent() const { return sent_; }
  void Forget() {
    sent_.clear();
    options.clear();
    moments_of_statements.clear();
  }

  std::string connection_string;
  std::vector<int> options;  // of the statements that were sent
  int open_moments = 0;
  std::vector<int> moments_of_statements;  // how many were open
  bool has_moments = true;
  bool busy = false;  // no moment can begin

 private:
  std::map<std::string, std::function<platform::Recordset()>> answers_;
  std::vector<std::string> sent_;
};

}  // namespace stockbook::testing
