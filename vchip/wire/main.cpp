// SPDX-License-Identifier: MIT
// vchipd: connects the ports of a virtual chip to interfaces, sockets and captures.
#include <swctl-vchip/vchip.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <vector>

#include "claim.h"
#include "configure.h"
#include "control.h"
#include "fault.h"
#include "live_captures.h"
#include "loop.h"
#include "os/command_line.h"
#include "panel.h"
#include "wire_words.h"

namespace {

using vchipd::Fault;
using vchipd::WrongWords;

constexpr int kWrongUsage = 1;
constexpr int kRefused = 2;
// What still waits at the end has so long to leave.
constexpr uint64_t kDrainNanoseconds = 1'000'000'000;

struct Words {
  std::string image;
  uint32_t unit = 0;
  std::vector<std::string> ports;
  std::string config;
  bool virtual_time = false;
};

struct PortWire {
  int32_t port;
  std::string wire;
};

PortWire parse_port_wire(const std::string &word) {
  const size_t equals = word.find('=');
  if (equals == word.npos)
    throw WrongWords("--port " + word + ": expected PORT=WIRE, such as 1=veth:sw1");
  return {vchipd::parse_port(word.substr(0, equals)), word.substr(equals + 1)};
}

// TERM and INT, as a descriptor.
class Signals {
 public:
  Signals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    descriptor_ = os::Descriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
  }
  int get() const { return descriptor_.get(); }

 private:
  os::Descriptor descriptor_;
};

void serve(const Words &words) {
  if (const char *refusal = vchip_open()) throw Fault(refusal);
  const vchipd::Claim claim(words.image, words.unit);
  if (!words.config.empty()) vchipd::configure(words.config, words.unit);
  const Signals signals;
  vchipd::Loop loop;
  vchipd::Panel panel(loop, words.image, words.unit, words.virtual_time);
  bool ends = false;
  loop.watch(signals.get(), EPOLLIN, [&](uint32_t) { ends = true; });
  for (const std::string &word : words.ports) {
    const PortWire wire = parse_port_wire(word);
    panel.plug(wire.port, wire.wire);
  }
  vchipd::LiveCaptures captures(loop, panel, words.unit);
  const vchipd::Control control(loop, panel, captures, words.image, words.unit);
  while (!ends) {
    panel.turn();
    ends = ends || (words.virtual_time && panel.is_finished());
  }
  panel.drain(kDrainNanoseconds);
  captures.finish(kDrainNanoseconds);
}

void add_words(os::Command &app, Words &words) {
  app.add_option("--image", words.image, "The chip's image; VCHIP_IMAGE if not given");
  app.add_option("--unit", words.unit, "Switch unit, 0 or 1; 0 if not given")
      .within(0, VCHIP_UNITS - 1);
  app.add_option("--port", words.ports, "PORT=WIRE: what is at a port; once for each").one_each();
  app.add_option("--config", words.config,
                 "Configuration for swctl, loaded before the first frame");
  app.add_flag("--virtual-time", words.virtual_time,
               "The chip's clock follows the captures, or vchipctl time, not real time");
  app.add_version("vchipd " SWCTL_VERSION);
  app.footer("Wires: " + vchipd::wire_kinds() +
             ".\nExit status: 0 ended as asked, 1 wrong words, 2 refused.");
}

void choose_image(Words &words) {
  const char *variable = getenv("VCHIP_IMAGE");
  if (words.image.empty() && variable != nullptr) words.image = variable;
  if (words.image.empty()) throw WrongWords("no image: give --image FILE or set VCHIP_IMAGE");
  setenv("VCHIP_IMAGE", words.image.c_str(), 1);
}

int complain(const std::string &text, int status) {
  fprintf(stderr, "vchipd: %s\n", text.c_str());
  return status;
}

}  // namespace

int main(int argc, char **argv) {
  os::Command app{"The ports of a virtual switch chip, on interfaces, sockets and captures",
                  "vchipd"};
  Words words;
  add_words(app, words);
  try {
    return os::parse_and_run(app, argc, argv, [&] {
      choose_image(words);
      serve(words);
      return 0;
    });
  } catch (const os::WrongLine &error) {
    return complain(error.what(), kWrongUsage);
  } catch (const WrongWords &error) {
    return complain(error.what(), kWrongUsage);
  } catch (const std::exception &error) {
    return complain(error.what(), kRefused);
  }
}
