// SPDX-License-Identifier: MIT
// trial from=NAME,... [to=NAME,...] [kind=learn|ask|broadcast] [back=1] [bytes=N] [frames=N]
// [seconds=S]
//       [rate=R] [stations=N] [first=N] [seed=N] [count=NAME,...] [stamps=NAME,...]
//
// One trial of RFC 2544 or RFC 2889: frames from interfaces, by turns in bursts, `frames` of them
// or for `seconds`, at `rate` frames a second or, at 0, as fast as they go. Prints as JSON how many
// were sent and in what time, how many the interfaces of `count` received until nothing more came,
// and the latency of those that carry a stamp, in microseconds: from before the frame is sent until
// the system of the receiver has it from its driver.
//
// Frames go from the first host to the second, with back=1 from the second to the first, or
// from each interface to all others of `to` in turn, to host 2 at "h2".
// With a kind, one end or both are others:
//   learn      from as many addresses as `stations`, in turn
//   ask        to as many addresses as `stations`, in turn
//   broadcast  to all
// The stations' addresses count up from number `first`, or are drawn at random from a seed that is
// not 0.
#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ifaddrs.h>
#include <linux/if_link.h>
#include <linux/if_packet.h>
#include <map>
#include <net/if.h>
#include <string>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t kBatch = 64;
constexpr uint16_t kType = 0x88b5;       // for experiments
constexpr uint16_t kStampType = 0x88b6;  // likewise
constexpr double kNap = 0.0002;          // seconds to the next frame that are worth a sleep
constexpr double kStampEvery = 0.002;    // seconds
constexpr double kResidual = 2;          // seconds for frames on their way: RFC 2544, 23
constexpr useconds_t kQuiet = 50000;     // microseconds

using Words = std::map<std::string, std::string>;
using Address = std::array<uint8_t, 6>;

[[noreturn]] void fail(const std::string &what) {
  perror(what.c_str());
  exit(2);
}

