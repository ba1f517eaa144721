// SPDX-License-Identifier: MIT
// Runs vchipctl as a user does, on a chip of each test.
#ifndef SWCTL_TESTS_VCHIP_VCHIPCTL_H
#define SWCTL_TESTS_VCHIP_VCHIPCTL_H

#include <swctl-vchip/vchip.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "os/json.h"

using json = os::Json;

struct Answer {
  int status;
  std::string output;  // standard output and standard error
};

class Vchipctl : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = testing::TempDir() + "vchipctl-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    directory_ = name;
    image_ = directory_ + "/chip.img";
    setenv("VCHIP_IMAGE", image_.c_str(), 1);
  }
  void TearDown() override { std::filesystem::remove_all(directory_); }

  static Answer run(const std::string &arguments) {
    const std::string command = VCHIPCTL_COMMAND " " + arguments + " 2>&1";
    FILE *stream = popen(command.c_str(), "r");
    Answer answer = {-1, ""};
    if (stream == nullptr) return answer;
    char part[4096];
    for (size_t length; (length = fread(part, 1, sizeof part, stream)) > 0;)
      answer.output.append(part, length);
    const int status = pclose(stream);
    answer.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return answer;
  }
  static void expect_done(const std::string &arguments) {
    const Answer answer = run(arguments);
    EXPECT_EQ(answer.status, 0) << arguments << ": " << answer.output;
    EXPECT_EQ(answer.output, "") << arguments;
  }
  static void expect_wrong(const std::string &arguments, const std::string &complaint) {
    const Answer answer = run(arguments);
    EXPECT_EQ(answer.status, 1) << arguments;
    EXPECT_EQ(answer.output, "vchipctl: " + complaint + "\n") << arguments;
  }
  // A command with a word in place of #.
  static void expect_no_number(std::string command, const std::string &word) {
    command.replace(command.find('#'), 1, word.empty() ? "''" : word);
    const Answer answer = run(command);
    EXPECT_EQ(answer.status, 1) << command << ": " << answer.output;
    EXPECT_NE(answer.output.find(word + "'"), std::string::npos)
        << command << ": " << answer.output;
    EXPECT_EQ(answer.output.find('\n') + 1, answer.output.size()) << answer.output;
  }
  static void expect_refused(const std::string &arguments, const std::string &complaint) {
    const Answer answer = run(arguments);
    EXPECT_EQ(answer.status, 2) << arguments;
    EXPECT_EQ(answer.output, "vchipctl: " + complaint + "\n") << arguments;
  }
  // What a command prints that is done.
  static std::string printed(const std::string &arguments) {
    const Answer answer = run(arguments);
    EXPECT_EQ(answer.status, 0) << arguments << ": " << answer.output;
    return answer.output;
  }
  static json dump(const std::string &arguments = "") {
    const Answer answer = run("dump " + arguments);
    EXPECT_EQ(answer.status, 0) << answer.output;
    return os::parse_json(answer.output);
  }
  // All that the chip keeps; the page before it says who looked. Of a chip that
  // nobody has opened yet, what it has from the start.
  std::string kept() const {
    if (!std::filesystem::exists(image_)) expect_done("reset");
    std::ifstream stream(image_, std::ios::binary);
    stream.seekg(4096);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
  }
  static json ports(uint32_t unit) {
    return dump("--unit " + std::to_string(unit) + " --block port");
  }
  static json medium(uint32_t unit, size_t port) { return ports(unit)[port]["medium"]; }
  static std::string linked(uint32_t unit) {
    std::string ports;
    const json all = Vchipctl::ports(unit);
    for (const json &port : all)
      if (port["port"] != VCHIP_CPU_PORT && port["link"]["up"] == true)
        ports.append(ports.empty() ? "" : " ").append(port["port"].dump());
    return ports;
  }

  std::string directory_;
  std::string image_;
};

#endif
