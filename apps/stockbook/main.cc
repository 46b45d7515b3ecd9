// SPDX-License-Identifier: MIT
#include <array>
#include <iostream>
#include <string>
#include <vector>

#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/command/export_command.h"
#include "stockbook/command/import_command.h"
#include "stockbook/command/open_command.h"
#include "stockbook/command/print_command.h"
#include "stockbook/command/render_command.h"
#include "stockbook/command/sample_command.h"
#include "stockbook/command/sql_command.h"

int main(int argc, char** argv) {
  using namespace stockbook::app;
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
