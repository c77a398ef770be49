#include "tests/support/HeapFaults.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

struct State {
  std::int64_t live = 0;
  std::int64_t tried = 0, nth = 0;
  std::uint64_t bytes = 0;
  std::size_t largest = 0;
  bool counting = false, andAllAfter = false, refused = false;
};
thread_local State state;
std::atomic<std::int64_t> liveOfAll{0};

void* Allocate(std::size_t size) noexcept {
  if (state.counting) {
    ++state.tried;
    state.bytes += size;
    state.largest = std::max(state.largest, size);
    if (state.nth > 0 && (state.tried == state.nth || (state.andAllAfter && state.tried > state.nth))) {
      state.refused = true;
      return nullptr;
    }
  }
  void* block = std::malloc(size > 0 ? size : 1);
  if (block) {
    ++state.live;
    liveOfAll.fetch_add(1, std::memory_order_relaxed);
  }
  return block;
}

void Release(void* block) noexcept {
  if (block) {
    --state.live;
    liveOfAll.fetch_sub(1, std::memory_order_relaxed);
  }
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* block = Allocate(size)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Release(block); }
void operator delete[](void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }
void operator delete[](void* block, std::size_t) noexcept { Release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Release(block); }

namespace test {

HeapFaults::HeapFaults(std::int64_t nth, bool andAllAfter) {
  const std::int64_t live = state.live;
  state = State{};
  state.live = live;
  state.nth = nth;
  state.andAllAfter = andAllAfter;
  state.counting = true;
}

HeapFaults::~HeapFaults() { state.counting = false; }

std::int64_t HeapFaults::Tried() const { return state.tried; }
bool HeapFaults::Refused() const { return state.refused; }
std::uint64_t HeapFaults::BytesAsked() const { return state.bytes; }
std::size_t HeapFaults::LargestAsked() const { return state.largest; }

std::int64_t LiveBlocks() { return state.live; }
std::int64_t LiveBlocksOfAllThreads() { return liveOfAll.load(std::memory_order_relaxed); }

}  // namespace test
