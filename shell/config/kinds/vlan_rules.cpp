// SPDX-License-Identifier: MIT
#include "config/kinds/vlan_rules.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "acl/match_value.h"
#include "chip/limits.h"
#include "chip/vlan_rules.h"
#include "config/kinds/table_kind.h"
#include "config/kinds/words.h"
#include "mac_text.h"
#include "number_list.h"
#include "objects/vlan_rule.h"
#include "output/writer.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kWholeMask[] = "ff:ff:ff:ff:ff:ff";

constexpr int kIpBits = 32;

using Fields = std::map<std::string, std::string>;

// The words of a rule in the order in which they are written. A field of the
// value after = is left out; one in capital letters has no keyword.
struct RuleWords {
  const char *kind;
  const char *frames;  // that the library has it match; empty: any
  std::vector<const char *> words;
};
const RuleWords kRuleWords[] = {
    {"translation", "tagged", {"from", "to", "ports"}},
    {"double-tag", "tagged", {"inner", "outer", "priority=0", "ports"}},
    {"mac", "untagged", {"MAC", "vlan", "mask=ff:ff:ff:ff:ff:ff", "priority=0", "ports"}},
    {"ip4", "untagged", {"SUBNET", "vlan", "priority=0", "ports"}},
    {"voice", "", {"MAC", "vlan", "mask=ff:ff:ff:00:00:00", "priority=0", "ports"}},
    {"protocol", "untagged", {"vlan", "encapsulation", "ethertype", "priority=0", "ports"}},
};

std::string all_ports(const Board &board) {
  return number_list_text(board.front_interfaces());
}

// Nothing if a field is missing.
Content composed(const RuleWords &rule, const Fields &fields, const Board &board) {
  std::vector<std::string> words;
  for (const std::string each : rule.words) {
    const size_t sign = each.find('=');
    const std::string name = each.substr(0, sign);
    const auto field = fields.find(name);
    const bool usual = sign != std::string::npos &&
                       (field == fields.end() || field->second == each.substr(sign + 1));
    if (usual || (name == "ports" && field != fields.end() && field->second == all_ports(board)))
      continue;
    if (field == fields.end()) return std::nullopt;
    if (name.front() >= 'a') words.push_back(name);
    words.push_back(field->second);
  }
  return join(words, " ");
}

void split_address(Fields &fields, const std::string &text) {
  const size_t slash = text.find('/');
  fields["MAC"] = text.substr(0, slash);
  fields["mask"] = slash == std::string::npos ? kWholeMask : text.substr(slash + 1);
}

Fields fields_of(const Record &rule) {
  Fields fields;
  for (const Field &group : rule.fields) {
    const Record *record = std::get_if<Record>(&group.value);
    if (record == nullptr) continue;
    for (const Field &field : record->fields) fields[field.key] = plain_text(field);
  }
  if (fields.contains("mac")) split_address(fields, fields.extract("mac").mapped());
  if (fields.contains("subnet")) fields["SUBNET"] = fields.extract("subnet").mapped();
  return fields;
}

bool is_writable(const RuleWords &words, const Fields &fields) {
  const auto known = [&](const auto &field) {
    if (field.first == "frames") return true;
    return std::ranges::any_of(words.words, [&](const std::string &each) {
      return each.substr(0, each.find('=')) == field.first;
    });
  };
  const auto frames = fields.find("frames");
  const std::string matched = frames == fields.end() ? "" : frames->second;
  return std::ranges::all_of(fields, known) && matched == words.frames;
}

void read_rules(SettingReader &reader, const RuleKind &kind, const RuleWords &words) {
  const std::string what = std::string(kind.word) + " rule";
  each_record(kNextRule, what, kind.entity, kind.first,
              [&](const swctl_platform_entity_rule &rule) {
                const int64_t index = int64_t{rule.index} - kind.first;
                if (index < 0 || index >= kind.count) return;
                const Fields fields = fields_of(vlan_rule_record(kind, rule));
                const Content content = composed(words, fields, reader.board);
                if (content && is_writable(words, fields)) {
                  reader.put({index}, content);
                } else {
                  reader.leave_out(std::to_string(index), "no command writes such a rule");
                }
              });
}

