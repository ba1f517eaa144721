// SPDX-License-Identifier: MIT
#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "number.h"
#include "rule.h"
#include "rule_words.h"

namespace swprobe {
namespace {

class Parser {
 public:
  explicit Parser(const std::string &text) : words_(words_of(text)) {}

  Rule parse() {
    rule_.call = next("the name of a call");
    sites_ = calls_like(rule_.call);
    parse_when();
    while (peek() != "result") parse_condition();
    next("'result'");
    parse_result();
    while (at_ < words_.size()) parse_output();
    return rule_;
  }

 private:
  std::string peek() const { return at_ < words_.size() ? words_[at_] : ""; }

  const std::string &next(const std::string &expected) {
    if (at_ < words_.size()) return words_[at_++];
    if (words_.empty()) bad_rule("the rule is empty");
    bad_rule(expected + " is missing after " + in_quotes(words_.back()));
  }

  void parse_when() {
    const std::string word = peek();
    if (word == "nth") {
      rule_.when = Rule::When::nth;
    } else if (word == "from") {
      rule_.when = Rule::When::from;
    } else if (word == "every") {
      rule_.when = Rule::When::every;
    } else {
      return;
    }
    ++at_;
    const std::string count = next("a number");
    const auto number = parse_number(count);
    if (!number || *number < 1) {
      bad_rule(in_quotes(count) + " after '" + word + "' is not a number from 1 on");
    }
    rule_.n = static_cast<uint64_t>(*number);
  }

  void parse_condition() {
    const std::string name = next("'result'");
    Condition condition{place_of(name), {}, {}};
    const std::vector<Known> known = arguments_like(name, condition.place);
    const auto given = [](const Known &k) { return k.info->direction != Direction::out; };
    if (std::none_of(known.begin(), known.end(), given)) {
      bad_rule(in_quotes(name) + " is an output; only what goes into a call can be compared");
    }
    condition.text = next("a value");
    const auto is_text = [](const Known &k) { return k.info->form == Form::text; };
    if (!std::all_of(known.begin(), known.end(), is_text)) {
      condition.values = numbers(name, condition.text, known);
    }
    rule_.conditions.push_back(condition);
  }

  void parse_result() {
    const std::string word = next("a number");
    const auto number = parse_number(word);
    if (!number || *number < INT32_MIN || *number > INT32_MAX) {
      bad_rule("the result " + in_quotes(word) + " is not a signed 32-bit number");
    }
    rule_.result = static_cast<int32_t>(*number);
  }

  void parse_output() {
    const std::string word = next("'out'");
    if (word != "out") bad_rule(in_quotes(word) + " is where 'out' or the end is expected");
    const std::string name = next("the name of an output");
    Output output{place_of(name), {}};
    const std::vector<Known> known = arguments_like(name, output.place);
    const auto written = [](const Known &k) { return k.info->is_output(); };
    if (std::none_of(known.begin(), known.end(), written)) {
      bad_rule(in_quotes(name) + " is not written by " + in_quotes(rule_.call));
    }
    output.values = numbers(name, next("a value"), known);
    rule_.outputs.push_back(output);
  }

  std::vector<Known> arguments_like(const std::string &word, const Place &place) const {
    std::vector<Known> known;
    for (const Site *site : sites_) {
      const auto argument = find_argument(*site, place.name);
      if (argument) known.push_back(*argument);
    }
    if (known.empty()) bad_rule(in_quotes(rule_.call) + " has no argument " + in_quotes(word));
    return known;
  }

  static std::vector<int64_t> numbers(const std::string &name, const std::string &word,
                                      const std::vector<Known> &known) {
    const auto values = parse_numbers(word);
    if (!values) bad_rule(in_quotes(word) + " for " + in_quotes(name) + " is not a number");
    for (const Known &argument : known) {
      const auto too_large = [&](int64_t value) { return !fits(value, argument.field->width); };
      if (std::any_of(values->begin(), values->end(), too_large)) {
        bad_rule(in_quotes(word) + " does not fit into " + in_quotes(name));
      }
    }
    return *values;
  }

  std::vector<std::string> words_;
  size_t at_ = 0;
  std::vector<const Site *> sites_;
  Rule rule_;
};

// Nothing for an empty rule.
void add_rule(std::vector<Rule> &rules, const std::string &where, const std::string &text) {
  if (words_of(text).empty()) return;
  try {
    rules.push_back(parse_rule(text));
    rules.back().place = where;
  } catch (const std::invalid_argument &error) {
    throw std::runtime_error(where + ": " + error.what());
  }
}

}  // namespace

Rule parse_rule(const std::string &text) {
  return Parser(text).parse();
}

Rule rule_of(const std::string &name, uint64_t nth, const Answer &answer) {
  const Site *site = find_call(name);
  if (site == nullptr || site->layer != Layer::platform)
    bad_rule("no call is named " + in_quotes(name));
  if (!fits(answer.result, sizeof(int32_t))) bad_rule("the result does not fit into 32 bits");
  Rule rule;
  rule.call = name;
  rule.when = nth == 0 ? Rule::When::always : Rule::When::nth;
  rule.n = nth;
  rule.result = static_cast<int32_t>(answer.result);
  for (const auto &[output, value] : answer.outputs) {
    const Place place = place_of(output);
    const auto known = find_argument(*site, place.name);
    if (!known || !known->info->is_output()) bad_rule(name + " has no output " + in_quotes(output));
    if (!fits(value, known->field->width))
      bad_rule("the value of " + in_quotes(output) + " is too large");
    rule.outputs.push_back({place, {value}});
  }
  return rule;
}

std::vector<Rule> read_plan(const std::string &path) {
  std::vector<Rule> rules;
  each_rule(path, [&](const std::string &place, const std::string &text) {
    add_rule(rules, place, text);
  });
  return rules;
}

std::vector<Rule> parse_plan(const std::string &source, const std::string &text) {
  std::istringstream stream(text);
  std::vector<Rule> rules;
  int number = 0;
  for (std::string part; std::getline(stream, part, ';');) {
    add_rule(rules, source + ": rule " + std::to_string(++number), part);
  }
  return rules;
}

}  // namespace swprobe
