// SPDX-License-Identifier: MIT
#pragma once

#include "databases/dialect/dialect.h"
#include "databases/dialect/emitter.h"

namespace stockbook::databases {

// What `a & b` with a text means in the server dialect: the error that its server makes of it, or both texts in one, as
// in the desktop dialect.
enum class Ampersand { kServerRefusesTexts, kJoinsTexts };

// From which dialect a statement is translated, and by which emitter. Borrows the emitter.
struct Target {
  Dialect dialect;
  const Emitter& emitter;
  Ampersand ampersand = Ampersand::kServerRefusesTexts;
};

}  // namespace stockbook::databases
