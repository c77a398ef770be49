// bench_growth [--list | SHAPE...]: runs each shape, or those named, at three sizes.
//
// Prints a line for each run: SHAPE SIZE INPUT-BYTES MEMORY STACK MOST-INSTRUCTIONS MOST-MEMORY. Memory is
// the peak of the heap above what was held before; stack is the deepest use of a thread's own. Under
// callgrind, with
// --instr-atstart=no, each run ends in a dump named after it, so one process counts the instructions of all.
#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <valgrind/callgrind.h>

#include "benchmarks/growth/Growth.h"
#include "platform/Doors.h"

// The heap, with its bytes counted. The C library keeps its own operations under these names.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

std::atomic<std::size_t> held{0}, peak{0};

void* Counted(void* block) {
  const std::size_t now = held += malloc_usable_size(block);
  if (now > peak) peak = now;
  return block;
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) { return Counted(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return Counted(__libc_calloc(count, size)); }
void* realloc(void* block, std::size_t size) {
  const std::size_t before = malloc_usable_size(block);
  void* const result = __libc_realloc(block, size);
  if (result || size == 0) held -= before;
  return result ? Counted(result) : nullptr;
}
void free(void* block) {
  held -= malloc_usable_size(block);
  __libc_free(block);
}
}

namespace growth {
namespace {

std::string folder;

struct Folder {
  Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "growth-XXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    folder = pattern + "/";
    zvuti::TheDoors().applicationFolder = [] { return folder; };
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
};

// Runs `work` on a thread with 64 KB of stack, which shows how much of it was used, and returns the bytes.
std::size_t StackOf(const std::function<void()>& work) {
  constexpr std::size_t kStack = std::size_t{64} << 10;
  constexpr unsigned char kUntouched = 0xA5;
  void* const stack = mmap(nullptr, kStack, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (stack == MAP_FAILED) std::abort();
  auto* const bytes = static_cast<unsigned char*>(stack);
  std::memset(bytes, kUntouched, kStack);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstack(&attributes, stack, kStack);
  pthread_t thread;
  const auto body = [](void* state) -> void* {
    (*static_cast<const std::function<void()>*>(state))();
    return nullptr;
  };
  void* const state = const_cast<std::function<void()>*>(&work);
  if (pthread_create(&thread, &attributes, body, state) != 0) std::abort();
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  const std::size_t used = static_cast<std::size_t>(
      bytes + kStack - std::find_if(bytes, bytes + kStack, [](unsigned char b) { return b != kUntouched; }));
  munmap(stack, kStack);
  return used;
}

void Measure(const Shape& shape, std::size_t size) {
  const Work work = shape.make(size);
  std::size_t memory = 0, stack = 0;
  if (RUNNING_ON_VALGRIND) {
    const std::string name = std::string(shape.name) + " " + std::to_string(size);
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    work.run();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
  } else {
    static const std::size_t idle = StackOf([] {});
    stack = StackOf([&] {
      const std::size_t before = held;
      peak = before;
      work.run();
      memory = peak - before;
    });
    stack -= std::min(stack, idle);
  }
  std::printf("%s %zu %zu %zu %zu %.0f %.0f\n", shape.name, size, work.bytes, memory, stack,
              shape.mostInstructions, shape.mostMemory);
}

}  // namespace

std::string WriteFile(const std::string& name, const std::string& bytes) {
  const std::string path = folder + name;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

}  // namespace growth

int main(int argc, char** argv) {
  using growth::Shape;
  std::vector<Shape> shapes;
  for (const auto& list : {growth::TextShapes, growth::DataShapes, growth::RecordShapes, growth::TableShapes,
                           growth::XmlShapes}) {
    for (const Shape& shape : list()) shapes.push_back(shape);
  }
  const bool isList = argc == 2 && std::strcmp(argv[1], "--list") == 0;
  int measured = 0;
  const growth::Folder folder;
  for (const Shape& shape : shapes) {
    if (isList) std::puts(shape.name);
    const bool isWanted = argc == 1 || std::any_of(argv + 1, argv + argc, [&](const char* name) {
                            return std::strstr(shape.name, name) != nullptr;
                          });
    if (isList || !isWanted) continue;
    for (const std::size_t factor : {1, 2, 4}) growth::Measure(shape, shape.size * factor);
    ++measured;
  }
  if (isList || measured > 0) return 0;
  std::fputs("growth: no shape has this name; --list prints them\n", stderr);
  return 2;
}
