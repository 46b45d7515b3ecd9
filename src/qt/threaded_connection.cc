// SPDX-License-Identifier: MIT
#include "stockbook/qt/threaded_connection.h"

#include <utility>

namespace stockbook::qt {
namespace {

// A moment of the other connection, which begins and ends on that one's thread.
class MomentBeside : public platform::Moment {
 public:
  MomentBeside(std::unique_ptr<platform::Moment> other, std::shared_ptr<Beside> beside)
      : other_(std::move(other)), beside_(std::move(beside)) {}
  ~MomentBeside() override {
    beside_->RunAtOnce([this] { other_.reset(); });
  }
  MomentBeside(const MomentBeside&) = delete;
  MomentBeside& operator=(const MomentBeside&) = delete;

 private:
  std::unique_ptr<platform::Moment> other_;
  std::shared_ptr<Beside> beside_;
};

}  // namespace

ThreadedConnection::ThreadedConnection(std::shared_ptr<platform::Connection> other, std::shared_ptr<Beside> beside)
    : other_(std::move(other)), beside_(std::move(beside)), connection_string_(other_->ConnectionString()) {}

ThreadedConnection::~ThreadedConnection() {
  beside_->RunAtOnce([this] { other_.reset(); });
}

platform::Recordset ThreadedConnection::Execute(std::string_view statement, int options) {
  platform::Recordset rows;
  RunBeside([&] { rows = other_->Execute(statement, options); });
  return rows;
}

std::unique_ptr<platform::Moment> ThreadedConnection::ReadAsOfOneMoment() {
  std::unique_ptr<platform::Moment> moment;
  RunBeside([&] { moment = other_->ReadAsOfOneMoment(); });
  if (moment == nullptr) return nullptr;
  return std::make_unique<MomentBeside>(std::move(moment), beside_);
}

void ThreadedConnection::RunBeside(const std::function<void()>& run) {
  beside_->Run({run, [this] { other_->Cancel(); }, [this] { return other_->RowsRead(); }});
}

}  // namespace stockbook::qt
