// SPDX-License-Identifier: MIT
// vchipctl status: who uses an image.
#include <swctl-vchip/image.h>

#include <cstdio>
#include <ctime>

#include "commands.h"
#include "images.h"
#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

constexpr uint64_t kKilobyte = 1024;

std::string process_text(uint32_t process, const std::string &name) {
  if (process == 0) return "a process out of sight";
  const std::string text = "process " + std::to_string(process);
  return name.empty() ? text : text + " (" + name + ")";
}

std::string time_text(uint32_t seconds) {
  const time_t time = seconds;
  char text[32] = "";
  tm parts = {};
  if (localtime_r(&time, &parts) != nullptr) strftime(text, sizeof text, "%F %T", &parts);
  return text;
}

std::string holder_text(const vchip::ImageStatus &status) {
  if (!status.held) return "by nobody";
  char seconds[32];
  snprintf(seconds, sizeof seconds, "%.3f", status.held_ms / 1000.0);
  return "for " + std::string(seconds) + " s by " +
         process_text(status.holder, status.holder_name) +
         (status.holder_stopped ? ", which is stopped" : "");
}

void print_line(const char *name, const std::string &text) {
  printf("  %-20s %s\n", name, text.c_str());
}

void print_users(const vchip::ImageStatus &status) {
  if (status.users.empty() && !status.more_users) print_line("open", "by nobody");
  for (const vchip::ImageUser &user : status.users)
    print_line("open",
               "by " + process_text(user.process, user.name) + " since " + time_text(user.since));
  if (status.more_users) print_line("open", "by more than can be listed");
}

void print_status(const std::string &image, const vchip::ImageStatus &status) {
  printf("image %s\n", image.c_str());
  print_line("lock", status.lock);
  print_line("held", holder_text(status) + (status.changing ? ", in the middle of a change" : ""));
  print_line("interrupted writes", std::to_string(status.interrupted_writes));
  print_line("size", std::to_string(status.size / kKilobyte) + " KB, " +
                         std::to_string(status.size_on_disk / kKilobyte) + " KB on disk");
  print_users(status);
}

Json name_json(const std::string &name) {
  return name.empty() ? Json(nullptr) : Json(name);
}

Json holder_json(const vchip::ImageStatus &status) {
  if (!status.held) return nullptr;
  return {{"process", status.holder == 0 ? Json(nullptr) : Json(status.holder)},
          {"name", name_json(status.holder_name)},
          {"stopped", status.holder_stopped},
          {"milliseconds", status.held_ms}};
}

Json status_json(const std::string &image, const vchip::ImageStatus &status) {
  Json users = Json::array();
  for (const vchip::ImageUser &user : status.users)
    users.push_back(
        {{"process", user.process}, {"name", name_json(user.name)}, {"since", user.since}});
  return {{"image", image},
          {"lock", status.lock},
          {"held", holder_json(status)},
          {"changing", status.changing},
          {"interrupted_writes", status.interrupted_writes},
          {"size", status.size},
          {"size_on_disk", status.size_on_disk},
          {"users", users},
          {"more_users", status.more_users}};
}

vchip::ImageStatus status_of(const std::string &image) {
  try {
    return vchip::image_status(image);
  } catch (const std::runtime_error &error) {
    throw Refused(error.what());
  }
}

}  // namespace

void status(const StatusWords &words) {
  Json all = Json::array();
  const auto finish = [&] {
    if (words.json) printf("%s\n", os::json_text(all).c_str());
  };
  try {
    for_each_image(words.images, [&](const std::string &image) {
      const vchip::ImageStatus found = status_of(image);
      if (words.json) return all.push_back(status_json(image, found));
      print_status(image, found);
    });
  } catch (const Refused &) {
    finish();
    throw;
  }
  finish();
}

}  // namespace vchipctl
