// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <iostream>
#include <string>
#include <vector>

#include "databases/sqlite/process_settings.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/export_command.h"
#include "stockbook/command/import_command.h"
#include "stockbook/command/open_command.h"
#include "stockbook/command/print_command.h"
#include "stockbook/command/program_end.h"
#include "stockbook/command/render_command.h"
#include "stockbook/command/sample_command.h"
#include "stockbook/command/sql_command.h"

namespace {

// The number of a closed standard stream would go to the next file that is opened, and messages would be written into
// that. What stands in for the stream fails as a closed one does.
void OccupyClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  using namespace stockbook::app;
  OccupyClosedStreams();
  // In step with the C library, a stream takes an error of reading for the end of the input.
  std::ios::sync_with_stdio(false);
  PrepareForTheEnd();
  stockbook::databases::TurnOffMemoryStatistics();
  // One line per command; 'stockbook --help' lists them in this order.
  const std::array commands{
      OpenCommand(), SampleCommand(), ImportCommand(), SqlCommand(), ExportCommand(), PrintCommand(), RenderCommand(),
  };
  Terminal terminal{std::cin, std::cout, std::cerr};
  const int code = RunProgram(commands, std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), terminal);
  std::cout.flush();
  if (code != kExitDone || std::cout) return code;
  std::cerr << "stockbook: The output could not be written; check the disk or the program that reads it.\n";
  return kExitFailed;
}
