// SPDX-License-Identifier: MIT
#include <utility>
#include <vector>

#include "document/dump.h"
#include "platform/platform_block.h"

namespace vchip {

void PlatformBlock::dump(const char *name, Dump &chip) const {
  std::vector<std::pair<const char *, const char *>> records;
  each_record(
      [&](const char *location, const char *message) { records.emplace_back(location, message); });
  chip.object(name, [&](Dump &block) {
    block.count("log_lines", log_lines_);
    block.flag("trace_on", trace_ != 0);
    block.objects("trace", records.size(), [&](Dump &entry, size_t index) {
      entry.text("location", records[index].first);
      entry.text("message", records[index].second);
    });
  });
}

}  // namespace vchip
