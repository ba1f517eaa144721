// SPDX-License-Identifier: MIT
// Deletes that are one request to the chip. Programs of the generic interface
// rely on the words that each function fills in, odd ones included: the MAC
// address is never used, and a flush by trunk selects nothing.
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

namespace {

struct Vlan {
  uint32_t given;
  uint32_t vid;
};
constexpr Vlan kAnyVlan = {0, 0};
constexpr Vlan in_vlan(uint32_t vid) {
  return {1, static_cast<uint16_t>(vid)};
}

struct Interface {
  uint32_t given;
  uint32_t is_port;
  uint32_t number;
};
constexpr Interface kAnyInterface = {0, 0, 0};
constexpr Interface on_port(int32_t port) {
  return {1, 1, static_cast<uint32_t>(port)};
}
constexpr Interface on_trunk(int32_t trunk) {
  return {1, 0, static_cast<uint32_t>(trunk)};
}
constexpr Interface on_trunk_unselected(int32_t trunk) {
  return {0, 1, static_cast<uint32_t>(trunk)};
}

int32_t flush(const Vlan &vlan, const Interface &interface, uint32_t flags) {
  const chip_l2_flush_request request = {
      .reserved = 0,
      .byVlan = vlan.given,
      .vid = vlan.vid,
      .byInterface = interface.given,
      .interfaceIsPort = interface.is_port,
      .portOrTrunk = interface.number,
      .reserved2 = 0,
      .includeStatic = flags != 0 ? 1u : 0u,
  };
  return rtk_l2_ucastAddr_flush(0, &request);
}

}  // namespace

int32_t user_l2_addr_delete_by_mac_port(uint32_t, uint32_t, const uint8_t *, uint32_t, int32_t port,
                                        uint32_t flags) {
  return flush(kAnyVlan, on_port(port), flags);
}

int32_t user_l2_addr_delete_by_port(uint32_t, uint32_t, uint32_t, int32_t port, uint32_t flags) {
  return flush(kAnyVlan, on_port(port), flags);
}

int32_t user_l2_addr_delete_by_trunk(uint32_t, uint32_t, int32_t trunk, uint32_t flags) {
  return flush(kAnyVlan, on_trunk_unselected(trunk), flags);
}

int32_t user_l2_addr_delete_by_vlan(uint32_t, uint32_t, uint32_t vid, uint32_t flags) {
  return flush(in_vlan(vid), kAnyInterface, flags);
}

int32_t user_l2_addr_delete_by_vlan_port(uint32_t, uint32_t, uint32_t vid, uint32_t, int32_t port,
                                         uint32_t flags) {
  return flush(in_vlan(vid), on_port(port), flags);
}

int32_t user_l2_addr_delete_by_vlan_trunk(uint32_t, uint32_t, uint32_t vid, int32_t trunk,
                                          uint32_t flags) {
  return flush(in_vlan(vid), on_trunk(trunk), flags);
}

int32_t user_l2_addr_delete_by_mac(uint32_t, uint32_t, const uint8_t *, uint32_t flags) {
  return flush(kAnyVlan, kAnyInterface, flags);
}
