// SPDX-License-Identifier: MIT
// vchipctl check: names what no call could have left in an image.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>

#include <cstdio>
#include <cstdlib>

#include "commands.h"
#include "images.h"
#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

std::string name_of(const vchip::Fault &fault) {
  const std::string unit = fault.unit < 0 ? "" : "unit " + std::to_string(fault.unit) + " ";
  return unit + fault.block + (fault.word.empty() ? "" : "." + fault.word);
}

Json fault_json(const std::string &image, const vchip::Fault &fault) {
  return {{"image", image},
          {"unit", fault.unit < 0 ? Json(nullptr) : Json(fault.unit)},
          {"block", fault.block},
          {"word", fault.word},
          {"text", fault.text}};
}

// One that others use is looked at under its lock, which one that is damaged and
// refused does not give.
std::vector<vchip::Fault> faults_of(const std::string &image) {
  try {
    const vchip::ImageStatus status = vchip::image_status(image);
    if (status.users.empty() && !status.more_users) return vchip::image_faults(image);
    setenv("VCHIP_IMAGE", image.c_str(), 1);
    vchip_close();
    return vchip_open() == nullptr ? vchip::chip_faults() : vchip::image_faults(image);
  } catch (const std::runtime_error &error) {
    throw Refused(error.what());
  }
}

}  // namespace

void check(const CheckWords &words) {
  Json all = Json::array();
  const auto finish = [&] {
    if (words.json) printf("%s\n", os::json_text(all).c_str());
  };
  const auto look_at = [&](const std::string &image) {
    const std::vector<vchip::Fault> faults = faults_of(image);
    for (const vchip::Fault &fault : faults) {
      if (words.json) all.push_back(fault_json(image, fault));
      if (!words.json)
        printf("%s: %s: %s\n", image.c_str(), name_of(fault).c_str(), fault.text.c_str());
    }
    if (!faults.empty())
      throw Refused("image " + image + ": " + std::to_string(faults.size()) +
                    " words that no call could have left");
  };
  try {
    for_each_image(words.images, look_at);
  } catch (const Refused &) {
    finish();
    throw;
  }
  finish();
}

}  // namespace vchipctl
