// SPDX-License-Identifier: MIT
// The socket on which other programs ask for wires: <swctl-vchip/wires.h>.
#ifndef VCHIPD_CONTROL_H
#define VCHIPD_CONTROL_H

#include <map>
#include <memory>
#include <string>

#include "loop.h"
#include "os/descriptor.h"
#include "os/json.h"

namespace vchipd {

class LiveCapture;
class LiveCaptures;
class Panel;

class Control {
 public:
  // Throws Fault.
  Control(Loop &loop, Panel &panel, LiveCaptures &captures, const std::string &image,
          uint32_t unit);
  ~Control();
  Control(const Control &) = delete;
  Control &operator=(const Control &) = delete;

 private:
  struct Caller {
    os::Descriptor connection;
    std::string request;
  };

  void accept_caller();
  void hear(int descriptor);
  void hang_up(int descriptor);
  os::Descriptor take(int descriptor);
  os::Json perform(const os::Json &request);
  std::string answer(const std::string &request);

  Loop &loop_;
  Panel &panel_;
  LiveCaptures &captures_;
  std::unique_ptr<LiveCapture> begun_;  // goes to the connection that has asked for it
  std::string path_;
  os::Descriptor listener_;
  std::map<int, Caller> callers_;
};

}  // namespace vchipd

#endif
