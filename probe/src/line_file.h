// SPDX-License-Identifier: MIT
// Files that are written a whole line at a time.
#ifndef SWCTL_PROBE_LINE_FILE_H
#define SWCTL_PROBE_LINE_FILE_H

#include <string>

namespace swprobe {

class LineFile {
 public:
  // Standard error.
  LineFile();
  // Creates or empties the file; "%p" in its name becomes the process id.
  // Throws std::runtime_error naming the file.
  explicit LineFile(const std::string &path);
  ~LineFile();
  LineFile(LineFile &&other) noexcept;
  LineFile &operator=(LineFile &&) = delete;

  // Adds the line end. One write(2), so that lines of several processes do not
  // mix and a crash loses none. After a failed write it says so on standard
  // error and writes no more.
  void write(std::string line);

 private:
  std::string path_;
  int descriptor_;
};

// One line to standard error, "swprobe: " in front.
void complain(const std::string &what);
// The same, and the process ends with status 1.
[[noreturn]] void refuse(const std::string &what);

}  // namespace swprobe

#endif
