// SPDX-License-Identifier: MIT
// Prints docs/schema.md, for tools/draw-schema.
#include <iostream>

#include "schema/schema_page.h"

int main() {
  std::cout << stockbook::testing::SchemaPage();
  return std::cout.flush() ? 0 : 1;
}
