// SPDX-License-Identifier: MIT
#include "config/state.h"
#include "objects/registry.h"
#include "text.h"

namespace swsh {
namespace {

std::string object_chosen(const Arguments &arguments) {
  return arguments.has("OBJECT") ? arguments.word("OBJECT") : "";
}

std::string comment_line(const Unread &unread) {
  return "# " + unread.setting + ": not read: " + unread.reason;
}

Record unread_record(const Unread &unread) {
  return Record()
      .add("object", unread.object)
      .add("setting", unread.setting)
      .add("command", nullptr)
      .add("reason", unread.reason)
      .add("missing", unread.missing.empty() ? Value(nullptr) : Value(unread.missing));
}

// What cannot be read of an object, after its settings.
Answer configuration(const State &state, const Board &board) {
  Answer answer = {Shape::text, {}, ""};
  const std::vector<SettingKind> &all = kinds(board);
  std::string object;
  const auto finish_object = [&] {
    for (const Unread &unread : state.unread) {
      if (unread.object != object) continue;
      answer.records.push_back(unread_record(unread));
      answer.text += comment_line(unread) + '\n';
    }
  };
  std::vector<Step> steps = plan(State(board), state, board);
  size_t at = 0;
  for (size_t kind = 0; kind < all.size(); ++kind) {
    if (all[kind].object != object) {
      finish_object();
      object = all[kind].object;
    }
    for (; at < steps.size() && steps[at].kind <= kind; ++at) {
      answer.records.push_back(Record()
                                   .add("object", all[steps[at].kind].object)
                                   .add("setting", all[steps[at].kind].title())
                                   .add("command", steps[at].command)
                                   .add("reason", nullptr)
                                   .add("missing", nullptr));
      answer.text += steps[at].command + '\n';
    }
  }
  finish_object();
  return answer;
}

Answer show_config(const Arguments &arguments, const Context &context) {
  const Board board;
  return configuration(read_state(context, board, object_chosen(arguments)), board);
}

std::vector<Choice> config_objects() {
  return {{"acl", 0, ""},   {"dos", 0, ""},    {"flood", 0, ""}, {"mac", 0, ""}, {"mcast", 0, ""},
          {"meter", 0, ""}, {"mirror", 0, ""}, {"port", 0, ""},  {"qos", 0, ""}, {"storm", 0, ""},
          {"stp", 0, ""},   {"trap", 0, ""},   {"trunk", 0, ""}, {"vlan", 0, ""}};
}

}  // namespace

Node config_object() {
  return {
      .name = "config",
      .help = "The configuration as text",
      .children = {{.name = "show",
                    .help = "Show the configuration as commands",
                    .positional = {{.name = "OBJECT",
                                    .type = choice(config_objects()),
                                    .help = "Only settings of this object"}},
                    .details =
                        "What differs from power-on, as commands in an order that loads. What\n"
                        "this platform cannot read is a comment.\n",
                    .run = show_config}},
  };
}

}  // namespace swsh
