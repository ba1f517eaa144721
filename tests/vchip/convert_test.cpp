// SPDX-License-Identifier: MIT
// Images of other layouts and of the other byte order are brought over by what
// their words mean.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "child.h"
#include "image/header.h"
#include "image/word_list.h"

namespace {

using vchip::NamedWord;
using vchip::WordIndex;
using vchip::WordList;
using vchip_test::Outcome;
using vchip_test::read_file;
using vchip_test::run;
using vchip_test::set_word;
using vchip_test::word_at;
using vchip_test::write_sparse_file;

constexpr size_t kWordsAt = offsetof(vchip::Header, words_at);
constexpr uint32_t kAddress = 0xc0000201;  // 192.0.2.1

int add_rule() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_IP4_VLAN;
  const uint32_t vlan = 7, mask = 0xffffff00;
  const auto bytes = [](const uint32_t &word) { return reinterpret_cast<const uint8_t *>(&word); };
  int32_t fault =
      adp_fp_add_entity_action(&rule, ADP_FP_ACTION_VLAN, &vlan, sizeof vlan, nullptr, 0);
  fault |= adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_SOURCE_IP4, bytes(kAddress),
                                     sizeof kAddress, bytes(mask), sizeof mask);
  return fault | adp_fp_add_entity_rule(rule);
}

// Numbers of every width, addresses, texts, and bytes that are a number.
int use() {
  const uint32_t ports = 0x10000070;
  const uint16_t type = 0x88b5;
  const uint8_t all[2] = {0xff, 0xff};
  chip_l2_ucast_entry address = {};
  address.vid = 0x123;
  address.mac[0] = 2;
  address.mac[5] = 9;
  address.port = 13;
  chip_l2_mcast_entry group = {};
  group.mac[0] = 1;
  group.vid = 0x321;
  group.portmask = ports;
  uint8_t bytes[2];
  memcpy(bytes, &type, sizeof type);
  int32_t fault = add_rule() | rtk_l2_addr_add(1, &address) | rtk_l2_mcastAddr_add(1, &group);
  fault |= rtk_acl_ruleEntryField_write(1, 0, 4, CHIP_ACL_FIELD_ETHER_TYPE, bytes, all);
  fault |= rtk_vlan_create(1, 0x777) | rtk_vlan_port_set(1, 0x777, &ports, &ports);
  fault |= vchip_acl_count(1, 3, 0x123456789, 5) | vchip_counter_add(0, 3, 4, 0x1234567890);
  const vchip_partner_t partner = {1, 0xf6000000u};
  fault |= vchip_cable_plug(1, 3, &partner) | vchip_time_pass(1, 3);
  sys_trace_add_log("f():1", "kept");
  return fault;
}

std::string dump_of(const std::string &path) {
  return run({{"VCHIP_IMAGE", path}},
             [] {
               if (vchip_open() != nullptr) return 1;
               puts(vchip::dump_json(1).c_str());
               return 0;
             })
      .output;
}

uint32_t check_of(const std::string &bytes) {
  uint32_t hash = vchip::kHashStart;
  for (size_t at = 0; at < vchip_test::kCheckAt; ++at)
    hash = vchip::hash_byte(hash, static_cast<uint8_t>(bytes[at]));
  return hash;
}

WordList words_of(const std::string &bytes) {
  WordList words;
  EXPECT_EQ(vchip::parse_word_list(bytes.substr(word_at(bytes, kWordsAt)), bytes.size(), words),
            nullptr);
  return words;
}

void turn(std::string &bytes, uint64_t offset, size_t width) {
  const auto first = bytes.begin() + static_cast<ptrdiff_t>(offset);
  std::reverse(first, first + static_cast<ptrdiff_t>(width));
}

const NamedWord &find(const WordList &words, const std::string &name) {
  return *std::ranges::find(words, name, &NamedWord::name);
}

// The image as a machine of the other byte order would have written it.
std::string other_machine(const std::string &good) {
  std::string bytes = good;
  const WordList words = words_of(good);
  for (const NamedWord &word : words)
    vchip::each_index(word, [&](const WordIndex &index) {
      turn(bytes, vchip::offset_of(word, index), word.width);
      return true;
    });
  // The address of the rule, of four bytes, and its mask.
  for (const char *name : {"value", "mask"})
    turn(bytes,
         vchip::offset_of(find(words, std::string("rules.rules[].qualifier[].") + name + "[]"),
                          {20, 0, 0}),
         sizeof kAddress);
  for (size_t offset = vchip_test::kByteOrderAt; offset < 40; offset += 4) turn(bytes, offset, 4);
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  turn(bytes, vchip_test::kCheckAt, 4);
  return bytes;
}

