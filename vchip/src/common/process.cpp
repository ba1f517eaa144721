// SPDX-License-Identifier: MIT
#include "common/process.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace vchip {
namespace {

std::string about(uint32_t process, const char *what) {
  std::ifstream file("/proc/" + std::to_string(process) + "/" + what);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

uint32_t process_of(uint32_t thread) {
  const std::string status = about(thread, "status");
  const std::string field = "\nTgid:";
  const size_t at = status.find(field);
  if (at == std::string::npos) return 0;
  return static_cast<uint32_t>(strtoul(status.c_str() + at + field.size(), nullptr, 10));
}

std::string process_name(uint32_t process) {
  std::string name = about(process, "comm");
  if (!name.empty() && name.back() == '\n') name.pop_back();
  return name;
}

// The name, which may hold anything, is in brackets; the state follows.
bool is_stopped(uint32_t process) {
  const std::string line = about(process, "stat");
  const size_t end = line.rfind(") ");
  if (end == std::string::npos) return false;
  const char state = line[end + 2];
  return state == 'T' || state == 't';
}

}  // namespace vchip
