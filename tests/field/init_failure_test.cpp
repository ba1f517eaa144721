// SPDX-License-Identifier: MIT
// user_field_init() with each of its 384 pairs refused in turn. This program's
// own SDK calls come before all others: they note who was called
// and are quick.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <vector>

#include "support/library_test.h"

namespace {

struct Noted {
  char kind;  // t emplate, s elector, f ield, o peration
  int32_t index;

  bool operator==(const Noted &) const = default;
};
std::vector<Noted> noted;
int operations_until_refusal;
constexpr int32_t kRefusal = -77;

int32_t note(char kind, int32_t index) {
  noted.push_back({kind, index});
  return 0;
}

}  // namespace

int32_t rtk_acl_template_set(uint32_t, uint32_t index, const uint32_t *) {
  return note('t', static_cast<int32_t>(index));
}

int32_t rtk_acl_templateSelector_set(uint32_t, uint32_t index, uint32_t, uint32_t, uint32_t) {
  return note('s', static_cast<int32_t>(index));
}

int32_t rtk_acl_ruleEntryField_write(uint32_t, uint32_t, int32_t rule, uint32_t, const uint8_t *,
                                     const uint8_t *) {
  return note('f', rule);
}

int32_t rtk_acl_ruleOperation_set(uint32_t, uint32_t, int32_t rule, const chip_acl_operation *) {
  note('o', rule);
  return --operations_until_refusal == 0 ? kRefusal : 0;
}

namespace {

std::vector<Noted> run(int refused, int32_t expected) {
  noted.clear();
  operations_until_refusal = refused;
  EXPECT_EQ(user_field_init(0, 1), expected);
  return noted;
}

// The first rule of the nth pair, in the order in which pairs are made.
int32_t rule_of_pair(int nth) {
  const int32_t within = 2 * ((nth - 1) % 128);
  if (nth <= 128) return 1280 + within;
  return nth <= 256 ? 1024 + within : within;
}

TEST(FieldInitFailure, EveryPairStopsEverythingBehindIt) {
  const std::vector<Noted> whole = run(0, 0);
  ASSERT_EQ(whole.size(), 2u + 11u + 3u * 384u);
  for (int nth = 1; nth <= 384; ++nth) {
    testing::internal::CaptureStdout();
    const std::vector<Noted> made = run(nth, kRefusal);
    const char *line = nth <= 128 ? "00368" : nth <= 256 ? "00460" : "00534";
    ASSERT_EQ(testing::internal::GetCapturedStdout(),
              std::string("user_field_init:[") + line + "] call api failed, ret=-77 \n")
        << nth;
    ASSERT_LE(made.size(), whole.size());
    ASSERT_EQ(made.back(), (Noted{'o', rule_of_pair(nth)}));
    ASSERT_TRUE(std::equal(made.begin(), made.end(), whole.begin())) << nth;
  }
}

}  // namespace
