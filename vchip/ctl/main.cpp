// SPDX-License-Identifier: MIT
// vchipctl: does to a shared virtual chip what happens to a real one from outside.
#include <swctl-vchip/vchip.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "capture_command.h"
#include "commands.h"
#include "extcap_command.h"
#include "frame_lines.h"
#include "images.h"
#include "lab_command.h"
#include "os/command_line.h"
#include "usage_error.h"
#include "wire_commands.h"

namespace {

using vchipctl::Differ;
using vchipctl::Refused;
using vchipctl::UsageError;

constexpr int kWrongUsage = 1;
constexpr int kRefused = 2;
constexpr int kDiffer = 1;

constexpr const char *kPurpose = "Cables, stations and frames of a virtual switch chip";
constexpr const char *kImage =
    "The chip's image; VCHIP_IMAGE if not given. status, check, reset and dump take several: a "
    "list with "
    "commas, or all of a directory";
constexpr const char *kPorts =
    "Front ports as printed on the box, 1 to 26, or chip ports p0 to p27: lists and ranges such "
    "as 3, 1-4,7 or p25";
constexpr const char *kPartner =
    "What the other end negotiates, a list of: 10-half, 10-full, 100-half, 100-full, 1000-half, "
    "1000-full, pause, asymmetric-pause; all but 1000-half and asymmetric-pause if not given";
constexpr const char *kUnit = "Switch unit, 0 or 1; 0 if not given";
constexpr const char *kVlan = "VLAN, 0 to 4095; 1 if not given";
constexpr const char *kFooter =
    "Exit status: 0 done, 1 wrong words, or diff has found something, 2 refused.";

// The words of the command line, and what to do with them.
struct CommandLine {
  std::optional<std::string> image;
  vchipctl::LinkWords link;
  vchipctl::MediumWords medium;
  vchipctl::StationWords station;
  vchipctl::MarkWords mark;
  vchipctl::TimeWords time;
  vchipctl::CountWords count;
  vchipctl::PairWords pair;
  vchipctl::CounterWords counter;
  vchipctl::StormWords storm;
  vchipctl::DumpWords dump;
  vchipctl::FrameLines frames;
  vchipctl::StatusWords status;
  vchipctl::CheckWords check;
  vchipctl::ConvertWords convert;
  vchipctl::DiffWords diff;
  vchipctl::WireWords wire;
  vchipctl::CaptureWords capture;
  vchipctl::ExtcapWords extcap;
  vchipctl::LabWords lab;
  std::string trace;
  int exit_status = 0;    // of a command that another program does
  bool own_chip = false;  // what is run brings one and needs no image
  // For a command on one image, which is open then.
  std::function<void()> run;
  // For one that opens images itself.
  std::function<void(const std::vector<std::string> &)> run_on;
};

void add_dump(os::Command &app, CommandLine &line) {
  os::Command dump = app.add_subcommand("dump", "Print what the chip holds, as JSON");
  dump.add_option("--unit", line.dump.unit, "Only this unit");
  dump.add_option("--block", line.dump.block, "Only this block");
  dump.add_flag("--compact", line.dump.compact, "On one line");
  dump.callback([&line] {
    line.run_on = [&line](const std::vector<std::string> &images) {
      line.dump.images = images;
      vchipctl::dump(line.dump);
    };
  });
}

void add_status(os::Command &app, CommandLine &line) {
  os::Command status =
      app.add_subcommand("status", "Print who uses the image, and how it is locked");
  status.add_flag("-j,--json", line.status.json, "As JSON");
  status.callback([&line] {
    line.run_on = [&line](const std::vector<std::string> &images) {
      line.status.images = images;
      vchipctl::status(line.status);
    };
  });
}

void add_check(os::Command &app, CommandLine &line) {
  os::Command check = app.add_subcommand("check", "Name each word that no call could have left");
  check.add_flag("-j,--json", line.check.json, "As JSON");
  check.callback([&line] {
    line.run_on = [&line](const std::vector<std::string> &images) {
      line.check.images = images;
      vchipctl::check(line.check);
    };
  });
}

void add_convert(os::Command &app, CommandLine &line) {
  os::Command convert = app.add_subcommand(
      "convert", "Make an image of one of another version or machine, or of a dump");
  convert.add_option("OLD", line.convert.from, "The image, or the dump").required();
  convert.add_option("NEW", line.convert.to, "The new image, which is not there yet").required();
  convert.add_flag("-j,--json", line.convert.json, "As JSON");
  convert.callback([&line] {
    line.own_chip = true;
    line.run = [&line] { vchipctl::convert(line.convert); };
  });
}

void add_diff(os::Command &app, CommandLine &line) {
  os::Command diff = app.add_subcommand("diff", "Name what differs between two images or dumps");
  diff.add_option("A", line.diff.a, "An image, or a dump of one").required();
  diff.add_option("B", line.diff.b, "Another").required();
  diff.add_flag("-j,--json", line.diff.json, "As JSON");
  diff.callback([&line] {
    line.own_chip = true;
    line.run = [&line] { vchipctl::diff(line.diff); };
  });
}

void add_link(os::Command &app, CommandLine &line) {
  os::Command link = app.add_subcommand("link", "Plug and pull cables");
  link.require_subcommand();
  os::Command up = link.add_subcommand("up", "Plug in cables");
  up.add_option("--partner", line.link.partner, kPartner);
  up.add_option("--forced", line.link.forced, "The one mode that the other end is forced to");
  up.callback([&line] { line.run = [&line] { vchipctl::link_up(line.link); }; });
  os::Command down = link.add_subcommand("down", "Pull cables");
  down.callback([&line] { line.run = [&line] { vchipctl::link_down(line.link); }; });
  for (os::Command command : {up, down}) {
    command.add_option("PORTS", line.link.ports, kPorts).required();
    command.add_option("--unit", line.link.unit, kUnit);
  }
}

void add_medium(os::Command &app, CommandLine &line) {
  os::Command medium = app.add_subcommand("medium", "Say which side of a combo port has a signal");
  medium.add_option("PORTS", line.medium.ports, kPorts).required();
  medium.add_option("MEDIUM", line.medium.medium, "copper or fibre").required();
  medium.add_option("--unit", line.medium.unit, kUnit);
  medium.callback([&line] { line.run = [&line] { vchipctl::medium(line.medium); }; });
}

void add_addresses(os::Command &app, CommandLine &line) {
  os::Command learn = app.add_subcommand("learn", "Learn an address, as from a station's frame");
  learn.add_option("MAC", line.station.mac, "The station's address").required();
  learn.add_option("--port", line.station.port, "The one port that it sends into").required();
  learn.add_option("--trunk", line.station.trunk, "The port's trunk group; 0 if not given");
  learn.callback([&line] { line.run = [&line] { vchipctl::learn(line.station); }; });
  os::Command mark = app.add_subcommand("mark", "Set the state and aux words of an address");
  mark.add_option("MAC", line.mark.mac, "The address").required();
  mark.add_option("--state", line.mark.state, "State word; 1, a violation, if not given");
  mark.add_option("--aux", line.mark.aux, "Aux word; 0 if not given");
  mark.callback([&line] { line.run = [&line] { vchipctl::mark(line.mark); }; });
  learn.add_option("--vlan", line.station.vlan, kVlan);
  learn.add_option("--unit", line.station.unit, kUnit);
  mark.add_option("--vlan", line.mark.vlan, kVlan);
  mark.add_option("--unit", line.mark.unit, kUnit);
}

void add_time(os::Command &app, CommandLine &line) {
  os::Command time =
      app.add_subcommand("time", "Advance the chip's clock, which never runs by itself");
  time.add_option("SECONDS", line.time.seconds, "How much").required();
  time.add_option("--unit", line.time.unit, kUnit);
  time.callback([&line] { line.run = [&line] { vchipctl::pass_time(line.time); }; });
}

void add_count(os::Command &app, CommandLine &line) {
  os::Command count =
      app.add_subcommand("rule-count", "Add packets and bytes to a counter of rules");
  count.add_option("COUNTER", line.count.counter, "The counter that they count on").required();
  count.add_option("PACKETS", line.count.packets, "How many packets").required();
  count.add_option("BYTES", line.count.bytes, "How many bytes in them").required();
  count.add_option("--unit", line.count.unit, kUnit);
  count.callback([&line] { line.run = [&line] { vchipctl::count(line.count); }; });
}

void add_pair(os::Command &app, CommandLine &line) {
  os::Command pair = app.add_subcommand("pair", "Say what is wrong with pairs of wires");
  pair.add_option("PORTS", line.pair.ports, kPorts).required();
  pair.add_option("PAIRS", line.pair.pairs, "A to D: lists and ranges such as A, B-D").required();
  pair.add_option("FAULTS", line.pair.faults,
                  "none, or a list of: open, short, mismatch, crosstalk")
      .required();
  pair.add_option("--length", line.pair.length, "To the fault or the far end, in centimetres");
  pair.add_option("--unit", line.pair.unit, kUnit);
  pair.callback([&line] { line.run = [&line] { vchipctl::pair(line.pair); }; });
}

void add_counter(os::Command &app, CommandLine &line) {
  os::Command counter = app.add_subcommand("counter", "Set counters of ports, or add to them");
  counter.add_option("PORTS", line.counter.ports, kPorts).required();
  counter.add_option("COUNTER", line.counter.counter, "Identifier, 0 to 47").required();
  counter.add_option("CHANGE", line.counter.change, "set or add; adding wraps around at 2^64")
      .required();
  counter.add_option("NUMBER", line.counter.number, "0 to 2^64 - 1").required();
  counter.add_option("--unit", line.counter.unit, kUnit);
  counter.callback([&line] { line.run = [&line] { vchipctl::counter(line.counter); }; });
}

void add_storm(os::Command &app, CommandLine &line) {
  os::Command storm = app.add_subcommand("storm", "Mark the rate of a storm type as exceeded");
  storm.add_option("PORTS", line.storm.ports, kPorts).required();
  storm.add_option("TYPE", line.storm.type, "Storm type, 0 to 4").required();
  storm.add_option("--unit", line.storm.unit, kUnit);
  storm.callback([&line] { line.run = [&line] { vchipctl::storm(line.storm); }; });
}

std::string whole_help();

void add_commands(os::Command &app, CommandLine &line) {
  app.add_option("--image", line.image, kImage);
  app.add_version("vchipctl " SWCTL_VERSION);
  app.require_subcommand();
  app.fallthrough(true);
  app.add_subcommand("reset", "Power-on state: settings, tables, cables, trace").callback([&line] {
    line.run_on = vchipctl::reset;
  });
  add_dump(app, line);
  add_status(app, line);
  add_check(app, line);
  add_convert(app, line);
  add_diff(app, line);
  add_link(app, line);
  add_medium(app, line);
  add_addresses(app, line);
  add_count(app, line);
  add_time(app, line);
  add_pair(app, line);
  add_counter(app, line);
  add_storm(app, line);
  vchipctl::add_frame_commands(app, line.frames, line.run, line.own_chip);
  vchipctl::add_wire_commands(app, line.wire, line.run);
  vchipctl::add_capture_command(app, line.capture, line.run);
  vchipctl::add_extcap_command(app, line.extcap, line.run, line.own_chip);
  vchipctl::add_lab_commands(app, line.lab, line.image, line.run, line.own_chip, line.exit_status);
  os::Command trace = app.add_subcommand("trace", "The platform's operation trace");
  trace.add_option("COMMAND", line.trace, "on, off or show").required();
  trace.callback([&line] { line.run = [&line] { vchipctl::trace(line.trace); }; });
  os::Command help = app.add_subcommand("help", "Print the help of every command");
  help.callback([&line] {
    line.own_chip = true;
    line.run = [] { printf("%s", whole_help().c_str()); };
  });
  app.footer(kFooter);
}

std::string expected_commands(const os::Command &app) {
  std::string names;
  for (const std::string &name : app.expected_subcommands())
    names += (names.empty() ? ": expected " : ", ") + name;
  return names;
}

// Names the word that does not belong, or what is missing.
std::string explain(const os::Command &app, const os::WrongLine &error) {
  const std::vector<std::string> extra = app.remaining_in_all();
  const std::string expected = expected_commands(app);
  if (!extra.empty()) return "'" + extra.front() + "' does not belong here" + expected;
  if (error.missing && !expected.empty()) return "a command is missing" + expected;
  return error.what();
}

// Of a command line without words: help follows the commands that were given.
std::string whole_help() {
  os::Command app{kPurpose, "vchipctl"};
  CommandLine line;
  add_commands(app, line);
  return app.whole_help();
}

std::string image_word(const CommandLine &line) {
  const char *variable = getenv("VCHIP_IMAGE");
  const std::string word = line.image ? *line.image : variable == nullptr ? "" : variable;
  if (word.empty()) throw UsageError("no image: give --image FILE or set VCHIP_IMAGE");
  return word;
}

void run_command(const CommandLine &line) {
  const std::string word = image_word(line);
  if (line.run_on) return line.run_on(vchipctl::find_images(word));
  if (vchipctl::names_many(word))
    throw UsageError("'" + word + "' names several images: this command takes one");
  vchipctl::open_image(word);
  line.run();
}

int complain(const std::string &text, int status) {
  fprintf(stderr, "vchipctl: %s\n", text.c_str());
  return status;
}

int exit_status(const CommandLine &line) {
  try {
    line.own_chip ? line.run() : run_command(line);
    return line.exit_status;
  } catch (const Differ &) {
    return kDiffer;
  }
}

}  // namespace

int main(int argc, char **argv) {
  os::Command app{kPurpose, "vchipctl"};
  CommandLine line;
  add_commands(app, line);
  try {
    return os::parse_and_run(app, argc, argv, [&] { return exit_status(line); });
  } catch (const os::WrongLine &error) {
    return complain(explain(app, error), kWrongUsage);
  } catch (const UsageError &error) {
    return complain(error.what(), kWrongUsage);
  } catch (const std::exception &error) {
    return complain(error.what(), kRefused);
  }
}
