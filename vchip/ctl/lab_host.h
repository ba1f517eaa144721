// SPDX-License-Identifier: MIT
// A host of a lab: a network namespace with one interface, held by a process.
#ifndef VCHIPCTL_LAB_HOST_H
#define VCHIPCTL_LAB_HOST_H

#include <string>

#include "child.h"
#include "os/descriptor.h"

namespace vchipctl {

class LabHost {
 public:
  // At an interface of the board, 1 to 26. Throws Refused.
  explicit LabHost(int32_t interface);

  pid_t process() const { return holder_.process(); }
  // Where its end of a wire goes: "eth0@/proc/1234/ns/net".
  std::string wire_end() const;
  // Gives the interface, which is there now, its addresses. Throws Refused.
  void configure();

  static std::string name(int32_t interface);
  static std::string address(int32_t interface);

 private:
  os::Descriptor control_;
  Child holder_;
};

}  // namespace vchipctl

#endif
