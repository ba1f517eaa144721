// SPDX-License-Identifier: MIT
#include "describe.h"

#include <arpa/inet.h>
#include <cstdio>
#include <span>

namespace vchipctl {
namespace {

constexpr size_t kAddressBytes = 12;
constexpr size_t kTagBytes = 4;
constexpr uint32_t kFirstEtherType = 0x0600;  // below: a length (IEEE 802.3)
constexpr uint32_t kCustomerTag = 0x8100;

enum EtherType : uint32_t {
  kIp4 = 0x0800,
  kArp = 0x0806,
  kIp6 = 0x86dd,
  kMacControl = 0x8808,
  kSlow = 0x8809,
  kEapol = 0x888e,
  kLldp = 0x88cc,
};
enum Protocol : uint32_t { kIcmp = 1, kIgmp = 2, kTcp = 6, kUdp = 17, kIcmp6 = 58 };

// The rest of a frame. After its end everything is 0.
class Rest {
 public:
  explicit Rest(std::span<const uint8_t> bytes) : bytes_(bytes) {}
  bool has(size_t count) const { return bytes_.size() >= count; }
  uint32_t byte(size_t at) const { return has(at + 1) ? bytes_[at] : 0; }
  uint32_t half(size_t at) const { return byte(at) << 8 | byte(at + 1); }
  Rest from(size_t at) const { return Rest(bytes_.subspan(has(at) ? at : bytes_.size())); }
  const uint8_t *data() const { return bytes_.data(); }

