// SPDX-License-Identifier: MIT
// The table in a file, byte for byte, and back.
#include <swctl/mcast_l2.h>

#include <bit>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "l2/table.h"

namespace {

using l2_test::Entry;

using Bytes = std::string;

// A word as this machine has it in memory, written out for both byte orders.
Bytes word(uint32_t value) {
  const Bytes big = {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                     static_cast<char>(value >> 8), static_cast<char>(value)};
  return std::endian::native == std::endian::big ? big : Bytes(big.rbegin(), big.rend());
}

Bytes half_word(uint16_t value) {
  const Bytes big = {static_cast<char>(value >> 8), static_cast<char>(value)};
  return std::endian::native == std::endian::big ? big : Bytes(big.rbegin(), big.rend());
}

Bytes station(uint8_t number) {
  return {2, 0, 0, 0, 0, static_cast<char>(number)};
}

constexpr const char *kCannotMake = "create mactable Error!!!!!!!!!!!!1\n";

class L2Dump : public l2_test::L2Test {
 protected:
  void SetUp() override {
    L2Test::SetUp();
    std::string name = testing::TempDir() + "l2-dump-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    directory_ = name;
    path_ = directory_ + "/table";
  }
  void TearDown() override {
    std::filesystem::remove_all(directory_);
    L2Test::TearDown();
  }
  Bytes content() const {
    std::ifstream stream(path_, std::ios::binary);
    EXPECT_TRUE(stream.good()) << path_;
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void write(const Bytes &bytes) const {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
  }
  std::vector<user_l2_addr_t> read_back() const {
    std::vector<user_l2_addr_t> all;
    FILE *file = fopen(path_.c_str(), "r");
    user_l2_addr_t record = {};
    while (user_l2_mactable_fread(&record, file, 0) == 1) all.push_back(record);
    fclose(file);
    return all;
  }

  std::string directory_;
  std::string path_;
};

TEST_F(L2Dump, UnicastFileByteForByte) {
  const Entry second = {.vid = 20, .number = 2, .port = 28, .trunk = 4, .flags = 0x08};
  put({{.vid = 10, .number = 1, .port = 3}, second});
  mark(second, 0x80000001, 0x01020304);
  EXPECT_EQ(user_mac_table_show(9, path_.c_str()), 0);
  const Bytes zeroes(16, '\0');
  const Bytes padding(2, '\0');
  EXPECT_EQ(content(), word(10) + station(1) + padding + word(3) + word(0) + word(0) + word(0) +
                           word(0) + zeroes + word(0) +  //
                           word(20) + station(2) + padding + word(28) + word(4) + word(0x800008) +
                           word(0x80000001) + word(0x01020304) + zeroes + word(0));
}

TEST_F(L2Dump, MulticastFileByteForByte) {
  const chip_l2_mcast_entry entry = {0x123, {1, 0, 0x5e, 1, 2, 3}, 0x10000006, 9, {0, 0, 0}};
  ASSERT_EQ(rtk_l2_mcastAddr_add(0, &entry), 0);
  EXPECT_EQ(user_mac_mcast_table_show(9, path_.c_str()), 0);
  const Bytes group = {1, 0, 0x5e, 1, 2, 3};
  EXPECT_EQ(content(), half_word(0x123) + group + word(0x10000006) + word(9) + Bytes(12, '\0'));
  EXPECT_EQ(swprobe::take().back().in("unit"), 0);
}

TEST_F(L2Dump, GroupsWhoseVlanIsGoneAreWrittenAndStay) {
  const chip_l2_mcast_entry entry = {30, {1, 0, 0x5e, 1, 2, 3}, 6, 0, {0, 0, 0}};
  ASSERT_EQ(rtk_l2_mcastAddr_add(0, &entry), 0);
  swprobe::forget();
  EXPECT_EQ(user_mac_mcast_table_show(0, path_.c_str()), 0);
  EXPECT_EQ(content().size(), 28u);
  for (const std::string &name : l2_test::names(swprobe::take()))
    EXPECT_EQ(name, "rtk_l2_nextValidMcastAddr_get");
}

TEST_F(L2Dump, EmptyTablesGiveEmptyFiles) {
  write("what was there before");
  EXPECT_EQ(user_mac_table_show(0, path_.c_str()), 0);
  EXPECT_EQ(content(), "");
  write("what was there before");
  EXPECT_EQ(user_mac_mcast_table_show(0, path_.c_str()), 0);
  EXPECT_EQ(content(), "");
}

TEST_F(L2Dump, StaleEntriesAreRemovedAndNotWritten) {
  put({{.vid = 30, .number = 1, .flags = 0x08}, {.vid = 10, .number = 2}});
  EXPECT_EQ(user_mac_table_show(0, path_.c_str()), 0);
  EXPECT_EQ(content().size(), 52u);
  EXPECT_EQ(held(), std::vector<std::string>{"10 02:00:00:00:00:02"});
  EXPECT_EQ(l2_test::logged(swprobe::take()).size(), 1u);
}

TEST_F(L2Dump, FileThatCannotBeMade) {
  put({{}});
  const std::string path = directory_ + "/none/table";
  const auto unicast = [&] { EXPECT_EQ(user_mac_table_show(0, path.c_str()), -1); };
  const auto multicast = [&] { EXPECT_EQ(user_mac_mcast_table_show(0, path.c_str()), -1); };
  EXPECT_PRINTED(swctl_test::printed_by(unicast), kCannotMake, "");
  EXPECT_PRINTED(swctl_test::printed_by(multicast), kCannotMake, "");
  EXPECT_NO_CALLS();
  // A directory is no file.
  const auto onto_directory = [&] { EXPECT_EQ(user_mac_table_show(0, directory_.c_str()), -1); };
  EXPECT_PRINTED(swctl_test::printed_by(onto_directory), kCannotMake, "");
}

TEST_F(L2Dump, FullDeviceIsNotNoticed) {
  put({{.number = 1}, {.number = 2}});
  EXPECT_EQ(user_mac_table_show(0, "/dev/full"), 0);
  EXPECT_EQ(swprobe::take().size(), 5u) << "the walk goes on to the end";
}

TEST_F(L2Dump, WritingCallbacksAnswerHowManyRecordsTheyWrote) {
  chip_l2_ucast_entry entry = l2_test::chip_entry({});
  chip_l2_mcast_entry group = {};
  FILE *good = fopen(path_.c_str(), "w+");
  EXPECT_EQ(test_fun3_callback(0, &entry, good), 1);
  EXPECT_EQ(test_fun4_callback(0, &group, good), 1);
  EXPECT_EQ(ftell(good), 80);
  fclose(good);
  FILE *read_only = fopen(path_.c_str(), "r");
  EXPECT_EQ(test_fun3_callback(0, &entry, read_only), 0);
  EXPECT_EQ(test_fun4_callback(0, &group, read_only), 0);
  fclose(read_only);
}

TEST_F(L2Dump, ReadsBackWhatSingleReadsAnswer) {
  const Entry violating = {.vid = 20, .number = 2, .port = 7, .trunk = 3, .flags = 0x28};
  put({{.vid = 10, .number = 1, .port = 28, .trunk = 31, .flags = 0xFF000008},
       violating,
       {.vid = 10, .number = 3}});
  mark(violating, 1, 88);
  EXPECT_EQ(user_mac_table_show(0, path_.c_str()), 0);
  const std::vector<user_l2_addr_t> records = read_back();
  ASSERT_EQ(records.size(), 3u);
  for (const user_l2_addr_t &record : records) {
    user_l2_addr_t single = {};
    ASSERT_EQ(user_mac_addr_get(0, record.mac, record.vid, &single), 0);
    EXPECT_EQ(record.flags, single.flags);
    EXPECT_EQ(record.port, single.port);
    EXPECT_EQ(record.tgid, single.tgid);
    EXPECT_EQ(record.aux, single.aux);
  }
}

TEST_F(L2Dump, ReadingConvertsARecordAndLeavesTheRest) {
  write(word(0x1000A) + station(5) + Bytes(2, '\x77') + word(6) + word(7) + word(0x20) + word(1) +
        word(9) + Bytes(20, '\x77'));
  FILE *file = fopen(path_.c_str(), "r");
  user_l2_addr_t record;
  memset(&record, 0x5A, sizeof record);
  user_l2_addr_t expected = record;
  EXPECT_EQ(user_l2_mactable_fread(&record, file, 0), 1);
  expected.flags = 0x800020;
  memcpy(expected.mac, l2_test::mac(5).data(), sizeof expected.mac);
  expected.vid = 10;
  expected.port = 6;
  expected.tgid = 7;
  expected.aux = 9;
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  EXPECT_EQ(user_l2_mactable_fread(&record, file, 0), 0);
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  fclose(file);
}

TEST_F(L2Dump, ReadingAGroup) {
  write(half_word(20) + Bytes{1, 0, 0x5e, 1, 2, 3} + word(0x80000001) + word(9) +
        Bytes(12, '\x77'));
  for (const uint32_t selector : {1u, 0x80000000u}) {
    FILE *file = fopen(path_.c_str(), "r");
    User_mcast_addr_t record;
    memset(&record, 0x5A, sizeof record);
    User_mcast_addr_t expected = record;
    EXPECT_EQ(user_l2_mactable_fread(&record, file, selector), 1);
    expected.vid = 20;
    expected.pbmp = {{0x80000001}};
    memcpy(expected.mac, "\x01\x00\x5e\x01\x02\x03", sizeof expected.mac);
    EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
    EXPECT_EQ(user_l2_mactable_fread(&record, file, selector), 0);
    EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
    fclose(file);
  }
}

TEST_F(L2Dump, PartialRecordsReadAsTheEnd) {
  const Bytes whole(52, '\x01');
  for (const size_t length : {0u, 1u, 51u}) {
    write(whole + Bytes(length, '\x02'));
    EXPECT_EQ(read_back().size(), 1u) << length;
    write(Bytes(length, '\x02'));
    EXPECT_EQ(read_back().size(), 0u) << length;
  }
  write(Bytes(27, '\x02'));
  FILE *file = fopen(path_.c_str(), "r");
  User_mcast_addr_t record = {};
  EXPECT_EQ(user_l2_mactable_fread(&record, file, 1), 0);
  fclose(file);
}

TEST_F(L2Dump, PrintsOneLine) {
  const chip_l2_ucast_entry entry = {
      0xFFF, {0, 1, 0xAB, 0xCD, 0xEF, 0xFF}, {0, 0}, -1, -2, 0x800008, 1, 0, {0, 0, 0, 0}, 0};
  const auto print = [&] { user_bcm_l2_addr_dumptest(&entry); };
  const std::string line =
      "MAC_ADDR=00:01:ab:cd:ef:ff, VLAN_TAG=0xfff, PORT=-1, TGID=-2 FLAGS=0x00800008\n";
  EXPECT_PRINTED(swctl_test::printed_by(print), line, "");
  chip_l2_ucast_entry copy = entry;
  const auto call_back = [&] { EXPECT_EQ(test_fun_callback(7, &copy, nullptr), 0); };
  EXPECT_PRINTED(swctl_test::printed_by(call_back), line, "");
}

TEST_F(L2Dump, FullTableThereAndBack) {
  chip_l2_ucast_entry entry = l2_test::chip_entry({});
  for (uint32_t number = 0; number < 16384; ++number) {
    entry.mac[4] = static_cast<uint8_t>(number >> 8);
    entry.mac[5] = static_cast<uint8_t>(number);
    ASSERT_EQ(rtk_l2_addr_add(0, &entry), 0) << number;
  }
  swprobe::forget();
  EXPECT_EQ(user_mac_table_show(0, path_.c_str()), 0);
  swprobe::forget();
  EXPECT_EQ(content().size(), 16384u * 52);
  const std::vector<user_l2_addr_t> records = read_back();
  const std::vector<vchip::AddressView> views = vchip::addresses(0);
  ASSERT_EQ(records.size(), 16384u);
  for (size_t i = 0; i < records.size(); ++i) {
    char text[20];
    snprintf(text, sizeof text, "02:00:00:00:%02x:%02x", records[i].mac[4], records[i].mac[5]);
    ASSERT_EQ(text, views[i].mac);
  }
}

}  // namespace
