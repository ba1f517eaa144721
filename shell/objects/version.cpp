// SPDX-License-Identifier: MIT
#include <swctl/swctl.h>

#include "chip/objects_in_use.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// A call that every platform implements, to find out who does.
constexpr char kSdkCall[] = "rtk_port_link_get";
constexpr char kLibraryCall[] = "user_port_init";

Value file_or_nothing(const std::vector<std::string> &files) {
  return files.empty() ? Value(nullptr) : Value(files.back());
}

Answer show_version(const Arguments &, const Context &) {
  std::vector<std::string> platform = files_beyond_program(kSdkCall);
  Record record;
  record.add("version", std::string(SWCTL_VERSION));
  record.add("library", file_or_nothing(files_beyond_program(kLibraryCall)));
  record.add("platform", file_or_nothing(platform));
  if (!platform.empty()) platform.pop_back();
  record.add("between", platform);
  return {Shape::detail, {record}, ""};
}

}  // namespace

Node version_object() {
  return {
      .name = "version",
      .help = "Show the version and the library files in use",
      .details =
          "platform is the file that answers the calls of the chip's SDK; between lists\n"
          "the files that such a call passes on its way there.\n",
      .needs_platform = false,
      .run = show_version,
  };
}

}  // namespace swsh
