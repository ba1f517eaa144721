// SPDX-License-Identifier: MIT
#include "wires_client.h"

#include <swctl-vchip/wires.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

// Through its directory, which may have a longer name than an address has room for.
bool connect_to(int descriptor, const std::filesystem::path &path) {
  const os::Descriptor directory(
      open(std::filesystem::absolute(path).parent_path().c_str(), O_PATH | O_CLOEXEC));
  const std::string name =
      "/proc/self/fd/" + std::to_string(directory.get()) + "/" + path.filename().string();
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (name.size() >= sizeof address.sun_path) return false;
  name.copy(address.sun_path, sizeof address.sun_path - 1);
  return connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
}

bool send_all(int descriptor, const std::string &text) {
  for (size_t sent = 0; sent < text.size();) {
    const ssize_t count = send(descriptor, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) sent += static_cast<size_t>(count);
  }
  return true;
}

// The answer ends with the line; what follows it stays in the connection.
std::string receive_line(int descriptor) {
  std::string text;
  for (;;) {
    char byte = 0;
    const ssize_t count = read(descriptor, &byte, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0 || byte == '\n') return text;
    text += byte;
  }
}

std::string image_in_use() {
  const char *image = getenv("VCHIP_IMAGE");
  return image == nullptr ? "" : image;
}

// Asks, and reads the answer from the connection. False if no vchipd serves the unit.
bool ask(os::Descriptor &connection, uint32_t unit, const Json &request, Json &answer) {
  const std::string path = vchip::wires_socket(image_in_use(), unit);
  connection = os::Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!connect_to(connection.get(), path)) {
    if (errno == ENOENT || errno == ECONNREFUSED) return false;
    throw Refused(path + ": " + strerror(errno));
  }
  if (!send_all(connection.get(), os::json_text(request) + "\n"))
    throw Refused(path + ": " + strerror(errno));
  answer = os::try_parse_json(receive_line(connection.get()));
  if (!answer.is_object()) throw Refused(path + ": vchipd has ended without an answer");
  if (answer.contains("error")) throw Refused(answer["error"].get<std::string>());
  return true;
}

Refused not_served(uint32_t unit) {
  return Refused("image " + image_in_use() + ": no vchipd serves unit " + std::to_string(unit));
}

}  // namespace

std::optional<Json> ask_if_served(uint32_t unit, const Json &request) {
  os::Descriptor connection;
  Json answer;
  if (!ask(connection, unit, request, answer)) return std::nullopt;
  return answer;
}

Json ask_vchipd(uint32_t unit, const Json &request) {
  std::optional<Json> answer = ask_if_served(unit, request);
  if (!answer) throw not_served(unit);
  return *answer;
}

os::Descriptor follow_vchipd(uint32_t unit, const Json &request) {
  os::Descriptor connection;
  Json answer;
  if (!ask(connection, unit, request, answer)) throw not_served(unit);
  return connection;
}

}  // namespace vchipctl
