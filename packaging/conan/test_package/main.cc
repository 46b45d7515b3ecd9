// SPDX-License-Identifier: MIT
#include <cstdio>

#include "stockbook/base/money.h"

int main() {
  const stockbook::base::Money money;
  std::printf("%s\n", money.Text().c_str());
  return money.IsZero() ? 0 : 1;
}
