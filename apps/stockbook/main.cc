// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "databases/sqlite/process_settings.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/copy_command.h"
#include "stockbook/command/doctor_command.h"
#include "stockbook/command/export_command.h"
#include "stockbook/command/import_command.h"
#include "stockbook/command/open_command.h"
#include "stockbook/command/plot_command.h"
#include "stockbook/command/print_command.h"
#include "stockbook/command/program_end.h"
#include "stockbook/command/render_command.h"
#include "stockbook/command/sample_command.h"
#include "stockbook/command/sql_command.h"
#include "stockbook/inventory/database_source.h"

namespace {

// The number of a closed standard stream would go to the next file that is opened, and messages would be written into
// that. What stands in for the stream fails as a closed one does.
void OccupyClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

// One arena for all threads: those of further threads grow by the page, each with a call of the system that halts all
// threads where they touch memory. Loads are beside the window and allocate much, but seldom two threads at once.
void ShareOneArena() {
#ifdef M_ARENA_MAX
  mallopt(M_ARENA_MAX, 1);
#endif
}

// The system's list of programs shows the arguments as they are in memory.
void HidePasswords(int argc, char** argv) {
  for (int index = 1; index < argc; ++index) {
    if (stockbook::app::DatabaseSource::MayHavePassword(argv[index]))
      std::fill_n(argv[index], std::strlen(argv[index]), '*');
  }
}

}  // namespace

int main(int argc, char** argv) {
  using namespace stockbook::app;
  ShareOneArena();
  OccupyClosedStreams();
  // In step with the C library, a stream takes an error of reading for the end of the input.
  std::ios::sync_with_stdio(false);
  PrepareForTheEnd();
  stockbook::databases::TurnOffMemoryStatistics();
  // One line per command; 'stockbook --help' lists them in this order.
  const std::array commands{
      OpenCommand(),  SampleCommand(), ImportCommand(), SqlCommand(),  ExportCommand(),
      PrintCommand(), RenderCommand(), PlotCommand(),   CopyCommand(), DoctorCommand(),
  };
  Terminal terminal{std::cin, std::cout, std::cerr};
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  HidePasswords(argc, argv);
  const int code = RunProgram(commands, arguments, terminal);
  std::cout.flush();
  if (code != kExitDone || std::cout) return code;
  std::cerr << "stockbook: The output could not be written; check the disk or the program that reads it.\n";
  return kExitFailed;
}
