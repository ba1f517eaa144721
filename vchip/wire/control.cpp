// SPDX-License-Identifier: MIT
#include "control.h"

#include <swctl-vchip/wires.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "fault.h"
#include "live_captures.h"
#include "os/json.h"
#include "panel.h"
#include "wire_words.h"

namespace vchipd {
namespace {

using os::Json;

constexpr size_t kLongestRequest = 8192;

// Through the directory, so that it may have a longer name than an address has room
// for.
sockaddr_un address_of(const std::filesystem::path &path, const os::Descriptor &directory) {
  const std::string name =
      "/proc/self/fd/" + std::to_string(directory.get()) + "/" + path.filename().string();
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (name.size() >= sizeof address.sun_path)
    throw Fault(path.string() + ": the name is too long for a socket");
  name.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

os::Descriptor listen_at(const std::string &path) {
  const std::filesystem::path whole = std::filesystem::absolute(path);
  const os::Descriptor directory(open(whole.parent_path().c_str(), O_PATH | O_CLOEXEC));
  const sockaddr_un address = address_of(whole, directory);
  os::Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  // What a killed process has left; this one has the claim.
  unlink(path.c_str());
  if (!directory || !listener ||
      bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
      listen(listener.get(), SOMAXCONN) != 0)
    throw system_fault(path);
  return listener;
}

Json row_json(const Panel::Row &row) {
  return {{"port", row.port},
          {"wire", row.word},
          {"carrier", row.carrier},
          {"note", row.note},
          {"received", row.counts.received},
          {"sent", row.counts.sent},
          {"lost", row.counts.lost},
          {"unusable", row.counts.unusable},
          {"missed", row.counts.missed}};
}

Json list_wires(const Panel &panel) {
  Json rows = Json::array();
  for (const Panel::Row &row : panel.rows()) rows.push_back(row_json(row));
  return {{"wires", rows}};
}

void expect_port(int32_t port) {
  if (port < 0 || port >= VCHIP_PORTS) throw Fault("no port " + std::to_string(port));
}

Json change_wire(Panel &panel, const Json &request) {
  const int32_t port = request.at("port");
  const std::string word = request.at("wire");
  expect_port(port);
  if (word != "none") {
    panel.plug(port, word);
  } else {
    panel.unplug(port);
  }
  return Json::object();
}

Json pass_time(Panel &panel, const Json &request) {
  if (!panel.clock().is_virtual()) return {{"moved", false}};
  const uint64_t nanoseconds = request.at("nanoseconds");
  panel.clock().advance_to(panel.clock().now() + nanoseconds);
  panel.serve();
  return {{"moved", true}};
}

CaptureWords capture_words(const Json &request) {
  CaptureWords words;
  for (const int32_t port : request.value("ports", std::vector<int32_t>())) {
    expect_port(port);
    words.ports |= 1u << port;
  }
  words.filter = request.value("filter", "");
  words.drops = request.value("drops", false);
  words.count = request.value("count", uint64_t{0});
  return words;
}

}  // namespace

Control::Control(Loop &loop, Panel &panel, LiveCaptures &captures, const std::string &image,
                 uint32_t unit)
    : loop_(loop),
      panel_(panel),
      captures_(captures),
      path_(vchip::wires_socket(image, unit)),
      listener_(listen_at(path_)) {
  loop_.watch(listener_.get(), EPOLLIN, [this](uint32_t) { accept_caller(); });
}

Control::~Control() {
  for (const auto &[descriptor, caller] : callers_) loop_.forget(descriptor);
  loop_.forget(listener_.get());
  unlink(path_.c_str());
}

void Control::accept_caller() {
  os::Descriptor connection(
      accept4(listener_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (!connection) return;
  const int descriptor = connection.get();
  callers_[descriptor] = {std::move(connection), ""};
  loop_.watch(descriptor, EPOLLIN, [this, descriptor](uint32_t) { hear(descriptor); });
}

void Control::hang_up(int descriptor) {
  take(descriptor);
}

// The connection is no caller's any more.
os::Descriptor Control::take(int descriptor) {
  loop_.forget(descriptor);
  os::Descriptor connection = std::move(callers_.at(descriptor).connection);
  callers_.erase(descriptor);
  return connection;
}

void Control::hear(int descriptor) {
  char bytes[1024];
  std::string &request = callers_.at(descriptor).request;
  const ssize_t size = read(descriptor, bytes, sizeof bytes);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (size <= 0) return hang_up(descriptor);
  request.append(bytes, static_cast<size_t>(size));
  const size_t end = request.find('\n');
  if (end == request.npos && request.size() <= kLongestRequest) return;
  const std::string reply = answer(request.substr(0, end)) + "\n";
  // An answer is far smaller than what a socket has room for.
  send(descriptor, reply.data(), reply.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  os::Descriptor connection = take(descriptor);
  if (begun_) captures_.begin(std::move(begun_), std::move(connection));
}

Json Control::perform(const Json &request) {
  const std::string what = request.at("do");
  if (what == "wires") return list_wires(panel_);
  if (what == "wire") return change_wire(panel_, request);
  if (what == "time") return pass_time(panel_, request);
  if (what != "capture") throw Fault("no request '" + what + "'");
  begun_ = captures_.make(capture_words(request));
  return Json::object();
}

std::string Control::answer(const std::string &request) {
  Json reply;
  try {
    reply = perform(os::parse_json(request));
  } catch (const std::exception &fault) {
    reply = {{"error", fault.what()}};
  }
  return os::json_text(reply);
}

}  // namespace vchipd
