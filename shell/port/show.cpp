// SPDX-License-Identifier: MIT
#include <swctl/platform/port_read.h>

#include <string>

#include "chip/call.h"
#include "chip/optional_call.h"
#include "config/description.h"
#include "port/commands.h"
#include "port/mode.h"

namespace swsh {
namespace {

constexpr auto kLinkGet = SWSH_CALL(user_port_link_status_get);
constexpr auto kMediumGet = SWSH_CALL(user_port_media_type_get);
constexpr auto kLoopbackGet = SWSH_CALL(user_port_loopback_get);
constexpr auto kSpeedMax = SWSH_CALL(user_port_speed_max);
constexpr auto kAdminGet = SWSH_CALL(user_port_enable_get);
constexpr auto kAutonegGet = SWSH_CALL(user_port_autoneg_get);
constexpr auto kAdvertiseGet = SWSH_CALL(user_port_ability_advert_get);
constexpr auto kPauseState = SWSH_CALL(user_port_pause_get_stat);
constexpr auto kMdixGet = SWSH_CALL(user_port_mdix_get);
constexpr auto kMtuGet = SWSH_CALL(user_port_jumboframe_get);
constexpr auto kLearnGet = SWSH_CALL(user_port_learn_get);
constexpr auto kDtagGet = SWSH_CALL(user_port_dtag_mode_get);
constexpr auto kEeeGet = SWSH_CALL(user_eee_portEnable_get);

void add_speed(Record &record, uint32_t speed) {
  if (speed == USER_SPEED_UNKNOWN) {
    record.add("speed", nullptr, "unknown");
  } else {
    record.add("speed", int64_t{speed});
  }
}

std::vector<Choice> duplexes() {
  return {{"half", USER_DUPLEX_HALF, ""},
          {"full", USER_DUPLEX_FULL, ""},
          {"both", USER_DUPLEX_BOTH, ""}};
}

std::vector<std::string> ability_names(uint32_t ability) {
  std::vector<std::string> names;
  for (const Choice &each : ability_choices())
    if ((ability & static_cast<uint32_t>(each.value)) != 0) names.push_back(each.word);
  return names;
}

std::vector<Choice> mdix_modes() {
  return {{"auto", USER_MDIX_AUTO, ""},
          {"straight", USER_MDIX_STRAIGHT, ""},
          {"crossed", USER_MDIX_CROSSED, ""}};
}

std::vector<Choice> learn_modes() {
  return {
      {"on", USER_LEARN_ON, ""}, {"off", USER_LEARN_DISCARD, ""}, {"cpu", USER_LEARN_TO_CPU, ""}};
}

std::vector<int64_t> isolation(const Context &context, const Port &port) {
  return interfaces_in(
      ask(SWSH_CALL(user_port_egress_get), port, kLead, context.unit, port.chip, 0));
}

std::string tpid_text(uint16_t tpid) {
  char text[8];
  snprintf(text, sizeof text, "0x%04x", tpid);
  return text;
}

void add_switch(Record &record, const char *key, bool on) {
  record.add_detail(key, on, on ? "on" : "off");
}

// A setting that the SDK only writes: nothing where the platform cannot tell.
template <typename Getter>
void add_written(Record &record, const char *key, const Getter &getter, const Context &context,
                 const Port &port) {
  if (getter.find() == nullptr) {
    record.add_detail(key, nullptr);
  } else {
    add_switch(record, key, ask(getter, port, context.unit, port.chip) != 0);
  }
}

void add_rate(Record &record, const char *key, int32_t rate) {
  record.add_detail(key, int64_t{rate}, std::to_string(rate) + " kbit/s");
}

void add_link_settings(Record &record, const Context &context, const Port &port) {
  const auto read = [&](const auto &getter) { return read_port(context, port, getter); };
  add_switch(record, "admin", read(kAdminGet) != 0);
  add_switch(record, "autoneg", read(kAutonegGet) != 0);
  record.add_detail("advertise", ability_names(read(kAdvertiseGet)));
  add_switch(record, "pause", read_pause(context, port));
  add_switch(record, "pause_active", read(kPauseState) != 0);
  add_written(record, "backpressure", SWSH_OPTIONAL_CALL(swctl_platform_port_backpressure_get),
              context, port);
  record.add_detail("mdix", word_value(mdix_modes(), read(kMdixGet)));
  add_switch(record, "eee", read(kEeeGet) != 0);
}

void add_frame_settings(Record &record, const Context &context, const Port &port) {
  const auto read = [&](const auto &getter) { return read_port(context, port, getter); };
  record.add_detail("mtu", int64_t{read(kMtuGet)});
  record.add_detail("learning", word_value(learn_modes(), read(kLearnGet)));
  const std::vector<int64_t> reached = isolation(context, port);
  record.add_detail("isolation", reached, reached.empty() ? kNoPorts : "");
  record.add_detail("vlan", int64_t{read(SWSH_CALL(user_port_untagged_vlan_get))});
  add_written(record, "filter", SWSH_OPTIONAL_CALL(swctl_platform_port_filter_get), context, port);
  add_switch(record, "dtag", read(kDtagGet) != 0);
  const uint16_t tpid = read(SWSH_CALL(user_port_tpid_get));
  record.add_detail("tpid", int64_t{tpid}, tpid_text(tpid));
  add_rate(record, "ingress", read(SWSH_CALL(user_port_ingress_rate_get)));
  add_rate(record, "egress", read(SWSH_CALL(user_port_egress_rate_get)));
}

Record port_record(const Context &context, const Port &port) {
  const auto read = [&](const auto &getter) { return read_port(context, port, getter); };
  const bool loopback = read(kLoopbackGet) != 0;
  Record record;
  record.add("port", port.interface);
  record.add("link", std::string(read(kLinkGet) != 0 ? "up" : "down"));
  add_speed(record, read_speed(context, port));
  record.add("duplex", word_value(duplexes(), read_duplex(context, port)));
  record.add("medium", std::string(read(kMediumGet) == USER_MEDIUM_FIBRE ? "fibre" : "copper"));
  record.add("loopback", loopback, loopback ? "on" : "off");
  record.add_detail("max_speed", int64_t{read(kSpeedMax)});
  record.add_detail("chip_port", int64_t{port.chip});
  return record;
}

Record detailed_record(const Context &context, const Port &port) {
  Record record = port_record(context, port);
  add_link_settings(record, context, port);
  add_frame_settings(record, context, port);
  return record;
}

// Nothing where the directory cannot be read: the chip's settings are shown all the same.
Descriptions descriptions_to_show(const Context &context) {
  try {
    return read_descriptions(context.unit);
  } catch (const CommandError &) {
    return {};
  }
}

void add_description(Record &record, const Descriptions &descriptions, const Port &port) {
  const auto found = descriptions.find(port.interface);
  if (found == descriptions.end()) {
    record.add_detail("description", nullptr);
  } else {
    record.add_detail("description", found->second);
  }
}

Answer show(const Arguments &arguments, const Context &context) {
  const auto ports = chosen_ports(arguments);
  const bool detail = arguments.has("detail");
  Answer answer = {detail ? Shape::detail : Shape::table, {}, ""};
  const Descriptions descriptions = detail ? descriptions_to_show(context) : Descriptions();
  for (const Port &port : ports) {
    answer.records.push_back(detail ? detailed_record(context, port) : port_record(context, port));
    if (detail) add_description(answer.records.back(), descriptions, port);
  }
  return answer;
}

}  // namespace

std::vector<Choice> ability_choices() {
  return {
      {"10-half", USER_ABILITY_10_HALF, ""},
      {"10-full", USER_ABILITY_10_FULL, ""},
      {"100-half", USER_ABILITY_100_HALF, ""},
      {"100-full", USER_ABILITY_100_FULL, ""},
      {"1000-half", USER_ABILITY_1000_HALF, ""},
      {"1000-full", USER_ABILITY_1000_FULL, ""},
      {"pause", USER_ABILITY_PAUSE, ""},
      {"asymmetric-pause", USER_ABILITY_ASYMMETRIC_PAUSE, ""},
  };
}

Node port_show_command() {
  return {
      .name = "show",
      .help = "Show the state of ports",
      .positional = {ports_to_show()},
      .keywords = {{.name = "detail", .type = flag(), .help = "Their settings too, line by line"}},
      .details =
          "Without PORTS, all front ports.\n"
          "Speed and duplex are those in operation; with the link down, those forced or,\n"
          "under autonegotiation, those advertised: several speeds or none are unknown,\n"
          "duplex both means both or neither.\n",
      .run = show,
  };
}

}  // namespace swsh
