// SPDX-License-Identifier: MIT
#include "stockbook/command/database_options.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr size_t kMostPasswordBytes = 4096;

constexpr std::string_view kDatabaseUsage =
    "DB is a file, or a connection string: 'Provider=Postgres;Host=...;Database=...', 'Provider=Odbc;DSN=...'. A\n"
    "password does not belong into it, as every user of the machine can see it in the list of programs; it is taken "
    "from\n"
    "  --password-file FILE   a file of one line that only its owner may read,\n"
    "  STOCKBOOK_PASSWORD     the environment variable, or else\n"
    "  the terminal           when the server asks for one; it is not shown while it is typed\n\n";

// An open file, or one that is not (-1).
class OpenedFile {
 public:
  explicit OpenedFile(int number) : number_(number) {}
  ~OpenedFile() {
    if (number_ >= 0) close(number_);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

[[noreturn]] void FailPasswordFile(const std::string& path, const std::string& reason) {
  throw platform::Error("password", "密码文件“" + path + "”" + reason);
}

// All of the file, up to a little more than a password may have.
std::string ReadSome(int file, const std::string& path) {
  std::string text;
  std::array<char, kMostPasswordBytes> buffer{};
  while (text.size() <= kMostPasswordBytes) {
    const ssize_t count = read(file, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailPasswordFile(path, "无法读取：" + std::generic_category().message(errno));
    if (count == 0) break;
    text.append(buffer.data(), static_cast<size_t>(count));
  }
  return text;
}

// The terminal of standard input, silent and without the keys that would end the program while it is.
class SilentTerminal {
 public:
  SilentTerminal() {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
    silent.c_lflag |= ICANON;
    is_silent_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
  }
  ~SilentTerminal() {
    if (is_silent_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;
  bool is_silent() const { return is_silent_; }

 private:
  termios before_{};
  bool is_silent_ = false;
};

void Say(std::string_view text) {
  // There is nobody else to tell if the terminal does not take it.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

// A line, or nothing at the end of the input and after Ctrl-C.
std::optional<std::string> ReadLine() {
  constexpr char kInterrupt = 3;
  std::string line;
  char next = 0;
  while (line.size() <= kMostPasswordBytes) {
    const ssize_t count = read(STDIN_FILENO, &next, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0 || next == kInterrupt) return std::nullopt;
    if (next == '\n' || next == '\r') return line;
    line += next;
  }
  return std::nullopt;
}

std::optional<std::string> AskOnce(const std::string& database) {
  const SilentTerminal terminal;
  if (!terminal.is_silent()) return std::nullopt;
  Say("“" + OneLine(database) + "”的密码：");
  auto password = ReadLine();
  Say("\n");
  return password;
}

}  // namespace

std::string_view DatabaseUsage() { return kDatabaseUsage; }

std::string ReadPasswordFile(const std::string& path) {
  const OpenedFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (file.number() < 0) FailPasswordFile(path, "无法打开：" + std::generic_category().message(errno));
  struct stat status {};
  if (fstat(file.number(), &status) != 0) FailPasswordFile(path, "无法打开：" + std::generic_category().message(errno));
  if (S_ISDIR(status.st_mode)) FailPasswordFile(path, "是文件夹，应为只有一行的文件");
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
    FailPasswordFile(path, "其他用户也能读写，请先用 chmod 600 收回权限，并更换密码");
  std::string text = ReadSome(file.number(), path);
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  if (text.empty()) FailPasswordFile(path, "是空的，应有一行密码");
  if (text.size() > kMostPasswordBytes || text.find('\n') != std::string::npos || text.find('\0') != std::string::npos)
    FailPasswordFile(path, "不是一行密码，应只有一行，不超过 4096 字节");
  return text;
}

DatabaseSource ReadSource(const CommandLine& line, const std::string& argument, std::string_view command,
                          Terminal& terminal, const PasswordPlaces& places) {
  DatabaseSource source(argument);
  const auto file = line.Value(places.option);
  const std::string option = "The option --" + std::string(places.option);
  if (source.came_with_password()) {
    if (file)
      throw UsageError(option + " and the connection string both give a password; leave out the one in the string.");
    const std::string warning =
        "A password in an argument can be seen in the list of programs and in the shell's history; use --" +
        std::string(places.option) + " or " + places.variable + " instead.";
    Warn(command, {&warning, 1}, terminal);
  } else if (file) {
    if (!source.TakesPassword())
      throw UsageError(option + " is for servers and desktop files; this file takes no password.");
    source.SetPassword(ReadPasswordFile(*file));
  } else if (const char* variable = std::getenv(places.variable); variable != nullptr && *variable != '\0') {
    if (source.TakesPassword()) source.SetPassword(variable);
  }
  return source;
}

AskPassword AskOnTerminal() {
  if (isatty(STDIN_FILENO) == 0) return {};
  return AskOnce;
}

}  // namespace stockbook::app
