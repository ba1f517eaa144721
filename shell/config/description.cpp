// SPDX-License-Identifier: MIT
#include "config/description.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "chip/optional_call.h"
#include "config/store.h"
#include "fault.h"
#include "text.h"

namespace swsh {
namespace {

constexpr ptrdiff_t kMostCharacters = 64;

// How many bytes go on with a character that begins so; none begins with what has no answer.
std::optional<size_t> bytes_after(unsigned char first) {
  if (first < 0x80) return 0;
  if (first >= 0xc2 && first < 0xe0) return 1;
  if (first >= 0xe0 && first < 0xf0) return 2;
  if (first >= 0xf0 && first < 0xf5) return 3;
  return std::nullopt;
}

// Longer than it need be, a surrogate, or beyond the last character.
bool is_no_character(unsigned char first, unsigned char second) {
  return (first == 0xe0 && second < 0xa0) || (first == 0xed && second >= 0xa0) ||
         (first == 0xf0 && second < 0x90) || (first == 0xf4 && second >= 0x90);
}

bool is_utf8(const std::string &text) {
  for (size_t at = 0; at < text.size();) {
    const auto first = static_cast<unsigned char>(text[at++]);
    const std::optional<size_t> more = bytes_after(first);
    if (!more || text.size() - at < *more) return false;
    if (*more > 0 && is_no_character(first, static_cast<unsigned char>(text[at]))) return false;
    for (const size_t end = at + *more; at < end; ++at)
      if ((text[at] & 0xc0) != 0x80) return false;
  }
  return true;
}

// The first control character: those of ASCII, and U+0080 to U+009F.
std::string control_in(const std::string &text) {
  for (size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x20 || byte == 0x7f) return "\"" + printable(text.substr(at, 1)) + "\"";
    const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : 0);
    if (byte == 0xc2 && next >= 0x80 && next < 0xa0) return "U+00" + hexadecimal(next).substr(2);
  }
  return "";
}

// The chip that a process has for itself: a virtual one without an image.
Descriptions &own_descriptions(uint32_t unit) {
  static std::map<uint32_t, Descriptions> all;
  return all[unit];
}

std::string image() {
  const char *path = getenv("VCHIP_IMAGE");
  return path == nullptr ? "" : path;
}

bool is_in_process() {
  return find_symbol("vchip_reset") != nullptr && image().empty();
}

// An image is known by its file, so that one made in the place of another has nothing of it:
// by the time of its making too, since the numbers of files come again.
std::string image_name() {
  struct statx file = {};
  if (statx(AT_FDCWD, image().c_str(), 0, STATX_INO | STATX_BTIME, &file) != 0) return "none";
  const uint64_t numbers[] = {file.stx_dev_major, file.stx_dev_minor, file.stx_ino,
                              static_cast<uint64_t>(file.stx_btime.tv_sec), file.stx_btime.tv_nsec};
  std::string name;
  for (const uint64_t number : numbers) name += (name.empty() ? "" : "-") + std::to_string(number);
  return name;
}

std::string file_name() {
  const bool is_virtual = find_symbol("vchip_reset") != nullptr;
  return is_virtual ? "descriptions-of-image-" + image_name() : "descriptions";
}

CommandError unusable(const std::string &path, const char *what) {
  Fault fault;
  fault.status = kRefused;
  fault.message = in_quotes(path) + ' ' + what + ": " + strerror(errno);
  fault.culprit = path;
  return CommandError(fault);
}

Descriptions read_from(const std::string &path) {
  Descriptions all;
  if (access(path.c_str(), R_OK) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) return all;
    throw unusable(path, "cannot be read");
  }
  std::ifstream file(path);
  int64_t interface = 0;
  for (std::string text; file >> interface && file.get() && std::getline(file, text);)
    all[interface] = text;
  return all;
}

std::string text_for_file(const Descriptions &all) {
  std::string text;
  for (const auto &[interface, description] : all)
    text += std::to_string(interface) + ' ' + description + '\n';
  return text;
}

// Another program that changes a description waits meanwhile.
class LockedDirectory {
 public:
  explicit LockedDirectory(const std::string &path)
      : descriptor_(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0) throw unusable(path, "cannot be opened");
    while (flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  ~LockedDirectory() { close(descriptor_); }
  LockedDirectory(const LockedDirectory &) = delete;
  LockedDirectory &operator=(const LockedDirectory &) = delete;

 private:
  int descriptor_;
};

void put(Descriptions &all, int64_t interface, const std::string &text) {
  if (text.empty()) {
    all.erase(interface);
  } else {
    all[interface] = text;
  }
}

}  // namespace

void expect_description(const std::string &text) {
  const auto refuse = [&](const std::string &why) {
    throw CommandError(wrong_usage("bad value " + in_quotes(text) + " of description: " + why, text,
                                   {"up to 64 characters without control characters"}));
  };
  if (!is_utf8(text)) refuse("it is not UTF-8");
  const std::string control = control_in(text);
  if (!control.empty()) refuse(control + " is a control character");
  const auto characters =
      std::ranges::count_if(text, [](char each) { return (each & 0xc0) != 0x80; });
  if (characters > kMostCharacters) refuse(std::to_string(characters) + " characters are too many");
}

Descriptions read_descriptions(uint32_t unit) {
  if (is_in_process()) return own_descriptions(unit);
  return read_from(unit_path(unit) + '/' + file_name());
}

void set_description(uint32_t unit, int64_t interface, const std::string &text) {
  if (is_in_process()) return put(own_descriptions(unit), interface, text);
  const std::string path = unit_path(unit) + '/' + file_name();
  if (text.empty() && !read_from(path).contains(interface)) return;
  const LockedDirectory locked(unit_directory(unit));
  Descriptions all = read_from(path);
  put(all, interface, text);
  write_whole(path, text_for_file(all));
}

std::string description_word(const std::string &text) {
  std::string word = "\"";
  for (const char each : text) {
    if (each == '"' || each == '\\') word += '\\';
    word += each;
  }
  return word + '"';
}

}  // namespace swsh
