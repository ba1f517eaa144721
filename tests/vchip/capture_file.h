// SPDX-License-Identifier: MIT
// Captures for tests, written byte by byte.
#ifndef SWCTL_TESTS_VCHIP_CAPTURE_FILE_H
#define SWCTL_TESTS_VCHIP_CAPTURE_FILE_H

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

constexpr uint32_t kEthernet = 1;

// A broadcast of 60 bytes from 02:00:00:00:00:01 with a type of no protocol,
// told from others by its last byte.
inline std::vector<uint8_t> broadcast(uint8_t last) {
  std::vector<uint8_t> frame(60, 0);
  for (size_t place = 0; place < 6; ++place) frame[place] = 0xff;
  frame[6] = 0x02;
  frame[11] = 0x01;
  frame[12] = 0x88;
  frame[13] = 0xb5;
  frame[59] = last;
  return frame;
}

// A file of pcap with stamps in nanoseconds, in the byte order of this machine.
class CaptureFile {
 public:
  explicit CaptureFile(uint32_t link_type = kEthernet) {
    word(0xa1b23c4d);
    word(2u | 4u << 16);
    word(0);
    word(0);
    word(65535);
    word(link_type);
  }
  // `length` is what the frame had on the wire, if the capture has less of it.
  CaptureFile &add(uint64_t time, const std::vector<uint8_t> &frame, uint32_t length = 0) {
    word(static_cast<uint32_t>(time / 1000000000));
    word(static_cast<uint32_t>(time % 1000000000));
    word(static_cast<uint32_t>(frame.size()));
    word(length != 0 ? length : static_cast<uint32_t>(frame.size()));
    bytes_.append(frame.begin(), frame.end());
    return *this;
  }
  // Writes all but the last bytes.
  std::string write(const std::string &file, size_t without = 0) const {
    std::ofstream(file, std::ios::binary)
        .write(bytes_.data(), static_cast<std::streamsize>(bytes_.size() - without));
    return file;
  }

 private:
  void word(uint32_t value) { bytes_.append(reinterpret_cast<const char *>(&value), sizeof value); }

  std::string bytes_;
};

#endif
