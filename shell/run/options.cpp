// SPDX-License-Identifier: MIT
#include "run/options.h"

#include <cstdlib>
#include <getopt.h>
#include <limits>

#include "number_list.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int kEnd = -1;
constexpr std::string_view kEndOfOptions = "--";
// What getopt answers for an option without a letter: above all characters.
constexpr int kNameless = 256;

int option_code(size_t index) {
  const char letter = options()[index].letter;
  return letter != 0 ? letter : kNameless + static_cast<int>(index);
}

// "+" ends the options at the first other word, ":" tells a missing value from
// an unknown option.
std::string short_options() {
  std::string letters = "+:";
  for (const Option &option : options()) {
    if (option.letter == 0) continue;
    letters += option.letter;
    if (!option.value.empty()) letters += ':';
  }
  return letters;
}

std::vector<struct option> long_options() {
  std::vector<struct option> all;
  for (size_t i = 0; i < options().size(); ++i) {
    const Option &each = options()[i];
    const int has_value = each.value.empty() ? no_argument : required_argument;
    all.push_back({each.name.c_str(), has_value, nullptr, option_code(i)});
  }
  all.push_back({nullptr, 0, nullptr, 0});
  return all;
}

std::vector<std::string> option_words() {
  std::vector<std::string> words;
  for (const Option &option : options()) {
    if (!option.help.empty()) words.push_back('-' + option.name);
  }
  return words;
}

const Option &option_of(int code) {
  for (size_t i = 0; i + 1 < options().size(); ++i) {
    if (option_code(i) == code) return options()[i];
  }
  return options().back();
}

class Reader {
 public:
  explicit Reader(Settings &settings) : settings_(settings) {}

  void take(int code, const std::string &word, const char *value) {
    switch (code) {
      case '?': return fail(wrong_usage("unknown option " + in_quotes(word), word, option_words()));
      case ':': return fail(wrong_usage("option " + in_quotes(word) + " lacks its value", word));
      default: set(option_of(code).name, value == nullptr ? "" : value);
    }
  }

  // What does not fit together.
  void check() {
    if (settings_.atomic && settings_.force)
      fail(wrong_usage("option \"-atomic\" beside -force: a batch stops or goes on", "-atomic"));
    if (settings_.echo_status && (settings_.json || settings_.pretty)) {
      fail(wrong_usage("option \"-echo-status\" beside -json: a batch in JSON has each status",
                       "-echo-status"));
    }
  }

  void set(const Option &option, const char *value) { set(option.name, value); }

 private:
  void set(const std::string &name, const std::string &value) {
    if (name == "json") settings_.json = true;
    if (name == "pretty") settings_.pretty = true;
    if (name == "force") settings_.force = true;
    if (name == "may-exist") settings_.may_exist = true;
    if (name == "no-pager") settings_.no_pager = true;
    if (name == "atomic") settings_.atomic = true;
    if (name == "echo-status") settings_.echo_status = true;
    if (name == "help") settings_.help = true;
    if (name == "Version") settings_.version = true;
    if (name == "manual") settings_.manual = true;
    if (name == "batch") settings_.batch = value;
    if (name == "describe") settings_.described = true;
    if (name == "complete") settings_.completion_index = value;
    if (name == "bring-back") settings_.bring_back_after = atoll(value.c_str());
    if (name == "unit") set_unit(value);
  }

  void set_unit(const std::string &value) {
    const ParsedNumber parsed = parse_number(value, 0, std::numeric_limits<uint32_t>::max());
    settings_.unit = static_cast<uint32_t>(parsed.number);
    if (!parsed.fault.empty()) {
      fail(wrong_usage("bad value " + in_quotes(value) + " of -unit: " + parsed.fault, value,
                       {"a number from 0"}));
    }
  }

  void fail(Fault fault) {
    if (!settings_.fault) settings_.fault = std::move(fault);
  }

  Settings &settings_;
};

}  // namespace

const std::vector<Option> &options() {
  static const std::vector<Option> all = {
      {"json", 'j', "", "Answer in JSON"},
      {"pretty", 'p', "", "Answer in JSON on indented lines"},
      {"batch", 'b', "FILE", "Run the commands of a file, - for standard input"},
      {"force", 0, "", "In a batch, go on after a command that failed"},
      {"atomic", 0, "", "Put back what a batch has changed if a command of it fails"},
      {"may-exist", 0, "", "Make only what is not so already"},
      {"no-pager", 0, "", "Write long answers to a terminal as they are"},
      {"echo-status", 0, "", "After each answer, a line with the status of its command"},
      {"unit", 'u', "N", "Work on switch unit N instead of 0"},
      {"help", 'h', "", "Show this help"},
      {"Version", 'V', "", "Show the version of the program"},
      {"manual", 0, "", ""},
      {"describe", 0, "", ""},
      {"bring-back", 0, "SECONDS", ""},
      {"complete", 0, "INDEX", ""},
  };
  return all;
}

std::string option_usage(const Option &option) {
  std::string usage = option.letter != 0 ? std::string("-") + option.letter + ", -" : "-";
  usage += option.name;
  return option.value.empty() ? usage : usage + ' ' + option.value;
}

const Option *spelled_option(const std::string &word) {
  for (const Option &option : options()) {
    const bool letter = option.letter != 0 && word == std::string{'-', option.letter};
    const bool spelled = letter || word == '-' + option.name || word == "--" + option.name;
    if (spelled && !option.help.empty()) return &option;
  }
  return nullptr;
}

bool option_takes_value(const std::string &word) {
  const std::string name = word.substr(word.starts_with("--") ? 2 : 1);
  if (name.empty()) return false;
  for (const Option &option : options()) {
    const bool meant = option.name.starts_with(name) || name == std::string(1, option.letter);
    if (meant) return !option.value.empty();
  }
  return false;
}

Style Settings::style() const {
  if (pretty) return {Format::pretty};
  if (json) return {Format::json};
  return {Format::human, echo_status};
}

namespace {

// The words of the command, without the options among them.
std::vector<std::string> take_options(char **word, char **end, Reader &reader) {
  std::vector<std::string> words;
  for (; word != end; ++word) {
    if (std::string_view(*word) == kEndOfOptions) {
      words.insert(words.end(), word + 1, end);
      break;
    }
    const Option *option = spelled_option(*word);
    const bool lacks_value = option != nullptr && !option->value.empty() && word + 1 == end;
    if (option == nullptr) {
      words.emplace_back(*word);
    } else if (lacks_value) {
      reader.take(':', *word, nullptr);
    } else {
      reader.set(*option, option->value.empty() ? "" : *++word);
    }
  }
  return words;
}

}  // namespace

Settings read_options(int argc, char **argv) {
  Settings settings;
  Reader reader(settings);
  const std::string letters = short_options();
  const std::vector<struct option> table = long_options();
  opterr = 0;
  optind = 0;  // start afresh, however often
  int at = 1;
  for (;; at = optind) {
    const int code = getopt_long_only(argc, argv, letters.c_str(), table.data(), nullptr);
    if (code == kEnd) break;
    reader.take(code, argv[at], optarg);
  }
  // What is to be completed is not obeyed, and what follows -- is words.
  const bool only_words = settings.completion_index || optind != at;
  if (only_words) {
    settings.words.assign(argv + optind, argv + argc);
  } else {
    settings.words = take_options(argv + optind, argv + argc, reader);
  }
  reader.check();
  return settings;
}

}  // namespace swsh