class Convert : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    const Outcome used = run(image(), use);
    ASSERT_EQ(used.status, 0) << used.output;
    good_ = read_file(image_);
    other_ = file("new.img");
  }
  std::string refusal() {
    try {
      vchip::convert_image(image_, other_);
      return "";
    } catch (const std::runtime_error &error) {
      const std::string text = error.what(), begin = "image " + image_ + ": ";
      return text.starts_with(begin) ? text.substr(begin.size()) : text;
    }
  }
  // The same chip under another name.
  void expect_same() {
    std::string expected = dump_before_;
    const size_t at = expected.find(image_);
    ASSERT_NE(at, std::string::npos);
    expected.replace(at, image_.size(), other_);
    EXPECT_EQ(dump_of(other_), expected);
  }
  void note_dump() { dump_before_ = dump_of(image_); }

  std::string good_, other_, dump_before_;
};

TEST_F(Convert, AnImageOfThisVersion) {
  note_dump();
  EXPECT_TRUE(vchip::convert_image(image_, other_).empty());
  expect_same();
  EXPECT_TRUE(vchip::image_faults(other_).empty());
}

TEST_F(Convert, TheOtherByteOrder) {
  note_dump();
  write_sparse_file(image_, other_machine(good_));
  EXPECT_NE(dump_before_.find("192.0.2.1"), std::string::npos);
  EXPECT_NE(dump_before_.find("88b5"), std::string::npos);
  EXPECT_TRUE(vchip::convert_image(image_, other_).empty());
  expect_same();
}

constexpr uint32_t kText = 8192;

// An image of a later version: with fewer words, wider ones, and other tables.
std::string other_layout(const std::string &good) {
  std::string bytes = good.substr(0, 4096) + std::string(3 * 4096, '\0');
  const WordList words = {{"platform.log_lines", 4096, 4, {}},
                          {"units[].vlan.vlans[].exists", 4104, 8, {{2, 1024}, {16, 16}}},
                          {"units[].vlan.vlans[].colour", 4112, 4, {{2, 1024}, {16, 16}}},
                          {"units[].vlan.pvids[]", 4512, 4, {{2, 1024}, {40, 4}}}};
  set_word(bytes, 4096, 77);
  set_word(bytes, 4104 + 1024 + 16 * 9, 1);  // VLAN 9 of unit 1
  set_word(bytes, 4112 + 1024 + 16 * 9, 5);  // of a colour
  for (uint32_t port = 0; port < 80; ++port)
    set_word(bytes, 4512 + port / 40 * 1024 + port % 40 * 4, 1);
  set_word(bytes, 4512 + 1024 + 3 * 4, 9);
  if (std::endian::native == std::endian::big)
    std::swap(bytes[4104 + 1024 + 16 * 9 + 3], bytes[4104 + 1024 + 16 * 9 + 7]);
  const std::string text = vchip::word_list_text(words);
  std::copy(text.begin(), text.end(), bytes.begin() + kText);
  set_word(bytes, kWordsAt, kText);
  set_word(bytes, vchip_test::kVersionAt, 9);
  set_word(bytes, vchip_test::kLayoutAt, 12345);
  set_word(bytes, vchip_test::kSizeAt, static_cast<uint32_t>(bytes.size()));
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  return bytes;
}

