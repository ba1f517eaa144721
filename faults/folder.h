// SPDX-License-Identifier: MIT
#ifndef SWCTL_FAULTS_FOLDER_H
#define SWCTL_FAULTS_FOLDER_H

#include <string>

namespace swfaults {

// A folder of the tool's own, gone with all that is in it at the end.
class Folder {
 public:
  // Throws std::runtime_error if none can be made.
  Folder();
  ~Folder();
  Folder(const Folder &) = delete;
  Folder &operator=(const Folder &) = delete;

  std::string file(const std::string &name) const { return path_ + '/' + name; }

 private:
  std::string path_;
};

// All of a file; empty if there is none.
std::string text_of(const std::string &path);

}  // namespace swfaults

#endif
