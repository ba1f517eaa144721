// SPDX-License-Identifier: MIT
// The block of rules alone, as the pipeline reads it.
#include "acl/acl_block.h"

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <memory>
#include <numeric>
#include <vector>

namespace {

using testing::Each;
using vchip::AclRule;
using vchip::kAclFields;
using Bytes = std::vector<uint8_t>;

constexpr uint32_t kRule = 5;
constexpr size_t kTemplate = vchip::place_of_field(CHIP_ACL_FIELD_TEMPLATE);
constexpr size_t kMac = vchip::place_of_field(CHIP_ACL_FIELD_DST_MAC);
constexpr size_t kPort = vchip::place_of_field(CHIP_ACL_FIELD_L4_DST_PORT);

class AclBlockAlone : public testing::Test {
 protected:
  // From zeroes, as power-on is.
  void SetUp() override {
    memset(static_cast<void *>(block_.get()), 0, sizeof *block_);
    block_->power_on();
  }

  void write(size_t place, uint8_t first) {
    Bytes data(CHIP_ACL_FIELD_MAX_BYTES);
    std::iota(data.begin(), data.end(), first);
    const Bytes mask(CHIP_ACL_FIELD_MAX_BYTES, 0xFF);
    block_->write_field(kRule, place, data.data(), mask.data());
  }

  const AclRule &rule() const { return block_->rule(kRule); }
  // What only a killed call can do to a rule.
  AclRule &half_written() { return const_cast<AclRule &>(rule()); }

  Bytes data_of(size_t place) const {
    const uint8_t *start = rule().field(place).data;
    return {start, start + chip_acl_field_bytes(kAclFields[place].id)};
  }

  std::unique_ptr<vchip::AclBlock> block_ = std::make_unique<vchip::AclBlock>();
};

TEST_F(AclBlockAlone, EveryFieldHasBytesOfItsOwn) {
  for (size_t place = 0; place < kAclFields.size(); ++place)
    write(place, static_cast<uint8_t>(place * 3));
  for (size_t place = 0; place < kAclFields.size(); ++place) {
    Bytes expected(chip_acl_field_bytes(kAclFields[place].id));
    std::iota(expected.begin(), expected.end(), static_cast<uint8_t>(place * 3));
    EXPECT_EQ(data_of(place), expected) << kAclFields[place].name;
  }
}

TEST_F(AclBlockAlone, OnlyFieldsThatWereWrittenAreInTheMask) {
  EXPECT_THAT(rule().mask, Each(0));
  write(kMac, 1);
  EXPECT_EQ(std::ranges::count(rule().mask, 0xFF), SWCTL_MAC_BYTES);
  EXPECT_EQ(std::ranges::count(rule().mask, 0), vchip::kMatchBytes - SWCTL_MAC_BYTES);
}

TEST_F(AclBlockAlone, ClearingLeavesTheTemplate) {
  write(kTemplate, 7);
  write(kMac, 1);
  write(kPort, 1);
  block_->set_action(kRule, {{1, 2, 28}});
  block_->clear(kRule);
  EXPECT_EQ(data_of(kTemplate), Bytes{7});
  EXPECT_EQ(std::ranges::count(rule().mask, 0), vchip::kMatchBytes - 1);
  EXPECT_EQ(std::ranges::count(rule().data, 0), vchip::kMatchBytes - 1);
  EXPECT_THAT(block_->action(kRule).word, Each(0u));
}

TEST_F(AclBlockAlone, RepairTakesAwayWhatIsHalfWritten) {
  write(kMac, 1);
  write(kPort, 1);
  block_->set_action(kRule, {{1, 2, 28}});
  half_written().written &= ~(1u << kMac);
  half_written().has_action = 0;
  half_written().mask[vchip::kMatchBytes - 1] = 1;
  block_->repair();
  EXPECT_THAT(data_of(kMac), Each(0));
  EXPECT_EQ(data_of(kPort), (Bytes{1, 2}));
  EXPECT_EQ(std::ranges::count(rule().mask, 0), vchip::kMatchBytes - 2);
  EXPECT_THAT(block_->action(kRule).word, Each(0u));
}

}  // namespace
