// SPDX-License-Identifier: MIT
#include "command/walker.h"

#include <algorithm>
#include <set>
#include <utility>

#include "command/value.h"
#include "text.h"

namespace swsh {
namespace {

// The entries of a table that a word names: the one it spells in full, else
// all that begin with it.
template <typename Entry>
std::vector<const Entry *> named(const std::vector<const Entry *> &entries,
                                 const std::string &word) {
  std::vector<const Entry *> found;
  for (const Entry *entry : entries) {
    if (entry->name == word) return {entry};
    if (!word.empty() && entry->name.starts_with(word)) found.push_back(entry);
  }
  return found;
}

template <typename Entry>
std::vector<std::string> names(const std::vector<const Entry *> &entries) {
  std::vector<std::string> all;
  for (const Entry *entry : entries) all.push_back(entry->name);
  return all;
}

template <typename Entry>
std::vector<const Entry *> addresses(const std::vector<Entry> &entries) {
  std::vector<const Entry *> all;
  for (const Entry &entry : entries) all.push_back(&entry);
  return all;
}

const Node &help_node() {
  static const Node node = {.name = kHelpWord, .help = "Say what may come next"};
  return node;
}

// As an option is spelled; not even a value may be that.
bool spells_help(const std::string &word) {
  return word == "-h" || word == "-help" || word == "--help";
}

class Walker {
 public:
  explicit Walker(const Node &root) { walk_.node = &root; }

  Walk run(const std::vector<std::string> &words) {
    for (const std::string &word : words) {
      if (walk_.help || walk_.wrong) break;
      step(word);
    }
    walk_.expected = expected();
    if (!walk_.wrong && !walk_.help) walk_.missing = missing();
    return std::move(walk_);
  }

 private:
  bool is_command() const { return walk_.node->run != nullptr; }

  void step(const std::string &word) {
    if (spells_help(word)) {
      walk_.help = true;
    } else if (pending_ != nullptr) {
      take_value(*pending_, word);
    } else if (is_command()) {
      step_in_command(word);
    } else {
      step_down(word);
    }
  }

  void step_down(const std::string &word) {
    const auto found = named(nodes(), word);
    if (found.size() != 1) return reject_name(word, names(found), names(nodes()));
    if (found.front() == &help_node()) {
      walk_.help = true;
      return;
    }
    walk_.node = found.front();
    walk_.path.push_back(walk_.node->name);
  }

  void step_in_command(const std::string &word) {
    const Parameter *place = next_positional();
    if (word == kHelpWord && (place == nullptr || place->type.kind != Kind::text)) {
      walk_.help = true;
      return;
    }
    const bool is_all =
        place != nullptr && place->type.kind == Kind::interfaces && word == kAllPorts;
    if (is_all || (place != nullptr && place->required)) return take_value(*place, word);
    const auto found = named(free_keywords(), word);
    if (found.size() == 1) return take_keyword(*found.front());
    if (place != nullptr && found.empty()) return take_value(*place, word);
    reject_keyword(word, names(found));
  }

  void take_keyword(const Parameter &keyword) {
    walk_.path.push_back(keyword.name);
    used_.insert(keyword.name);
    if (keyword.type.kind == Kind::flag) {
      walk_.arguments.set(keyword.name, {keyword.name, 1, {}});
    } else {
      pending_ = &keyword;
    }
  }

  void take_value(const Parameter &parameter, const std::string &word) {
    ParsedValue parsed = parse_value(parameter.type, word);
    if (!parsed.fault.empty()) return reject_value(parameter, word, parsed.fault);
    walk_.arguments.set(parameter.name, std::move(parsed.argument));
    walk_.path.push_back(word);
    if (pending_ == nullptr) ++positional_taken_;
    pending_ = nullptr;
  }

  void reject(std::string message, const std::string &word, std::vector<std::string> wanted) {
    walk_.wrong = wrong_usage(std::move(message), word, std::move(wanted));
    walk_.wrong->context = context();
  }

  void reject_name(const std::string &word, const std::vector<std::string> &candidates,
                   const std::vector<std::string> &all) {
    if (candidates.empty()) return reject("unknown word " + in_quotes(word), word, all);
    reject("ambiguous word " + in_quotes(word), word, candidates);
    walk_.wrong->suggestions.clear();  // every candidate may be meant
  }

