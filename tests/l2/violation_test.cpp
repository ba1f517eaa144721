// SPDX-License-Identifier: MIT
// Violation entries, counted from the dump file. The library's fixed path is
// turned to a file of this test by a fopen() of this program.
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <set>

#include "l2/table.h"

namespace {

std::string table_path;           // where the fixed path leads
std::vector<std::string> opened;  // "path mode" of every opening
int refuse_opening;               // the nth one from now on; 0: none
std::set<FILE *> open_files;      // opened and not closed

FILE *open_really(const char *path, const char *mode) {
  const auto real =
      reinterpret_cast<FILE *(*)(const char *, const char *)>(dlsym(RTLD_NEXT, "fopen"));
  return real(path, mode);
}

}  // namespace

extern "C" FILE *fopen(const char *path, const char *mode) {
  if (std::string(path) != USER_MACTABLE_PATH) return open_really(path, mode);
  opened.push_back(std::string(path) + ' ' + mode);
  if (refuse_opening > 0 && --refuse_opening == 0) return nullptr;
  FILE *file = open_really(table_path.c_str(), mode);
  if (file != nullptr) open_files.insert(file);
  return file;
}

extern "C" int fclose(FILE *file) {
  open_files.erase(file);
  const auto real = reinterpret_cast<int (*)(FILE *)>(dlsym(RTLD_NEXT, "fclose"));
  return real(file);
}

namespace {

using l2_test::Entry;
using testing::ElementsAre;

class L2Violation : public l2_test::L2Test {
 protected:
  void SetUp() override {
    L2Test::SetUp();
    std::string name = testing::TempDir() + "l2-violation-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    directory_ = name;
    table_path = directory_ + "/mactable";
    opened.clear();
    refuse_opening = 0;
    open_files.clear();
  }
  void TearDown() override {
    EXPECT_EQ(open_files.size(), 0u) << "files left open";
    std::filesystem::remove_all(directory_);
    L2Test::TearDown();
  }
  // An entry that the chip marks as a violation.
  static void put_violation(const Entry &entry) {
    put({entry});
    mark(entry, 1);
  }
  static uint32_t count(int32_t port) {
    uint32_t value = 0xDEAD;
    EXPECT_EQ(user_mac_violate_count_get_by_port(port, &value), 0);
    return value;
  }