double seconds_of(const timespec &time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double now(clockid_t clock = CLOCK_MONOTONIC) {
  timespec time = {};
  clock_gettime(clock, &time);
  return seconds_of(time);
}

double number(const Words &words, const char *name, double otherwise) {
  const auto found = words.find(name);
  return found == words.end() ? otherwise : atof(found->second.c_str());
}

std::string word(const Words &words, const char *name) {
  const auto found = words.find(name);
  return found == words.end() ? "" : found->second;
}

std::vector<std::string> names(const Words &words, const char *name) {
  std::vector<std::string> found;
  std::string rest = word(words, name);
  while (!rest.empty()) {
    const size_t comma = std::min(rest.find(','), rest.size());
    found.push_back(rest.substr(0, comma));
    rest.erase(0, comma + 1);
  }
  return found;
}

uint64_t mixed(uint64_t value) {
  value += 0x9e3779b97f4a7c15u;
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9u;
  value = (value ^ (value >> 27)) * 0x94d049bb133111ebu;
  return value ^ (value >> 31);
}

// A station that is not one of the hosts.
Address station(uint64_t index, uint64_t seed) {
  const uint64_t bits = seed == 0 ? 0x1000000 + index : mixed(seed << 32 | index);
  Address address = {2};
  for (size_t place = 1; place < address.size(); ++place)
    address[place] = static_cast<uint8_t>(bits >> 8 * (address.size() - 1 - place));
  return address;
}

Address host(uint8_t number) {
  return {2, 0, 0, 0, 0, number};
}

// "h2" is that of host 2.
uint8_t number_of(const std::string &interface) {
  return static_cast<uint8_t>(interface.back() - '0');
}

int packet_socket(const std::string &name, uint16_t type) {
  const int descriptor = socket(AF_PACKET, SOCK_RAW, 0);
  sockaddr_ll address = {};
  address.sll_family = AF_PACKET;
  address.sll_protocol = htons(type);
  address.sll_ifindex = static_cast<int>(if_nametoindex(name.c_str()));
  if (address.sll_ifindex == 0 ||
      bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
    fail(name);
  return descriptor;
}

// Frames that an interface has received, modulo 2^32.
std::map<std::string, uint32_t> received_frames() {
  std::map<std::string, uint32_t> found;
  ifaddrs *list = nullptr;
  if (getifaddrs(&list) != 0) fail("getifaddrs");
  for (const ifaddrs *each = list; each != nullptr; each = each->ifa_next)
    if (each->ifa_addr != nullptr && each->ifa_addr->sa_family == AF_PACKET)
      found[each->ifa_name] = static_cast<const rtnl_link_stats *>(each->ifa_data)->rx_packets;
  freeifaddrs(list);
  return found;
}

// Who sends to whom, frame by frame.
class Route {
 public:
  explicit Route(const Words &words)
      : kind_(word(words, "kind")),
        stations_(static_cast<uint64_t>(number(words, "stations", 1))),
        first_(static_cast<uint64_t>(number(words, "first", 0))),
        seed_(static_cast<uint64_t>(number(words, "seed", 0))),
        is_back_(number(words, "back", 0) != 0) {
    const std::vector<std::string> targets = names(words, "to");
    if (targets.empty()) return;
    for (const std::string &source : names(words, "from")) {
      Targets others = {number_of(source), {}};
      for (const std::string &target : targets)
        if (target != source) others.to.push_back(number_of(target));
      if (others.to.empty()) fail("to: nobody but " + source);
      targets_.push_back(std::move(others));
    }
  }

  // From the source at that place.
  void write(uint8_t *frame, uint64_t index, size_t source) const {
    Address to = host(is_back_ ? 1 : 2), from = host(is_back_ ? 2 : 1);
    if (!targets_.empty()) {
      const Targets &own = targets_[source];
      from = host(own.from);
      to = host(own.to[index % own.to.size()]);
    }
    if (kind_ == "learn") from = station(first_ + index % stations_, seed_);
    if (kind_ == "ask") to = station(first_ + index % stations_, seed_);
    if (kind_ == "broadcast") to.fill(0xff);
    memcpy(frame, to.data(), to.size());
    memcpy(frame + to.size(), from.data(), from.size());
  }

 private:
  struct Targets {
    uint8_t from;
    std::vector<uint8_t> to;
  };

  std::string kind_;
  std::vector<Targets> targets_;  // of each source; none: the first and the second host
  uint64_t stations_;
  uint64_t first_;
  uint64_t seed_;
  bool is_back_;
};

void write_type(uint8_t *frame, uint16_t type) {
  frame[12] = static_cast<uint8_t>(type >> 8);
  frame[13] = static_cast<uint8_t>(type);
}

// The receivers of frames with a stamp.
class Stamps {
 public:
  explicit Stamps(const std::vector<std::string> &interfaces) {
    const int yes = 1;
    for (const std::string &name : interfaces) {
      sockets_.push_back(packet_socket(name, kStampType));
      setsockopt(sockets_.back(), SOL_SOCKET, SO_TIMESTAMPNS, &yes, sizeof yes);
    }
    // The kernel begins to stamp a moment later; a frame without a stamp would get that of
    // its reading.
    if (!sockets_.empty()) usleep(kQuiet);
  }

  bool is_due() const { return !sockets_.empty() && now() >= next_; }

  void put_on(std::vector<uint8_t> &frame) {
    next_ = now() + kStampEvery;
    write_type(frame.data(), kStampType);
    const double stamp = now(CLOCK_REALTIME);
    memcpy(frame.data() + 14, &stamp, sizeof stamp);
  }

  void take() {
    for (const int socket : sockets_)
      while (take(socket)) {
      }
  }

  std::vector<double> sorted() {
    take();
    std::sort(times_.begin(), times_.end());
    return times_;
  }

 private:
  bool take(int socket) {
    uint8_t frame[64];
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(timespec))];
    iovec part = {frame, sizeof frame};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    if (recvmsg(socket, &message, MSG_DONTWAIT) < 14 + static_cast<ssize_t>(sizeof(double)))
      return false;
    const cmsghdr *about = CMSG_FIRSTHDR(&message);
    if (about == nullptr || about->cmsg_type != SCM_TIMESTAMPNS) fail("no stamp of a frame");
    timespec arrival = {};
    double departure = 0;
    memcpy(&arrival, CMSG_DATA(about), sizeof arrival);
    memcpy(&departure, frame + 14, sizeof departure);
    times_.push_back((seconds_of(arrival) - departure) * 1e6);
    return true;
  }

  std::vector<int> sockets_;
  std::vector<double> times_;
  double next_ = 0;
};

class Sender {
 public:
  Sender(const Words &words, Stamps &stamps)
      : stamps_(stamps),
        route_(words),
        most_(static_cast<uint64_t>(number(words, "frames", 1e18))),
        seconds_(number(words, "seconds", 3600)),
        rate_(number(words, "rate", 0)),
        frames_(kBatch,
                std::vector<uint8_t>(static_cast<size_t>(number(words, "bytes", 60)), 0x55)),
        parts_(kBatch),
        messages_(kBatch) {
    const int yes = 1;
    for (const std::string &name : names(words, "from")) {
      sockets_.push_back(packet_socket(name, 0));
      setsockopt(sockets_.back(), SOL_PACKET, PACKET_QDISC_BYPASS, &yes, sizeof yes);
    }
    if (sockets_.empty()) fail("from");
    for (size_t place = 0; place < kBatch; ++place) {
      write_type(frames_[place].data(), kType);
      parts_[place] = {frames_[place].data(), frames_[place].size()};
      messages_[place].msg_hdr.msg_iov = &parts_[place];
      messages_[place].msg_hdr.msg_iovlen = 1;
    }
  }

