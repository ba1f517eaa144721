// SPDX-License-Identifier: MIT
#include "lab_record.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>

#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

std::string record_of(const std::string &image) {
  return image + ".lab";
}

Refused no_lab(const std::string &image) {
  return Refused("image " + image + ": there is no lab; vchipctl lab makes one");
}

}  // namespace

LabRecord::LabRecord(const std::string &image)
    : path_(record_of(image)), file_(open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
  if (!file_) throw Refused(path_ + ": " + strerror(errno));
  if (flock(file_.get(), LOCK_EX | LOCK_NB) != 0)
    throw Refused("image " + image + ": there is a lab already; vchipctl lab enter joins it");
}

LabRecord::~LabRecord() {
  unlink(path_.c_str());
}

void LabRecord::write(const LabProcesses &processes) {
  Json hosts = Json::object();
  for (const auto &[interface, process] : processes.hosts)
    hosts[std::to_string(interface)] = process;
  const std::string text = os::json_text({{"switch", processes.board}, {"hosts", hosts}}) + "\n";
  if (ftruncate(file_.get(), 0) != 0 ||
      pwrite(file_.get(), text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
    throw Refused(path_ + ": " + strerror(errno));
}

LabProcesses find_lab(const std::string &image) {
  const os::Descriptor file(open(record_of(image).c_str(), O_RDONLY | O_CLOEXEC));
  if (!file || flock(file.get(), LOCK_SH | LOCK_NB) == 0) throw no_lab(image);
  std::ifstream stream(record_of(image));
  const Json record = os::try_parse_json(stream);
  if (!record.is_object()) throw no_lab(image);
  LabProcesses processes = {record.at("switch"), {}};
  for (const auto &[interface, process] : record.at("hosts").items())
    processes.hosts[std::stoi(interface)] = process;
  return processes;
}

std::string LabFolder::path() {
  return "/tmp/swctl-lab-" + std::to_string(geteuid());
}

LabFolder::LabFolder() : path_(path()) {
  struct stat found = {};
  if (mkdir(path_.c_str(), 0700) != 0 && errno != EEXIST)
    throw Refused(path_ + ": " + strerror(errno));
  if (lstat(path_.c_str(), &found) != 0 || !S_ISDIR(found.st_mode) || found.st_uid != geteuid() ||
      (found.st_mode & 077) != 0)
    throw Refused(path_ + ": it is not this user's alone; give --image FILE");
}

LabFolder::~LabFolder() {
  std::error_code fault;
  std::filesystem::remove_all(path_, fault);
}

}  // namespace vchipctl
