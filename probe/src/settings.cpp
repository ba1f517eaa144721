// SPDX-License-Identifier: MIT
#include "settings.h"

#include <sstream>
#include <stdexcept>

namespace swprobe {
namespace {

struct Files {
  std::vector<std::string> traces;  // "" is standard error
  std::vector<std::string> recordings;
  std::vector<std::string> plans;
};

[[noreturn]] void unknown(const std::string &word) {
  throw std::runtime_error("SWPROBE: '" + word +
                           "' is none of trace, trace:FILE, record:FILE and fail:FILE");
}

void add_word(Files &files, const std::string &word) {
  const size_t colon = word.find(':');
  const std::string kind = word.substr(0, colon);
  const bool has_file = colon != std::string::npos && colon + 1 < word.size();
  if (word == "trace") {
    files.traces.emplace_back();
  } else if (kind == "trace" && has_file) {
    files.traces.push_back(word.substr(colon + 1));
  } else if (kind == "record" && has_file) {
    files.recordings.push_back(word.substr(colon + 1));
  } else if (kind == "fail" && has_file) {
    files.plans.push_back(word.substr(colon + 1));
  } else {
    unknown(word);
  }
}

Files parse_words(const std::string &words) {
  Files files;
  if (words.empty()) return files;
  size_t at = 0;
  while (true) {
    const size_t comma = words.find(',', at);
    add_word(files, words.substr(at, comma - at));
    if (comma == std::string::npos) return files;
    at = comma + 1;
  }
}

void open_all(Settings &settings, const Files &files) {
  for (const std::string &path : files.traces) {
    settings.traces.push_back(path.empty() ? LineFile() : LineFile(path));
  }
  for (const std::string &path : files.recordings) settings.recordings.emplace_back(path);
}

}  // namespace

Settings read_settings(const char *words, const char *inline_plan) {
  Settings settings;
  const Files files = parse_words(words == nullptr ? "" : words);
  for (const std::string &path : files.plans) {
    for (Rule &rule : read_plan(path)) settings.rules.push_back(std::move(rule));
  }
  if (inline_plan != nullptr) {
    for (Rule &rule : parse_plan("SWPROBE_FAIL", inline_plan)) {
      settings.rules.push_back(std::move(rule));
    }
  }
  open_all(settings, files);
  return settings;
}

}  // namespace swprobe
