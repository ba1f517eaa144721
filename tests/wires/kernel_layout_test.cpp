// SPDX-License-Identifier: MIT
// Members of structures in a description of types that is made here.
#include "kernel_layout.h"

#include <cstring>
#include <gtest/gtest.h>
#include <linux/btf.h>
#include <string>
#include <vector>

namespace {

using vchipd::Member;

class Description {
 public:
  void type(uint32_t kind, const std::string &name, uint32_t count, uint32_t size,
            bool has_bits = false) {
    add(types_, {name_of(name), (has_bits ? 1u << 31 : 0) | kind << 24 | count, size});
  }
  void member(const std::string &name, uint32_t type, uint32_t offset, uint32_t bits = 0) {
    add(types_, {name_of(name), type, bits << 24 | offset});
  }
  void details(std::initializer_list<uint32_t> words) { add(types_, words); }

  std::vector<uint8_t> bytes() const {
    btf_header header = {};
    header.magic = BTF_MAGIC;
    header.version = BTF_VERSION;
    header.hdr_len = sizeof header;
    header.type_len = static_cast<uint32_t>(types_.size());
    header.str_off = header.type_len;
    header.str_len = static_cast<uint32_t>(names_.size());
    std::vector<uint8_t> all(sizeof header);
    memcpy(all.data(), &header, sizeof header);
    all.insert(all.end(), types_.begin(), types_.end());
    all.insert(all.end(), names_.begin(), names_.end());
    return all;
  }

 private:
  static void add(std::vector<uint8_t> &to, std::initializer_list<uint32_t> words) {
    for (const uint32_t word : words) {
      const auto *bytes = reinterpret_cast<const uint8_t *>(&word);
      to.insert(to.end(), bytes, bytes + sizeof word);
    }
  }
  uint32_t name_of(const std::string &name) {
    if (name.empty()) return 0;
    const auto place = static_cast<uint32_t>(names_.size());
    names_.insert(names_.end(), name.begin(), name.end());
    names_.push_back(0);
    return place;
  }

  std::vector<uint8_t> types_;
  std::vector<uint8_t> names_ = {0};
};

// struct packet { int head; union { struct { int flag : 2 at bit 12; int start; }; int other; }; }
// after types of every kind that something follows.
Description packet() {
  Description made;
  made.type(BTF_KIND_INT, "int", 0, 4);  // 1
  made.details({32});
  made.type(BTF_KIND_ARRAY, "", 0, 0);
  made.details({1, 1, 4});
  made.type(BTF_KIND_ENUM, "colour", 1, 4);
  made.details({0, 0});
  made.type(BTF_KIND_FUNC_PROTO, "", 1, 0);
  made.details({0, 1});
  made.type(BTF_KIND_ENUM64, "wide", 1, 8);
  made.details({0, 0, 0});
  made.type(BTF_KIND_STRUCT, "", 2, 8, true);  // 6
  made.member("flag", 1, 12, 2);
  made.member("start", 1, 32);
  made.type(BTF_KIND_UNION, "", 2, 8);  // 7
  made.member("", 6, 0);
  made.member("other", 1, 0);
  made.type(BTF_KIND_STRUCT, "packet", 2, 12);  // 8
  made.member("head", 1, 0);
  made.member("", 7, 64);
  return made;
}

std::vector<Member> find(const std::vector<uint8_t> &bytes, std::vector<std::string_view> names,
                         std::string_view structure = "packet") {
  std::vector<Member> members(names.size());
  if (!vchipd::find_members(bytes, structure, names, members)) members.clear();
  return members;
}

TEST(KernelLayout, MembersOfStructuresWithoutAName) {
  const std::vector<Member> found = find(packet().bytes(), {"head", "flag", "start", "other"});
  ASSERT_EQ(found.size(), 4u);
  const uint32_t offsets[] = {0, 64 + 12, 64 + 32, 64};
  for (size_t place = 0; place < found.size(); ++place)
    EXPECT_EQ(found[place].offset, offsets[place]) << place;
  EXPECT_EQ(found[1].bits, 2u);
  EXPECT_EQ(found[2].bits, 0u);
}

TEST(KernelLayout, WhatIsNotThereIsNotFound) {
  EXPECT_TRUE(find(packet().bytes(), {"head", "tail"}).empty());
  EXPECT_TRUE(find(packet().bytes(), {"head"}, "socket").empty());
  EXPECT_TRUE(find({}, {"head"}).empty());
}

TEST(KernelLayout, NoPartOfADescriptionLeadsOutOfIt) {
  const std::vector<uint8_t> whole = packet().bytes();
  for (size_t size = 0; size < whole.size(); ++size)
    EXPECT_TRUE(
        find({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}, {"head", "start"})
            .empty())
        << size;
  for (size_t place = 0; place < whole.size(); ++place)
    for (const uint8_t value : {uint8_t{0}, uint8_t{0x7f}, uint8_t{0xff}}) {
      std::vector<uint8_t> damaged = whole;
      damaged[place] = value;
      find(damaged, {"head", "flag", "start", "other"});
    }
}

}  // namespace
