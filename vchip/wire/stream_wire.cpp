// SPDX-License-Identifier: MIT
#include "stream_wire.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <sys/uio.h>
#include <sys/un.h>

#include "cable.h"
#include "fault.h"
#include "loop.h"
#include "os/descriptor.h"

namespace vchipd {
namespace {

constexpr size_t kLengthBytes = 4;
// With the sockets' own buffers these are what a port may take: a megabyte.
constexpr size_t kInboxBytes = 128 * 1024;
constexpr size_t kBacklogBytes = 256 * 1024;
constexpr size_t kBacklogRoom = kBacklogBytes + kLengthBytes + VCHIP_FRAME_MAX;
constexpr long kRetryNanoseconds = 250'000'000;

uint32_t read_length(const uint8_t *bytes) {
  return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

void write_length(uint8_t *bytes, uint32_t length) {
  for (int place = 0; place < 4; ++place)
    bytes[place] = static_cast<uint8_t>(length >> (24 - 8 * place));
}

// Where the stream's ends meet.
struct Address {
  std::string text;
  std::string path;  // of a socket file; empty for TCP
  sockaddr_storage bytes = {};
  socklen_t size = 0;

  const sockaddr *get() const { return reinterpret_cast<const sockaddr *>(&bytes); }
};

os::Descriptor new_socket(const Address &address) {
  os::Descriptor socket_(
      socket(address.bytes.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket_) throw system_fault(address.text);
  return socket_;
}

void make_quick(int descriptor, const Address &address) {
  const int yes = 1;
  if (address.path.empty()) setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

// The part of a stream that has been read and not yet taken.
class Inbox {
 public:
  Inbox() : bytes_(kInboxBytes) {}

  void clear() { begin_ = end_ = 0; }
  // Takes one more frame if it is there whole. Its memory stays until fill().
  const uint8_t *next(uint32_t &length) {
    if (end_ - begin_ < kLengthBytes) return nullptr;
    length = read_length(bytes_.data() + begin_);
    if (end_ - begin_ - kLengthBytes < length) return nullptr;
    const uint8_t *frame = bytes_.data() + begin_ + kLengthBytes;
    begin_ += kLengthBytes + length;
    return frame;
  }
  bool has_frame() const {
    const size_t there = end_ - begin_;
    return there >= kLengthBytes && there - kLengthBytes >= read_length(bytes_.data() + begin_);
  }
  // No frame of that length fits: what comes is no such stream.
  bool is_nonsense() const {
    return end_ - begin_ >= kLengthBytes &&
           read_length(bytes_.data() + begin_) > kInboxBytes - kLengthBytes;
  }
  // Reads more; false at the end of the stream.
  bool fill(int descriptor) {
    memmove(bytes_.data(), bytes_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const ssize_t count = read(descriptor, bytes_.data() + end_, bytes_.size() - end_);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    end_ += static_cast<size_t>(count);
    return count > 0;
  }

 private:
  std::vector<uint8_t> bytes_;
  size_t begin_ = 0;
  size_t end_ = 0;
};

class StreamWire : public Wire {
 public:
  StreamWire(Address address, const Place &place)
      : address_(std::move(address)), unit_(place.unit), port_(place.port) {}
  ~StreamWire() override {
    disconnect();
    stop_listening();
    if (timer_) loop_->forget(timer_.get());
  }

  void start(Loop &loop, Socket &socket) override;
  bool receive(Arrivals &arrivals, uint32_t most) override;
  void send(const vchip_frame_t *frames, uint32_t count) override;
  bool has_backlog() const override { return !backlog_.empty(); }
  std::string note() const override;
  void links_are(uint32_t) override { tell(); }
  vchip_partner_t partner() const override { return far_ ? far_->partner : Wire::partner(); }

 private:
  void meet();
  // Whether somebody listens at the address.
  enum class Answer { here, nobody, busy };
  void look_for_partner();
  Answer try_to_connect();
  bool try_to_listen();
  void remove_leftover();
  void retry_later();
  void connection_made();
  void accept_one();
  void take_connection(os::Descriptor connection);
  void disconnect();
  void stop_listening();
  void lost_connection();
  void connection_event(uint32_t events);
  void collect(Arrivals &arrivals, uint32_t most);
  void keep(size_t written);
  void flush();

  void tell();
  void hear(const CableEnd &end);

  const Address address_;
  const uint32_t unit_;
  const int32_t port_;
  std::optional<CableEnd> told_;  // to the other end
  std::optional<CableEnd> far_;   // what it has told
  Loop *loop_ = nullptr;
  Socket *socket_ = nullptr;
  os::Descriptor listener_;
  os::Descriptor connection_;
  os::Descriptor timer_;
  bool connecting_ = false;
  Inbox inbox_;
  std::vector<uint8_t> backlog_;
  std::vector<iovec> parts_;
};

void StreamWire::start(Loop &loop, Socket &socket) {
  loop_ = &loop;
  socket_ = &socket;
  timer_ = os::Descriptor(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
  if (!timer_) throw system_fault("timerfd_create");
  loop.watch(timer_.get(), EPOLLIN, [this](uint32_t) {
    uint64_t ignored = 0;
    if (read(timer_.get(), &ignored, sizeof ignored) > 0) meet();
  });
  look_for_partner();
}

void StreamWire::retry_later() {
  itimerspec when = {};
  when.it_value.tv_nsec = kRetryNanoseconds;
  timerfd_settime(timer_.get(), 0, &when, nullptr);
}

void StreamWire::meet() {
  if (connection_ || listener_) return;
  try {
    look_for_partner();
  } catch (const Fault &) {
    // What is in the way when the wire begins is told; later it is tried again.
    retry_later();
  }
}

// Who comes first to the address listens there, who comes second connects.
void StreamWire::look_for_partner() {
  if (try_to_listen()) return;
  const Answer answer = try_to_connect();
  if (answer == Answer::here) return;
  if (answer == Answer::nobody && !address_.path.empty()) {
    remove_leftover();
    if (try_to_listen()) return;
  }
  retry_later();
}

// False: somebody has the address, or it is another machine's.
bool StreamWire::try_to_listen() {
  const int yes = 1;
  os::Descriptor listener = new_socket(address_);
  setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  if (bind(listener.get(), address_.get(), address_.size) != 0) {
    if (errno == EADDRINUSE || errno == EADDRNOTAVAIL) return false;
    throw system_fault(address_.text);
  }
  if (listen(listener.get(), 1) != 0) {
    if (errno == EADDRINUSE) return false;
    throw system_fault(address_.text);
  }
  listener_ = std::move(listener);
  loop_->watch(listener_.get(), EPOLLIN, [this](uint32_t) { accept_one(); });
  return true;
}

StreamWire::Answer StreamWire::try_to_connect() {
  os::Descriptor connection = new_socket(address_);
  const int result = connect(connection.get(), address_.get(), address_.size);
  if (result != 0 && (errno == EACCES || errno == EPERM)) throw system_fault(address_.text);
  if (result != 0 && errno == EAGAIN) return Answer::busy;
  if (result != 0 && errno != EINPROGRESS) return Answer::nobody;
  connecting_ = result != 0;
  connection_ = std::move(connection);
  loop_->watch(connection_.get(), connecting_ ? EPOLLOUT : EPOLLIN,
               [this](uint32_t events) { connection_event(events); });
  if (!connecting_) connection_made();
  return Answer::here;
}

// Of a process that was killed.
void StreamWire::remove_leftover() {
  struct stat status = {};
  if (stat(address_.path.c_str(), &status) != 0) return;
  if (!S_ISSOCK(status.st_mode))
    throw Fault(address_.text + ": there is a file of that name, and it is no socket");
  unlink(address_.path.c_str());
}

void StreamWire::accept_one() {
  os::Descriptor connection(
      accept4(listener_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  // A cable has two ends: a third is turned away.
  if (!connection || connection_) return;
  connection_ = std::move(connection);
  loop_->watch(connection_.get(), EPOLLIN, [this](uint32_t events) { connection_event(events); });
  connection_made();
}

void StreamWire::connection_made() {
  connecting_ = false;
  make_quick(connection_.get(), address_);
  inbox_.clear();
  socket_->carrier_is(true);
  tell();
}

// The other end is told once, and when something has changed. One that is no vchipd
// drops it as any MAC control that it does not know.
void StreamWire::tell() {
  if (!connection_ || connecting_ || port_ == VCHIP_CPU_PORT) return;
  const CableEnd end = cable_end(unit_, port_);
  if (told_ == end) return;
  told_ = end;
  const CableFrame frame = write_cable_frame(end);
  uint8_t length[kLengthBytes];
  write_length(length, kCableFrameBytes);
  backlog_.insert(backlog_.end(), std::begin(length), std::end(length));
  backlog_.insert(backlog_.end(), frame.begin(), frame.end());
  loop_->change(connection_.get(), EPOLLIN | EPOLLOUT);
  flush();
}

void StreamWire::hear(const CableEnd &end) {
  if (far_ == end) return;
  far_ = end;
  if (end.on) socket_->partner_is_new();
  socket_->carrier_is(end.on);
}

void StreamWire::disconnect() {
  if (!connection_) return;
  loop_->forget(connection_.get());
  connection_.reset();
  connecting_ = false;
  told_.reset();
  far_.reset();
  backlog_.clear();
  inbox_.clear();
}

void StreamWire::stop_listening() {
  if (!listener_) return;
  loop_->forget(listener_.get());
  listener_.reset();
  if (!address_.path.empty()) unlink(address_.path.c_str());
}

void StreamWire::lost_connection() {
  disconnect();
  socket_->carrier_is(false);
  if (!listener_) retry_later();
}

void StreamWire::connection_event(uint32_t events) {
  if (connecting_) {
    int fault = 0;
    socklen_t size = sizeof fault;
    getsockopt(connection_.get(), SOL_SOCKET, SO_ERROR, &fault, &size);
    if (fault != 0) {
      disconnect();
      return retry_later();
    }
    loop_->change(connection_.get(), EPOLLIN);
    connection_made();
    return;
  }
  if ((events & EPOLLOUT) != 0) flush();
  if (connection_ && (events & ~static_cast<uint32_t>(EPOLLOUT)) != 0) socket_->frames_came();
}

void StreamWire::collect(Arrivals &arrivals, uint32_t most) {
  uint32_t length = 0;
  while (arrivals.size() < most) {
    const uint8_t *frame = inbox_.next(length);
    if (frame == nullptr) return;
    if (may_be_cable_frame(frame, length)) {
      if (const std::optional<CableEnd> end = read_cable_frame(frame, length)) {
        hear(*end);
        continue;
      }
    }
    if (is_frame_length(length)) {
      arrivals.push_back({frame, length, 0});
      ++counts_.received;
    } else {
      ++counts_.unusable;
    }
  }
}

bool StreamWire::receive(Arrivals &arrivals, uint32_t most) {
  if (!connection_ || connecting_) return false;
  if (!inbox_.has_frame() && !inbox_.is_nonsense() && !inbox_.fill(connection_.get())) {
    lost_connection();
    return false;
  }
  collect(arrivals, most);
  if (inbox_.is_nonsense()) {
    lost_connection();
    return false;
  }
  return inbox_.has_frame();
}

void StreamWire::send(const vchip_frame_t *frames, uint32_t count) {
  if (!connection_ || connecting_) {
    counts_.lost += count;
    return;
  }
  parts_.clear();
  size_t total = 0;
  for (uint32_t place = 0; place < count; ++place) {
    uint8_t *begin = frames[place].bytes - kLengthBytes;
    write_length(begin, frames[place].length);
    parts_.push_back({begin, kLengthBytes + frames[place].length});
    total += parts_.back().iov_len;
  }
  ssize_t written = 0;
  if (backlog_.empty()) {
    msghdr message = {};
    message.msg_iov = parts_.data();
    message.msg_iovlen = parts_.size();
    written = sendmsg(connection_.get(), &message, MSG_NOSIGNAL | MSG_DONTWAIT);
  }
  if (static_cast<size_t>(std::max<ssize_t>(written, 0)) == total) {
    counts_.sent += count;
    return;
  }
  keep(static_cast<size_t>(std::max<ssize_t>(written, 0)));
}

// What the other end has no room for now waits here, up to a limit; what is beyond
// it is lost, but never a part of a frame.
void StreamWire::keep(size_t written) {
  backlog_.reserve(kBacklogRoom);  // to grow step by step would leave holes in the heap
  for (const iovec &part : parts_) {
    const size_t skipped = std::min(written, part.iov_len);
    written -= skipped;
    const bool begun = skipped != 0;
    if (!begun && backlog_.size() + part.iov_len > kBacklogBytes) {
      ++counts_.lost;
      continue;
    }
    const auto *bytes = static_cast<const uint8_t *>(part.iov_base);
    backlog_.insert(backlog_.end(), bytes + skipped, bytes + part.iov_len);
    ++counts_.sent;
  }
  if (!backlog_.empty()) loop_->change(connection_.get(), EPOLLIN | EPOLLOUT);
}

void StreamWire::flush() {
  const ssize_t written =
      ::send(connection_.get(), backlog_.data(), backlog_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  if (written < 0) return;
  backlog_.erase(backlog_.begin(), backlog_.begin() + written);
  if (backlog_.empty()) loop_->change(connection_.get(), EPOLLIN);
}

std::string StreamWire::note() const {
  if (connection_ && !connecting_) return listener_ ? "listening, connected" : "connected";
  return listener_ ? "listening" : "connecting";
}

Address unix_address(const std::string &path) {
  sockaddr_un bytes = {};
  bytes.sun_family = AF_UNIX;
  Address address;
  address.text = "unix:" + path;
  address.path = path;
  if (path.empty()) throw WrongWords("unix: needs the path of a socket");
  if (path.size() >= sizeof bytes.sun_path)
    throw WrongWords(address.text + ": the name is too long: " + std::to_string(path.size()) +
                     " characters, at most " + std::to_string(sizeof bytes.sun_path - 1));
  memcpy(bytes.sun_path, path.c_str(), path.size());
  memcpy(&address.bytes, &bytes, sizeof bytes);
  address.size = sizeof bytes;
  return address;
}

Address tcp_address(const std::string &rest) {
  const size_t colon = rest.rfind(':');
  Address address;
  address.text = "tcp:" + rest;
  if (colon == rest.npos || colon == 0 || colon + 1 == rest.size())
    throw WrongWords(address.text + ": expected tcp:ADDR:PORT");
  std::string host = rest.substr(0, colon);
  if (host.front() == '[' && host.back() == ']') host = host.substr(1, host.size() - 2);
  addrinfo hints = {};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV;
  addrinfo *found = nullptr;
  const int fault = getaddrinfo(host.c_str(), rest.c_str() + colon + 1, &hints, &found);
  if (fault != 0) throw Fault(address.text + ": " + gai_strerror(fault));
  memcpy(&address.bytes, found->ai_addr, found->ai_addrlen);
  address.size = found->ai_addrlen;
  freeaddrinfo(found);
  return address;
}

}  // namespace

std::unique_ptr<Wire> make_unix_wire(const std::string &rest, const Place &place) {
  return std::make_unique<StreamWire>(unix_address(rest), place);
}

std::unique_ptr<Wire> make_tcp_wire(const std::string &rest, const Place &place) {
  return std::make_unique<StreamWire>(tcp_address(rest), place);
}

}  // namespace vchipd
