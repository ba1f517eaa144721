// SPDX-License-Identifier: MIT
#include "kernel_bridge.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <poll.h>
#include <sstream>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace bridge {
namespace {

constexpr size_t kFrameMax = 16379;
constexpr size_t kTagAt = 12;  // after both addresses

void run(const std::string &program, const std::string &commands) {
  const std::string file = "/tmp/" + program + ".batch";
  std::ofstream(file) << commands << "\n";
  // By its path: the machine's shell has an ip of its own.
  const std::string line = "/bin/" + program + " -batch " + file + " 2>&1";
  FILE *output = popen(line.c_str(), "r");
  if (output == nullptr) throw std::system_error(errno, std::generic_category(), program);
  std::string said;
  std::array<char, 512> part = {};
  while (fgets(part.data(), part.size(), output) != nullptr) said += part.data();
  if (pclose(output) != 0) throw std::runtime_error(program + ": " + said + "in:\n" + commands);
}

int host_socket(const std::string &interface) {
  const int host = socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
  if (host < 0) throw std::system_error(errno, std::generic_category(), "a packet socket");
  const int on = 1;
  setsockopt(host, SOL_PACKET, PACKET_AUXDATA, &on, sizeof on);
  setsockopt(host, SOL_PACKET, PACKET_IGNORE_OUTGOING, &on, sizeof on);
  sockaddr_ll address = {};
  address.sll_family = AF_PACKET;
  address.sll_protocol = htons(ETH_P_ALL);
  address.sll_ifindex = static_cast<int>(if_nametoindex(interface.c_str()));
  if (bind(host, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
    throw std::system_error(errno, std::generic_category(), interface);
  return host;
}

// The kernel hands the outer tag over beside the frame.
void put_tag_back(msghdr &message, Bytes &frame) {
  for (cmsghdr *part = CMSG_FIRSTHDR(&message); part != nullptr;
       part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_PACKET || part->cmsg_type != PACKET_AUXDATA) continue;
    tpacket_auxdata extra = {};
    memcpy(&extra, CMSG_DATA(part), sizeof extra);
    if ((extra.tp_status & TP_STATUS_VLAN_VALID) == 0) continue;
    const uint16_t type =
        (extra.tp_status & TP_STATUS_VLAN_TPID_VALID) != 0 ? extra.tp_vlan_tpid : ETH_P_8021Q;
    const std::array<uint8_t, 4> tag = {static_cast<uint8_t>(type >> 8), static_cast<uint8_t>(type),
                                        static_cast<uint8_t>(extra.tp_vlan_tci >> 8),
                                        static_cast<uint8_t>(extra.tp_vlan_tci)};
    frame.insert(frame.begin() + kTagAt, tag.begin(), tag.end());
  }
}

void switch_off(const std::string &setting) {
  std::ofstream("/proc/sys/net/ipv6/conf/" + setting) << "1\n";
}

// Until the kernel has seen the cable, which it does in its own time, what goes to the
// interface is lost.
void wait_for_cable(int port) {
  constexpr auto kAtMost = std::chrono::seconds(20);
  const auto end = std::chrono::steady_clock::now() + kAtMost;
  for (std::string state; state != "up";) {
    if (std::chrono::steady_clock::now() > end)
      throw std::runtime_error(interface(port) + " is " + state);
    if (!state.empty()) usleep(1000);
    std::ifstream("/sys/class/net/" + interface(port) + "/operstate") >> state;
  }
}

}  // namespace

std::string interface(int port) {
  return "sw" + std::to_string(port);
}

KernelBridge::KernelBridge(int ports) {
  // Nothing but the test's frames is on the cables.
  switch_off("all/disable_ipv6");
  switch_off("default/disable_ipv6");
  std::ostringstream commands;
  commands << "link add br0 type bridge vlan_filtering 1 vlan_default_pvid 1 stp_state 0 "
              "mcast_snooping 0 forward_delay 0\n"
           << "link set br0 up\n";
  for (int port = 1; port <= ports; ++port)
    commands << "link add " << interface(port) << " type veth peer name h" << port << "\n"
             << "link set " << interface(port) << " master br0 arp off up\n"
             << "link set h" << port << " arp off promisc on up\n";
  run("ip", commands.str());
  hosts_.resize(static_cast<size_t>(ports) + 1, -1);
  for (int port = 1; port <= ports; ++port)
    hosts_[static_cast<size_t>(port)] = host_socket("h" + std::to_string(port));
  for (int port = 1; port <= ports; ++port) wait_for_cable(port);
  // Answered when the kernel is done with them.
  run("ip", "link show br0");
}

KernelBridge::~KernelBridge() {
  std::ostringstream commands;
  commands << "link del br0\n";
  for (size_t port = 1; port < hosts_.size(); ++port) {
    close(hosts_[port]);
    commands << "link del h" << port << "\n";
  }
  try {
    run("ip", commands.str());
  } catch (const std::exception &error) {
    fprintf(stderr, "%s\n", error.what());
  }
}

void KernelBridge::set() {
  if (!ip_.empty()) run("ip", ip_);
  if (!bridge_.empty()) run("bridge", bridge_);
  ip_.clear();
  bridge_.clear();
}

void KernelBridge::send(int port, const Bytes &frame) {
  set();
  const int host = hosts_[static_cast<size_t>(port)];
  if (::send(host, frame.data(), frame.size(), 0) != static_cast<ssize_t>(frame.size()))
    throw std::system_error(errno, std::generic_category(), "sending a frame");
}

Bytes KernelBridge::hear(int port, std::chrono::milliseconds patience) {
  pollfd host = {hosts_[static_cast<size_t>(port)], POLLIN, 0};
  if (poll(&host, 1, static_cast<int>(patience.count())) != 1) return {};
  Bytes frame(kFrameMax);
  std::array<uint8_t, 256> beside = {};
  iovec place = {frame.data(), frame.size()};
  msghdr message = {};
  message.msg_iov = &place;
  message.msg_iovlen = 1;
  message.msg_control = beside.data();
  message.msg_controllen = beside.size();
  const ssize_t length = recvmsg(host.fd, &message, 0);
  if (length < 0) throw std::system_error(errno, std::generic_category(), "hearing a frame");
  frame.resize(static_cast<size_t>(length));
  put_tag_back(message, frame);
  return frame;
}

}  // namespace bridge
