// SPDX-License-Identifier: MIT
// Commands on more than one image.
#ifndef VCHIPCTL_IMAGES_H
#define VCHIPCTL_IMAGES_H

#include <functional>
#include <string>
#include <vector>

namespace vchipctl {

// The images that `word` names: a file, a list of files with commas between
// them, or all images of a directory, by name. Throws UsageError or Refused.
std::vector<std::string> find_images(const std::string &word);
// Whether it names more than one.
bool names_many(const std::string &word);

// The same for one image, which the chip of this process becomes.
// The path again; throws Refused if no such file is there.
const std::string &existing_image(const std::string &path);

void open_image(const std::string &path);

// Does the work for each. Where one of several refuses, that is said and the
// others are worked on; then it throws Refused.
void for_each_image(const std::vector<std::string> &images,
                    const std::function<void(const std::string &)> &work);

}  // namespace vchipctl

#endif
