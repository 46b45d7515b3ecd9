// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "stockbook/platform/connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::journal {

// Takes a message for the user.
using Tell = std::function<void(const std::string& message)>;

// The host's inventory as the journal reads it: the connection, which may be missing, and who is told what could not be
// read. Borrows the connection. What takes an inventory takes a bare connection too, and then tells nobody.
class Inventory {
 public:
  Inventory(platform::Connection* connection, Tell tell = {}) : connection_(connection), tell_(std::move(tell)) {}

  platform::Connection* connection() const { return connection_; }
  // What is read while it lives is of one moment, if the connection can do that.
  std::unique_ptr<platform::Moment> OneMoment() const {
    return connection_ == nullptr ? nullptr : connection_->ReadAsOfOneMoment();
  }
  void Say(const std::string& message) const {
    if (tell_) tell_(message);
  }

  // Runs a query whose result is neutral where its statement fails: what was read so far stays, and the error is told
  // after `consequence`, which says what is missing now. Any other error reaches the caller: the answer exists, and
  // nobody knows it. Without a connection nothing is run.
  template <typename Query>
  void Try(const char* consequence, Query query) const {
    if (connection_ == nullptr) return;
    std::string message;
    try {
      query();
      return;
    } catch (const platform::Error& error) {
      if (error.IsOfEngine()) throw;
      message = std::string(consequence) + error.what();
    }
    Say(message);
  }

 private:
  platform::Connection* connection_;
  Tell tell_;
};

}  // namespace stockbook::journal
