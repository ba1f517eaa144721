// SPDX-License-Identifier: MIT
#include "folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace swfaults {

Folder::Folder() {
  std::string name = (std::filesystem::temp_directory_path() / "swctl-faults-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr)
    throw std::runtime_error("cannot make '" + name + "': " + std::strerror(errno));
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string text_of(const std::string &path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace swfaults
