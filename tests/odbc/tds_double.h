// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace stockbook::testing {

// What the double does with one request of a client that has logged in.
struct TdsReply {
  std::string tokens;     // the body of the answer
  bool silent = false;    // says nothing more and keeps the connection
  bool cuts_off = false;  // closes the connection after the tokens
};

// Speaks as much of a server's tabular data stream on a loopback port as it takes to log in, to be refused, to send a
// few rows, to keep silent and to break off. It understands no statement: a function of the test answers them.
class TdsDouble {
 public:
  using Answer = std::function<TdsReply(const std::string& request)>;  // the request's text, Latin letters alone

  enum class Login { kAccepted, kRefused, kSilent };
  TdsDouble(Login login, Answer answer);
  ~TdsDouble();
  TdsDouble(const TdsDouble&) = delete;
  TdsDouble& operator=(const TdsDouble&) = delete;

  int port() const { return port_; }
  int logins() const { return logins_; }
  std::string ConnectionString(const std::string& more) const;

  // Bodies of answers.
  static std::string Done();
  static std::string Refusal(int number, const std::string& message);
  // Rows of one column of text.
  static std::string Columns(const std::string& name);
  static std::string Row(const std::string& text);

 private:
  void Listen();
  void Serve(int client);
  bool LogIn(int client);
  void WaitUntilStopped();

  Login login_;
  Answer answer_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<int> logins_ = 0;
  std::mutex mutex_;
  std::condition_variable stopped_changed_;
  bool stopped_ = false;
  std::vector<int> clients_;
  std::vector<std::thread> threads_;
  std::thread listening_;
};

}  // namespace stockbook::testing
