// SPDX-License-Identifier: MIT
#include "memory/refused_memory.h"

#include <cstdlib>
#include <new>

namespace {

long g_requests = 0;
long g_refused = 0;  // 0 refuses nothing
bool g_lasts = false;

bool IsRefused() {
  if (g_refused == 0) return false;
  ++g_requests;
  return g_requests == g_refused || (g_lasts && g_requests > g_refused);
}

void* Allocate(std::size_t size) {
  if (IsRefused()) throw std::bad_alloc();
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace stockbook::testing {

RefusedMemory::RefusedMemory(Refusal refusal, long request) {
  g_requests = 0;
  g_lasts = refusal == Refusal::kAllFromThenOn;
  g_refused = request;
}

RefusedMemory::~RefusedMemory() { g_refused = 0; }

bool RefusedMemory::HasRefused() { return g_refused > 0 && g_requests >= g_refused; }

}  // namespace stockbook::testing
