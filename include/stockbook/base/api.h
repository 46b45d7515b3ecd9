// SPDX-License-Identifier: MIT
#pragma once

// What a shared library shows to the programs that are linked to it; everything else stays inside.
#if defined(__ELF__)
#define STOCKBOOK_API __attribute__((visibility("default")))
#else
#define STOCKBOOK_API
#endif
