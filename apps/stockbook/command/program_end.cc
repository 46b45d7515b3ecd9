// SPDX-License-Identifier: MIT
#include "stockbook/command/program_end.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {
namespace {

constexpr size_t kLongestPath = 4096;
constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU, SIGABRT, SIGSEGV, SIGBUS};

enum State { kFree, kTaken, kNamed };

struct Place {
  std::atomic<int> state = kFree;
  std::array<char, kLongestPath> path{};
};

// The only thing that a signal handler can reach is what is always there.
std::array<Place, 8> places;

extern "C" void EndBySignal(int signal) {
  RemoveUnfinishedFiles();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void SayBriefly(std::string_view text) {
  // There is nobody to tell if even this cannot be written.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

// Whether the program ends for want of memory. Then even the exception that says so may have found no room.
bool IsOutOfMemory() {
  try {
    if (const auto error = std::current_exception()) std::rethrow_exception(error);
    return true;
  } catch (const std::bad_alloc&) {
    return true;
  } catch (...) {
    return false;
  }
}

// What an exception that nobody catches leads to. The toolkit is not made for exceptions: what its events throw ends
// here, and what is thrown while it cleans up.
[[noreturn]] void EndByException() {
  RemoveUnfinishedFiles();
  if (IsOutOfMemory()) {
    SayBriefly("stockbook: There is not enough memory for this; close other programs or take less data.\n");
    std::_Exit(kExitFailed);
  }
  SayBriefly("stockbook: An error that nobody expected ends the program.\n");
  std::abort();
}

}  // namespace

void PrepareForTheEnd() {
  for (const int signal : kEndingSignals) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action = {};
    action.sa_handler = EndBySignal;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
  }
  std::signal(SIGXFSZ, SIG_IGN);
  std::set_terminate(EndByException);
}

void RemoveUnfinishedFiles() {
  for (Place& place : places) {
    if (place.state.load() == kNamed) unlink(place.path.data());
  }
}

UnfinishedFile::UnfinishedFile(const std::string& path) {
  if (path.size() >= kLongestPath) return;
  for (size_t index = 0; index < places.size(); ++index) {
    int free = kFree;
    if (!places[index].state.compare_exchange_strong(free, kTaken)) continue;
    std::copy_n(path.c_str(), path.size() + 1, places[index].path.begin());
    places[index].state = kNamed;
    place_ = index;
    return;
  }
}

UnfinishedFile::~UnfinishedFile() {
  if (place_ != kNone) places[place_].state = kFree;
}

}  // namespace stockbook::app
