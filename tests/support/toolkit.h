// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <memory>

namespace stockbook::testing {

// A running toolkit, which keeps pointers to its command line; there can be only one at a time.
class Toolkit {
 private:
  int count_ = 1;
  char name_[8] = "tests";
  char* arguments_[2] = {name_, nullptr};
  QApplication application_{count_, arguments_};
};

inline std::unique_ptr<Toolkit>& RunningToolkit() {
  static std::unique_ptr<Toolkit> running;
  return running;
}

}  // namespace stockbook::testing
