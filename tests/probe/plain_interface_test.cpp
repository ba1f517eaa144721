// SPDX-License-Identifier: MIT
// The probe for programs in other languages: calls as lines, rules as text.
#include <swctl-probe/process.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace {

class PlainInterfaceTest : public testing::Test {
 protected:
  void SetUp() override {
    swprobe_rules_clear();
    swprobe_calls_forget();
  }
  void TearDown() override { SetUp(); }

  static std::string taken() {
    char *const text = swprobe_calls_take();
    std::string found = text;
    swprobe_text_free(text);
    return found;
  }
};

TEST_F(PlainInterfaceTest, CallsAreALineEach) {
  EXPECT_EQ(taken(), "");
  rtk_vlan_create(0, 10);
  rtk_vlan_create(1, 11);
  const std::string lines = taken();
  EXPECT_THAT(lines, testing::MatchesRegex("\\{\"number\":[0-9]+,\"call\":\"rtk_vlan_create\",.*\n"
                                           "\\{\"number\":.*\n"));
  EXPECT_THAT(lines, testing::HasSubstr("\"line\":\"rtk_vlan_create(unit=1, vid=11) = "));
  EXPECT_EQ(taken(), "");
}

TEST_F(PlainInterfaceTest, ARuleAnswersAndIsForgotten) {
  char *why = nullptr;
  ASSERT_EQ(swprobe_rule_add("rtk_vlan_create nth 2 result -5", &why), 0);
  EXPECT_NE(rtk_vlan_create(0, 10), -5);
  EXPECT_EQ(rtk_vlan_create(0, 10), -5);
  EXPECT_EQ(swprobe_made_up(), 1u);
  ASSERT_EQ(swprobe_rule_add("rtk_vlan_create result -6", &why), 0);
  swprobe_rules_clear();
  EXPECT_NE(rtk_vlan_create(0, 10), -6);
}

TEST_F(PlainInterfaceTest, ALineThatIsNoRuleIsRefusedWithItsWord) {
  char *why = nullptr;
  EXPECT_EQ(swprobe_rule_add("rtk_nothing result -5", &why), -1);
  ASSERT_NE(why, nullptr);
  EXPECT_THAT(why, testing::HasSubstr("rtk_nothing"));
  swprobe_text_free(why);
}

}  // namespace
