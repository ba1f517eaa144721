// SPDX-License-Identifier: MIT
#include "pipeline/words.h"

#include <swctl-vchip/vchip.h>

#include <cstdio>

#include "common/board.h"

namespace vchip {
namespace {

std::string name_of(int32_t port) {
  const int32_t interface = interface_of(port);
  return interface >= 0 ? std::to_string(interface) : "p" + std::to_string(port);
}

void add_range(std::string &text, int32_t first, int32_t last) {
  if (!text.empty()) text += ',';
  text += std::to_string(first);
  if (last > first) text += '-' + std::to_string(last);
}

// By interface, so that the list reads as the box does.
std::string list_of(uint32_t ports) {
  std::string text;
  int32_t first = -1;
  for (int32_t interface = 0; interface <= 32; ++interface) {
    const int32_t port = interface < 32 ? port_of(interface) : VCHIP_NO_INTERFACE;
    const bool there = port >= 0 && (ports >> port & 1) != 0;
    if (there && first < 0) first = interface;
    if (there || first < 0) continue;
    add_range(text, first, interface - 1);
    first = -1;
  }
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    if ((ports >> port & 1) == 0 || interface_of(port) >= 0) continue;
    text += (text.empty() ? "p" : ",p") + std::to_string(port);
  }
  return text;
}

}  // namespace

std::string port_text(int32_t port) {
  return port == VCHIP_CPU_PORT ? "the CPU port" : "port " + name_of(port);
}

std::string ports_text(uint32_t ports) {
  if (ports == 0) return "no port";
  if ((ports & (ports - 1)) == 0) return port_text(__builtin_ctz(ports));
  return "ports " + list_of(ports);
}

std::string number_text(uint64_t number) {
  return std::to_string(number);
}

std::string address_text(uint64_t address) {
  char text[18];
  snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x",
           static_cast<unsigned>(address >> 40 & 0xff), static_cast<unsigned>(address >> 32 & 0xff),
           static_cast<unsigned>(address >> 24 & 0xff), static_cast<unsigned>(address >> 16 & 0xff),
           static_cast<unsigned>(address >> 8 & 0xff), static_cast<unsigned>(address & 0xff));
  return text;
}

std::string vlan_text(uint32_t vid) {
  return "VLAN " + std::to_string(vid);
}

const char *action_text(FrameAction action) {
  switch (action) {
    case FrameAction::drop: return "dropped";
    case FrameAction::to_cpu: return "sent to the processor alone";
    case FrameAction::copy: return "forwarded, with a copy for the processor";
    default: return "forwarded";
  }
}

}  // namespace vchip
