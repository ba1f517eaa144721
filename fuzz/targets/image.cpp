// SPDX-License-Identifier: MIT
// Chip images: files of any bytes, and good ones with bytes changed.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/swctl.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>
#include <utility>
#include <vector>

#include "library/calls.h"
#include "library/chip.h"
#include "support/stage.h"

namespace {

using swfuzz::Input;

// Something in every table.
void use_chip() {
  constexpr uint8_t kMac[] = {2, 0, 0, 0, 0, 1};
  constexpr uint8_t kGroup[] = {1, 0, 0x5e, 0, 0, 9};
  constexpr uint8_t kGroup6[16] = {0xff, 0x3e};
  constexpr user_pbmp_t kPorts = {{7}};
  const vchip_station_t station = {1, {2, 0, 0, 0, 0, 2}, 0};
  const uint32_t word = 0;
  vchip_station_learn(0, 3, &station);
  user_vlan_create(0, 0, 10);
  user_vlan_port_add(0, 0, 10, &kPorts, 1);
  user_vlan_mac_add(0, 0, 3, kMac, kMac, 20, 5, &kPorts);
  user_vlan_translate_egress_add(0, 0, 1, 3, 10, 20);
  user_mac_addr_add(0, {});
  user_mac_mcast_add_with_portmask(kGroup, 10, kPorts);
  User_ip_mcast_add(0, 1, 2, 10, kPorts);
  User_ip6_mcast_add(0, kGroup6, kGroup6, 10, kPorts);
  user_field_qualify_SrcMac(0, 0, 7, kMac, kMac);
  user_field_action_add(0, 0, 7, 0, &word, &word);
  user_field_entry_install(0, 0, 7);
  user_field_meter_entry_set(0, 31, 3);
  user_stg_create_id(0, 0, 3);
  user_stg_stp_set(0, 0, 3, 1, 3);
  user_mirror_port_set(0, 0, 1, 1, 2, 6);
  user_trunk_set(0, 0, 1, {2, 0, {1, 2}});
}

// An image of a chip that is in use.
std::string make_image() {
  std::string directory = std::filesystem::temp_directory_path() / "swctl-fuzz-XXXXXX";
  if (mkdtemp(directory.data()) == nullptr) swfuzz::wrong("no directory for the chip");
  const std::string path = directory + "/chip";
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  if (const char *refusal = vchip_open()) swfuzz::wrong(refusal);
  use_chip();
  vchip_close();
  std::ostringstream image;
  image << std::ifstream(path, std::ios::binary).rdbuf();
  std::filesystem::remove_all(directory);
  return image.str();
}

// The good image, and the places that differ from it for the time being.
class ChangedImage {
 public:
  ChangedImage() : good_(make_image()) {
    file_.set(good_);
    for (size_t at = 0; at < good_.size(); ++at)
      if (good_[at] != 0) used_.push_back(at);
  }

  const std::string &path() const { return file_.path(); }

  void change(Input &input) {
    const size_t at = place(input.byte(), input.word());
    std::string bytes(std::min<size_t>(input.byte() % 8, good_.size() - at), '\0');
    input.fill(bytes.data(), bytes.size());
    write(at, bytes);
    changes_.push_back({at, bytes.size()});
  }

  void undo() {
    for (const auto &[at, size] : changes_) write(at, good_.substr(at, size));
    changes_.clear();
  }

 private:
  // Anywhere, or where the good image holds something: most of it is empty.
  size_t place(uint8_t where, uint32_t number) const {
    return where % 4 == 0 ? number % good_.size() : used_[number % used_.size()];
  }

  void write(size_t at, const std::string &bytes) {
    if (pwrite(file_.descriptor(), bytes.data(), bytes.size(), static_cast<off_t>(at)) !=
        static_cast<ssize_t>(bytes.size()))
      swfuzz::wrong("the image cannot be written");
  }

  std::string good_;
  std::vector<size_t> used_;
  swfuzz::MemoryFile file_;
  std::vector<std::pair<size_t, size_t>> changes_;
};

void open_and_use(const std::string &path, Input &input, bool dump) {
  constexpr int kMostCalls = 8;
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  if (const char *refusal = vchip_open()) {
    if (std::string(refusal).find(path) == std::string::npos) swfuzz::wrong(refusal);
  } else {
    // What the calls write must not stay in the good image.
    swfuzz::map_privately("/memfd:swctl-fuzz (deleted)", path);
    const swfuzz::Stage stage;
    swfuzz::make_calls(input, kMostCalls);
    if (dump) vchip::dump_json(-1);
  }
  vchip_close();
}

// To where nothing can be made.
void convert(const std::string &path) {
  try {
    vchip::convert_image(path, "/proc/none/chip");
    swfuzz::wrong("an image was made where there is no directory");
  } catch (const std::runtime_error &error) {
    if (std::string(error.what()).find("image /") != 0) swfuzz::wrong(error.what());
  }
}

}  // namespace

// Any bytes, or the number of changes to a good image, the changes and calls.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  constexpr uint8_t kMostChanges = 16;
  static swfuzz::MemoryFile any;
  static ChangedImage image;
  Input input(data, size);
  const uint8_t changes = input.byte() % kMostChanges;
  if (changes == 0) {
    any.set(input.rest());
    convert(any.path());
    open_and_use(any.path(), input, false);
    return 0;
  }
  // A dump takes long. The first input has one, so that a finding comes back.
  constexpr uint32_t kDumpEvery = 64;
  static uint32_t inputs = 0;
  const bool dump = inputs++ % kDumpEvery == 0;
  for (uint8_t i = 0; i < changes; ++i) image.change(input);
  // That takes longer.
  if (inputs % (4 * kDumpEvery) == 2) convert(image.path());
  open_and_use(image.path(), input, dump);
  image.undo();
  return 0;
}
