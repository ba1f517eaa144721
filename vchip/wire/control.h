// SPDX-License-Identifier: MIT
// The socket on which other programs ask for wires: <swctl-vchip/wires.h>.
#ifndef VCHIPD_CONTROL_H
#define VCHIPD_CONTROL_H

#include <map>
#include <string>

#include "descriptor.h"
#include "loop.h"

namespace vchipd {

class Panel;

class Control {
 public:
  // Throws Fault.
  Control(Loop &loop, Panel &panel, const std::string &image, uint32_t unit);
  ~Control();
  Control(const Control &) = delete;
  Control &operator=(const Control &) = delete;

 private:
  struct Caller {
    Descriptor connection;
    std::string request;
  };

  void accept_caller();
  void hear(int descriptor);
  void hang_up(int descriptor);
  std::string answer(const std::string &request);

  Loop &loop_;
  Panel &panel_;
  std::string path_;
  Descriptor listener_;
  std::map<int, Caller> callers_;
};

}  // namespace vchipd

#endif
