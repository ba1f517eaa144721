// SPDX-License-Identifier: MIT
#include "chip/objects_in_use.h"

#include <cstddef>
#include <dlfcn.h>
#include <link.h>

namespace swsh {
namespace {

struct Search {
  const char *function;
  std::vector<std::string> files;
};

// An object's own definition; looking up through its handle also finds those
// of the objects that it needs, which do not count.
bool defines(const char *file, const char *function) {
  void *handle = dlopen(file, RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) return false;
  const void *address = dlsym(handle, function);
  Dl_info found = {};
  const bool own =
      address != nullptr && dladdr(address, &found) != 0 && std::string(found.dli_fname) == file;
  dlclose(handle);
  return own;
}

int look_at(struct dl_phdr_info *object, size_t, void *data) {
  auto *search = static_cast<Search *>(data);
  const std::string file = object->dlpi_name;
  if (!file.empty() && defines(file.c_str(), search->function)) search->files.push_back(file);
  return 0;
}

// Of a program that everything is linked into.
std::vector<std::string> first_definition(const char *function) {
  Dl_info found = {};
  const void *address = dlsym(RTLD_DEFAULT, function);
  if (address == nullptr || dladdr(address, &found) == 0) return {};
  return {found.dli_fname};
}

}  // namespace

// The program itself has no name in the list of loaded objects.
std::vector<std::string> files_beyond_program(const char *function) {
  Search search = {function, {}};
  dl_iterate_phdr(look_at, &search);
  return search.files.empty() ? first_definition(function) : search.files;
}

}  // namespace swsh
