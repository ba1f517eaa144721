// SPDX-License-Identifier: MIT
// Files that are written a whole line at a time.
#ifndef SWCTL_PROBE_LINE_FILE_H
#define SWCTL_PROBE_LINE_FILE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace swprobe {

// When a file becomes an old one, FILE.1, and how many of those are kept; the
// one before is FILE.2 then, and so on.
struct Rotation {
  uint64_t size = 0;  // bytes; 0 is never
  unsigned keep = 4;
};

class LineFile {
 public:
  // Standard error.
  LineFile();
  // Creates or empties the file; "%p" in its name becomes the process id, so
  // that each process has a file of its own, a child of fork() too. Every file
  // begins with `header`, if there is one. Throws std::runtime_error naming the
  // file.
  explicit LineFile(const std::string &name, const Rotation &rotation = {},
                    const std::string &header = {});
  ~LineFile();
  LineFile(LineFile &&other) noexcept;
  LineFile &operator=(LineFile &&) = delete;

  // Adds the line end. One write(2), so that lines of several processes do not
  // mix and a crash loses none. After a failed write it says so on standard
  // error and writes no more.
  void write(std::string_view line);

  // What a child of fork() is told before it writes its first line.
  static void in_child();

 private:
  bool is_file() const { return !path_.empty(); }
  void begin();
  void put(std::string_view line);
  void rotate();
  bool was_rotated() const;
  bool reopen(int flags);
  void follow_process();
  void give_up(int error);

  std::string name_;  // with its "%p"
  std::string path_;  // empty for standard error
  Rotation rotation_;
  std::string header_;
  unsigned process_;  // which one it was opened by
  int descriptor_;
  uint64_t size_ = 0;
  std::string buffer_;  // the line with its end
};

// "%p" as the process id.
std::string with_process_id(std::string path);

// One line to standard error, "swprobe: " in front.
void complain(const std::string &what);
// The same, and the process ends with this status.
[[noreturn]] void refuse(const std::string &what, int status = 1);

}  // namespace swprobe

#endif
