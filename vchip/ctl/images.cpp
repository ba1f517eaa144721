// SPDX-License-Identifier: MIT
#include "images.h"

#include <swctl-vchip/vchip.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

namespace fs = std::filesystem;

bool is_directory(const std::string &word) {
  std::error_code ignored;
  return fs::is_directory(word, ignored);
}

bool exists(const std::string &word) {
  std::error_code ignored;
  return fs::exists(word, ignored);
}

bool begins_as_image(const fs::directory_entry &entry) {
  std::error_code ignored;
  if (!entry.is_regular_file(ignored)) return false;
  const std::string expected = "SWVCHIP\n";
  std::string found(expected.size(), '\0');
  std::ifstream(entry.path(), std::ios::binary).read(found.data(), static_cast<long>(found.size()));
  return found == expected;
}

std::vector<std::string> images_in(const std::string &directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto &entry : fs::directory_iterator(directory, error))
    if (begins_as_image(entry)) names.push_back(entry.path());
  if (error) throw Refused("directory " + directory + ": " + error.message());
  if (names.empty()) throw Refused("directory " + directory + ": has no image");
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

bool names_many(const std::string &word) {
  return is_directory(word) || (word.find(',') != std::string::npos && !exists(word));
}

std::vector<std::string> find_images(const std::string &word) {
  if (is_directory(word)) return images_in(word);
  if (!names_many(word)) return {word};
  std::vector<std::string> names = split(word);
  if (std::find(names.begin(), names.end(), "") != names.end())
    throw UsageError("an empty name in the list of images '" + word + "'");
  return names;
}

const std::string &existing_image(const std::string &path) {
  if (!exists(path)) throw Refused("image " + path + ": there is no such file");
  return path;
}

void open_image(const std::string &path) {
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  vchip_close();
  if (const char *refusal = vchip_open()) throw Refused(refusal);
}

void for_each_image(const std::vector<std::string> &images,
                    const std::function<void(const std::string &)> &work) {
  if (images.size() == 1) return work(images.front());
  size_t refused = 0;
  for (const std::string &image : images) {
    try {
      work(image);
    } catch (const Refused &refusal) {
      ++refused;
      fprintf(stderr, "vchipctl: %s\n", refusal.what());
    }
  }
  if (refused != 0)
    throw Refused(std::to_string(refused) + " of " + std::to_string(images.size()) +
                  " images refused");
}

}  // namespace vchipctl
