// SPDX-License-Identifier: MIT
// What another process must know of a lab: a file beside the image, locked while the lab
// is there.
#ifndef VCHIPCTL_LAB_RECORD_H
#define VCHIPCTL_LAB_RECORD_H

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

#include "os/descriptor.h"

namespace vchipctl {

struct LabProcesses {
  pid_t board;                     // where vchipd is
  std::map<int32_t, pid_t> hosts;  // by interface
};

class LabRecord {
 public:
  // Throws Refused if there is a lab on that image already.
  explicit LabRecord(const std::string &image);
  ~LabRecord();
  LabRecord(const LabRecord &) = delete;
  LabRecord &operator=(const LabRecord &) = delete;

  void write(const LabProcesses &processes);

 private:
  const std::string path_;
  os::Descriptor file_;
};

// Throws Refused if there is no lab on that image.
LabProcesses find_lab(const std::string &image);

// Where the image of a lab is that was given none: in a folder of this user.
class LabFolder {
 public:
  static std::string path();
  static std::string image() { return path() + "/chip.img"; }
  // Makes it; removes all of it at the end. Throws Refused if it is another user's.
  LabFolder();
  ~LabFolder();
  LabFolder(const LabFolder &) = delete;
  LabFolder &operator=(const LabFolder &) = delete;

 private:
  const std::string path_;  // the user has another number in a lab
};

}  // namespace vchipctl

#endif
