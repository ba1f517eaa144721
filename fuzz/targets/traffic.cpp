// SPDX-License-Identifier: MIT
// Frames of any bytes between settings of any kind: calls of the library and
// calls of the SDK with words that the library never writes.
#include <swctl-vchip/frame.h>
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include "frames/frames.h"
#include "library/calls.h"
#include "support/stage.h"

namespace {

using swfuzz::Input;

// Rules whose action words hold anything are looked at where they are used.
void set_rule(Input &input) {
  const uint32_t rule = input.number();
  const uint32_t field = input.byte() % 64;
  uint8_t data[16];
  uint8_t mask[16];
  input.fill(data, sizeof data);
  input.fill(mask, sizeof mask);
  rtk_acl_ruleEntryField_write(0, 0, rule, field, data, mask);
  chip_acl_action action = {};
  for (int words = input.byte() % 8; words > 0; --words)
    action.word[input.byte() % (sizeof action / sizeof action.word[0])] = input.number();
  rtk_acl_ruleAction_set(0, 0, rule, &action);
  rtk_acl_ruleValidate_set(0, 0, rule, 1);
}

void set_mirror(Input &input) {
  chip_mirror_entry entry = {};
  entry.enable = 1;
  entry.mirroring_port = input.byte();
  entry.ingress = input.word();
  entry.egress = input.word();
  entry.field15 = input.byte() % 2;
  rtk_mirror_group_set(0, input.byte() % 4, &entry);
}

void set_conversion(Input &input) {
  chip_vlan_egress_entry entry = {};
  entry.valid = 1;
  entry.port = input.number();
  entry.vid = input.number();
  entry.second_key = input.number();
  entry.new_vid = input.number();
  const uint8_t ignored = input.byte();
  entry.ignore_port = ignored & 1;
  entry.ignore_vid = ignored >> 1 & 1;
  entry.ignore_second_key = ignored >> 2 & 1;
  rtk_vlan_egrVlanCnvtEntry_set(0, input.number(), &entry);
}

void step(Input &input) {
  switch (input.byte() % 8) {
    case 0: return swfuzz::make_calls(input, 1);
    case 1: return set_rule(input);
    case 2: return set_mirror(input);
    case 3: return set_conversion(input);
    case 4: vchip_clock_advance(input.word()); return;
    default: return swfuzz::send_frame(input);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  constexpr uint32_t kLookEvery = 4096;
  constexpr int kMostSteps = 24;
  swfuzz::reset();
  swfuzz::plug_cables();
  Input input(data, size);
  const swfuzz::Stage stage;
  for (int each = 0; each < kMostSteps && !input.empty(); ++each) step(input);
  swfuzz::take_frames();
  // All words of the chip take long to look at.
  static uint32_t inputs = 0;
  if (inputs++ % kLookEvery == 0) swfuzz::expect_possible();
  return 0;
}
