// SPDX-License-Identifier: MIT
#include "capture_command.h"

#include <cerrno>
#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include "capture_blocks.h"
#include "os/descriptor.h"
#include "os/json.h"
#include "usage_error.h"
#include "wires_client.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

constexpr size_t kBytesAtATime = 65536;

volatile sig_atomic_t interrupted_capture = -1;

// vchipd then sends what there is, and its end.
void ask_for_the_end(int) {
  const int fault = errno;
  shutdown(interrupted_capture, SHUT_WR);
  errno = fault;
}

// The first signal ends the capture in order, a second one the program.
void watch_signals(const os::Descriptor &capture) {
  interrupted_capture = capture.get();
  struct sigaction action = {};
  action.sa_handler = ask_for_the_end;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
  signal(SIGPIPE, SIG_IGN);
}

Json request_of(const CaptureWords &words) {
  Json request = {{"do", "capture"},
                  {"drops", words.drops},
                  {"count", parse_number(words.count, "count", UINT64_MAX)}};
  if (!words.filter.empty()) request["filter"] = words.filter;
  if (!words.ports.empty()) request["ports"] = parse_all_ports(words.ports);
  return request;
}

bool is_to_stdout(const CaptureWords &words) {
  return words.file.empty() || words.file == "-";
}

void expect_no_terminal(const CaptureWords &words) {
  if (is_to_stdout(words) && isatty(STDOUT_FILENO) != 0)
    throw UsageError(
        "standard output is a terminal: give -w FILE, or a pipe such as | tcpdump -n -r -");
}

os::Descriptor open_output(const CaptureWords &words) {
  os::Descriptor output(is_to_stdout(words) ? fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                            : open(words.file.c_str(),
                                                   O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (!output)
    throw Refused((is_to_stdout(words) ? "standard output" : words.file) + ": " + strerror(errno));
  return output;
}

// False if nobody reads it any more.
bool write_all(const os::Descriptor &output, const std::vector<uint8_t> &bytes) {
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t count = write(output.get(), bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno == EPIPE) return false;
    if (count < 0 && errno != EINTR)
      throw Refused(std::string("the capture cannot be written: ") + strerror(errno));
    if (count > 0) done += static_cast<size_t>(count);
  }
  return true;
}

// Waits for bytes of the capture. False if the reader of the output has gone.
bool wait_for(const os::Descriptor &capture, const os::Descriptor &output) {
  pollfd descriptors[] = {{capture.get(), POLLIN, 0}, {output.get(), 0, 0}};
  if (poll(descriptors, 2, -1) < 0) return true;
  return (descriptors[1].revents & POLLERR) == 0;
}

void copy(const os::Descriptor &capture, const os::Descriptor &output, CaptureBlocks &blocks) {
  std::vector<uint8_t> bytes(kBytesAtATime);
  while (wait_for(capture, output)) {
    const ssize_t count = recv(capture.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return;
    if (count > 0 && !write_all(output, blocks.take(bytes.data(), static_cast<size_t>(count))))
      return;
  }
}

}  // namespace

void capture(const CaptureWords &words) {
  expect_no_terminal(words);
  const Json request = request_of(words);
  const os::Descriptor capture = follow_vchipd(parse_unit(words.unit), request);
  watch_signals(capture);
  const os::Descriptor output = open_output(words);
  CaptureBlocks blocks;
  copy(capture, output, blocks);
  fprintf(stderr, "vchipctl: %" PRIu64 " frames captured, %" PRIu64 " missed\n", blocks.frames(),
          blocks.missed());
  if (!blocks.is_whole()) throw Refused("vchipd has ended in the middle of a frame");
}

void add_capture_command(os::Command &app, CaptureWords &words, std::function<void()> &run) {
  os::Command command =
      app.add_subcommand("capture", "Write the frames at the ports of a running vchipd, as pcapng");
  command.add_option("PORTS", words.ports,
                     "Lists and ranges such as 1-4,0; all ports if not given");
  command.add_option("--filter", words.filter, "An expression of libpcap, such as 'vlan and arp'");
  command.add_flag("--drops", words.drops, "Say which frames were dropped, and why");
  command.add_option("-w,--write", words.file, "The file; standard output if not given, or -");
  command.add_option("-c,--count", words.count, "End after so many frames");
  command.add_option("--unit", words.unit, "Switch unit, 0 or 1; 0 if not given");
  command.callback([&] { run = [&] { capture(words); }; });
}

}  // namespace vchipctl
