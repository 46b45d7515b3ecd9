// SPDX-License-Identifier: MIT
#include "databases/desktop/file_header.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "base/text.h"
#include "databases/desktop/page_values.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

constexpr size_t kVersionAt = 0x14;
constexpr size_t kScrambledAt = 0x18;
constexpr size_t kScrambledBytes = 128;
constexpr size_t kJet3LanguageAt = 0x3a;
constexpr size_t kCodePageAt = 0x3c;
constexpr size_t kKeyAt = 0x3e;
constexpr size_t kPasswordAt = 0x42;
constexpr size_t kJet3PasswordBytes = 20;
constexpr size_t kPasswordBytes = 40;
constexpr size_t kLanguageAt = 0x6e;
constexpr size_t kCreationAt = 0x72;

// RC4; a header is scrambled with a key that everybody knows.
void Unscramble(std::string& bytes, size_t at, size_t count) {
  constexpr std::array<uint8_t, 4> kKey = {0xC7, 0xDA, 0x39, 0x6B};
  std::array<uint8_t, 256> state{};
  std::iota(state.begin(), state.end(), uint8_t{0});
  for (size_t index = 0, other = 0; index < state.size(); ++index) {
    other = (other + state[index] + kKey[index % kKey.size()]) % state.size();
    std::swap(state[index], state[other]);
  }
  size_t other = 0;
  for (size_t index = 0; index < count; ++index) {
    const size_t place = (index + 1) % state.size();
    other = (other + state[place]) % state.size();
    std::swap(state[place], state[other]);
    const uint8_t mask = state[static_cast<uint8_t>(state[place] + state[other])];
    bytes[at + index] = static_cast<char>(static_cast<uint8_t>(bytes[at + index]) ^ mask);
  }
}

// The bytes of the password, zeros behind it; in newer files they are masked with the day of the file's creation.
std::string PasswordBytes(const std::string& page, Generation generation) {
  if (generation == Generation::kJet3) return page.substr(kPasswordAt, kJet3PasswordBytes);
  std::string bytes = page.substr(kPasswordAt, kPasswordBytes);
  const double created = DoubleAt(page, kCreationAt);
  if (!(created > -1e9 && created < 1e9)) return bytes;
  const auto day = static_cast<uint32_t>(static_cast<int32_t>(created));
  for (size_t index = 0; index < bytes.size(); ++index) {
    bytes[index] = static_cast<char>(static_cast<uint8_t>(bytes[index]) ^ static_cast<uint8_t>(day >> (index % 4 * 8)));
  }
  return bytes;
}

std::string PasswordText(const std::string& bytes, Generation generation) {
  if (generation == Generation::kJet3) return bytes.substr(0, bytes.find('\0'));
  std::string text = WideText(bytes);
  return text.substr(0, text.find('\0'));
}

std::string WhyNoDesktopFile(std::string_view bytes, const std::string& file) {
  if (bytes.empty()) return "文件“" + file + "”是空的，不是桌面数据库文件";
  if (bytes.starts_with("SQLite format 3")) {
    return "文件“" + file + "”是 SQLite 数据库，请把连接字符串的 Provider 改为 Stockbook.Embedded";
  }
  return "文件“" + file + "”不是桌面数据库文件（.mdb 或 .accdb），请检查路径";
}

// Empty when the password is the file's, or the file has none.
std::string WhyLocked(const std::string& page, Generation generation, const std::string& file,
                      const std::string& password) {
  if (generation == Generation::kAce && LongAt(page, kKeyAt) != 0) {
    return "数据库文件“" + file + "”已用密码加密，无法读取，请先在原来的程序中取消密码";
  }
  const std::string wanted = PasswordBytes(page, generation);
  const bool is_open = std::all_of(wanted.begin(), wanted.end(), [](char byte) { return byte == 0; });
  if (is_open || PasswordText(wanted, generation) == password) return {};
  return password.empty() ? "数据库文件“" + file + "”受密码保护，请在连接字符串中写明 Password"
                          : "数据库文件“" + file + "”的密码不对，请检查连接字符串的 Password";
}

}  // namespace

std::string FileHeader::TextEncoding() const {
  if (code_page != 0) return "CP" + std::to_string(code_page);
  switch (language) {
    case 0x0804:  // mainland China, Singapore
    case 0x1004:
      return "CP936";
    case 0x0404:  // Taiwan, Hong Kong
    case 0x0C04:
      return "CP950";
    case 0x0411:
      return "CP932";
    case 0x0412:
      return "CP949";
    default:
      return "CP1252";
  }
}

FileHeader ReadFileHeader(std::string_view first_bytes, const std::string& file, const std::string& password,
                          const char* operation) {
  const auto refuse = [&](const std::string& reason, platform::ErrorKind kind) {
    return platform::Error(operation, reason, 0, kind);
  };
  constexpr std::string_view kStart("\0\1\0\0Standard ", 13);
  constexpr uint8_t kNewestVersion = 6;
  const std::string_view kind = first_bytes.substr(std::min(kStart.size(), first_bytes.size()), 7);
  const bool is_jet = kind == std::string_view("Jet DB\0", 7);
  const bool is_ace = kind == std::string_view("ACE DB\0", 7);
  if (!first_bytes.starts_with(kStart) || (!is_jet && !is_ace)) {
    throw refuse(WhyNoDesktopFile(first_bytes, file), platform::ErrorKind::kDamaged);
  }
  if (first_bytes.size() < kHeaderBytes) {
    throw refuse("数据库文件“" + file + "”不完整，请从备份恢复", platform::ErrorKind::kDamaged);
  }
  const auto version = static_cast<uint8_t>(first_bytes[kVersionAt]);
  if (version > kNewestVersion) {
    throw refuse("数据库文件“" + file + "”的版本太新，无法读取，请另存为 2016 或更早的格式",
                 platform::ErrorKind::kDamaged);
  }
  std::string page(first_bytes);
  Unscramble(page, kScrambledAt, version == 0 ? kScrambledBytes - 2 : kScrambledBytes);
  FileHeader header;
  header.generation = version == 0 ? Generation::kJet3 : is_ace ? Generation::kAce : Generation::kJet4;
  header.page_bytes = version == 0 ? 2048 : 4096;
  header.code_page = WordAt(page, kCodePageAt);
  header.language = WordAt(page, version == 0 ? kJet3LanguageAt : kLanguageAt);
  if (const std::string reason = WhyLocked(page, header.generation, file, password); !reason.empty()) {
    // Another password opens what is not encrypted; the state is what servers say of a wrong one.
    const bool is_encrypted = header.generation == Generation::kAce && LongAt(page, kKeyAt) != 0;
    throw platform::Error(operation, reason, 0, platform::ErrorKind::kInputOutput, is_encrypted ? "" : "28P01");
  }
  return header;
}

}  // namespace stockbook::databases
