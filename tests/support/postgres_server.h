// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "support/test_folder.h"

namespace stockbook::testing {

// A PostgreSQL server of the system's package, with its data in a temporary folder, for the tests of one program: on a
// free port of the loopback interface, without a password but for the role "locked", whose password is "open; sesame".
// It ends with the program, however that ends.
class PostgresServer {
 public:
  // The folder of the newest server's programs, or nothing where none is installed.
  static std::string ProgramFolder();

  // Throws std::runtime_error when no server can be started.
  explicit PostgresServer(std::vector<std::string> settings = {});
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  int port() const { return port_; }
  // Of the superuser of the tests, with more settings behind it.
  std::string ConnectionString(const std::string& more = {}) const;
  // Runs statements as the superuser; throws std::runtime_error when they fail. Gives the first value of the last one.
  std::string Run(const std::string& statements) const;

  // Stops all processes of the server as they are (SIGSTOP), and lets them go on.
  void Pause() const;
  void Resume() const;
  // Ends the server at once, and starts it again.
  void Kill();
  void Start();

 private:
  void InitialiseData();
  std::vector<std::string> ServerCommand() const;
  void WaitUntilReady();
  std::vector<pid_t> Processes() const;

  std::vector<std::string> settings_;
  std::string programs_;
  TestFolder folder_;
  int port_ = 0;
  pid_t process_ = -1;
};

// The server that the tests of a program share, or nullptr where none is installed.
PostgresServer* SharedPostgresServer();

}  // namespace stockbook::testing
