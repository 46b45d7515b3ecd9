// SPDX-License-Identifier: MIT
#include "window/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace stockbook::window {
namespace {

using std::chrono::milliseconds;

constexpr int kInput = 0;
constexpr int kOutput = 1;
constexpr int kError = 2;

int MillisecondsUntil(Clock::time_point until) {
  return static_cast<int>(std::max<int64_t>(0, std::chrono::duration_cast<milliseconds>(until - Clock::now()).count()));
}

}  // namespace

Process::Process(const std::vector<std::string>& command, const Variables& variables) {
  signal(SIGPIPE, SIG_IGN);
  Start(command, variables);
}

void Process::Start(const std::vector<std::string>& command, const Variables& variables) {
  int into[2];
  int out[2];
  if (pipe2(into, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("there are no pipes left");
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_ = fork();
  if (pid_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // a test that is killed leaves nothing behind
    dup2(into[0], kInput);
    dup2(out[1], kOutput);
    if (const int nowhere = open("/dev/null", O_WRONLY); nowhere >= 0) dup2(nowhere, kError);
    for (const auto& [name, value] : variables) setenv(name.c_str(), value.c_str(), 1);
    execvp(words[0], words.data());
    _exit(127);
  }
  close(into[0]);
  close(out[1]);
  input_ = into[1];
  output_ = out[0];
  if (pid_ < 0) throw std::runtime_error(command.front() + " cannot be started");
}

Process::~Process() {
  if (input_ >= 0) close(input_);
  if (output_ >= 0) close(output_);
  if (pid_ <= 0) return;
  kill(pid_, SIGTERM);
  if (Wait(Clock::now() + milliseconds(3000)); pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
}

bool Process::WriteLine(const std::string& line) {
  const std::string text = line + "\n";
  return write(input_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

std::optional<std::string> Process::ReadLine(Clock::time_point until) {
  while (unread_.find('\n') == std::string::npos) {
    pollfd waiting{output_, POLLIN, 0};
    if (poll(&waiting, 1, MillisecondsUntil(until)) <= 0) return std::nullopt;
    char buffer[4096];
    const ssize_t count = read(output_, buffer, sizeof buffer);
    if (count <= 0) return std::nullopt;
    unread_.append(buffer, static_cast<size_t>(count));
  }
  const size_t end = unread_.find('\n');
  std::string line = unread_.substr(0, end);
  unread_.erase(0, end + 1);
  return line;
}

int Process::Wait(Clock::time_point until) {
  int status = 0;
  pid_t ended = 0;
  while ((ended = waitpid(pid_, &status, WNOHANG)) == 0 && Clock::now() < until)
    std::this_thread::sleep_for(milliseconds(1));
  if (ended != pid_) return -1;
  pid_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool IsInstalled(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');)
    if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) return true;
  return false;
}

}  // namespace stockbook::window
