// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "databases/sqlite/database.h"

namespace stockbook::databases {

// The database of a connection, and others that read the same state of its file, each for a thread of its own. They are
// opened when they are first asked for and kept. Belongs to the connection's thread.
class Readers {
 public:
  // The database alone.
  Readers(const Database& own) : Readers(own, 1) {}  // NOLINT(google-explicit-constructor)
  // Up to `threads` of them, the own one included.
  Readers(const Database& own, size_t threads);
  ~Readers();
  Readers(const Readers&) = delete;
  Readers& operator=(const Readers&) = delete;

  const Database& own() const { return own_; }
  size_t threads() const { return others_.size() + 1; }
  // The own database first, which is in a read transaction; the others stay in theirs until Leave. There are fewer, or
  // none, where they cannot be opened or would see another state.
  const std::vector<const Database*>& Join() const;
  // Their transactions end. Call it before the own one ends.
  void Leave() const;

 private:
  struct Other {
    std::unique_ptr<Database> database;
    std::unique_ptr<ReadTransaction> transaction;
  };
  bool Begin(Other& other) const;

  const Database& own_;
  mutable std::vector<Other> others_;
  mutable std::vector<const Database*> joined_;
};

}  // namespace stockbook::databases
