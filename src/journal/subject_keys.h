// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stockbook::journal {

// What the host selects: the product, the second key (depot, supplier, customer or project by journal type; below 1
// means all of them) and the class code that narrows "all". The second key is kept in 16 bits, as the interface does.
struct SubjectKeys {
  int32_t KeyID = 0;
  int16_t dpID = 0;
  std::string dpCode;

  bool operator==(const SubjectKeys&) const = default;
};

}  // namespace stockbook::journal
