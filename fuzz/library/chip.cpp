// SPDX-License-Identifier: MIT
#include "library/chip.h"

#include <swctl-vchip/vchip.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "support/stage.h"

namespace swfuzz {
namespace {

Memory make_chip() {
  std::string directory = std::filesystem::temp_directory_path() / "swctl-fuzz-XXXXXX";
  if (mkdtemp(directory.data()) == nullptr) wrong("no directory for the chip");
  const std::string path = directory + "/chip";
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  if (const char *refusal = vchip_open()) wrong(refusal);
  const Memory memory = map_privately(path, path);
  std::filesystem::remove_all(directory);
  return memory;
}

}  // namespace

Memory map_privately(const std::string &shown, const std::string &path) {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (!line.ends_with(shown)) continue;
    const size_t begin = std::stoull(line, nullptr, 16);
    const size_t end = std::stoull(line.substr(line.find('-') + 1), nullptr, 16);
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    void *at = mmap(reinterpret_cast<void *>(begin), end - begin, PROT_READ | PROT_WRITE,
                    MAP_PRIVATE | MAP_FIXED, descriptor, 0);
    close(descriptor);
    if (at == MAP_FAILED) break;
    return {at, end - begin};
  }
  wrong("the chip's memory is not found");
}

// What was written is forgotten by giving the pages back; a reset writes every
// block of both units instead. What the process has worked out from settings is
// known by their revision, so each chip gets one that none had before.
void renew_chip() {
  constexpr size_t kRevisionAt = 40;  // of the image's header
  constexpr uint64_t kApart = uint64_t{1} << 32;
  static const Memory memory = make_chip();
  static uint64_t revision = 0;
  madvise(memory.at, memory.size, MADV_DONTNEED);
  revision += kApart;
  memcpy(static_cast<uint8_t *>(memory.at) + kRevisionAt, &revision, sizeof revision);
}

}  // namespace swfuzz
