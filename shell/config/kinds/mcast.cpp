// SPDX-License-Identifier: MIT
#include <swctl/mcast.h>
#include <swctl/platform/mcast_read.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>

#include "chip/call.h"
#include "chip/l2_walk.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/kinds/table_kind.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "ip_text.h"
#include "mac_text.h"
#include "text.h"

namespace swsh {
namespace {

Id group_id(const std::string &group, int64_t vid) {
  return {vid, group + " vlan " + std::to_string(vid)};
}

void put_ports(SettingReader &reader, const Id &id, uint32_t chip_ports) {
  const int64_t ports = interface_mask(reader.board.interfaces_of(chip_ports));
  if (ports == 0) {
    reader.leave_out(id.text, "no command adds one without ports");
  } else {
    reader.put(id, list_words("ports", ports).substr(1));
  }
}

// Taken away, or added with the ports that are given.
void take_group(Statement &statement, Draft &draft, const Id &id) {
  if (statement.command.ends_with(" del")) {
    draft.put(id, std::nullopt);
  } else {
    draft.add(id, list_words("ports", take_interfaces(statement, "ports")).substr(1));
  }
}

SettingKind group_kind() {
  SettingKind kind = table_kind("mcast", "", "mcast add", "mcast del", false);
  kind.read = [](SettingReader &reader) {
    for (const chip_l2_mcast_entry &entry : read_groups(reader.context.unit))
      put_ports(reader, group_id(mac_text(entry.mac), entry.vid), entry.portmask);
  };
  kind.take = [](Statement &statement, Draft &draft) {
    uint8_t mac[6] = {};
    std::ranges::transform(statement.take("MAC")->numbers, mac,
                           [](int64_t byte) { return static_cast<uint8_t>(byte); });
    take_group(statement, draft, group_id(mac_text(mac), statement.take("vlan")->number));
    return true;
  };
  return kind;
}

std::string with_source(const std::string &id, const std::string &source) {
  return source.empty() ? id : id + " source " + source;
}

template <typename Address>
bool is_every(const Address &address) {
  const Address every = {};
  return memcmp(&address, &every, sizeof every) == 0;
}

std::string group_text_of(uint32_t address) {
  return ip_text(address);
}

std::string group_text_of(const chip_ip6_address &address) {
  return ip6_text(address.bytes);
}

// IPv6 after IPv4 of a VLAN: the text decides.
template <typename Entry>
void put_ip_entry(SettingReader &reader, const Entry &entry) {
  Id id = group_id(group_text_of(entry.address_b), entry.vid);
  const std::string source = is_every(entry.address_a) ? "" : group_text_of(entry.address_a);
  id.text = with_source(id.text, source);
  put_ports(reader, id, entry.ports);
}

void read_ip_entries(SettingReader &reader) {
  each_record(SWSH_OPTIONAL_CALL(swctl_platform_ip_mcast_next), "entry", reader.context.unit, 0,
              [&](const auto &found) { put_ip_entry(reader, found.entry); });
  each_record(SWSH_OPTIONAL_CALL(swctl_platform_ip6_mcast_next), "entry", reader.context.unit, 0,
              [&](const auto &found) { put_ip_entry(reader, found.entry); });
}

// As ip_text() and ip6_text() write it; every address is no source.
std::string address_given(const std::string &word, bool &six) {
  uint8_t bytes[16] = {};
  uint32_t number = 0;
  if (inet_pton(AF_INET, word.c_str(), bytes) == 1) {
    six = false;
    memcpy(&number, bytes, sizeof number);
    return ip_text(ntohl(number));
  }
  six = true;
  if (inet_pton(AF_INET6, word.c_str(), bytes) == 1) return ip6_text(bytes);
  throw CommandError(wrong_usage(in_quotes(word) + " is no address", word,
                                 {"an address such as 232.1.2.3 or ff3e::8000:1"}));
}

bool is_every_word(const std::string &word) {
  return word == "0.0.0.0" || word == "::";
}

bool take_ip_entry(Statement &statement, Draft &draft) {
  bool six = false;
  bool source_six = false;
  const std::string group = address_given(statement.take("GROUP")->word, six);
  Id id = group_id(group, statement.take("vlan")->number);
  const Argument *source = statement.take("source");
  if (source != nullptr) {
    const std::string from = address_given(source->word, source_six);
    if (six != source_six)
      throw CommandError(wrong_usage("group and source are of two families", source->word,
                                     {"a source of the group's family"}));
    if (!is_every_word(from)) id.text = with_source(id.text, from);
  }
  take_group(statement, draft, id);
  return true;
}

SettingKind ip_entry_kind() {
  SettingKind kind = table_kind("mcast", "ip", "mcast ip add", "mcast ip del", false);
  kind.needs = {"swctl_platform_ip_mcast_next", "swctl_platform_ip6_mcast_next"};
  kind.read = read_ip_entries;
  kind.take = take_ip_entry;
  return kind;
}

}  // namespace

void add_mcast_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(group_kind());
  const auto lookup = [&](const char *family, auto getter) {
    kinds.push_back(plain_kind({.name = std::string(family) + " lookup",
                                .command = std::string("mcast ip lookup ") + family + " @",
                                .ids = {},
                                .read = [getter](const SettingReader &reader, int64_t) -> int64_t {
                                  return ask(getter, reader.context, reader.context.unit);
                                },
                                .usual = 0,
                                .needs = {getter.name}}));
  };
  lookup("ip", SWSH_OPTIONAL_CALL(swctl_platform_ip_mcast_mode_get));
  lookup("ip6", SWSH_OPTIONAL_CALL(swctl_platform_ip6_mcast_mode_get));
  const auto miss = [&](const char *family, uint32_t type) {
    kinds.push_back(
        plain_kind({.name = std::string(family) + " miss",
                    .command = std::string("mcast ip miss ") + family + " % action @",
                    .ids = board.front_interfaces(),
                    .read = [type](const SettingReader &reader, int64_t interface) -> int64_t {
                      const Port port = reader.board.port(interface);
                      return ask(SWSH_OPTIONAL_CALL(swctl_platform_lookup_miss_get), port,
                                 reader.context.unit, port.chip, type);
                    },
                    .usual = 0,
                    .needs = {"swctl_platform_lookup_miss_get"}}));
  };
  miss("ip", CHIP_LOOKUP_IP_MCAST);
  miss("ip6", CHIP_LOOKUP_IP6_MCAST);
  kinds.push_back(ip_entry_kind());
}

}  // namespace swsh
