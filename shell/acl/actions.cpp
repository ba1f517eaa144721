// SPDX-License-Identifier: MIT
#include "acl/actions.h"

#include <swctl/field.h>

#include <algorithm>
#include <array>
#include <limits>

#include "chip/call.h"
#include "chip/ports.h"
#include "fault.h"
#include "number_list.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int64_t kWordMax = std::numeric_limits<uint32_t>::max();
constexpr size_t kNoWord = CHIP_ACL_ACTION_WORDS;

// Where an action's first parameter goes, and what it is.
enum class Operand { none, number, second_parameter, interface };

// The words of a record that an action has to itself, from `first` to before
// `end`, and those that tell it: the first is `sign`, and that of its kind, if
// there are several, is `kind`.
struct Words {
  size_t first, end;
  size_t operand = kNoWord;
  uint32_t sign = 1;
  size_t kind_word = kNoWord;
  uint32_t kind = 0;
};

constexpr Words forward_words(size_t operand, uint32_t kind) {
  return {.first = CHIP_ACL_WORD_FORWARD,
          .end = CHIP_ACL_WORD_FORWARD_W6 + 1,
          .operand = operand,
          .kind_word = CHIP_ACL_WORD_FORWARD_KIND,
          .kind = kind};
}

constexpr Words remark_words(uint32_t kind) {
  return {.first = CHIP_ACL_WORD_REMARK,
          .end = CHIP_ACL_WORD_REMARK_VALUE + 1,
          .operand = CHIP_ACL_WORD_REMARK_VALUE,
          .kind_word = CHIP_ACL_WORD_REMARK_KIND,
          .kind = kind};
}

constexpr Words verdict_words(uint32_t verdict) {
  return {.first = CHIP_ACL_WORD_VERDICT, .end = CHIP_ACL_WORD_VERDICT + 1, .sign = verdict};
}

// Words that end with that of their operand.
constexpr Words plain_words(size_t first, size_t operand) {
  return {.first = first, .end = operand + 1, .operand = operand};
}

struct Name {
  const char *word;
  const char *help;
  uint32_t action;
  Operand operand;
  Words words;
};
constexpr Name kNames[] = {
    {"drop", "Discards the frame", CHIP_ACL_ACTION_DROP, Operand::none,
     verdict_words(CHIP_ACL_VERDICT_DROP)},
    {"permit", "Lets the frame pass", CHIP_ACL_ACTION_PERMIT, Operand::none,
     verdict_words(CHIP_ACL_VERDICT_PERMIT)},
    {"trap", "Sends it to the CPU", CHIP_ACL_ACTION_TRAP, Operand::none,
     forward_words(kNoWord, CHIP_ACL_FORWARD_TRAP)},
    {"redirect", "redirect:PORT, sends it to another port", CHIP_ACL_ACTION_REDIRECT_PORT,
     Operand::interface, forward_words(CHIP_ACL_WORD_FORWARD_TO, CHIP_ACL_FORWARD_PORT)},
    {"redirect-ports", "redirect-ports:N, to the ports of forwarding mask N",
     CHIP_ACL_ACTION_REDIRECT_MASK, Operand::number,
     forward_words(CHIP_ACL_WORD_FORWARD_TO, CHIP_ACL_FORWARD_MASK)},
    {"redirect-group", "redirect-group:N, to the group whose mask is N",
     CHIP_ACL_ACTION_REDIRECT_GROUP, Operand::number,
     forward_words(CHIP_ACL_WORD_FORWARD_TO, CHIP_ACL_FORWARD_GROUP)},
    {"mirror", "mirror:SESSION, copies it", CHIP_ACL_ACTION_MIRROR, Operand::second_parameter,
     plain_words(CHIP_ACL_WORD_MIRROR, CHIP_ACL_WORD_MIRROR_SESSION)},
    {"count", "count:COUNTER, counts it", CHIP_ACL_ACTION_COUNT, Operand::number,
     plain_words(CHIP_ACL_WORD_COUNT, CHIP_ACL_WORD_COUNT_COUNTER)},
    {"meter", "meter:METER, limits its rate", CHIP_ACL_ACTION_METER, Operand::number,
     plain_words(CHIP_ACL_WORD_METER, CHIP_ACL_WORD_METER_NUMBER)},
    {"outer-vlan", "outer-vlan:ID, sets the outer VLAN", CHIP_ACL_ACTION_OUTER_VLAN,
     Operand::number, plain_words(CHIP_ACL_WORD_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_ID)},
    {"inner-vlan", "inner-vlan:ID, sets the inner VLAN", CHIP_ACL_ACTION_INNER_VLAN,
     Operand::number, plain_words(CHIP_ACL_WORD_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_ID)},
    {"priority", "priority:N, sets the internal priority", CHIP_ACL_ACTION_PRIORITY,
     Operand::number, plain_words(CHIP_ACL_WORD_PRIORITY, CHIP_ACL_WORD_PRIORITY_VALUE)},
    {"queue", "queue:N, sets the queue", CHIP_ACL_ACTION_QUEUE, Operand::number,
     plain_words(CHIP_ACL_WORD_QUEUE, CHIP_ACL_WORD_QUEUE_NUMBER)},
    {"remark-0", "remark-0:N, remarks, kind 0", CHIP_ACL_ACTION_REMARK_INNER, Operand::number,
     remark_words(CHIP_ACL_REMARK_INNER)},
    {"remark-1", "remark-1:N, remarks, kind 1", CHIP_ACL_ACTION_REMARK_OUTER, Operand::number,
     remark_words(CHIP_ACL_REMARK_OUTER)},
    {"remark-2", "remark-2:N, remarks, kind 2", CHIP_ACL_ACTION_REMARK_DSCP, Operand::number,
     remark_words(CHIP_ACL_REMARK_DSCP)},
};
// Any action of the library, by its number.
constexpr char kByNumber[] = "code";

