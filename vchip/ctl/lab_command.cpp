// SPDX-License-Identifier: MIT
#include "lab_command.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <list>
#include <unistd.h>

#include "child.h"
#include "lab_host.h"
#include "lab_record.h"
#include "os/json.h"
#include "os/program.h"
#include "port_names.h"
#include "spaces.h"
#include "usage_error.h"
#include "wires_client.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

constexpr const char *kChipSide = "switch";
constexpr uint32_t kMostHosts = 26;
constexpr int kSecondsToEnd = 3;
constexpr int kLooks = 1000;
constexpr useconds_t kBetweenLooks = 10'000;

// The hosts, and vchipd between them.
class Lab {
 public:
  Lab(const std::string &image, uint32_t ports, const std::string &config);
  ~Lab() { vchipd_.end(kSecondsToEnd); }
  Lab(const Lab &) = delete;
  Lab &operator=(const Lab &) = delete;

  LabProcesses processes() const;

 private:
  std::vector<std::string> vchipd_words(const std::string &config) const;
  void wait_for_vchipd();
  bool has_all_carriers() const;

  std::list<LabHost> hosts_;
  Child vchipd_;
};

Lab::Lab(const std::string &image, uint32_t ports, const std::string &config) {
  setenv("VCHIP_IMAGE", image.c_str(), 1);
  leave_for_own_space(kChipSide);
  for (uint32_t interface = 1; interface <= ports; ++interface)
    hosts_.emplace_back(static_cast<int32_t>(interface));
  vchipd_ = Child([&] { return become(vchipd_words(config)); });
  wait_for_vchipd();
  for (LabHost &host : hosts_) host.configure();
  for (int look = 0; look < kLooks && !has_all_carriers(); ++look) usleep(kBetweenLooks);
}

std::vector<std::string> Lab::vchipd_words(const std::string &config) const {
  std::vector<std::string> words = {"vchipd"};
  int32_t interface = 0;
  for (const LabHost &host : hosts_) {
    const std::string number = std::to_string(++interface);
    words.insert(words.end(), {"--port", number + "=veth:sw" + number + ":" + host.wire_end()});
  }
  if (!config.empty()) words.insert(words.end(), {"--config", config});
  return words;
}

void Lab::wait_for_vchipd() {
  for (int look = 0; look < kLooks; ++look) {
    if (vchipd_.has_ended()) throw Refused("vchipd has ended");
    if (ask_if_served(0, {{"do", "wires"}})) return;
    usleep(kBetweenLooks);
  }
  throw Refused("vchipd does not answer");
}

bool Lab::has_all_carriers() const {
  const Json rows = ask_vchipd(0, {{"do", "wires"}})["wires"];
  return std::all_of(rows.begin(), rows.end(),
                     [](const Json &row) { return bool(row["carrier"]); });
}

LabProcesses Lab::processes() const {
  LabProcesses all = {getpid(), {}};
  int32_t interface = 0;
  for (const LabHost &host : hosts_) all.hosts[++interface] = host.process();
  return all;
}

pid_t running = -1;  // the command of the lab

void pass_on(int) {
  if (running > 0) kill(running, SIGHUP);
}

// The terminal's signals are the command's; who ends the lab ends the command.
void leave_signals_to(const Child &command) {
  running = command.process();
  for (const int number : {SIGTERM, SIGHUP}) signal(number, pass_on);
  for (const int number : {SIGINT, SIGQUIT}) signal(number, SIG_IGN);
}

// Programs of the same folder are found, as this one was.
void put_own_folder_first() {
  const std::string folder = os::own_folder();
  const char *path = getenv("PATH");
  if (folder.empty()) return;
  setenv("PATH", (path == nullptr ? folder : folder + ':' + path).c_str(), 1);
}

int run_in_lab(const std::vector<std::string> &words) {
  put_own_folder_first();
  Child command([&] { return become(words); });
  leave_signals_to(command);
  return command.wait();
}

void say_what_is_there(uint32_t ports) {
  fprintf(stderr, "A lab on image %s, until this shell ends:\n", getenv("VCHIP_IMAGE"));
  for (uint32_t interface = 1; interface <= ports; ++interface)
    fprintf(stderr, "  port %-2u  %-6s  %s/24\n", interface,
            LabHost::name(static_cast<int32_t>(interface)).c_str(),
            LabHost::address(static_cast<int32_t>(interface)).c_str());
  fprintf(stderr, "\"vchipctl lab enter 2\" is a shell in host2, here and in other terminals.\n");
}

std::vector<std::string> command_of(const LabWords &words) {
  if (words.command.empty()) return {user_shell()};
  if (words.command.front().starts_with("-"))
    throw UsageError("'" + words.command.front() + "' does not belong here");
  return words.command;
}

std::string image_of(const std::optional<std::string> &image) {
  const char *variable = getenv("VCHIP_IMAGE");
  return image ? *image : variable == nullptr ? "" : variable;
}

}  // namespace

int lab(const std::string &image, const LabWords &words) {
  const uint32_t ports = parse_word(words.ports, "number of ports", kMostHosts);
  if (ports == 0) throw UsageError("0 ports: expected 1 to 26");
  const std::vector<std::string> command = command_of(words);
  std::optional<LabFolder> folder;
  if (image.empty()) folder.emplace();
  const std::string file =
      image.empty() ? LabFolder::image() : std::filesystem::absolute(image).string();
  LabRecord record(file);
  const Lab own(file, ports, words.config);
  record.write(own.processes());
  if (words.command.empty() && isatty(STDERR_FILENO) != 0) say_what_is_there(ports);
  return run_in_lab(command);
}

int enter_lab(const std::string &image, const LabWords &words) {
  const std::vector<std::string> command = command_of(words);
  const std::string file =
      image.empty() ? LabFolder::image() : std::filesystem::absolute(image).string();
  const LabProcesses processes = find_lab(file);
  pid_t process = processes.board;
  if (!words.port.empty() && words.port != kChipSide) {
    const auto host = processes.hosts.find(interface_of(parse_one_port(words.port)));
    if (host == processes.hosts.end()) throw Refused("the lab has no host at port " + words.port);
    process = host->second;
  }
  setenv("VCHIP_IMAGE", file.c_str(), 1);
  put_own_folder_first();
  enter_space_of(process);
  return become(command);
}

void add_lab_commands(os::Command &app, LabWords &words, const std::optional<std::string> &image,
                      std::function<void()> &run, bool &own_chip, int &status) {
  os::Command make =
      app.add_subcommand("lab", "A host at each port, while a shell or a COMMAND runs");
  make.add_option("--ports", words.ports, "How many hosts, 1 to 26; 4 if not given");
  make.add_option("--config", words.config, "Configuration for swctl, loaded at the start");
  make.footer("COMMAND and its words follow the options.");
  make.fallthrough(false);
  make.prefix_command();
  os::Command enter = make.add_subcommand("enter", "A shell, or a COMMAND, in the host at a port");
  enter.add_option("PORT", words.port, "1 to 26, or switch, the side of the chip, if not given");
  enter.footer("COMMAND and its words follow the port.");
  enter.fallthrough(false);
  enter.prefix_command();
  make.callback([&, make, enter] {
    const bool enters = make.got(enter);
    own_chip = true;
    words.command = (enters ? enter : make).remaining();
    if (!words.command.empty() && words.command.front() == "--")
      words.command.erase(words.command.begin());
    run = [&, enters] {
      status = enters ? enter_lab(image_of(image), words) : lab(image_of(image), words);
    };
  });
}

}  // namespace vchipctl
