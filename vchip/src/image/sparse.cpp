// SPDX-License-Identifier: MIT
#include "image/sparse.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vchip {
namespace {

constexpr size_t kPage = 4096;  // what is looked at as one, whatever the system's are

constexpr uint8_t kZeroes[kPage] = {};

// Calls visit(offset, bytes) for every page that is not all zero, until one
// answers false.
template <typename Visit>
bool each_page(const void *memory, size_t size, Visit visit) {
  const auto *bytes = static_cast<const uint8_t *>(memory);
  for (size_t offset = 0; offset < size; offset += kPage) {
    const size_t length = std::min(kPage, size - offset);
    if (memcmp(bytes + offset, kZeroes, length) != 0 && !visit(offset, length)) return false;
  }
  return true;
}

// Until all is done, with a call like pread() or pwrite().
template <typename Transfer, typename Bytes>
bool transfer_all(Transfer transfer, int descriptor, Bytes *bytes, size_t length, size_t offset) {
  while (length > 0) {
    const ssize_t part = transfer(descriptor, bytes, length, static_cast<off_t>(offset));
    if (part == 0) errno = EIO;
    if (part == 0 || (part < 0 && errno != EINTR)) return false;
    const size_t done = part < 0 ? 0 : static_cast<size_t>(part);
    bytes += done;
    offset += done;
    length -= done;
  }
  return true;
}

// give_back(offset, length) is asked to make whole pages zero, and may do
// nothing, as emulators do that take advice without following it: a mark tells.
// Pages that are only partly in the range are written to.
template <typename GiveBack>
void zero(void *memory, size_t size, GiveBack give_back) {
  static const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  auto *const bytes = static_cast<uint8_t *>(memory);
  const auto begin = reinterpret_cast<uintptr_t>(memory);
  const size_t first = (begin + page - 1) / page * page - begin;
  const size_t last = (begin + size) / page * page - begin;
  if (last > size || first >= last) return static_cast<void>(memset(memory, 0, size));
  bytes[first] = 1;
  give_back(first, last - first);
  if (bytes[first] != 0) memset(bytes + first, 0, last - first);
  memset(bytes, 0, first);
  memset(bytes + last, 0, size - last);
}

}  // namespace

void *private_memory(size_t size) {
  void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return memory == MAP_FAILED ? nullptr : memory;
}

void give_back_memory(void *memory, size_t size) {
  munmap(memory, size);
}

void zero_private(void *memory, size_t size) {
  zero(memory, size, [memory](size_t first, size_t length) {
    madvise(static_cast<uint8_t *>(memory) + first, length, MADV_DONTNEED);
  });
}

void zero_mapped(void *memory, size_t size, int descriptor, size_t offset) {
  zero(memory, size, [=](size_t first, size_t length) {
    if (descriptor < 0) {
      madvise(static_cast<uint8_t *>(memory) + first, length, MADV_REMOVE);
    } else {
      fallocate(descriptor, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE,
                static_cast<off_t>(offset + first), static_cast<off_t>(length));
    }
  });
}

bool write_sparse(int descriptor, const void *memory, size_t size) {
  const auto *bytes = static_cast<const uint8_t *>(memory);
  return ftruncate(descriptor, static_cast<off_t>(size)) == 0 &&
         each_page(memory, size, [&](size_t offset, size_t length) {
           return transfer_all(pwrite, descriptor, bytes + offset, length, offset);
         });
}

// A file system that knows no holes says that all is data.
bool read_sparse(int descriptor, void *zeroes, size_t size) {
  auto *bytes = static_cast<uint8_t *>(zeroes);
  off_t data = 0;
  const auto end = static_cast<off_t>(size);
  while (data < end && (data = lseek(descriptor, data, SEEK_DATA)) >= 0) {
    const off_t hole = std::min(lseek(descriptor, data, SEEK_HOLE), end);
    if (hole <= data) break;
    if (!transfer_all(pread, descriptor, bytes + data, static_cast<size_t>(hole - data),
                      static_cast<size_t>(data)))
      return false;
    data = hole;
  }
  return data >= end || (data < 0 && errno == ENXIO);
}

void copy_sparse(const void *memory, void *zeroes, size_t size) {
  const auto *from = static_cast<const uint8_t *>(memory);
  auto *to = static_cast<uint8_t *>(zeroes);
  each_page(memory, size, [&](size_t offset, size_t length) {
    memcpy(to + offset, from + offset, length);
    return true;
  });
}

}  // namespace vchip
