// SPDX-License-Identifier: MIT
#include "common/address_text.h"

#include <arpa/inet.h>
#include <cstdio>

namespace vchip {
namespace {

std::string ip_text(int family, const void *address) {
  char text[INET6_ADDRSTRLEN] = {};
  inet_ntop(family, address, text, sizeof text);
  return text;
}

}  // namespace

std::string mac_text(const uint8_t *mac) {
  char text[sizeof "02:00:5e:00:00:01"];
  snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
           mac[4], mac[5]);
  return text;
}

std::string ip4_text(uint32_t address) {
  const uint32_t bytes = htonl(address);
  return ip_text(AF_INET, &bytes);
}

std::string ip6_text(const uint8_t *address) {
  return ip_text(AF_INET6, address);
}

}  // namespace vchip
