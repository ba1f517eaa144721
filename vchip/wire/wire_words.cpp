// SPDX-License-Identifier: MIT
#include "wire_words.h"

#include <swctl-vchip/view.h>

#include <iterator>

#include "capture_wire.h"
#include "cpu_wire.h"
#include "fault.h"
#include "packet_wire.h"
#include "stream_wire.h"
#include "tap_wire.h"

namespace vchipd {
namespace {

struct Kind {
  const char *name;
  const char *form;
  std::unique_ptr<Wire> (*make)(const std::string &rest, const Place &place);
};

constexpr Kind kKinds[] = {
    {"veth", "veth:NAME[:PEER]", make_veth_wire}, {"netdev", "netdev:NAME", make_netdev_wire},
    {"tap", "tap:NAME", make_tap_wire},           {"unix", "unix:PATH", make_unix_wire},
    {"tcp", "tcp:ADDR:PORT", make_tcp_wire},      {"pcap", "pcap:[IN][,OUT]", make_capture_wire},
    {"cpu", "cpu:[PREFIX]", make_cpu_wire},
};

int32_t chip_port_of(uint32_t interface) {
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    if (vchip::port(0, port).interface == static_cast<int32_t>(interface)) return port;
  return -1;
}

// -1 if it is no number of at most two digits.
int32_t small_number(const std::string &word) {
  if (word.empty() || word.size() > 2 || word.find_first_not_of("0123456789") != word.npos)
    return -1;
  if (word.size() > 1 && word[0] == '0') return -1;
  return std::stoi(word);
}

}  // namespace

int32_t parse_port(const std::string &word) {
  const bool raw = word.starts_with("p");
  const int32_t number = small_number(raw ? word.substr(1) : word);
  int32_t port = -1;
  if (number >= 0) port = raw ? number : chip_port_of(static_cast<uint32_t>(number));
  if (port >= 0 && port < VCHIP_PORTS) return port;
  throw WrongWords("no port '" + word + "': expected 1 to 26, 0 the CPU, or p0 to p28");
}

std::string port_name(int32_t port) {
  const int32_t interface = vchip::port(0, port).interface;
  return interface >= 0 ? std::to_string(interface) : "p" + std::to_string(port);
}

std::string wire_kinds() {
  std::string kinds;
  for (const Kind &kind : kKinds) kinds += (kinds.empty() ? "" : ", ") + std::string(kind.form);
  return kinds;
}

std::unique_ptr<Wire> make_wire(const std::string &word, const Place &place) {
  const size_t colon = word.find(':');
  const std::string name = word.substr(0, colon);
  for (const Kind &kind : kKinds)
    if (colon != word.npos && name == kind.name) return kind.make(word.substr(colon + 1), place);
  throw WrongWords("no wire '" + word + "': expected " + wire_kinds());
}

}  // namespace vchipd
