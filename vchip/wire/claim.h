// SPDX-License-Identifier: MIT
// One process serves a unit of an image.
#ifndef VCHIPD_CLAIM_H
#define VCHIPD_CLAIM_H

#include <string>

#include "os/descriptor.h"

namespace vchipd {

class Claim {
 public:
  // Throws Fault, with the name of who has it, if that is somebody else.
  Claim(const std::string &image, uint32_t unit);
  ~Claim();
  Claim(const Claim &) = delete;
  Claim &operator=(const Claim &) = delete;

 private:
  const std::string path_;
  os::Descriptor file_;
};

}  // namespace vchipd

#endif
