// SPDX-License-Identifier: MIT
#include "settings.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "comparison.h"
#include "number.h"
#include "recording.h"

namespace swprobe {
namespace {

constexpr char kStandardError[] = "stderr";
constexpr char kLibrary[] = "library";

// Where something is to be written.
struct Name {
  std::string file;
  bool of_library;
};

// The words of SWPROBE, sorted out. File names are as they were given.
struct Words {
  std::vector<Name> traces;
  std::vector<Name> recordings;
  std::vector<std::string> plans;
  std::vector<std::string> comparisons;
  std::string golden;  // the recording of an expectation
  bool stop = false;
  std::string answers;
  Rotation rotation;
  Filter filter;
};

[[noreturn]] void bad_setting(const std::string &what) {
  throw std::runtime_error("SWPROBE: " + what);
}

[[noreturn]] void unknown(const std::string &word) {
  bad_setting(
      "'" + word +
      "' is none of trace, trace:FILE, record:FILE, fail:FILE, expect:FILE, expect-stop:FILE, "
      "answer:FILE, rules:FILE, only:NAME, port:NUMBER and rotate:SIZE");
}

void set_once(std::string &to, const std::string &kind, const std::string &value) {
  if (!to.empty()) bad_setting("'" + kind + "' is there twice");
  to = value;
}

void set_golden(Words &words, const std::string &value, bool stop) {
  set_once(words.golden, "expect", value);
  words.stop = stop;
}

// "10M": bytes.
uint64_t size_of(const std::string &text) {
  constexpr uint64_t kStep = 1024;
  const std::string letters = "KMG";
  const size_t power = text.empty() ? std::string::npos : letters.find(text.back());
  const auto number = parse_number(text.substr(0, text.size() - (power < letters.size() ? 1 : 0)));
  if (!number || *number <= 0 || *number > INT32_MAX)
    bad_setting("'" + text + "' is no size such as 10M");
  uint64_t size = static_cast<uint64_t>(*number);
  for (size_t i = 0; power < letters.size() && i <= power; ++i) size *= kStep;
  return size;
}

// "10M" or "10M:9".
void set_rotation(Words &words, const std::string &text) {
  const size_t colon = text.find(':');
  words.rotation.size = size_of(text.substr(0, colon));
  if (colon == std::string::npos) return;
  const std::string count = text.substr(colon + 1);
  const auto keep = parse_number(count);
  if (!keep || *keep < 0 || *keep > 999)
    bad_setting("'" + count + "' is no number of files, 0 to 999");
  words.rotation.keep = static_cast<unsigned>(*keep);
}

// "FILE" or "library:FILE"; `without` is the file that need not be named.
Name name_of(const std::string &value, const std::string &without) {
  const std::string library = kLibrary;
  if (value == library && !without.empty()) return {without, true};
  const bool both = value.starts_with(library + ':') && value.size() > library.size() + 1;
  return {both ? value.substr(library.size() + 1) : value, both};
}

struct Kind {
  std::string_view name;
  void (*take)(Words &words, const std::string &value);
};

constexpr Kind kKinds[] = {
    {"trace",
     [](Words &words, const std::string &value) {
       words.traces.push_back(name_of(value, kStandardError));
     }},
    {"record", [](Words &words,
                  const std::string &value) { words.recordings.push_back(name_of(value, "")); }},
    {"fail", [](Words &words, const std::string &value) { words.plans.push_back(value); }},
    {"expect", [](Words &words, const std::string &value) { set_golden(words, value, false); }},
    {"expect-stop", [](Words &words, const std::string &value) { set_golden(words, value, true); }},
    {"answer",
     [](Words &words, const std::string &value) { set_once(words.answers, "answer", value); }},
    {"rules", [](Words &words, const std::string &value) { words.comparisons.push_back(value); }},
    {"only", [](Words &words, const std::string &value) { words.filter.add_name(value); }},
    {"port", [](Words &words, const std::string &value) { words.filter.add_port(value); }},
    {"rotate", set_rotation},
};

void add_word(Words &words, const std::string &word) {
  const size_t colon = word.find(':');
  const bool has_value = colon != std::string::npos && colon + 1 < word.size();
  const bool is_bare_trace = word == "trace";
  const auto kind = std::ranges::find(kKinds, word.substr(0, colon), &Kind::name);
  if (kind == std::end(kKinds) || (!has_value && !is_bare_trace)) unknown(word);
  kind->take(words, is_bare_trace ? kStandardError : word.substr(colon + 1));
}

void check(const Words &words) {
  const bool has_recording = !words.golden.empty() || !words.answers.empty();
  if (!words.comparisons.empty() && !has_recording) bad_setting("'rules' without expect or answer");
  const auto is_file = [](const Name &name) { return name.file != kStandardError; };
  const bool has_file = !words.recordings.empty() || std::ranges::any_of(words.traces, is_file);
  if (words.rotation.size > 0 && !has_file) bad_setting("'rotate' without a file to write");
}

Words parse_words(const std::string &text) {
  Words words;
  if (text.empty()) return words;
  size_t at = 0;
  for (size_t comma = 0; comma != std::string::npos; at = comma + 1) {
    comma = text.find(',', at);
    add_word(words, text.substr(at, comma - at));
  }
  check(words);
  return words;
}

void read_plans(Settings &settings, const Words &words, const char *inline_plan) {
  const auto take = [&](std::vector<Rule> rules) {
    std::ranges::move(rules, std::back_inserter(settings.rules));
  };
  for (const std::string &path : words.plans) take(read_plan(with_process_id(path)));
  if (inline_plan != nullptr) take(parse_plan("SWPROBE_FAIL", inline_plan));
}

Recording read_whole(const std::string &path) {
  Recording recording = load_recording(path);
  if (recording.cut_off > 0)
    complain(path + ':' + std::to_string(recording.cut_off) +
             ": the recording is cut off here; what comes before is used");
  return recording;
}

void read_goldens(Settings &settings, const Words &words) {
  Comparison comparison;
  for (const std::string &path : words.comparisons) comparison.read(with_process_id(path));
  if (!words.golden.empty()) {
    const std::string path = with_process_id(words.golden);
    settings.expectation =
        std::make_unique<Expectation>(path, read_whole(path), comparison, words.filter, words.stop);
  }
  if (!words.answers.empty()) {
    const std::string path = with_process_id(words.answers);
    settings.answers = std::make_unique<Answers>(path, read_whole(path), comparison);
  }
}

void open_all(Settings &settings, const Words &words) {
  for (const Name &name : words.traces) {
    const bool is_file = name.file != kStandardError;
    settings.traces.push_back(
        {is_file ? LineFile(name.file, words.rotation) : LineFile(), name.of_library});
  }
  for (const Name &name : words.recordings) {
    const std::string header = recording_header(name.of_library);
    settings.recordings.push_back({LineFile(name.file, words.rotation, header), name.of_library});
  }
}

}  // namespace

Settings read_settings(const char *words_text, const char *inline_plan) {
  Settings settings;
  const Words words = parse_words(words_text == nullptr ? "" : words_text);
  read_plans(settings, words, inline_plan);
  read_goldens(settings, words);
  settings.filter = words.filter;
  open_all(settings, words);
  return settings;
}

}  // namespace swprobe