TEST_F(Convert, AnotherLayout) {
  write_sparse_file(image_, other_layout(good_));
  const std::vector<std::string> left_out = vchip::convert_image(image_, other_);
  ASSERT_EQ(left_out.size(), 1u + 2 * 11);  // a colour, and ports 29 to 39
  EXPECT_EQ(left_out[0], "units[1].vlan.vlans[9].colour = 5");
  EXPECT_EQ(left_out[1], "units[0].vlan.pvids[29] = 1");
  const Outcome outcome = run({{"VCHIP_IMAGE", other_}}, [] {
    uint32_t ports = 0, untagged = 0, pvid = 0;
    if (vchip::platform().log_lines != 77 || !vchip::chip_faults().empty()) return 1;
    if (rtk_vlan_port_get(1, 9, &ports, &untagged) != 0) return 2;
    if (rtk_vlan_port_get(0, 9, &ports, &untagged) == 0) return 3;
    if (rtk_vlan_portPvid_get(1, 3, &pvid) != 0 || pvid != 9) return 4;
    // What the other knew nothing of is as after power-on.
    return rtk_l2_aging_get(1, &pvid) == 0 && pvid == 300 ? 0 : 5;
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
}

TEST_F(Convert, AnInterruptedReset) {
  std::string bytes = good_;
  std::fill_n(bytes.begin() + 4096, 100000, '\xff');
  set_word(bytes, vchip_test::kWriterAt, 2);
  write_sparse_file(image_, bytes);
  EXPECT_TRUE(vchip::convert_image(image_, other_).empty());
  EXPECT_NE(dump_of(other_).find("\"interrupted_writes\": 1,"), std::string::npos);
}

TEST_F(Convert, WhatIsNoChipIsRefused) {
  std::string bytes = good_;
  const uint64_t pvids = find(words_of(good_), "units[].vlan.pvids[]").offset;
  set_word(bytes, static_cast<size_t>(pvids), 5000);
  write_sparse_file(image_, bytes);
  EXPECT_EQ(refusal(),
            "1 words that no call could have left, the first of unit 0, vlan.pvids[0]: "
            "5000, expected 1 to 4094");
  bytes = good_;
  set_word(bytes, vchip_test::kVersionAt, 2);
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  write_sparse_file(image_, bytes);
  EXPECT_EQ(refusal(),
            "made by a version of the virtual chip that does not say what its words are");
  write_sparse_file(image_, good_.substr(0, good_.size() - 4096));
  EXPECT_EQ(refusal(), "not as long as it says");
  write_sparse_file(image_, "SWVCHIP\n");
  EXPECT_EQ(refusal(), "not a virtual chip image");
  EXPECT_FALSE(std::filesystem::exists(other_));
}

TEST_F(Convert, NothingThatIsThereIsOverwritten) {
  vchip_test::write_file(other_, "precious");
  EXPECT_EQ(refusal(), "image " + other_ + ": exists already");
  EXPECT_EQ(read_file(other_), "precious");
  EXPECT_EQ(files().size(), 2u);
}

TEST_F(Convert, OneThatIsInUse) {
  vchip_test::Gate opened, done;
  const pid_t other = vchip_test::start(image(), [&] {
    vchip_open();
    opened.open();
    done.wait();
    return 0;
  });
  opened.wait();
  EXPECT_EQ(refusal(), "in use: it cannot be read as a whole");
  done.open();
  EXPECT_EQ(vchip_test::wait_for(other), 0);
}

// Whatever the list says, nothing beyond the file is read, and it ends.
TEST_F(Convert, ADamagedListIsRefused) {
  std::mt19937 random(815);
  const std::string small = other_layout(good_);
  const size_t length = small.find('\0', kText) - kText;
  for (int round = 0; round < 300; ++round) {
    std::string bytes = small;
    bytes[kText + random() % length] = static_cast<char>(random() % 64 + ' ');
    if (bytes == small) continue;
    write_sparse_file(image_, bytes);
    const std::string text = refusal();
    ASSERT_TRUE(text == "the list of its words is damaged" ||
                text == "it does not say what its words are")
        << text;
  }
}

// The check at the end of the list is no protection from a list that was made to harm.
TEST_F(Convert, AListThatLeadsOutOfTheFileIsRefused) {
  for (const char *line :
       {"16 4 2*99999999 a[]", "16384 1 - a", "4294967296 4 - a", "18446744073709551615 8 - a",
        "16 4 18446744073709551615*1 a[]", "16 4 16777217*0 a[]", "16 4 0*4 a[]", "16 3 - a",
        "16 4 4096*0,4097*0 a[][]", "16 4 2*4 a", "16 4 - a[]", "16 4 -", "-1 4 - a", "x"}) {
    std::string text = std::string("swctl-vchip words 1\n") + line + "\n";
    uint32_t hash = vchip::kHashStart;
    for (const char byte : text) hash = vchip::hash_byte(hash, static_cast<uint8_t>(byte));
    text += "end " + std::to_string(hash) + "\n";
    WordList words;
    EXPECT_STREQ(vchip::parse_word_list(text, 16384, words), "the list of its words is damaged")
        << line;
  }
}

}  // namespace
