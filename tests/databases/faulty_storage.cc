// SPDX-License-Identifier: MIT
#include "databases/faulty_storage.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>

namespace stockbook::testing {

struct FaultyStorage::State {
  // Whether this call meets the fault; `fits` says if it is of the kind that can.
  bool Meets(bool fits) {
    if (!fits) return false;
    const int call = ++calls;
    return call == failing || (fault == Fault::kRefusedReads && failing > 0 && call > failing);
  }
  bool MeetsRead() { return Meets(fault != Fault::kNone && fault != Fault::kRefusedCall); }
  // The code of a refused call, or that the real call may be made.
  int CodeOfCall(int refused) { return Meets(fault == Fault::kRefusedCall) ? refused : SQLITE_OK; }

  sqlite3_vfs* real = nullptr;
  sqlite3_vfs vfs{};
  Fault fault = Fault::kNone;
  // Several threads may read.
  std::atomic<int> calls = 0;
  int failing = 0;
  std::atomic<int> open_files = 0;
};

namespace {

using State = FaultyStorage::State;

// SQLite gives every open file this much room, and behind it the room of the real one.
struct File {
  sqlite3_file base;
  State* state;

  sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File& Of(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }
State& Of(sqlite3_vfs* vfs) { return *static_cast<State*>(vfs->pAppData); }

int Spoil(Fault fault, void* bytes, int count) {
  auto* begin = static_cast<unsigned char*>(bytes);
  auto* half = begin + count / 2;
  auto* end = begin + count;
  switch (fault) {
    case Fault::kRefusedRead:
    case Fault::kRefusedReads:
      return SQLITE_IOERR_READ;
    case Fault::kShortRead:
      // As SQLite requires of a short read.
      std::fill(begin, end, 0);
      return SQLITE_IOERR_SHORT_READ;
    case Fault::kHalfOfZeros:
      std::fill(half, end, 0);
      return SQLITE_OK;
    case Fault::kHalfOfOtherBytes:
      std::transform(half, end, half, [](unsigned char byte) { return static_cast<unsigned char>(byte ^ 0xA5); });
      return SQLITE_OK;
    case Fault::kNone:
    case Fault::kRefusedCall:
      break;
  }
  return SQLITE_OK;
}

int Read(sqlite3_file* file, void* bytes, int count, sqlite3_int64 offset) {
  State& state = *Of(file).state;
  const bool meets = state.MeetsRead();
  const int code = Of(file).real()->pMethods->xRead(Of(file).real(), bytes, count, offset);
  return meets && code == SQLITE_OK ? Spoil(state.fault, bytes, count) : code;
}

int Close(sqlite3_file* file) {
  --Of(file).state->open_files;
  return Of(file).real()->pMethods->xClose(Of(file).real());
}

// A call of the real file that may be refused with `refused` instead.
template <typename... Arguments>
int Call(sqlite3_file* file, int refused, int (*sqlite3_io_methods::*method)(sqlite3_file*, Arguments...),
         std::type_identity_t<Arguments>... arguments) {
  const int code = Of(file).state->CodeOfCall(refused);
  sqlite3_file* real = Of(file).real();
  return code == SQLITE_OK ? (real->pMethods->*method)(real, arguments...) : code;
}

// A call of the real file.
template <typename Result, typename... Arguments>
Result Pass(sqlite3_file* file, Result (*sqlite3_io_methods::*method)(sqlite3_file*, Arguments...),
            std::type_identity_t<Arguments>... arguments) {
  sqlite3_file* real = Of(file).real();
  return (real->pMethods->*method)(real, arguments...);
}

using Methods = sqlite3_io_methods;

const sqlite3_io_methods kMethods = {
    3,
    Close,
    Read,
    [](sqlite3_file* f, const void* bytes, int count, sqlite3_int64 at) {
      return Pass(f, &Methods::xWrite, bytes, count, at);
    },
    [](sqlite3_file* f, sqlite3_int64 size) { return Pass(f, &Methods::xTruncate, size); },
    [](sqlite3_file* f, int flags) { return Pass(f, &Methods::xSync, flags); },
    [](sqlite3_file* f, sqlite3_int64* size) { return Call(f, SQLITE_IOERR_FSTAT, &Methods::xFileSize, size); },
    [](sqlite3_file* f, int level) { return Call(f, SQLITE_IOERR_LOCK, &Methods::xLock, level); },
    [](sqlite3_file* f, int level) { return Pass(f, &Methods::xUnlock, level); },
    [](sqlite3_file* f, int* locked) {
      return Call(f, SQLITE_IOERR_CHECKRESERVEDLOCK, &Methods::xCheckReservedLock, locked);
    },
    [](sqlite3_file* f, int operation, void* argument) { return Pass(f, &Methods::xFileControl, operation, argument); },
    [](sqlite3_file* f) { return Pass(f, &Methods::xSectorSize); },
    [](sqlite3_file* f) { return Pass(f, &Methods::xDeviceCharacteristics); },
    [](sqlite3_file* f, int region, int size, int extend, volatile void** memory) {
      return Call(f, SQLITE_IOERR_SHMMAP, &Methods::xShmMap, region, size, extend, memory);
    },
    [](sqlite3_file* f, int offset, int count, int flags) {
      const bool locks = (flags & SQLITE_SHM_LOCK) != 0;
      return locks ? Call(f, SQLITE_IOERR_SHMLOCK, &Methods::xShmLock, offset, count, flags)
                   : Pass(f, &Methods::xShmLock, offset, count, flags);
    },
    [](sqlite3_file* f) { Pass(f, &Methods::xShmBarrier); },
    [](sqlite3_file* f, int remove) { return Pass(f, &Methods::xShmUnmap, remove); },
    // No mapped memory: every page comes by a read.
    [](sqlite3_file*, sqlite3_int64, int, void** memory) {
      *memory = nullptr;
      return SQLITE_OK;
    },
    [](sqlite3_file*, sqlite3_int64, void*) { return SQLITE_OK; },
};

int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* room, int flags, int* opened_flags) {
  State& state = Of(vfs);
  File& file = *new (room) File{{nullptr}, &state};
  if (const int refused = state.CodeOfCall(SQLITE_CANTOPEN); refused != SQLITE_OK) return refused;
  const int code = state.real->xOpen(state.real, name, file.real(), flags, opened_flags);
  if (file.real()->pMethods == nullptr) return code;
  file.base.pMethods = &kMethods;
  ++state.open_files;
  return code;
}

int Exists(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
  const int refused = Of(vfs).CodeOfCall(SQLITE_IOERR_ACCESS);
  return refused == SQLITE_OK ? Of(vfs).real->xAccess(Of(vfs).real, name, flags, result) : refused;
}

}  // namespace

// What has to do with no file is the real one's, which does not look at what it is given.
FaultyStorage::FaultyStorage() : state_(std::make_unique<State>()) {
  state_->real = sqlite3_vfs_find(nullptr);
  state_->vfs = *state_->real;
  sqlite3_vfs& vfs = state_->vfs;
  vfs.szOsFile = static_cast<int>(sizeof(File)) + state_->real->szOsFile;
  vfs.pNext = nullptr;
  vfs.zName = "stockbook-faulty";
  vfs.pAppData = state_.get();
  vfs.xOpen = Open;
  vfs.xAccess = Exists;
  vfs.xDelete = [](sqlite3_vfs* own, const char* name, int sync) {
    return Of(own).real->xDelete(Of(own).real, name, sync);
  };
  vfs.xFullPathname = [](sqlite3_vfs* own, const char* name, int size, char* out) {
    return Of(own).real->xFullPathname(Of(own).real, name, size, out);
  };
  sqlite3_vfs_register(&vfs, 1);
}

FaultyStorage::~FaultyStorage() { sqlite3_vfs_unregister(&state_->vfs); }

void FaultyStorage::Arm(Fault fault, int call) {
  state_->fault = fault;
  state_->calls = 0;
  state_->failing = call;
}

bool FaultyStorage::Disarm() {
  const bool happened = state_->failing > 0 && state_->calls >= state_->failing;
  state_->fault = Fault::kNone;
  return happened;
}

int FaultyStorage::Calls() const { return state_->calls; }
int FaultyStorage::OpenFiles() const { return state_->open_files; }

}  // namespace stockbook::testing
