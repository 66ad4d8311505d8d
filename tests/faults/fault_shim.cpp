// SPDX-License-Identifier: MIT
//
// Stands between a program and the C library and lets the calls fail that change files of one
// folder: to be linked to a test, or preloaded (LD_PRELOAD) into the real console.  A fault_plan
// says which, and how.  What a program does that is not watched goes through untouched.

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/faults/fault_block.h"

namespace {

using faults::Block;

Block* block = nullptr;

// The C library's own function, or the one that stands between it and this.
template <typename Function>
Function* Next(Function* /*type*/, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

#define TESK_NEXT(function)                               \
  ([] {                                                   \
    static auto* const next = Next(&function, #function); \
    return next;                                          \
  }())

__attribute__((constructor)) void MapBlock() {
  const char* const file = std::getenv(faults::kBlockVariable);
  if (file == nullptr) return;
  const int handle = TESK_NEXT(open)(file, O_RDWR | O_CLOEXEC);
  if (handle < 0) return;
  void* const mapped = mmap(nullptr, sizeof(Block), PROT_READ | PROT_WRITE, MAP_SHARED, handle, 0);
  close(handle);
  if (mapped != MAP_FAILED) block = static_cast<Block*>(mapped);
}

bool IsSpared(const char* name) {
  const char* line = block->spared.data();
  while (*line != 0) {
    const std::size_t length = std::strcspn(line, "\n");
    if (std::strncmp(name, line, length) == 0) return true;
    line += length + 1;
  }
  return false;
}

// The name of a file below the watched folder, nothing for any other.
const char* Watched(const char* path) {
  if (block == nullptr || block->watching == 0 || path == nullptr) return nullptr;
  const char* const folder = block->folder.data();
  const std::size_t length = std::strlen(folder);
  if (std::strncmp(path, folder, length) != 0 || path[length] != '/') return nullptr;
  const char* const name = path + length + 1;
  return IsSpared(name) ? nullptr : name;
}

struct OpenFile {
  explicit OpenFile(int handle) {
    if (block == nullptr || block->watching == 0) return;
    std::array<char, 32> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", handle);
    if (readlink(link.data(), path.data(), path.size() - 1) > 0) name = Watched(path.data());
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  std::array<char, PATH_MAX> path{};
  const char* name = nullptr;  // nothing when it is not watched
};

[[noreturn]] void Die() {
  kill(getpid(), SIGKILL);
  for (;;) pause();
}

void Note(int number, const char* operation, const char* name) {
  const auto at = static_cast<std::size_t>(number - 1);
  if (at >= block->noted.size()) return;
  faults::Call& call = block->noted[at];
  std::strncpy(call.operation.data(), operation, call.operation.size() - 1);
  std::strncpy(call.file.data(), name, call.file.size() - 1);
}

enum class Fate { Works, Fails, Dies };

// What becomes of the call.  Sets errno when it fails.
Fate Decide(const char* operation, const char* name) {
  if (name == nullptr) return Fate::Works;
  const int number = ++block->calls;
  Note(number, operation, name);
  if (const int delay = block->delay; delay > 0) {
    const timespec time{delay / 1000000, delay % 1000000 * 1000L};
    nanosleep(&time, nullptr);
  }
  const int first = block->firstFault;
  if (first == faults::kNever || number < first || number > block->lastFault) return Fate::Works;
  if (block->error == faults::kKill) return Fate::Dies;
  errno = block->error;
  return Fate::Fails;
}

// A call that does its work or nothing of it.
template <typename Result, typename Work>
Result Do(const char* operation, const char* name, Result failure, const Work& work) {
  switch (Decide(operation, name)) {
    case Fate::Dies:
      Die();
    case Fate::Fails:
      return failure;
    case Fate::Works:
      break;
  }
  return work();
}

// A write of `size` bytes or items.  The first half may reach the file before it fails.
template <typename Result, typename Work>
Result DoWrite(const char* operation, const char* name, std::size_t size, Result failure,
               const Work& work) {
  const Fate fate = Decide(operation, name);
  if (fate == Fate::Works) return work(size);
  const int error = errno;
  if (block->halves != 0 && size > 1) (void)work(size / 2);
  if (fate == Fate::Dies) Die();
  errno = error;
  return failure;
}

bool Writes(int flags) { return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0; }

mode_t ModeOf(int flags, va_list arguments) {
  // O_TMPFILE shares a bit with O_DIRECTORY.
  const bool given = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return given ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

void TeskWatch(Block* shared) { block = shared; }

#define TESK_OPEN(function)                                            \
  int function(const char* path, int flags, ...) {                     \
    va_list arguments;                                                 \
    va_start(arguments, flags);                                        \
    const mode_t mode = ModeOf(flags, arguments);                      \
    va_end(arguments);                                                 \
    return Do("open", Writes(flags) ? Watched(path) : nullptr, -1,     \
              [&] { return TESK_NEXT(function)(path, flags, mode); }); \
  }
TESK_OPEN(open)
TESK_OPEN(open64)

#define TESK_OPENAT(function)                                                  \
  int function(int folder, const char* path, int flags, ...) {                 \
    va_list arguments;                                                         \
    va_start(arguments, flags);                                                \
    const mode_t mode = ModeOf(flags, arguments);                              \
    va_end(arguments);                                                         \
    return Do("open", Writes(flags) ? Watched(path) : nullptr, -1,             \
              [&] { return TESK_NEXT(function)(folder, path, flags, mode); }); \
  }
TESK_OPENAT(openat)
TESK_OPENAT(openat64)

#define TESK_FOPEN(function)                                                         \
  FILE* function(const char* path, const char* mode) {                               \
    const bool writes = std::strpbrk(mode, "wa+") != nullptr;                        \
    return Do("open", writes ? Watched(path) : nullptr, static_cast<FILE*>(nullptr), \
              [&] { return TESK_NEXT(function)(path, mode); });                      \
  }
TESK_FOPEN(fopen)
TESK_FOPEN(fopen64)

ssize_t write(int handle, const void* bytes, size_t count) {
  const OpenFile file(handle);
  return DoWrite("write", file.name, count, ssize_t{-1},
                 [&](size_t size) { return TESK_NEXT(write)(handle, bytes, size); });
}

#define TESK_PWRITE(function, offset_type)                                                         \
  ssize_t function(int handle, const void* bytes, size_t count, offset_type offset) {              \
    const OpenFile file(handle);                                                                   \
    return DoWrite("write", file.name, count, ssize_t{-1},                                         \
                   [&](size_t size) { return TESK_NEXT(function)(handle, bytes, size, offset); }); \
  }
TESK_PWRITE(pwrite, off_t)
TESK_PWRITE(pwrite64, off64_t)

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* stream) {
  const OpenFile file(fileno(stream));
  return DoWrite("write", file.name, count, size_t{0}, [&](size_t items) {
    const size_t written = TESK_NEXT(fwrite)(bytes, size, items, stream);
    if (items < count) TESK_NEXT(fflush)(stream);  // the half is to be there
    return written;
  });
}

int fflush(FILE* stream) {
  if (stream == nullptr) return TESK_NEXT(fflush)(stream);
  const OpenFile file(fileno(stream));
  return Do("flush", file.name, EOF, [&] { return TESK_NEXT(fflush)(stream); });
}

#define TESK_SENDFILE(function, offset_type)                                                  \
  ssize_t function(int to, int from, offset_type* offset, size_t count) {                     \
    const OpenFile file(to);                                                                  \
    return DoWrite("copy", file.name, count, ssize_t{-1},                                     \
                   [&](size_t size) { return TESK_NEXT(function)(to, from, offset, size); }); \
  }
TESK_SENDFILE(sendfile, off_t)
TESK_SENDFILE(sendfile64, off64_t)

// No power is cut here: a watched file need not really be brought to the disk, which would only
// make the tests slow.
#define TESK_SYNC(function)                                       \
  int function(int handle) {                                      \
    const OpenFile file(handle);                                  \
    if (file.name == nullptr) return TESK_NEXT(function)(handle); \
    return Do("sync", file.name, -1, [] { return 0; });           \
  }
TESK_SYNC(fsync)
TESK_SYNC(fdatasync)

#define TESK_FTRUNCATE(function, offset_type)                                           \
  int function(int handle, offset_type size) {                                          \
    const OpenFile file(handle);                                                        \
    return Do("cut", file.name, -1, [&] { return TESK_NEXT(function)(handle, size); }); \
  }
TESK_FTRUNCATE(ftruncate, off_t)
TESK_FTRUNCATE(ftruncate64, off64_t)

#define TESK_TRUNCATE(function, offset_type)                                              \
  int function(const char* path, offset_type size) {                                      \
    return Do("cut", Watched(path), -1, [&] { return TESK_NEXT(function)(path, size); }); \
  }
TESK_TRUNCATE(truncate, off_t)
TESK_TRUNCATE(truncate64, off64_t)

int rename(const char* from, const char* to) {
  return Do("rename", Watched(to), -1, [&] { return TESK_NEXT(rename)(from, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
  return Do("rename", Watched(to), -1,
            [&] { return TESK_NEXT(renameat2)(fromFolder, from, toFolder, to, flags); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  return Do("rename", Watched(to), -1,
            [&] { return TESK_NEXT(linkat)(fromFolder, from, toFolder, to, flags); });
}

#define TESK_REMOVE(function)                                                          \
  int function(const char* path) {                                                     \
    return Do("remove", Watched(path), -1, [&] { return TESK_NEXT(function)(path); }); \
  }
TESK_REMOVE(remove)
TESK_REMOVE(unlink)

int unlinkat(int folder, const char* path, int flags) {
  return Do("remove", Watched(path), -1, [&] { return TESK_NEXT(unlinkat)(folder, path, flags); });
}

int chmod(const char* path, mode_t mode) {
  return Do("chmod", Watched(path), -1, [&] { return TESK_NEXT(chmod)(path, mode); });
}

int fchmod(int handle, mode_t mode) {
  const OpenFile file(handle);
  return Do("chmod", file.name, -1, [&] { return TESK_NEXT(fchmod)(handle, mode); });
}

int fchown(int handle, uid_t owner, gid_t group) {
  const OpenFile file(handle);
  return Do("chown", file.name, -1, [&] { return TESK_NEXT(fchown)(handle, owner, group); });
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) {
  return Do("chmod", Watched(path), -1,
            [&] { return TESK_NEXT(fchmodat)(folder, path, mode, flags); });
}

}  // extern "C"
