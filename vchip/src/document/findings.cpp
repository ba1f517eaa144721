// SPDX-License-Identifier: MIT
#include "document/findings.h"

#include <cstdio>
#include <cstring>
#include <span>
#include <utility>

#include "common/numbers.h"

namespace vchip {
namespace {

std::string hex(uint64_t word) {
  char text[24];
  snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(word));
  return text;
}

}  // namespace

void Findings::bits(const char *name, const uint32_t &word, uint32_t allowed) {
  see(name, &word, sizeof word);
  if ((word & ~allowed) != 0) add(name, hex(word) + ", expected no bits but " + hex(allowed));
}

void Findings::ports(const char *name, const uint32_t &mask) {
  see(name, &mask, sizeof mask);
  if ((mask & ~kAllPorts) != 0)
    add(name, hex(mask) + ", expected ports 0 to " + std::to_string(VCHIP_PORTS - 1));
}

// Each byte equals the one before it, and the first is 0.
bool Findings::are_zero(const void *bytes, size_t count) {
  const auto *first = static_cast<const uint8_t *>(bytes);
  return count == 0 || (first[0] == 0 && memcmp(first, first + 1, count - 1) == 0);
}

void Findings::zero_bytes(const char *name, const void *bytes, size_t count) {
  cover(bytes, count);
  if (are_zero(bytes, count)) return;
  const auto *first = static_cast<const uint8_t *>(bytes);
  for (size_t index = 0; index < count; ++index)
    if (first[index] != 0)
      return add(
          name, "byte " + std::to_string(index) + " is " + hex(first[index]) + ", expected zeroes");
}

void Findings::rule(bool holds, const char *name, const std::string &text) {
  if (!holds) add(name, text);
}

void Findings::watch(const void *start, size_t size) {
  watched_ = static_cast<const uint8_t *>(start);
  seen_.assign(size, 0);
}

void Findings::mark(const void *bytes, size_t count) {
  const auto offset = static_cast<size_t>(static_cast<const uint8_t *>(bytes) - watched_);
  for (size_t index = offset; index < offset + count && index < seen_.size(); ++index)
    seen_[index] = 1;
}

void Findings::any_bytes(const char *name, const uint8_t *bytes, size_t count, size_t width) {
  if (!is_observed()) return;
  Step &step = path_[depth_++];
  step = {name, 0, count / width, width};
  see("", bytes, width);
  cover(bytes, count);
  --depth_;
}

void Findings::note(const char *name, const void *word, size_t width) {
  for (const DescribedWord &known : *describes_)
    if (known.at == word) return;
  DescribedWord found = {"", word, width, {}};
  for (const Step &step : std::span(path_, depth_)) {
    if (!found.name.empty() && *step.name != '\0') found.name += '.';
    found.name += std::string(step.name) + "[]";
    found.arrays.push_back({step.count, step.stride});
  }
  if (!found.name.empty() && *name != '\0') found.name += '.';
  found.name += name;
  describes_->push_back(found);
}

void Findings::out_of_range(const char *name, uint64_t value, uint64_t lowest, uint64_t highest) {
  std::string expected = std::to_string(lowest);
  if (highest != lowest) expected += " to " + std::to_string(highest);
  add(name, std::to_string(value) + ", expected " + expected);
}

void Findings::add(const char *name, std::string text) {
  std::string word;
  for (const Step &step : std::span(path_, depth_)) {
    if (!word.empty()) word += '.';
    word += std::string(step.name) + '[' + std::to_string(step.index) + ']';
  }
  if (!word.empty() && *name != '\0') word += '.';
  all_.push_back({word + name, std::move(text)});
}

}  // namespace vchip
