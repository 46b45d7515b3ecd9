// SPDX-License-Identifier: MIT
#include "databases/desktop/source_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <string>

#include "databases/desktop/copy_folder.h"
#include "databases/desktop/copy_writer.h"
#include "databases/desktop/desktop_file.h"
#include "databases/desktop/file_header.h"
#include "databases/desktop/read_failure.h"
#include "databases/desktop/reading_process.h"
#include "databases/desktop/table_reader.h"
#include "databases/desktop/table_stream.h"

namespace stockbook::databases {
namespace {

// One call of CopySource: what it is about.
struct Copying {
  const DesktopSettings& settings;
  Interruption& interruption;
  const char* operation;

  const std::string& file() const { return settings.embedded.file; }
  platform::Error Refusal(const std::string& reason, platform::ErrorKind kind, int code = 0) const {
    return {operation, reason, code, kind};
  }
};

platform::Error RefusalToOpen(const Copying& copying, int code) {
  if (code == EWOULDBLOCK || code == EBUSY || code == ETXTBSY) {
    return copying.Refusal("数据库文件“" + copying.file() + "”正被其他程序独占，请关闭那个程序后再试",
                           platform::ErrorKind::kBusy, code);
  }
  if (code == EACCES || code == EPERM) {
    return copying.Refusal("没有读取数据库文件“" + copying.file() + "”的权限，请检查权限，或关闭独占它的程序",
                           platform::ErrorKind::kInputOutput, code);
  }
  return copying.Refusal("无法读取数据库文件“" + copying.file() + "”，请检查磁盘或网络：" + std::strerror(code),
                         platform::ErrorKind::kInputOutput, code);
}

// Never waits inside of the operating system, not even for a pipe that took the file's place.
FileHeader HeaderOf(const Copying& copying) {
  int file = -1;
  for (int tries = 0; file < 0; ++tries) {
    file = open(copying.file().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file >= 0) break;
    const int code = errno;
    const bool held = code == EWOULDBLOCK || code == EBUSY || code == ETXTBSY;
    if (copying.interruption.IsDue()) throw copying.interruption.Reason(copying.operation);
    if (!held || !copying.interruption.WaitForLock(tries)) throw RefusalToOpen(copying, code);
  }
  std::array<char, kHeaderBytes> bytes{};
  const ssize_t count = pread(file, bytes.data(), bytes.size(), 0);
  const int code = errno;
  close(file);
  if (count < 0) throw RefusalToOpen(copying, code);
  return ReadFileHeader({bytes.data(), static_cast<size_t>(count)}, copying.file(), copying.settings.password,
                        copying.operation);
}

platform::Error Explained(const Copying& copying, const ReadFailure& failure) {
  const std::string file = "数据库文件“" + copying.file() + "”";
  const std::string place = failure.what();
  switch (failure.cause()) {
    case FailureCause::kDamaged:
      return copying.Refusal(file + (place.empty() ? "" : "的表“" + place + "”") +
                                 "已损坏或不完整，请用原来的程序压缩和修复，或从备份恢复",
                             platform::ErrorKind::kDamaged);
    case FailureCause::kUnreadable:
      return copying.Refusal("读取" + file + "时出错，请检查磁盘或网络", platform::ErrorKind::kInputOutput);
    case FailureCause::kNoMemory:
      return copying.Refusal("内存不足，无法读取" + file, platform::ErrorKind::kMemory);
    case FailureCause::kLinkedTables:
      return copying.Refusal(file + "只有指向别处的链接表，请打开表所在的文件", platform::ErrorKind::kInputOutput);
    case FailureCause::kUnknownText:
      return copying.Refusal(file + "的文字编码“" + place + "”在本机无法转换，请安装系统的编码转换组件",
                             platform::ErrorKind::kInputOutput);
  }
  return copying.Refusal(file + "无法读取", platform::ErrorKind::kInputOutput);
}

// What the copy of the process does.
void SendTables(const std::string& file, const std::string& text_encoding, int pipe) {
  TableSender sender(pipe);
  try {
    ReadTables(file, text_encoding, sender);
    sender.Finish();
  } catch (const ReadFailure& failure) {
    sender.Fail(failure);
  } catch (const std::bad_alloc&) {
    sender.Fail(ReadFailure(FailureCause::kNoMemory, std::string()));
  }
}

// Far more than an honest file of that size takes.
ReadingProcess::Limits LimitsFor(uint64_t file_bytes) {
  constexpr uint64_t kMegabyte = 1 << 20;
  return {2 + file_bytes / (2 * kMegabyte), 512 * kMegabyte + 4 * file_bytes, 64 * kMegabyte + 32 * file_bytes};
}

void WriteCopy(const Copying& copying, const SourceState& state, const FileHeader& header, const std::string& path) {
  const std::string text_encoding = header.generation == Generation::kJet3 ? header.TextEncoding() : std::string();
  const std::string& file = copying.file();
  DesktopFile::LoadLibrary();
  const auto send = [&](int pipe) { SendTables(file, text_encoding, pipe); };
  constexpr int kMostTries = 3;
  for (int tries = 1;; ++tries) {
    // Before the process is copied, so that the copy has no half-written file.
    ReadingProcess process(send, LimitsFor(state.bytes), copying.interruption);
    try {
      CopyWriter writer(path, file, copying.interruption);
      ReceiveTables(process, writer);
      writer.Finish();
      return;
    } catch (const ReadFailure& failure) {
      if (!process.IsStuck()) throw Explained(copying, failure);
    }
    if (tries == kMostTries) throw Explained(copying, ReadFailure(FailureCause::kUnreadable, std::string()));
    if (truncate(path.c_str(), 0) != 0) throw Explained(copying, ReadFailure(FailureCause::kUnreadable, std::string()));
  }
}

std::unique_ptr<CopyInUse> NewCopy(const Copying& copying, const SourceState& state, const FileHeader& header) {
  const auto folder = copying.settings.keeping == CopyKeeping::kForTheNextOpening ? CopyFolder::OfUser() : std::nullopt;
  if (folder) {
    try {
      auto copy = folder->NewCopy();
      WriteCopy(copying, state, header, copy->path());
      return copy;
    } catch (const CannotWriteCopy&) {
      // The cache is full, or read only; the place for temporary files may do.
    }
  }
  auto copy = NewPrivateCopy();
  WriteCopy(copying, state, header, copy->path());
  return copy;
}

std::unique_ptr<CopyInUse> KeptCopy(const Copying& copying, const SourceState& state) {
  if (copying.settings.keeping != CopyKeeping::kForTheNextOpening) return nullptr;
  const auto folder = CopyFolder::OfUser();
  return folder ? CopyInUse::Open(folder->PathOf(copying.file(), state), CopyInUse::Afterwards::kStays) : nullptr;
}

void KeepCopy(const Copying& copying, const SourceState& state, CopyInUse& copy) {
  if (copying.settings.keeping != CopyKeeping::kForTheNextOpening) return;
  const auto folder = CopyFolder::OfUser();
  if (!folder || !copy.path().starts_with(folder->path() + "/")) return;
  const std::string path = folder->PathOf(copying.file(), state);
  if (copy.Publish(path)) folder->ClearAway(copying.file(), path);
}

}  // namespace

SourceCopy CopySource(const DesktopSettings& settings, Interruption& interruption, const char* operation) {
  const Copying copying{settings, interruption, operation};
  constexpr int kMostTries = 5;
  for (int tries = 0; tries < kMostTries; ++tries) {
    const SourceState state = StateOf(copying.file(), operation);
    try {
      // A copy is for whoever may read the file, and knows its password.
      const FileHeader header = HeaderOf(copying);
      if (auto kept = KeptCopy(copying, state)) return {state, std::move(kept)};
      WaitUntilChangesShow(state);
      auto copy = NewCopy(copying, state, header);
      if (StateOf(copying.file(), operation) == state) {
        KeepCopy(copying, state, *copy);
        return {state, std::move(copy)};
      }
    } catch (const platform::Error& error) {
      // What looked like damage may have been half of a change.
      if (error.kind() != platform::ErrorKind::kDamaged || StateOf(copying.file(), operation) == state) throw;
    }
    if (interruption.IsDue()) throw interruption.Reason(operation);
  }
  throw copying.Refusal("数据库文件“" + copying.file() + "”一直在被修改，请等其他程序写完后再试",
                        platform::ErrorKind::kBusy);
}

}  // namespace stockbook::databases
