// SPDX-License-Identifier: MIT
#include "support/postgres_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace stockbook::testing {
namespace {

namespace fs = std::filesystem;

// A server refuses to run as root.
const passwd* UserOfServer() {
  if (geteuid() != 0) return nullptr;
  const passwd* user = getpwnam("postgres");
  return user != nullptr ? user : getpwnam("nobody");
}

// Runs a program of the server as its user, with its output in a file; `end_signal` is sent when this program ends.
pid_t Spawn(const std::vector<std::string>& command, const std::string& output, int end_signal) {
  const passwd* user = UserOfServer();
  std::vector<char*> arguments;
  for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child != 0) return child;
  const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  if (user != nullptr && (setgid(user->pw_gid) != 0 || setuid(user->pw_uid) != 0)) _exit(126);
  prctl(PR_SET_PDEATHSIG, end_signal);
  if (getppid() != parent || chdir("/") != 0) _exit(126);
  execv(arguments[0], arguments.data());
  _exit(127);
}

int FreePort() {
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  const bool bound = bind(probe, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
                     getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length) == 0;
  close(probe);
  if (!bound) throw std::runtime_error("no free port");
  return ntohs(address.sin_port);
}

}  // namespace

std::string PostgresServer::ProgramFolder() {
  std::string newest;
  int newest_version = 0;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", ignored)) {
    const int version = std::atoi(entry.path().filename().c_str());
    const fs::path programs = entry.path() / "bin";
    if (version <= newest_version || !fs::exists(programs / "initdb") || !fs::exists(programs / "postgres")) continue;
    newest = programs.string();
    newest_version = version;
  }
  return newest;
}

PostgresServer::PostgresServer(std::vector<std::string> settings)
    : settings_(std::move(settings)), programs_(ProgramFolder()) {
  if (programs_.empty()) throw std::runtime_error("no PostgreSQL server is installed");
  if (const passwd* user = UserOfServer()) {
    if (chown(folder_.PathOf(".").c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown failed");
  }
  InitialiseData();
  port_ = FreePort();
  Start();
  Run("CREATE ROLE locked LOGIN PASSWORD 'open; sesame'");
}

PostgresServer::~PostgresServer() {
  if (process_ <= 0) return;
  Resume();
  kill(process_, SIGQUIT);
  waitpid(process_, nullptr, 0);
}

void PostgresServer::InitialiseData() {
  const std::string log = folder_.PathOf("initdb.log");
  const pid_t child = Spawn({programs_ + "/initdb", "-D", folder_.PathOf("data"), "-A", "trust", "-U", "tester", "-E",
                             "UTF8", "--locale=C.UTF-8", "--no-sync", "--no-instructions"},
                            log, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error("initdb failed: " + TestFolder::ReadAll(log));
  // The first line that fits decides.
  std::ofstream(folder_.PathOf("data/pg_hba.conf"))
      << "host all locked 127.0.0.1/32 scram-sha-256\nhost all all 127.0.0.1/32 trust\n";
}

std::vector<std::string> PostgresServer::ServerCommand() const {
  std::vector<std::string> command = {programs_ + "/postgres", "-D", folder_.PathOf("data")};
  std::vector<std::string> settings = {"port=" + std::to_string(port_),
                                       "listen_addresses=127.0.0.1",
                                       "unix_socket_directories=",
                                       "fsync=off",
                                       "full_page_writes=off",
                                       "timezone=Asia/Shanghai",
                                       "lc_messages=C"};
  settings.insert(settings.end(), settings_.begin(), settings_.end());
  for (const std::string& setting : settings) command.insert(command.end(), {"-c", setting});
  return command;
}

void PostgresServer::Start() {
  const std::string log = folder_.PathOf("server.log");
  // A process of a server that was killed may hold its memory a moment longer.
  constexpr int kTries = 100;
  for (int tries = 1;; ++tries) {
    const size_t before = TestFolder::ReadAll(log).size();
    process_ = Spawn(ServerCommand(), log, SIGQUIT);
    try {
      WaitUntilReady();
      return;
    } catch (const std::runtime_error&) {
      const std::string said = TestFolder::ReadAll(log);
      const bool held = said.find("is still in use", std::min(before, said.size())) != std::string::npos;
      if (!held || tries == kTries) throw;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
  }
}

void PostgresServer::WaitUntilReady() {
  const std::string where = "host=127.0.0.1 user=tester dbname=postgres port=" + std::to_string(port_);
  const auto until = std::chrono::steady_clock::now() + std::chrono::minutes{2};
  while (PQping(where.c_str()) != PQPING_OK) {
    int status = 0;
    const bool ended = waitpid(process_, &status, WNOHANG) == process_;
    if (ended) process_ = -1;
    if (ended || std::chrono::steady_clock::now() > until) {
      throw std::runtime_error("the server does not start: " + TestFolder::ReadAll(folder_.PathOf("server.log")));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds{20});
  }
}

std::string PostgresServer::ConnectionString(const std::string& more) const {
  return "Provider=Postgres;Host=127.0.0.1;User=tester;Database=postgres;Port=" + std::to_string(port_) + ";" + more;
}

std::string PostgresServer::Run(const std::string& statements) const {
  const std::string where = "host=127.0.0.1 user=tester dbname=postgres port=" + std::to_string(port_);
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(where.c_str()), PQfinish);
  PQsetNoticeReceiver(
      connection.get(), [](void*, const PGresult*) {}, nullptr);
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection.get(), statements.c_str()), PQclear);
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    throw std::runtime_error(PQerrorMessage(connection.get()));
  }
  return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
}

// The server's first process and its children, each of which leads a process group of its own.
std::vector<pid_t> PostgresServer::Processes() const {
  std::vector<pid_t> processes = {process_};
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::ifstream stat(entry.path() / "stat");
    std::string line;
    if (!std::getline(stat, line)) continue;
    const size_t name_end = line.rfind(')');
    if (name_end == std::string::npos || name_end + 4 > line.size()) continue;
    if (std::atoi(line.c_str() + name_end + 4) == process_) processes.push_back(std::atoi(line.c_str()));
  }
  return processes;
}

void PostgresServer::Pause() const {
  for (const pid_t process : Processes()) kill(process, SIGSTOP);
}

void PostgresServer::Resume() const {
  for (const pid_t process : Processes()) kill(process, SIGCONT);
}

void PostgresServer::Kill() {
  if (process_ <= 0) return;
  Resume();
  // Killed, the first process cannot wait for its children; these notice, but only one by one.
  // Stopped, it makes no more of them meanwhile.
  kill(process_, SIGSTOP);
  const std::vector<pid_t> processes = Processes();
  for (const pid_t process : processes) kill(process, SIGKILL);
  waitpid(process_, nullptr, 0);
  process_ = -1;
  fs::remove(folder_.PathOf("data/postmaster.pid"));
}

PostgresServer* SharedPostgresServer() {
  if (PostgresServer::ProgramFolder().empty()) return nullptr;
  static PostgresServer server;
  return &server;
}

}  // namespace stockbook::testing