std::vector<std::string> split(const std::string &text, char separator) {
  std::vector<std::string> parts;
  for (size_t start = 0; start <= text.size();) {
    const size_t end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

CommandError bad_action(const std::string &word, const std::string &fault,
                        std::vector<std::string> expected) {
  return CommandError(
      wrong_usage("bad action " + in_quotes(word) + ": " + fault, word, std::move(expected)));
}

uint32_t number_in(const std::string &word, const std::string &digits) {
  const ParsedNumber parsed = parse_number(digits, 0, kWordMax);
  if (parsed.fault.empty()) return static_cast<uint32_t>(parsed.number);
  throw bad_action(word, in_quotes(digits) + " is " + parsed.fault, {"a number from 0"});
}

uint32_t chip_port_in(const std::string &word, const std::string &digits) {
  const ParsedNumber parsed = parse_number(digits, 0, USER_FRONT_INTERFACES);
  if (parsed.fault.empty()) return static_cast<uint32_t>(port_of(parsed.number).chip);
  throw bad_action(word, in_quotes(digits) + " is " + parsed.fault, {"an interface number 0-26"});
}

std::vector<std::string> names() {
  std::vector<std::string> all;
  for (const Name &name : kNames) all.emplace_back(name.word);
  all.emplace_back(kByNumber);
  return all;
}

const Name *find(const std::string &word) {
  for (const Name &name : kNames)
    if (word == name.word) return &name;
  return nullptr;
}

void expect_parameters(const std::string &word, const std::vector<std::string> &parts, size_t least,
                       size_t most) {
  const size_t given = parts.size() - 1;
  if (given < least) throw bad_action(word, "a parameter is missing", {parts[0] + ":NUMBER"});
  if (given > most)
    throw bad_action(word, "too many parameters", {"at most " + std::to_string(most)});
}

// code:ACTION[:PARAM0[:PARAM1]]
PlannedAction numbered_action(const std::string &word, const std::vector<std::string> &parts) {
  expect_parameters(word, parts, 1, 3);
  std::array<uint32_t, 3> numbers = {};
  for (size_t i = 1; i < parts.size(); ++i) numbers[i - 1] = number_in(word, parts[i]);
  return {word, numbers[0], numbers[1], numbers[2]};
}

PlannedAction named_action(const Name &name, const std::string &word,
                           const std::vector<std::string> &parts) {
  const size_t count = name.operand == Operand::none ? 0 : 1;
  expect_parameters(word, parts, count, count);
  switch (name.operand) {
    case Operand::none: return {word, name.action, 0, 0};
    case Operand::number: return {word, name.action, number_in(word, parts[1]), 0};
    case Operand::second_parameter: return {word, name.action, 0, number_in(word, parts[1])};
    case Operand::interface: return {word, name.action, chip_port_in(word, parts[1]), 0};
  }
  return {};
}

PlannedAction action_of(const std::string &word) {
  const std::vector<std::string> parts = split(word, ':');
  if (parts[0] == kByNumber) return numbered_action(word, parts);
  const Name *name = find(parts[0]);
  if (name == nullptr) throw bad_action(word, "no such action", names());
  return named_action(*name, word, parts);
}

// The words that an action sets; none of one that is not known.
const Words *words_of(uint32_t action) {
  switch (action) {
    case CHIP_ACL_ACTION_METER_OF_PARAM1: action = CHIP_ACL_ACTION_METER; break;
    case CHIP_ACL_ACTION_REMARK_INNER_AGAIN: action = CHIP_ACL_ACTION_REMARK_INNER; break;
    default: break;
  }
  for (const Name &name : kNames)
    if (name.action == action) return &name.words;
  return nullptr;
}

// A rule has one place for each kind of action: of two, the later would be in
// force alone.
void expect_apart(const PlannedAction &action, const PlannedAction &earlier) {
  const Words *words = words_of(action.action);
  const Words *others = words_of(earlier.action);
  if (words == nullptr || others == nullptr || words->first != others->first) return;
  throw bad_action(action.word, "a rule cannot do this and " + in_quotes(earlier.word),
                   {"one of the two"});
}

bool reads_as(const Name &name, const chip_acl_action &record) {
  const Words &own = name.words;
  if (record.word[own.first] != own.sign) return false;
  return own.kind_word == kNoWord || record.word[own.kind_word] == own.kind;
}

ReadAction read_action(const Name &name, const chip_acl_action &record) {
  if (name.words.operand == kNoWord) return {name.word, std::nullopt, std::nullopt};
  const int64_t value = record.word[name.words.operand];
  if (name.operand != Operand::interface) return {name.word, value, std::nullopt};
  return {name.word, Interfaces().of(static_cast<int32_t>(value)), value};
}

std::string action_text(const ReadAction &action) {
  if (action.parameter) return action.name + ':' + std::to_string(*action.parameter);
  if (action.chip_port) return action.name + ":p" + std::to_string(*action.chip_port);
  return action.name;
}

Record action_record(const ReadAction &action) {
  Record record;
  record.add("action", action.name);
  record.add("parameter", action.parameter ? Value(*action.parameter) : Value(nullptr));
  if (action.chip_port) record.add("chip_port", *action.chip_port);
  return record;
}

}  // namespace

Parameter action_parameter() {
  Parameter parameter = {.name = "action",
                         .type = text(),
                         .help = "Actions with commas between, parameters after colons"};
  return parameter;
}

std::vector<PlannedAction> actions_of(const std::string &word) {
  std::vector<PlannedAction> all;
  for (const std::string &each : split(word, ',')) {
    PlannedAction action = action_of(each);
    for (const PlannedAction &earlier : all) expect_apart(action, earlier);
    all.push_back(std::move(action));
  }
  return all;
}

namespace {

// An action of one name, and its place among all.
struct Placed {
  size_t place;
  std::string text;
};

Placed placed(const PlannedAction &action) {
  const bool again = action.action == CHIP_ACL_ACTION_REMARK_INNER_AGAIN;
  const bool other_meter = action.action == CHIP_ACL_ACTION_METER_OF_PARAM1;
  const uint32_t code = again         ? uint32_t{CHIP_ACL_ACTION_REMARK_INNER}
                        : other_meter ? uint32_t{CHIP_ACL_ACTION_METER}
                                      : action.action;
  for (size_t place = 0; place < std::size(kNames); ++place) {
    const Name &name = kNames[place];
    if (name.action != code) continue;
    if (name.operand == Operand::none) return {place, name.word};
    const bool second = name.operand == Operand::second_parameter || other_meter;
    ReadAction read = {name.word, second ? action.param1 : action.param0, std::nullopt};
    if (name.operand == Operand::interface)
      read = {name.word, Interfaces().of(static_cast<int32_t>(action.param0)), action.param0};
    return {place, action_text(read)};
  }
  return {std::size(kNames), action.word};
}

}  // namespace

std::string planned_text(const std::vector<PlannedAction> &actions) {
  std::vector<Placed> all;
  for (const PlannedAction &each : actions) all.push_back(placed(each));
  std::ranges::stable_sort(all, {}, &Placed::place);
  std::vector<std::string> texts;
  for (const Placed &each : all) texts.push_back(each.text);
  return join(texts, ",");
}

void add_action(const PlannedAction &action, uint32_t unit, int32_t rule) {
  perform(SWSH_CALL(user_field_action_add),
          "action " + action.word + " of rule " + std::to_string(rule), kLead, unit, rule,
          action.action, &action.param0, &action.param1);
}

std::vector<ReadAction> actions_in(const chip_acl_action &record) {
  std::vector<ReadAction> all;
  std::array<bool, CHIP_ACL_ACTION_WORDS> read = {};
  for (const Name &name : kNames) {
    if (!reads_as(name, record)) continue;
    all.push_back(read_action(name, record));
    for (size_t word = name.words.first; word < name.words.end; ++word) read[word] = true;
  }
  for (size_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word)
    if (!read[word] && record.word[word] != 0)
      all.push_back({'w' + std::to_string(word), record.word[word], std::nullopt});
  return all;
}

std::string actions_text(const std::vector<ReadAction> &actions) {
  std::vector<std::string> texts;
  for (const ReadAction &action : actions) texts.push_back(action_text(action));
  return join(texts, ",");
}

std::vector<Record> action_records(const std::vector<ReadAction> &actions) {
  std::vector<Record> records;
  for (const ReadAction &action : actions) records.push_back(action_record(action));
  return records;
}

}  // namespace swsh
