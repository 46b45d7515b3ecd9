// SPDX-License-Identifier: MIT
// From the start of the process to the first painted journal of the sample, compared with a window of the same toolkit
// that draws one line of Chinese text, alternating in one run; by the clock and in processor time, as ratios of the
// medians. `start_bench [ROUNDS]`, by default 15, without a screen, and on the screen of DISPLAY if there is one.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "child_process.h"

namespace {

namespace fs = std::filesystem;
using stockbook::bench::ElapsedSeconds;

constexpr double kMostStartRatio = 2.0;
constexpr int kUsualStarts = 15;

struct Started {
  double elapsed = 0;
  double cpu = 0;
};

enum class WaitsFor { kAnything, kJournal };

void Become(const fs::path& program, const char* platform, WaitsFor what, int report) {
  setenv("QT_QPA_PLATFORM", platform, 1);
  setenv("LD_PRELOAD", (fs::read_symlink("/proc/self/exe").parent_path() / "paint_watch.so").c_str(), 1);
  setenv("STOCKBOOK_WATCH_REPORT", std::to_string(report).c_str(), 1);
  if (what == WaitsFor::kJournal) setenv("STOCKBOOK_WATCH_JOURNAL", "1", 1);
  dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
  execl(program.c_str(), program.c_str(), nullptr);
  _exit(127);
}

Started Start(const fs::path& program, const char* platform, WaitsFor what) {
  int ends[2] = {};
  if (pipe(ends) != 0) std::exit(1);
  const double begin = ElapsedSeconds();
  const pid_t child = fork();
  if (child == 0) Become(program, platform, what, ends[1]);
  close(ends[1]);
  std::FILE* report = fdopen(ends[0], "r");
  double painted = 0;
  Started started;
  const bool told = std::fscanf(report, "%lf %lf", &painted, &started.cpu) == 2;
  std::fclose(report);
  waitpid(child, nullptr, 0);
  if (!told) {
    std::fprintf(stderr, "%s painted nothing\n", program.c_str());
    std::exit(1);
  }
  started.elapsed = painted - begin;
  return started;
}

double MedianOf(const std::vector<Started>& all, double Started::*what) {
  std::vector<double> values;
  for (const Started& each : all) values.push_back(each.*what);
  std::sort(values.begin(), values.end());
  return values[values.size() / 2] * 1e3;
}

void Compare(const char* platform, int rounds) {
  const fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
  std::vector<Started> own;
  std::vector<Started> bare;
  // The first start makes the sample, and warms what both read.
  Start(here.parent_path() / "stockbook", platform, WaitsFor::kJournal);
  for (int round = 0; round < rounds; ++round) {
    own.push_back(Start(here.parent_path() / "stockbook", platform, WaitsFor::kJournal));
    bare.push_back(Start(here / "bare_window", platform, WaitsFor::kAnything));
  }
  for (const auto& [name, what] : {std::pair{"by the clock", &Started::elapsed}, {"processor", &Started::cpu}}) {
    const double mine = MedianOf(own, what);
    const double least = MedianOf(bare, what);
    std::printf("%-10s %-13s journal %7.1f ms   bare window %7.1f ms   ratio %.2f (at most %.1f)\n", platform, name,
                mine, least, mine / least, kMostStartRatio);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(std::atoi(argv[1]), 1) : kUsualStarts;
  const fs::path home = fs::temp_directory_path() / ("stockbook-start-" + std::to_string(getpid()));
  fs::create_directories(home);
  for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) setenv(variable, home.c_str(), 1);
  Compare("offscreen", rounds);
  if (std::getenv("DISPLAY") != nullptr) Compare("xcb", rounds);
  fs::remove_all(home);
}
