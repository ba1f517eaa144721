// SPDX-License-Identifier: MIT
#include "process.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

std::vector<std::string> emulator() {
  std::vector<std::string> words;
  std::istringstream stream(EMULATOR);
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

// The emulator hands its environment on, but must not preload the library of
// another machine itself.
std::vector<std::string> command_of(const Run &what) {
  std::vector<std::string> words = emulator();
  const bool emulated = !words.empty();
  if (!what.preload.empty()) {
    if (emulated) {
      words.push_back("-E");
    } else {
      words.push_back("env");
    }
    words.push_back("LD_PRELOAD=" + what.preload);
  }
  words.push_back(what.program);
  if (!what.argument.empty()) words.push_back(what.argument);
  return words;
}

[[noreturn]] void become(const Run &what, const std::string &output, const std::string &error) {
  // A sanitizer wants its library first, which a preloaded library prevents.
  setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
  unsetenv("SWPROBE");
  unsetenv("SWPROBE_FAIL");
  for (const auto &[name, value] : what.environment) setenv(name.c_str(), value.c_str(), 1);
  std::vector<std::string> words = command_of(what);
  std::vector<char *> arguments;
  for (std::string &word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  if (std::freopen(output.c_str(), "w", stdout) != nullptr &&
      std::freopen(error.c_str(), "w", stderr) != nullptr) {
    execvp(arguments[0], arguments.data());
  }
  _exit(127);
}

std::string taken(const std::string &path) {
  std::string text = text_of(path);
  std::remove(path.c_str());
  return text;
}

}  // namespace

std::string text_of(const std::string &path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

Outcome run(const Run &what) {
  const std::string base = testing::TempDir() + "swprobe." + std::to_string(getpid());
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) become(what, base + ".out", base + ".err");
  int status = 0;
  waitpid(child, &status, 0);
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return {code, taken(base + ".out"), taken(base + ".err")};
}