  void run() {
    begin_ = now();
    schedule_ = begin_;
    while (sent_ < most_ && now() - begin_ < seconds_)
      if (const uint64_t due = due_frames(); due > 0) send(due);
    end_ = now();
  }

  uint64_t sent() const { return sent_; }
  double time() const { return end_ - begin_; }

 private:
  // Frames that are late because the sender had to wait for a processor are not made up
  // for: they would be a burst, which the trial does not ask for.
  uint64_t due_frames() {
    const uint64_t most = std::min<uint64_t>(most_ - sent_, kBatch);
    if (rate_ <= 0) return most;
    const double late = (now() - schedule_) * rate_ - static_cast<double>(sent_);
    if (late < 0) {
      if (-late / rate_ > kNap) usleep(static_cast<useconds_t>(kNap * 1e6 / 2));
      return 0;
    }
    if (late > kBatch) schedule_ += (late - kBatch) / rate_;
    return std::min(most, static_cast<uint64_t>(late) + 1);
  }

  void send(uint64_t count) {
    const bool stamped = stamps_.is_due();
    if (stamped) {
      stamps_.take();
      count = 1;
    }
    const size_t source = turns_++ % sockets_.size();
    for (size_t place = 0; place < count; ++place)
      route_.write(frames_[place].data(), sent_ + place, source);
    if (stamped) stamps_.put_on(frames_[0]);
    const int done = sendmmsg(sockets_[source], messages_.data(), static_cast<unsigned>(count), 0);
    if (done > 0) sent_ += static_cast<uint64_t>(done);
    if (stamped) write_type(frames_[0].data(), kType);
  }

  Stamps &stamps_;
  Route route_;
  std::vector<int> sockets_;
  uint64_t turns_ = 0;
  uint64_t most_;
  double seconds_;
  double rate_;
  std::vector<std::vector<uint8_t>> frames_;
  std::vector<iovec> parts_;
  std::vector<mmsghdr> messages_;
  uint64_t sent_ = 0;
  double begin_ = 0;
  double schedule_ = 0;  // when frames that are sent at the rate would have begun
  double end_ = 0;
};

// The counters once nothing more comes.
std::map<std::string, uint32_t> settled_frames() {
  const double end = now() + kResidual;
  auto last = received_frames();
  for (;;) {
    usleep(kQuiet);
    auto next = received_frames();
    if (next == last || now() > end) return next;
    last = std::move(next);
  }
}

void print_latency(const std::vector<double> &times) {
  if (times.empty()) return;
  double sum = 0;
  for (const double time : times) sum += time;
  const auto at = [&](double part) {
    return times[static_cast<size_t>(part * static_cast<double>(times.size() - 1))];
  };
  printf(
      ",\"latency\":{\"count\":%zu,\"least\":%.2f,\"mean\":%.2f,\"median\":%.2f,"
      "\"p99\":%.2f,\"most\":%.2f}",
      times.size(), at(0), sum / static_cast<double>(times.size()), at(0.5), at(0.99), at(1));
}

Words words_of(int argc, char **argv) {
  Words words;
  for (int place = 1; place < argc; ++place) {
    const std::string argument = argv[place];
    const size_t equals = argument.find('=');
    if (equals == std::string::npos) {
      fprintf(stderr, "trial: \"%s\" is no NAME=VALUE\n", argv[place]);
      exit(1);
    }
    words[argument.substr(0, equals)] = argument.substr(equals + 1);
  }
  return words;
}

}  // namespace

int main(int argc, char **argv) {
  const Words words = words_of(argc, argv);
  Stamps stamps(names(words, "stamps"));
  Sender sender(words, stamps);
  auto before = received_frames();
  sender.run();
  auto after = settled_frames();
  printf("{\"sent\":%llu,\"seconds\":%.6f,\"received\":{",
         static_cast<unsigned long long>(sender.sent()), sender.time());
  const char *comma = "";
  for (const std::string &name : names(words, "count")) {
    printf("%s\"%s\":%u", comma, name.c_str(), after[name] - before[name]);
    comma = ",";
  }
  printf("}");
  print_latency(stamps.sorted());
  printf("}\n");
  return 0;
}
