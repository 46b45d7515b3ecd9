// SPDX-License-Identifier: MIT
#include "databases/execution/free_memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace stockbook::databases {

void ReturnFreeMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace stockbook::databases
