// SPDX-License-Identifier: MIT
#include "next_library.h"

#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <string>
#include <vector>

namespace swprobe {
namespace {

struct Loaded {
  const char *own;
  bool after;
  std::vector<std::string> names;
};

int note_library(dl_phdr_info *info, size_t, void *data) {
  auto &loaded = *static_cast<Loaded *>(data);
  if (loaded.after && *info->dlpi_name != '\0') loaded.names.emplace_back(info->dlpi_name);
  if (strcmp(info->dlpi_name, loaded.own) == 0) loaded.after = true;
  return 0;
}

std::vector<std::string> loaded_after_probe() {
  Dl_info own = {};
  if (dladdr(reinterpret_cast<const void *>(&note_library), &own) == 0) return {};
  Loaded loaded = {own.dli_fname, false, {}};
  dl_iterate_phdr(note_library, &loaded);
  return loaded.names;
}

// The library's own, not that of one that it needs.
void *function_of(const std::string &library, const char *name) {
  void *const handle = dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) return nullptr;
  void *const found = dlsym(handle, name);
  dlclose(handle);
  Dl_info info = {};
  const bool own = found != nullptr && dladdr(found, &info) != 0 && library == info.dli_fname;
  return own ? found : nullptr;
}

}  // namespace

void *find_after_probe(const char *name) {
  void *const next = dlsym(RTLD_NEXT, name);
  if (next != nullptr) return next;
  for (const std::string &library : loaded_after_probe())
    if (void *const found = function_of(library, name); found != nullptr) return found;
  return nullptr;
}

}  // namespace swprobe
