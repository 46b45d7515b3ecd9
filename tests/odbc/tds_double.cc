// SPDX-License-Identifier: MIT
#include "odbc/tds_double.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <optional>

#include "odbc/odbc_drivers.h"

namespace stockbook::testing {
namespace {

constexpr unsigned char kAnswerPacket = 0x04;
constexpr unsigned char kPreloginPacket = 0x12;
constexpr size_t kHeaderBytes = 8;

std::string Little(uint64_t number, int bytes) {
  std::string text;
  for (int byte = 0; byte < bytes; ++byte) text += static_cast<char>(number >> (8 * byte) & 0xFF);
  return text;
}

std::string Ucs2(const std::string& latin) {
  std::string text;
  for (const char letter : latin) text.append(1, letter).append(1, '\0');
  return text;
}

// A text behind the number of its characters, in that many bytes.
std::string Counted(const std::string& latin, int bytes) { return Little(latin.size(), bytes) + Ucs2(latin); }

bool ReadAll(int socket, char* to, size_t bytes) {
  while (bytes > 0) {
    const ssize_t got = read(socket, to, bytes);
    if (got <= 0) return false;
    to += got;
    bytes -= static_cast<size_t>(got);
  }
  return true;
}

struct Request {
  unsigned char type = 0;
  std::string body;
};

std::optional<Request> ReadRequest(int socket) {
  Request request;
  for (;;) {
    unsigned char header[kHeaderBytes];
    if (!ReadAll(socket, reinterpret_cast<char*>(header), kHeaderBytes)) return std::nullopt;
    request.type = header[0];
    const size_t length = static_cast<size_t>(header[2]) << 8 | header[3];
    std::string part(length - kHeaderBytes, '\0');
    if (!ReadAll(socket, part.data(), part.size())) return std::nullopt;
    request.body += part;
    const bool last = (header[1] & 1) != 0;
    if (last) return request;
  }
}

void Send(int socket, const std::string& body) {
  const size_t length = body.size() + kHeaderBytes;
  std::string packet = {static_cast<char>(kAnswerPacket),
                        1,
                        static_cast<char>(length >> 8),
                        static_cast<char>(length & 0xFF),
                        0,
                        0,
                        1,
                        0};
  packet += body;
  [[maybe_unused]] const ssize_t sent = send(socket, packet.data(), packet.size(), MSG_NOSIGNAL);
}

// Version 11, and no encryption.
std::string Prelogin() {
  const std::string options = {0, 0, 11, 0, 6, 1, 0, 17, 0, 1, static_cast<char>(0xFF)};
  return options + std::string{11, 0, 8, 52, 0, 0, 2};
}

std::string LoginAcknowledged() {
  const std::string body =
      std::string("\x01\x74\x00\x00\x04", 5) + Counted("Microsoft SQL Server", 1) + std::string("\x0b\x00\x08\x34", 4);
  return "\xAD" + Little(body.size(), 2) + body + TdsDouble::Done();
}

std::string LatinOf(const std::string& ucs2) {
  std::string text;
  for (const char letter : ucs2) {
    if (letter >= ' ' && letter <= '~') text += letter;
  }
  return text;
}

}  // namespace

std::string TdsDouble::Done() { return "\xFD" + Little(0x10, 2) + Little(0xC1, 2) + Little(0, 8); }

std::string TdsDouble::Refusal(int number, const std::string& message) {
  const std::string body = Little(static_cast<uint64_t>(number), 4) + "\x01\x0E" + Counted(message, 2) +
                           Counted("double", 1) + Counted("", 1) + Little(1, 4);
  return "\xAA" + Little(body.size(), 2) + body + "\xFD" + Little(2, 2) + Little(0, 2) + Little(0, 8);
}

std::string TdsDouble::Columns(const std::string& name) {
  constexpr int kNvarchar = 0xE7;
  const std::string collation("\x09\x04\xD0\x00\x34", 5);
  return "\x81" + Little(1, 2) + Little(0, 4) + Little(1, 2) + Little(kNvarchar, 1) + Little(200, 2) + collation +
         Counted(name, 1);
}

std::string TdsDouble::Row(const std::string& text) {
  const std::string wide = Ucs2(text);
  return "\xD1" + Little(wide.size(), 2) + wide;
}

TdsDouble::TdsDouble(Login login, Answer answer) : login_(login), answer_(std::move(answer)) {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 && listen(listener_, 8) == 0 &&
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0)
    port_ = ntohs(address.sin_port);
  listening_ = std::thread([this] { Listen(); });
}

TdsDouble::~TdsDouble() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    for (const int client : clients_) shutdown(client, SHUT_RDWR);
  }
  stopped_changed_.notify_all();
  shutdown(listener_, SHUT_RDWR);
  listening_.join();
  for (std::thread& thread : threads_) thread.join();
  for (const int client : clients_) close(client);
  close(listener_);
}

std::string TdsDouble::ConnectionString(const std::string& more) const {
  return "Provider=Odbc;Driver=" + TdsOdbcDriver() + ";Server=127.0.0.1;Port=" + std::to_string(port_) +
         ";TDS_Version=7.4;UID=clerk;PWD=geheim" + (more.empty() ? "" : ";" + more);
}

void TdsDouble::Listen() {
  for (;;) {
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    const std::lock_guard lock(mutex_);
    clients_.push_back(client);
    if (stopped_) return;
    threads_.emplace_back([this, client] { Serve(client); });
  }
}

bool TdsDouble::LogIn(int client) {
  auto request = ReadRequest(client);
  if (request && request->type == kPreloginPacket) {
    Send(client, Prelogin());
    request = ReadRequest(client);
  }
  if (!request) return false;
  ++logins_;
  if (login_ == Login::kSilent) {
    WaitUntilStopped();
    return false;
  }
  Send(client, login_ == Login::kAccepted ? LoginAcknowledged() : Refusal(18456, "Login failed for user 'clerk'."));
  return login_ == Login::kAccepted;
}

void TdsDouble::Serve(int client) {
  bool serves = LogIn(client);
  while (serves) {
    const auto request = ReadRequest(client);
    if (!request) break;
    const TdsReply reply = answer_(LatinOf(request->body));
    if (reply.silent) {
      WaitUntilStopped();
      break;
    }
    Send(client, reply.tokens);
    serves = !reply.cuts_off;
  }
  shutdown(client, SHUT_RDWR);
}

void TdsDouble::WaitUntilStopped() {
  std::unique_lock lock(mutex_);
  stopped_changed_.wait(lock, [&] { return stopped_; });
}

}  // namespace stockbook::testing
