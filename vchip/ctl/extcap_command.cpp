// SPDX-License-Identifier: MIT
#include "extcap_command.h"

#include <swctl-vchip/vchip.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>

#include "capture_command.h"
#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "wires_client.h"

namespace vchipctl {
namespace {

namespace fs = std::filesystem;
using os::Json;

constexpr const char *kMark = "swctl";
constexpr const char *kAllPorts = "all";

// A unit of an image that a vchipd serves.
struct Served {
  std::string image;
  uint32_t unit;
  auto operator<=>(const Served &) const = default;
};

// What the lock of a vchipd is called: "IMAGE.wires0.lock".
std::optional<Served> served_by_lock(const std::string &file) {
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
    const std::string end = ".wires" + std::to_string(unit) + ".lock";
    if (file.ends_with(end)) return Served{file.substr(0, file.size() - end.size()), unit};
  }
  return std::nullopt;
}

void find_served(const fs::path &process, std::set<Served> &found) {
  std::error_code fault;
  for (const fs::directory_entry &entry : fs::directory_iterator(process / "fd", fault))
    if (const auto served = served_by_lock(fs::read_symlink(entry, fault).string()))
      found.insert(*served);
}

// Every vchipd of this user holds its lock open.
std::set<Served> all_served() {
  std::set<Served> found;
  std::error_code fault;
  for (const fs::directory_entry &entry : fs::directory_iterator("/proc", fault)) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") == name.npos) find_served(entry.path(), found);
  }
  return found;
}

void print_interface(const Served &served, const std::string &port, const std::string &text) {
  const std::string unit = std::to_string(served.unit);
  printf("interface {value=%s:%s:%s:%s}{display=%s unit %s: %s}\n", kMark, served.image.c_str(),
         unit.c_str(), port.c_str(), fs::path(served.image).filename().c_str(), unit.c_str(),
         text.c_str());
}

void print_interfaces_of(const Served &served) {
  setenv("VCHIP_IMAGE", served.image.c_str(), 1);
  const std::optional<Json> answer = ask_if_served(served.unit, {{"do", "wires"}});
  if (!answer) return;
  print_interface(served, kAllPorts, "all ports");
  for (const Json &row : (*answer)["wires"]) {
    const std::string port = port_name(row["port"]);
    print_interface(served, port, "port " + port + " (" + row["wire"].get<std::string>() + ")");
  }
}

void print_interfaces() {
  printf("extcap {version=%s}{display=Ports of virtual switch chips}\n", SWCTL_VERSION);
  for (const Served &served : all_served()) try {
      print_interfaces_of(served);
    } catch (const Refused &) {
      // One that has just ended, or another user's, has no interfaces to show.
    }
}

void print_config() {
  printf(
      "arg {number=0}{call=--drops}{display=Say why frames are dropped}"
      "{tooltip=As a comment of the frame}{type=boolflag}{default=true}\n");
}

// "swctl:IMAGE:UNIT:PORT"; an image may have colons in its name.
CaptureWords words_of(const ExtcapWords &words) {
  const std::string &name = words.interface;
  const size_t port = name.rfind(':');
  const size_t unit = port == name.npos || port == 0 ? name.npos : name.rfind(':', port - 1);
  const size_t image = name.find(':');
  if (unit == name.npos || image >= unit || name.substr(0, image) != kMark)
    throw UsageError("no interface '" + name + "': expected one of --extcap-interfaces");
  setenv("VCHIP_IMAGE", name.substr(image + 1, unit - image - 1).c_str(), 1);
  CaptureWords capture;
  capture.unit = name.substr(unit + 1, port - unit - 1);
  capture.ports = name.substr(port + 1) == kAllPorts ? "" : name.substr(port + 1);
  capture.filter = words.filter;
  capture.file = words.fifo;
  capture.drops = words.drops;
  return capture;
}

}  // namespace

void extcap(const ExtcapWords &words) {
  if (words.interfaces) return print_interfaces();
  const CaptureWords capture_words = words_of(words);
  if (words.dlts) {
    printf("dlt {number=1}{name=EN10MB}{display=Ethernet}\n");
  } else if (words.config) {
    print_config();
  } else if (words.capture) {
    if (words.fifo.empty()) throw UsageError("--capture needs --fifo");
    capture(capture_words);
  }
}

void add_extcap_command(os::Command &app, ExtcapWords &words, std::function<void()> &run,
                        bool &own_chip) {
  os::Command command = app.add_subcommand("extcap", "The ports as interfaces of Wireshark");
  command.add_flag("--extcap-interfaces", words.interfaces, "Print the ports that can be captured");
  command.add_flag("--extcap-dlts", words.dlts, "Print the kind of frames of a port");
  command.add_flag("--extcap-config", words.config, "Print the settings of a capture");
  command.add_flag("--capture", words.capture, "Capture into a named pipe");
  command.add_option("--extcap-interface", words.interface, "The port");
  command.add_option("--extcap-capture-filter", words.filter, "An expression of libpcap");
  command.add_option("--extcap-version", words.version, "Wireshark's version");
  command.add_option("--fifo", words.fifo, "The named pipe");
  command.add_flag("--drops", words.drops, "Say which frames were dropped, and why");
  command.callback([&] {
    own_chip = true;
    run = [&] { extcap(words); };
  });
}

}  // namespace vchipctl
