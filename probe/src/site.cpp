// SPDX-License-Identifier: MIT
#include "site.h"

#include <string>

#include "line_file.h"
#include "next_library.h"

namespace swprobe {

void *Site::find_next() {
  void *found = next.load(std::memory_order_relaxed);
  if (found != nullptr) return found;
  found = find_after_probe(name);
  next.store(found, std::memory_order_relaxed);
  if (found == nullptr && !missed.exchange(true)) {
    complain(std::string("no library after the probe has ") + name +
             (has_result ? "; it answers -1" : "; it does nothing"));
  }
  return found;
}

const Site *find_call(std::string_view name) {
  for (const auto &sites : {known_calls(), known_library_calls()})
    for (const Site *site : sites)
      if (site->name == name) return site;
  return nullptr;
}

}  // namespace swprobe