std::string subnet_words(const std::string &word) {
  try {
    return match_text(Notation::ip, kIpBits, parse_match(Notation::ip, kIpBits, word));
  } catch (const std::invalid_argument &error) {
    throw CommandError(wrong_usage("bad value " + in_quotes(word) + ": " + error.what(), word,
                                   {"a subnet such as 192.0.2.0/24"}));
  }
}

std::string address_words(const Argument &address) {
  uint8_t bytes[6] = {};
  std::ranges::transform(address.numbers, bytes,
                         [](int64_t byte) { return static_cast<uint8_t>(byte); });
  return mac_text(bytes);
}

std::string argument_words(Statement &statement, const std::string &name, const Argument &given) {
  if (name == "ports") return number_list_text(statement.take_ports(name));
  if (name == "MAC" || name == "mask") return address_words(given);
  if (name == "SUBNET") return subnet_words(given.word);
  if (name == "ethertype") return hexadecimal(static_cast<uint32_t>(given.number));
  if (name == "encapsulation") return given.word;
  return std::to_string(given.number);
}

bool take_rule(Statement &statement, Draft &draft, const RuleWords &words) {
  const Id id = {statement.take("INDEX")->number};
  if (statement.command.starts_with("vlan rule del")) {
    draft.put(id, std::nullopt);
    return true;
  }
  Fields fields;
  fields["ports"] = all_ports(statement.board);
  for (const std::string each : words.words) {
    const std::string name = each.substr(0, each.find('='));
    const Argument *given = statement.take(name);
    if (given != nullptr) fields[name] = argument_words(statement, name, *given);
  }
  draft.add(id, composed(words, fields, statement.board));
  return true;
}

SettingKind rule_kind_of(const RuleWords &words) {
  const std::string kind_word = words.kind;
  SettingKind kind = table_kind("vlan", "rule " + kind_word, "vlan rule add " + kind_word,
                                "vlan rule del " + kind_word, false);
  kind.needs = {"swctl_platform_entity_rule_next"};
  kind.on_unit_zero = true;
  kind.read = [&words](SettingReader &reader) { read_rules(reader, rule_kind(words.kind), words); };
  kind.take = [&words](Statement &statement, Draft &draft) {
    return take_rule(statement, draft, words);
  };
  return kind;
}

void read_translations(SettingReader &reader) {
  each_record(kNextTranslation, "entry", reader.context.unit, 0,
              [&](const swctl_platform_vlan_egress &egress) {
                const chip_vlan_egress_entry &entry = egress.entry;
                const auto port = reader.board.interfaces().of(static_cast<int32_t>(entry.port));
                if (entry.ignore_port != 0 || entry.ignore_vid != 0 || !port || *port == 0 ||
                    entry.ignore_second_key == 0) {
                  reader.leave_out(std::to_string(egress.index), "no command writes such an entry");
                  return;
                }
                reader.put({egress.index}, "port " + std::to_string(*port) + " from " +
                                               std::to_string(entry.vid) + " to " +
                                               std::to_string(entry.new_vid));
              });
}

bool take_translation(Statement &statement, Draft &draft) {
  const Id id = {statement.take("INDEX")->number};
  if (statement.command == "vlan translate del") {
    draft.put(id, std::nullopt);
    return true;
  }
  const int64_t port = statement.take("port")->number;
  statement.board.expect({port});
  const std::string from = std::to_string(statement.take("from")->number);
  const std::string to = std::to_string(statement.take("to")->number);
  draft.put(id, "port " + std::to_string(port) + " from " + from + " to " + to);
  return true;
}

}  // namespace

void add_vlan_rule_kinds(Kinds &kinds) {
  for (const RuleWords &words : kRuleWords) kinds.push_back(rule_kind_of(words));
  SettingKind kind =
      table_kind("vlan", "translate", "vlan translate add", "vlan translate del", true);
  kind.needs = {"swctl_platform_vlan_egress_next"};
  kind.read = read_translations;
  kind.take = take_translation;
  kinds.push_back(std::move(kind));
}

}  // namespace swsh
