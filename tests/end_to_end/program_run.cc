// SPDX-License-Identifier: MIT
#include "end_to_end/program_run.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace stockbook::end_to_end {
namespace {

constexpr std::chrono::minutes kPatience(5);

[[noreturn]] void Become(const std::vector<char*>& arguments, int input, const std::string& error_file,
                         const std::optional<Limit>& limit, Streams streams) {
  const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const int error = open(error_file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  dup2(input, STDIN_FILENO);
  dup2(null, STDOUT_FILENO);
  dup2(error, STDERR_FILENO);
  if (streams == Streams::kClosed) {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(stream);
  }
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  if (limit) {
    const rlimit bound{limit->bytes, limit->bytes};
    setrlimit(limit->what, &bound);
  }
  execv(arguments.front(), arguments.data());
  _exit(126);
}

}  // namespace

ProgramRun::ProgramRun(const std::vector<std::string>& arguments, const std::string& error_file,
                       const std::optional<Limit>& limit, Streams streams) {
  std::vector<std::string> words{STOCKBOOK_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  pid_ = fork();
  if (pid_ == 0) Become(pointers, ends[0], error_file, limit, streams);
  EXPECT_GT(pid_, 0);
  close(ends[0]);
  input_ = ends[1];
}

ProgramRun::~ProgramRun() {
  CloseInput();
  if (pid_ <= 0) return;
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

void ProgramRun::Write(const std::string& text) const {
  EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void ProgramRun::CloseInput() {
  if (input_ >= 0) close(input_);
  input_ = -1;
}

void ProgramRun::Send(int signal) const { kill(pid_, signal); }

std::string ProgramRun::FileOf(int descriptor) const {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/" + std::to_string(pid_) + "/fd/" + std::to_string(descriptor), error)
      .string();
}

int ProgramRun::Wait() {
  int status = 0;
  const auto until = std::chrono::steady_clock::now() + kPatience;
  while (waitpid(pid_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > until) {
      ADD_FAILURE() << "the program hangs";
      kill(pid_, SIGKILL);
      waitpid(pid_, &status, 0);
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  pid_ = -1;
  return status;
}

}  // namespace stockbook::end_to_end
