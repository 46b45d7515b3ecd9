// SPDX-License-Identifier: MIT
#include "databases/desktop/reading_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

namespace stockbook::databases {
namespace {

constexpr int kPipeOfCopy = 3;

platform::Error NoRoom(int code) {
  return {"Open", "系统资源不足，无法读取桌面数据库文件，请关闭一些程序后再试", code, platform::ErrorKind::kMemory};
}

// The memory that may be written, as the limit counts it.
uint64_t WritableBytes() {
  uint64_t pages = 0;
  if (std::FILE* file = std::fopen("/proc/self/statm", "re")) {
    unsigned long long data = 0;
    if (std::fscanf(file, "%*u %*u %*u %*u %*u %llu", &data) == 1) pages = data;
    std::fclose(file);
  }
  return pages * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

void LimitResource(decltype(RLIMIT_CPU) what, uint64_t most) {
  rlimit limit{};
  if (getrlimit(what, &limit) != 0 || most > limit.rlim_max) return;
  limit.rlim_cur = most;
  setrlimit(what, &limit);
}

// What the copy is cut off from: the host's handlers, its terminal, all that it has open.
void LeaveHost(int pipe, pid_t host, const ReadingProcess::Limits& limits) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != host) _exit(1);
  for (int number = 1; number < 32; ++number) signal(number, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  // The host may have closed its standard streams and given their numbers to anything, the pipe included.
  const int kept = fcntl(pipe, F_DUPFD, kPipeOfCopy + 1);
  const int nothing = open("/dev/null", O_RDWR);
  for (int standard = 0; standard < kPipeOfCopy; ++standard) dup2(nothing, standard);
  dup2(kept, kPipeOfCopy);
  syscall(SYS_close_range, kPipeOfCopy + 1U, ~0U, 0U);
  LimitResource(RLIMIT_CORE, 0);
  LimitResource(RLIMIT_CPU, limits.processor_seconds);
  const uint64_t writable = WritableBytes();
  if (writable > 0) LimitResource(RLIMIT_DATA, writable + limits.more_memory_bytes);
}

}  // namespace

ReadingProcess::ReadingProcess(const std::function<void(int)>& work, const Limits& limits,
                               const Interruption& interruption)
    : interruption_(interruption), left_bytes_(limits.sent_bytes) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw NoRoom(errno);
  const pid_t host = getpid();
  process_ = fork();
  if (process_ == 0) {
    LeaveHost(ends[1], host, limits);
    try {
      work(kPipeOfCopy);
    } catch (...) {
      _exit(1);
    }
    _exit(0);
  }
  const int problem = errno;
  close(ends[1]);
  if (process_ < 0) {
    close(ends[0]);
    throw NoRoom(problem);
  }
  pipe_ = ends[0];
  process_handle_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

ReadingProcess::~ReadingProcess() { Stop(); }

// A host may wait for all its children, or want to hear of none; then the number may already be another's.
void ReadingProcess::Stop() {
  close(pipe_);
  if (process_handle_ >= 0) {
    syscall(SYS_pidfd_send_signal, process_handle_, SIGKILL, nullptr, 0);
    close(process_handle_);
  } else if (waitpid(process_, nullptr, WNOHANG) == 0) {
    kill(process_, SIGKILL);
  } else {
    return;
  }
  // One that waits for a network that is gone cannot be ended; nobody waits for it.
  constexpr int kMostTries = 1000;
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (waitpid(process_, nullptr, WNOHANG) != 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

bool ReadingProcess::WaitForBytes() {
  constexpr std::chrono::seconds kLongestSilence{20};
  constexpr int kBetweenLooksMs = 10;
  const auto began = Interruption::Clock::now();
  for (;;) {
    if (interruption_.IsDue()) throw interruption_.Reason("Open");
    pollfd wanted{pipe_, POLLIN, 0};
    if (poll(&wanted, 1, kBetweenLooksMs) > 0) return true;
    if (Interruption::Clock::now() - began > kLongestSilence) {
      stuck_ = true;
      return false;
    }
  }
}

size_t ReadingProcess::Read(char* bytes, size_t size) {
  while (WaitForBytes()) {
    const ssize_t got = read(pipe_, bytes, size);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || static_cast<uint64_t>(got) > left_bytes_) return 0;
    left_bytes_ -= static_cast<uint64_t>(got);
    return static_cast<size_t>(got);
  }
  return 0;
}

}  // namespace stockbook::databases
