// SPDX-License-Identifier: MIT
#include "frame_lines.h"

namespace vchipctl {
namespace {

constexpr const char *kPortHelp = "Port as printed on the box, 1 to 26, 0 the CPU, or p0 to p27";
constexpr const char *kPortsHelp =
    "Ports as printed on the box, 1 to 26, 0 the CPU, or p0 to p27: lists and ranges";
constexpr const char *kUnitHelp = "Switch unit, 0 or 1; 0 if not given";
constexpr const char *kHex = "Hexadecimal digits from the destination address on, without FCS";

os::Command add_frames(os::Command &app, FrameLines &lines, const char *name, const char *what) {
  os::Command command = app.add_subcommand(name, what);
  command.add_option("PORT", lines.frame.port, kPortHelp).required();
  command.add_option("HEX", lines.frame.frames, kHex);
  command.add_option("--pcap", lines.frame.capture, "The frames of a capture");
  command.add_option("--filter", lines.frame.filter,
                     "Only those that a filter expression of libpcap lets through");
  command.add_option("--unit", lines.frame.unit, kUnitHelp);
  command.add_flag("-j,--json", lines.frame.json, "Print JSON");
  return command;
}

os::Command add_traffic(os::Command &app, FrameLines &lines, const char *name, const char *what) {
  os::Command command = app.add_subcommand(name, what);
  command.add_option("--unit", lines.traffic.unit, kUnitHelp);
  command.add_flag("--all", lines.traffic.all, "Also what is 0");
  command.add_flag("-j,--json", lines.traffic.json, "Print JSON");
  return command;
}

}  // namespace

void add_frame_commands(os::Command &app, FrameLines &lines, std::function<void()> &run,
                        bool &own_chip) {
  os::Command sending =
      add_frames(app, lines, "send", "Send frames into a port, and print what leaves");
  sending.add_flag("--drain", lines.frame.drain, "Let the clock run until nothing waits");
  sending.callback([&] { run = [&] { send(lines.frame); }; });
  os::Command why = add_frames(app, lines, "explain", "Say what would become of a frame, and why");
  why.callback([&] { run = [&] { explain(lines.frame); }; });
  os::Command playing = app.add_subcommand("play", "Play scenarios, each on a chip of its own");
  playing.add_option("DIR", lines.play.directories, "Folders of scenarios").required();
  playing.add_flag("-j,--json", lines.play.json, "Print JSON");
  playing.callback([&] {
    own_chip = true;
    run = [&] { play(lines.play); };
  });
  os::Command fates = add_traffic(app, lines, "drops", "What became of the frames, by port");
  fates.add_option("[show|clear] PORTS", lines.traffic.words, kPortsHelp).shown_as(" ");
  fates.callback([&] { run = [&] { drops(lines.traffic); }; });
  os::Command egress = add_traffic(app, lines, "queues", "Waiting, dropped and sent, by queue");
  egress.add_option("PORTS", lines.traffic.words, kPortsHelp);
  egress.callback([&] { run = [&] { queues(lines.traffic); }; });
}

}  // namespace vchipctl
