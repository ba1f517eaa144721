// SPDX-License-Identifier: MIT
// vchipctl in a build without libpcap.
#include "capture_file.h"
#include "vchipctl.h"

namespace {

TEST_F(Vchipctl, CapturesAreRefusedByName) {
  const std::string file = CaptureFile().write(directory_ + "/1.pcap");
  const std::string complaint =
      file + ": this vchipctl was built without libpcap and reads no captures";
  expect_refused("send 1 --pcap " + file, complaint);
  expect_refused("explain 1 --pcap " + file, complaint);
  const std::string scenario = directory_ + "/scenario";
  std::filesystem::create_directories(scenario + "/in");
  std::ofstream(scenario + "/config") << "\n";
  CaptureFile().write(scenario + "/in/1.pcap");
  expect_refused("play " + scenario,
                 scenario +
                     "/in/1.pcap: this vchipctl was built without libpcap and reads no "
                     "captures\nvchipctl: 1 of 1 scenarios not as expected");
}

}  // namespace
