// SPDX-License-Identifier: MIT
#include "ip_text.h"

#include <arpa/inet.h>

namespace swsh {

std::string ip_text(uint32_t address) {
  char text[INET_ADDRSTRLEN];
  const in_addr network = {htonl(address)};
  return inet_ntop(AF_INET, &network, text, sizeof text);
}

std::string ip6_text(const uint8_t *bytes) {
  char text[INET6_ADDRSTRLEN];
  return inet_ntop(AF_INET6, bytes, text, sizeof text);
}

}  // namespace swsh
