// Replaces the program's operator new by the two functions that the including test defines behind it.
#pragma once

#include <cstdlib>
#include <new>

static void* Allocate(std::size_t nSize, bool bThrows) noexcept;  // null: memory ran out
// Not inlined: the compiler would take its free for another than new's.
__attribute__((noinline)) static void Release(void* p) noexcept;

// clang-format off
void* operator new(std::size_t nSize) { if (void* const p = Allocate(nSize, true)) return p; throw std::bad_alloc(); }
void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept { return Allocate(nSize, false); }
void operator delete(void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t) noexcept { Release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Release(p); }
// clang-format on
