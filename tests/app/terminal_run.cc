// SPDX-License-Identifier: MIT
#include "app/terminal_run.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>

namespace stockbook::app {
namespace {

constexpr int kTerminalPatienceMs = 180'000;

}  // namespace

TerminalRun::TerminalRun(const std::vector<std::string>& arguments) {
  std::vector<std::string> words{STOCKBOOK_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
  if (pid_ == 0) {
    execv(argv[0], argv.data());
    _exit(127);
  }
  EXPECT_GT(pid_, 0) << "no terminal";
}

TerminalRun::~TerminalRun() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  if (terminal_ >= 0) close(terminal_);
}

bool TerminalRun::ReadMore() {
  pollfd waited{terminal_, POLLIN, 0};
  if (poll(&waited, 1, kTerminalPatienceMs) <= 0) return false;
  std::array<char, 4096> buffer{};
  const ssize_t count = read(terminal_, buffer.data(), buffer.size());
  if (count <= 0) return false;
  shown_.append(buffer.data(), static_cast<size_t>(count));
  return true;
}

bool TerminalRun::WaitFor(const std::string& text) {
  while (shown_.find(text) == std::string::npos) {
    if (!ReadMore()) return false;
  }
  return true;
}

void TerminalRun::Type(const std::string& keys) const {
  EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

int TerminalRun::Wait() {
  while (ReadMore()) {
  }
  int status = 0;
  if (waitpid(pid_, &status, 0) != pid_) return -1;
  pid_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string TerminalRun::Listed() const {
  std::ifstream file("/proc/" + std::to_string(pid_) + "/cmdline", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace stockbook::app