  void reject_keyword(const std::string &word, const std::vector<std::string> &candidates) {
    if (used_.contains(word)) {
      return reject("keyword " + in_quotes(word) + " is there twice", word, expected_words());
    }
    const std::vector<std::string> all = expected_words();
    if (all.empty()) return reject("unexpected word " + in_quotes(word), word, {"end of command"});
    reject_name(word, candidates, all);
  }

  void reject_value(const Parameter &parameter, const std::string &word, const std::string &fault) {
    // An optional value is where keywords may be too: say both.
    std::vector<std::string> wanted =
        pending_ == nullptr ? expected_words() : value_expected(parameter.type);
    std::string message = "bad value " + in_quotes(word);
    // A fault of the whole word adds nothing to what is expected instead.
    if (!fault.starts_with(in_quotes(word))) message += ": " + fault;
    reject(std::move(message), word, std::move(wanted));
  }

  std::string context() const { return join(walk_.path, " "); }

  const Parameter *next_positional() const {
    const auto &positional = walk_.node->positional;
    if (!used_.empty() || positional_taken_ >= positional.size()) return nullptr;
    return &positional[positional_taken_];
  }

  std::vector<const Node *> nodes() const {
    std::vector<const Node *> all = addresses(walk_.node->children);
    all.push_back(&help_node());
    return all;
  }

  std::vector<const Parameter *> free_keywords() const {
    std::vector<const Parameter *> free;
    for (const Parameter &keyword : walk_.node->keywords) {
      if (!used_.contains(keyword.name)) free.push_back(&keyword);
    }
    return free;
  }

  std::vector<Expected> expected() const {
    std::vector<Expected> all;
    if (pending_ != nullptr) {
      add_value(all, *pending_, value_usage(pending_->type));
    } else if (is_command()) {
      const Parameter *place = next_positional();
      if (place != nullptr) add_value(all, *place, place->name);
      if (place == nullptr || !place->required) add_names(all, free_keywords());
    } else {
      add_names(all, nodes());
    }
    return all;
  }

  template <typename Entry>
  static void add_names(std::vector<Expected> &all, const std::vector<const Entry *> &entries) {
    for (const Entry *entry : entries) all.push_back({entry->name, entry->help, true});
  }

  static void add_value(std::vector<Expected> &all, const Parameter &parameter,
                        const std::string &place_holder) {
    for (const Choice &each : parameter.type.choices) all.push_back({each.word, each.help, true});
    if (parameter.type.choices.empty()) all.push_back({place_holder, parameter.help, false});
  }

  // The same as expected(), worded for a message.
  std::vector<std::string> expected_words() const {
    std::vector<std::string> all;
    if (pending_ != nullptr) return value_expected(pending_->type);
    if (!is_command()) return names(nodes());
    const Parameter *place = next_positional();
    if (place != nullptr) all = value_expected(place->type);
    if (place != nullptr && place->required) return all;
    for (const std::string &name : names(free_keywords())) all.push_back(name);
    return all;
  }

  std::optional<Fault> missing() const {
    const bool needs_keyword = is_command() && walk_.node->needs_keyword && used_.empty();
    const Parameter *place = next_positional();
    if (pending_ != nullptr) return missing_fault("value", expected_words());
    if (!is_command()) return missing_fault("word", expected_words());
    if (place != nullptr && place->required) return missing_fault(place->name, expected_words());
    for (const Parameter *keyword : free_keywords()) {
      if (keyword->required) return missing_fault("keyword", {keyword->name});
    }
    if (needs_keyword) return missing_fault("keyword", names(free_keywords()));
    return std::nullopt;
  }

  Fault missing_fault(const std::string &what, std::vector<std::string> wanted) const {
    Fault fault = wrong_usage("missing " + what, std::nullopt, std::move(wanted));
    fault.context = context();
    return fault;
  }

  Walk walk_;
  const Parameter *pending_ = nullptr;  // a keyword whose value comes next
  size_t positional_taken_ = 0;
  std::set<std::string> used_;  // keywords
};

}  // namespace

Walk walk(const Node &root, const std::vector<std::string> &words) {
  return Walker(root).run(words);
}

std::vector<std::string> command_path(const Node &root, const Walk &found) {
  std::vector<std::string> path;
  const Node *node = &root;
  for (size_t i = 0; node != found.node; ++i) {
    for (const Node &child : node->children) {
      if (child.name == found.path[i]) node = &child;
    }
    path.push_back(found.path[i]);
  }
  return path;
}

}  // namespace swsh
