// SPDX-License-Identifier: MIT
// A bridge of the Linux kernel with a host at each port.
#ifndef SWCTL_KERNEL_BRIDGE_KERNEL_BRIDGE_H
#define SWCTL_KERNEL_BRIDGE_KERNEL_BRIDGE_H

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace bridge {

using Bytes = std::vector<uint8_t>;

class KernelBridge {
 public:
  // Ports are 1 to `ports`: swN is the bridge's side of a cable, hN the host's.
  explicit KernelBridge(int ports);
  ~KernelBridge();
  KernelBridge(const KernelBridge &) = delete;
  KernelBridge &operator=(const KernelBridge &) = delete;

  // Commands of ip(8) and bridge(8), each ended by a line feed. They are carried
  // out before the next frame, those of ip first. send() throws with what was
  // said if one is refused.
  void ip(const std::string &commands) { ip_ += commands; }
  void bridge(const std::string &commands) { bridge_ += commands; }

  void send(int port, const Bytes &frame);
  // The next frame that host `port` hears, tags put back. Empty if none comes
  // within `patience`.
  Bytes hear(int port, std::chrono::milliseconds patience);

 private:
  void set();

  std::string ip_;
  std::string bridge_;
  std::vector<int> hosts_;  // packet sockets, by port
};

// The interface of a port: "sw3".
std::string interface(int port);

}  // namespace bridge

#endif
