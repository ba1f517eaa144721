// SPDX-License-Identifier: MIT
// load interface NAME SECONDS BYTES [FRAMES_PER_SECOND]
// load streams FROM TO SECONDS BYTES [FRAMES_PER_SECOND]
// load calls SECONDS CALLS_PER_SECOND [every-other]
//
// Offers frames from 02:00:00:00:00:01 to 02:00:00:00:00:02, to an interface of Linux
// or into a stream with lengths in front; the other stream is read and counted. Prints
// as JSON how many were sent, in what time, how many a stream brought back, and how many of
// those in even and in odd quarters of a second of the system's monotonic clock.
// "calls" changes settings of the chip in VCHIP_IMAGE, in odd quarters only if it is said so,
// and prints how long a call took in microseconds: the median, the 99th percentile and the
// longest.
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <linux/if_packet.h>
#include <net/if.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t kBatch = 64;
constexpr size_t kLengthBytes = 4;

double now() {
  timespec time = {};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

constexpr double kWindow = 0.25;  // seconds

bool is_odd(double time) {
  return static_cast<uint64_t>(time / kWindow) % 2 == 1;
}

// A little later, so that it is in the next one.
double end_of_window(double time) {
  return (std::floor(time / kWindow) + 1) * kWindow + 1e-6;
}

[[noreturn]] void fail(const char *what) {
  perror(what);
  exit(2);
}

std::vector<uint8_t> frame_of(size_t bytes, uint8_t to, uint8_t from) {
  std::vector<uint8_t> frame(bytes, 0x55);
  const uint8_t head[] = {2, 0, 0, 0, 0, to, 2, 0, 0, 0, 0, from, 0x88, 0xb5};
  memcpy(frame.data(), head, sizeof head);
  return frame;
}

// Frames in the time that they have, at a rate or as fast as they go.
struct Pace {
  double seconds;
  double rate;  // 0: as fast as possible
  double begin = now();
  uint64_t sent = 0;

  // Waits until the next batch is due; false at the end.
  bool goes_on() const {
    for (;;) {
      const double passed = now() - begin;
      if (passed >= seconds) return false;
      if (rate <= 0 || static_cast<double>(sent) <= passed * rate) return true;
    }
  }
};

// `received` in even and in odd windows.
void print(const Pace &pace, uint64_t even, uint64_t odd) {
  printf("{\"sent\":%llu,\"received\":%llu,\"even\":%llu,\"odd\":%llu,\"seconds\":%.6f}\n",
         static_cast<unsigned long long>(pace.sent), static_cast<unsigned long long>(even + odd),
         static_cast<unsigned long long>(even), static_cast<unsigned long long>(odd),
         now() - pace.begin);
}

void load_interface(const char *name, Pace pace, size_t bytes) {
  const int descriptor = socket(AF_PACKET, SOCK_RAW, 0);
  const int yes = 1;
  sockaddr_ll address = {};
  address.sll_family = AF_PACKET;
  address.sll_ifindex = static_cast<int>(if_nametoindex(name));
  setsockopt(descriptor, SOL_PACKET, PACKET_QDISC_BYPASS, &yes, sizeof yes);
  if (bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) fail(name);
  std::vector<uint8_t> frame = frame_of(bytes, 2, 1);
  iovec part = {frame.data(), frame.size()};
  mmsghdr messages[kBatch] = {};
  for (mmsghdr &message : messages) message.msg_hdr.msg_iov = &part, message.msg_hdr.msg_iovlen = 1;
  while (pace.goes_on()) {
    const int sent = sendmmsg(descriptor, messages, kBatch, 0);
    if (sent > 0) pace.sent += static_cast<uint64_t>(sent);
  }
  print(pace, 0, 0);
}

int join(const char *path) {
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::string(path).copy(address.sun_path, sizeof address.sun_path - 1);
  if (connect(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) fail(path);
  return descriptor;
}

std::vector<uint8_t> record_of(const std::vector<uint8_t> &frame) {
  std::vector<uint8_t> record(kLengthBytes + frame.size());
  const uint32_t length = htonl(static_cast<uint32_t>(frame.size()));
  memcpy(record.data(), &length, kLengthBytes);
  memcpy(record.data() + kLengthBytes, frame.data(), frame.size());
  return record;
}

void write_all(int descriptor, const std::vector<uint8_t> &bytes) {
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t count = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (count <= 0) fail("write");
    done += static_cast<size_t>(count);
  }
}

// All frames have one length, so that bytes tell how many have come.
void load_streams(const char *from, const char *to, Pace pace, size_t bytes) {
  const int in = join(from);
  const int out = join(to);
  write_all(out, record_of(frame_of(60, 1, 2)));
  usleep(300000);
  // What came before is about the cable.
  uint8_t told[4096];
  while (recv(out, told, sizeof told, MSG_DONTWAIT) > 0) {
  }
  std::atomic<uint64_t> received = 0;  // bytes
  uint64_t odd = 0;
  std::thread reader([&] {
    std::vector<uint8_t> room(1 << 18);
    for (ssize_t count; (count = read(out, room.data(), room.size())) > 0;) {
      received += static_cast<uint64_t>(count);
      if (is_odd(now())) odd += static_cast<uint64_t>(count);
    }
  });
  const std::vector<uint8_t> record = record_of(frame_of(bytes, 2, 1));
  std::vector<uint8_t> batch;
  for (size_t place = 0; place < kBatch; ++place)
    batch.insert(batch.end(), record.begin(), record.end());
  pace.begin = now();
  for (; pace.goes_on(); pace.sent += kBatch) write_all(in, batch);
  const double end = now();
  for (uint64_t last = ~uint64_t{0}; last != received; usleep(100000)) last = received;
  shutdown(out, SHUT_RDWR);
  reader.join();
  pace.begin += now() - end;
  print(pace, (received - odd) / record.size(), odd / record.size());
}

// Frames of one VLAN are switched while the default VLAN of a port without a cable
// changes.
void call(double seconds, double rate, bool every_other) {
  std::vector<double> times;
  const double begin = now();
  double due = begin;
  for (; now() - begin < seconds; due += 1 / rate) {
    if (every_other && !is_odd(due)) due = end_of_window(due);
    if (const double early = due - now(); early > 0) usleep(static_cast<useconds_t>(early * 1e6));
    const double start = now();
    if (rtk_vlan_portPvid_set(0, 9, times.size() % 2 == 0 ? 1 : 10) != 0) exit(2);
    times.push_back((now() - start) * 1e6);
  }
  std::sort(times.begin(), times.end());
  const auto at = [&](double part) {
    return times[std::min(static_cast<size_t>(part * static_cast<double>(times.size())),
                          times.size() - 1)];
  };
  printf("{\"calls\":%zu,\"median\":%.1f,\"p99\":%.1f,\"most\":%.1f}\n", times.size(), at(0.5),
         at(0.99), at(1));
}

double number(const char *word) {
  return word == nullptr ? 0 : atof(word);
}

}  // namespace

int main(int argc, char **argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "interface" && argc >= 5) {
    load_interface(argv[2], {number(argv[3]), number(argv[5])}, strtoul(argv[4], nullptr, 10));
  } else if (what == "streams" && argc >= 6) {
    load_streams(argv[2], argv[3], {number(argv[4]), number(argv[6])},
                 strtoul(argv[5], nullptr, 10));
  } else if (what == "calls" && argc >= 4) {
    call(number(argv[2]), number(argv[3]), argc >= 5);
  } else {
    fprintf(stderr,
            "usage: load interface NAME SECONDS BYTES [RATE] | streams FROM TO ... | calls ...\n");
    return 1;
  }
  return 0;
}
