// SPDX-License-Identifier: MIT
#include "databases/sqlite/readers.h"

#include <new>

#include "databases/sqlite/functions.h"

namespace stockbook::databases {

Readers::Readers(const Database& own, size_t threads) : own_(own), others_(threads - 1) {}

Readers::~Readers() = default;

const std::vector<const Database*>& Readers::Join() const {
  if (!joined_.empty()) return joined_;
  joined_.push_back(&own_);
  if (others_.empty() || sqlite3_threadsafe() == 0 || !IsInPlace(own_.handle())) return joined_;
  joined_.reserve(threads());
  for (Other& other : others_) {
    // One alone can do it all, and says what is wrong if it cannot, either.
    try {
      if (Begin(other)) joined_.push_back(other.database.get());
    } catch (const platform::Error&) {
      other = {};
    } catch (const std::bad_alloc&) {
      other = {};
    }
  }
  return joined_;
}

bool Readers::Begin(Other& other) const {
  if (other.database && !IsInPlace(other.database->handle())) other = {};
  if (!other.database) {
    auto opened = std::make_unique<Database>(Database::Leader{own_});
    RegisterFunctions(*opened);
    other.database = std::move(opened);
  }
  other.transaction = std::make_unique<ReadTransaction>(*other.database);
  // The name may have been another file's before, or since.
  if (own_.state().SameAs(other.database->state()) && IsInPlace(own_.handle()) && IsInPlace(other.database->handle())) {
    return true;
  }
  other.transaction.reset();
  return false;
}

void Readers::Leave() const {
  for (Other& other : others_) other.transaction.reset();
  joined_.clear();
}

}  // namespace stockbook::databases
