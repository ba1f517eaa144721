// SPDX-License-Identifier: MIT
// Image files: made complete or not at all, looked at before they are trusted,
// never changed when refused.
#ifndef VCHIP_IMAGE_IMAGE_H
#define VCHIP_IMAGE_IMAGE_H

#include <cstdint>
#include <string>

namespace vchip {

// What this build of the library expects of an image.
struct ImageFormat {
  uint32_t size;
  uint32_t layout;
  uint32_t mapped = 0;  // bytes, from the first on
  // Writes a whole new image, header included, into `size` bytes of zeroes.
  void (*make)(void *memory) = nullptr;
};

struct OpenedImage {
  void *memory = nullptr;  // the mapped file; null if the image is refused
  int descriptor = -1;     // of the file, open as long as it is mapped
  std::string refusal;     // why, without the file's name
  bool made = false;       // there was no such file
};

// Maps the image `path`, making it first if there is no such file.
OpenedImage open_image(const std::string &path, const ImageFormat &format);

// Makes an image of these bytes under a name that there is not. Answers why not;
// empty: done.
std::string write_new_image(const std::string &path, const void *memory, size_t size);

// Opens the file for reading and writing, without a look at it.
int open_descriptor(const std::string &path);

// Maps the header of the image `path`, which exists, for reading.
OpenedImage view_image(const std::string &path, const ImageFormat &format);

}  // namespace vchip

#endif