  std::string directory_;
};

TEST_F(L2Violation, EmptyTableHasNone) {
  EXPECT_EQ(count(3), 0u);
  EXPECT_THAT(opened, ElementsAre("/var/mactable w+", "/var/mactable r"));
}

TEST_F(L2Violation, CountsMarkedEntriesOfThePort) {
  put_violation({.number = 1, .port = 3});
  put_violation({.number = 2, .port = 3, .flags = 0x08});
  put_violation({.vid = 20, .number = 3, .port = 3, .flags = 0xFF0000DF});
  // Near misses: ignored, unmarked, on another port, only the trunk is 3.
  put_violation({.number = 4, .port = 3, .flags = 0x20});
  put_violation({.number = 5, .port = 3, .flags = 0x28});
  put({{.number = 6, .port = 3, .flags = 0x08}});
  put_violation({.number = 7, .port = 4});
  put_violation({.number = 8, .port = 5, .trunk = 3});
  EXPECT_EQ(count(3), 3u);
  EXPECT_EQ(count(4), 1u);
  EXPECT_EQ(count(-1), 0u);
}

TEST_F(L2Violation, FlagThatAnAddLeftInCountsToo) {
  put({{.number = 1, .flags = 0x800000}, {.number = 2, .flags = 0x800020}});
  EXPECT_EQ(count(3), 1u);
}

TEST_F(L2Violation, TheFileStaysWithWhatWasDumped) {
  put({{.number = 1}, {.number = 2}});
  EXPECT_EQ(count(3), 0u);
  EXPECT_EQ(std::filesystem::file_size(table_path), 104u);
  EXPECT_EQ(user_mac_violate_del_by_port(3), 0);
  EXPECT_EQ(std::filesystem::file_size(table_path), 104u);
}

TEST_F(L2Violation, EachCallDumpsAnew) {
  std::ofstream(table_path, std::ios::binary) << std::string(520, '\x01');
  put_violation({});
  EXPECT_EQ(count(3), 1u);
  EXPECT_EQ(std::filesystem::file_size(table_path), 52u);
}

// The dump walks the table, and a walk removes what is stale, on any port.
TEST_F(L2Violation, QueriesRemoveStaleEntriesAndLogThem) {
  for (const bool counts : {true, false}) {
    put({{.vid = 30, .number = 1, .port = 4, .flags = 0x08}, {.vid = 10, .number = 2}});
    if (counts) {
      EXPECT_EQ(count(3), 0u);
    } else {
      EXPECT_EQ(user_mac_violate_del_by_port(3), 0);
    }
    EXPECT_EQ(held(), std::vector<std::string>{"10 02:00:00:00:00:02"});
    EXPECT_THAT(l2_test::logged(swprobe::take()), ElementsAre(l2_test::removed_line(1)));
  }
}

TEST_F(L2Violation, CountIsZeroWithoutAFile) {
  put_violation({});
  for (const int opening : {1, 2}) {
    refuse_opening = opening;
    const auto say = [&] { EXPECT_EQ(count(3), 0u); };
    EXPECT_PRINTED(swctl_test::printed_by(say),
                   opening == 1 ? "create mactable Error!!!!!!!!!!!!1\n" : "", "");
  }
  EXPECT_EQ(opened.size(), 3u);
}

TEST_F(L2Violation, DeleteDoesNothingWithoutAFile) {
  put_violation({});
  for (const int opening : {1, 2}) {
    refuse_opening = opening;
    swprobe::forget();
    const auto say = [&] { EXPECT_EQ(user_mac_violate_del_by_port(3), 0); };
    EXPECT_PRINTED(swctl_test::printed_by(say),
                   opening == 1 ? "create mactable Error!!!!!!!!!!!!1\n" : "", "");
    for (const swprobe::Call &call : swprobe::take()) EXPECT_NE(call.name, "rtk_l2_addr_del");
  }
}

TEST_F(L2Violation, DeleteAsksForTheAddressAsText) {
  chip_l2_ucast_entry entry = l2_test::chip_entry({.vid = 20});
  memcpy(entry.mac, "\xfe\xdc\xba\x98\x76\x54", sizeof entry.mac);
  ASSERT_EQ(rtk_l2_addr_add(0, &entry), 0);
  ASSERT_EQ(vchip_l2_mark(0, 20, entry.mac, 1, 0), 0);
  put_violation({.number = 2, .port = 4});
  put_violation({.number = 3, .flags = 0x20});
  put({{.number = 4}});
  for (const int32_t result : {-1, 0, 5}) {
    swprobe::clear_plan();
    swctl_test::chip_answers("rtk_l2_addr_del", result);
    swprobe::forget();
    EXPECT_EQ(user_mac_violate_del_by_port(3), 0);
    std::vector<std::vector<int64_t>> asked;
    for (const swprobe::Call &call : swprobe::take()) {
      if (call.name != "rtk_l2_addr_del") continue;
      EXPECT_EQ(call.in("unit"), 0);
      EXPECT_EQ(call.in("vid"), 20);
      asked.emplace_back();
      for (int byte = 0; byte < SWCTL_MAC_BYTES; ++byte)
        asked.back().push_back(call.in("mac[" + std::to_string(byte) + "]"));
    }
    // "fe:dc:ba:98:76:54", its first six characters.
    EXPECT_THAT(asked, ElementsAre(ElementsAre('f', 'e', ':', 'd', 'c', ':')));
  }
}

TEST_F(L2Violation, EntriesStayInTheChip) {
  put_violation({.number = 1, .flags = 0x08});
  put_violation({.number = 2});
  EXPECT_EQ(user_mac_violate_del_by_port(3), 0);
  EXPECT_EQ(held().size(), 2u);
  EXPECT_EQ(l2_test::logged(swprobe::take()).size(), 0u);
}

TEST_F(L2Violation, FailedScanCountsNothing) {
  put_violation({});
  swctl_test::chip_answers("rtk_l2_nextValidAddr_get", -5);
  EXPECT_EQ(count(3), 0u);
}

}  // namespace