 private:
  std::span<const uint8_t> bytes_;
};

template <typename... Values>
std::string text_of(const char *format, Values... values) {
  char text[128];
  snprintf(text, sizeof text, format, values...);
  return text;
}

std::string address(const Rest &rest) {
  return text_of("%02x:%02x:%02x:%02x:%02x:%02x", rest.byte(0), rest.byte(1), rest.byte(2),
                 rest.byte(3), rest.byte(4), rest.byte(5));
}

std::string ip(int family, const Rest &rest) {
  if (!rest.has(family == AF_INET ? 4 : 16)) return "?";
  char text[INET6_ADDRSTRLEN];
  return inet_ntop(family, rest.data(), text, sizeof text);
}

bool is_tag(uint32_t type) {
  return type == kCustomerTag || type == 0x88a8 || type == 0x9100 || type == 0x9200;
}

std::string tag(const Rest &rest) {
  const uint32_t word = rest.half(2);
  std::string text = text_of(", vlan %u p %u", word & 0xfff, word >> 13);
  if ((word & 0x1000) != 0) text += " dei";
  if (rest.half(0) != kCustomerTag) text += text_of(" tpid 0x%04x", rest.half(0));
  return text;
}

std::string arp(const Rest &rest) {
  const std::string sender = ip(AF_INET, rest.from(14));
  const std::string target = ip(AF_INET, rest.from(24));
  switch (rest.half(6)) {
    case 1: return "ARP who-has " + target + " tell " + sender;
    case 2: return "ARP " + sender + " is-at " + address(rest.from(8));
    default: return text_of("ARP operation %u", rest.half(6));
  }
}

std::string icmp(const Rest &rest) {
  const char *kind = rest.byte(0) == 8 ? "echo request" : "echo reply";
  if (rest.byte(0) != 0 && rest.byte(0) != 8)
    return text_of("ICMP type %u code %u", rest.byte(0), rest.byte(1));
  return text_of("ICMP %s id %u seq %u", kind, rest.half(4), rest.half(6));
}

std::string icmp6(const Rest &rest) {
  const uint32_t type = rest.byte(0);
  if (type == 128 || type == 129)
    return text_of("ICMPv6 echo %s id %u seq %u", type == 128 ? "request" : "reply", rest.half(4),
                   rest.half(6));
  if (type == 135 || type == 136)
    return std::string("ICMPv6 neighbor ") + (type == 135 ? "solicitation " : "advertisement ") +
           ip(AF_INET6, rest.from(8));
  if ((type >= 130 && type <= 132) || type == 143) return text_of("MLD type %u", type);
  return text_of("ICMPv6 type %u code %u", type, rest.byte(1));
}

std::string igmp(const Rest &rest) {
  const std::string group = ip(AF_INET, rest.from(4));
  switch (rest.byte(0)) {
    case 0x11: return "IGMP query " + group;
    case 0x12: return "IGMPv1 report " + group;
    case 0x16: return "IGMPv2 report " + group;
    case 0x17: return "IGMP leave " + group;
    case 0x22: return "IGMPv3 report";
    default: return text_of("IGMP type 0x%02x", rest.byte(0));
  }
}

std::string tcp_flags(uint32_t flags) {
  constexpr const char kNames[] = "FSRP.UEW";
  std::string text;
  for (uint32_t bit = 0; bit < 8; ++bit)
    if ((flags >> bit & 1) != 0) text += kNames[bit];
  return text.empty() ? "none" : text;
}

// What an IP packet carries, and the ports after the addresses.
std::string packet(const char *name, const std::string &source, const std::string &target,
                   uint32_t protocol, const Rest &rest) {
  const std::string plain = std::string(name) + ' ' + source + " > " + target + ": ";
  const std::string ports = std::string(name) + ' ' + source + text_of(".%u > ", rest.half(0)) +
                            target + text_of(".%u: ", rest.half(2));
  switch (protocol) {
    case kTcp: return ports + "TCP [" + tcp_flags(rest.byte(13)) + ']';
    case kUdp: return ports + text_of("UDP length %u", rest.half(4));
    case kIcmp: return plain + icmp(rest);
    case kIgmp: return plain + igmp(rest);
    case kIcmp6: return plain + icmp6(rest);
    default: return plain + text_of("protocol %u", protocol);
  }
}

std::string dscp(uint32_t traffic) {
  return traffic >> 2 == 0 ? "" : text_of(" dscp %u", traffic >> 2);
}

std::string ip4(const Rest &rest) {
  const size_t header = size_t{4} * (rest.byte(0) & 0xf);
  const std::string source = ip(AF_INET, rest.from(12));
  const std::string target = ip(AF_INET, rest.from(16));
  const uint32_t offset = (rest.half(6) & 0x1fff) * 8;
  if (offset != 0) return "IP " + source + " > " + target + text_of(": fragment at %u", offset);
  return packet("IP", source, target, rest.byte(9), rest.from(header)) + dscp(rest.byte(1));
}

// After the headers that may come before what is carried.
std::string ip6(const Rest &rest) {
  uint32_t next = rest.byte(6);
  Rest carried = rest.from(40);
  while (next == 0 || next == 43 || next == 60) {
    const size_t length = (size_t{carried.byte(1)} + 1) * 8;
    if (!carried.has(length)) break;
    next = carried.byte(0);
    carried = carried.from(length);
  }
  return packet("IP6", ip(AF_INET6, rest.from(8)), ip(AF_INET6, rest.from(24)), next, carried) +
         dscp(rest.half(0) >> 4 & 0xff);
}

std::string slow(const Rest &rest) {
  switch (rest.byte(0)) {
    case 1: return "LACP";
    case 2: return "LACP marker";
    case 3: return "Ethernet OAM";
    default: return text_of("slow protocol subtype %u", rest.byte(0));
  }
}

std::string llc(const Rest &rest) {
  if (rest.half(0) == 0x4242) return text_of("STP version %u", rest.byte(5));
  if (rest.half(0) == 0xaaaa) return text_of("SNAP type 0x%04x", rest.half(6));
  return text_of("LLC dsap 0x%02x ssap 0x%02x", rest.byte(0), rest.byte(1));
}

std::string payload(uint32_t type, const Rest &rest) {
  switch (type) {
    case kIp4: return ip4(rest);
    case kArp: return arp(rest);
    case kIp6: return ip6(rest);
    case kSlow: return slow(rest);
    case kEapol: return "EAPOL";
    case kLldp: return "LLDP";
    case kMacControl:
      return rest.half(0) == 1 ? text_of("pause quanta %u", rest.half(2))
                               : text_of("MAC control opcode %u", rest.half(0));
    default: break;
  }
  return type < kFirstEtherType ? llc(rest) : text_of("type 0x%04x", type);
}

}  // namespace

std::string describe(const std::vector<uint8_t> &frame) {
  const Rest whole(frame);
  std::string text =
      address(whole.from(6)) + " > " + address(whole) + text_of(", length %zu", frame.size());
  size_t at = kAddressBytes;
  for (; is_tag(whole.half(at)) && whole.has(at + kTagBytes); at += kTagBytes)
    text += tag(whole.from(at));
  return text + ", " + payload(whole.half(at), whole.from(at + 2));
}

}  // namespace vchipctl
