// SPDX-License-Identifier: MIT
// Documents for programs in other languages: those of the views, and sentences.
#include <swctl-vchip/document.h>
#include <swctl-vchip/explain.h>
#include <swctl-vchip/frame.h>
#include <swctl-vchip/view.h>

#include <array>

#include "private_chip.h"

namespace {

using DocumentTest = vchip_test::PrivateChip;

struct Written {
  int32_t result;
  std::string text;
};

template <class Write>
Written written(Write write) {
  char *text = nullptr;
  const int32_t result = write(&text);
  Written found = {result, text == nullptr ? "" : text};
  vchip_text_free(text);
  return found;
}

Written dumped(int32_t unit, const char *block) {
  return written([&](char **text) { return vchip_dump_text(unit, block, text); });
}

Written explained(uint32_t unit, int32_t port, uint32_t length) {
  const std::array<uint8_t, VCHIP_FRAME_MIN> frame = {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 2};
  return written(
      [&](char **text) { return vchip_explain_text(unit, port, frame.data(), length, text); });
}

TEST_F(DocumentTest, ADumpIsThatOfTheView) {
  EXPECT_EQ(dumped(-1, nullptr).result, 0);
  EXPECT_EQ(dumped(-1, nullptr).text, vchip::dump_json(-1));
  EXPECT_EQ(dumped(-1, "").text, vchip::dump_json(-1));
  EXPECT_EQ(dumped(1, "vlan").text, vchip::dump_json(-1, {1, "vlan"}));
}

TEST_F(DocumentTest, ADumpOfNoUnitIsRefused) {
  for (const int32_t unit : {-2, VCHIP_UNITS}) {
    EXPECT_EQ(dumped(unit, nullptr).result, VCHIP_E_UNIT);
    EXPECT_EQ(dumped(unit, nullptr).text, "there is no such switch unit");
  }
  EXPECT_EQ(vchip_dump_text(0, nullptr, nullptr), VCHIP_E_NULL);
}

TEST_F(DocumentTest, AnExplanationIsThatOfExplain) {
  const std::array<uint8_t, VCHIP_FRAME_MIN> frame = {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 2};
  EXPECT_EQ(explained(0, 3, VCHIP_FRAME_MIN).result, 0);
  EXPECT_EQ(explained(0, 3, VCHIP_FRAME_MIN).text,
            vchip::explain_json(0, 3, frame.data(), VCHIP_FRAME_MIN));
}

TEST_F(DocumentTest, AnExplanationOfWhatCannotBeIsRefused) {
  EXPECT_EQ(explained(0, VCHIP_PORTS, VCHIP_FRAME_MIN).result, VCHIP_E_PORT);
  EXPECT_EQ(explained(VCHIP_UNITS, 0, VCHIP_FRAME_MIN).result, VCHIP_E_PORT);
  EXPECT_EQ(explained(0, 0, VCHIP_FRAME_MIN - 1).result, VCHIP_E_VALUE);
  EXPECT_NE(explained(0, 0, VCHIP_FRAME_MIN - 1).text, "");
  char *text = nullptr;
  EXPECT_EQ(vchip_explain_text(0, 0, nullptr, VCHIP_FRAME_MIN, &text), VCHIP_E_NULL);
}

}  // namespace
