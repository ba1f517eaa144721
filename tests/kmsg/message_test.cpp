// SPDX-License-Identifier: MIT
// Building messages.
#include <swctl/kmsg.h>

#include <cstdlib>

#include "scripted_world.h"

namespace {

using namespace kmsg_test;

class Message : public KmsgTest {
 protected:
  // The bytes of what MSG_CreateMessage() makes; it must be there.
  Bytes created(const KernelMsgHeader &header) {
    observed_ = observe([&] { message_ = MSG_CreateMessage(&header); });
    return taken(header.length + 12);
  }
  Bytes created(uint32_t code, const Bytes &payload) {
    observed_ = observe([&] {
      message_ =
          MSG_CreateUserToKernelMessage(code, payload.data(), static_cast<int32_t>(payload.size()));
    });
    return taken(payload.size() + 12);
  }
  Bytes taken(size_t size) {
    if (message_ == nullptr) {
      ADD_FAILURE() << "no message";
      return {};
    }
    EXPECT_EQ(world().allocated[message_], size);
    const Bytes bytes = bytes_at(message_, size);
    free(message_);
    return bytes;
  }
  void expect_silent() { EXPECT_PRINTED(observed_.printed, "", ""); }

  Observed observed_;
  uint8_t *message_ = nullptr;
};

TEST_F(Message, HeaderIsLaidOutInTwelveBytes) {
  EXPECT_EQ(sizeof(KernelMsgHeader), 12u);
  const KernelMsgHeader fields = {1, 2, 3, 4, 5};
  EXPECT_EQ(bytes_at(&fields, 12), header(1, 2, 3, 4, 5));
}

TEST_F(Message, HeaderIsCopiedAsGivenAndThePayloadIsZero) {
  EXPECT_EQ(created(KernelMsgHeader{0xAAAA, 0xBBBB, 0xCCCC, 0xDDDD, 5}),
            header(0xAAAA, 0xBBBB, 0xCCCC, 0xDDDD, 5) + zeros(5));
  EXPECT_EQ(observed_.calls, (Lines{"calloc(17)"}));
  expect_silent();
}

TEST_F(Message, PayloadMayBeEmpty) {
  EXPECT_EQ(created(KernelMsgHeader{7, 1, 3, 0, 0}), header(7, 1, 3, 0, 0));
}

TEST_F(Message, LargestPayloadHas16384Bytes) {
  EXPECT_EQ(created(KernelMsgHeader{7, 1, 3, 0, 16384}), header(7, 1, 3, 0, 16384) + zeros(16384));
}

TEST_F(Message, LongerPayloadIsRefusedWithoutAllocating) {
  for (uint32_t length : {16385u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    const KernelMsgHeader header = {7, 1, 3, 0, length};
    observed_ = observe([&] { EXPECT_EQ(MSG_CreateMessage(&header), nullptr); });
    EXPECT_EQ(observed_.calls, Lines{}) << length;
    expect_silent();
  }
}

TEST_F(Message, WithoutMemoryThereIsNoMessage) {
  world().out_of_memory = true;
  const KernelMsgHeader header = {7, 1, 3, 0, 4};
  observed_ = observe([&] { EXPECT_EQ(MSG_CreateMessage(&header), nullptr); });
  EXPECT_EQ(observed_.calls, (Lines{"calloc(16)"}));
  expect_silent();
}

TEST_F(Message, CodeIsSplitIntoIdAndType) {
  EXPECT_EQ(created(0x00070005, {0xDE, 0xAD, 0xBE, 0xEF}),
            (header(7, 1, 5, 0, 4) + Bytes{0xDE, 0xAD, 0xBE, 0xEF}));
  EXPECT_EQ(observed_.calls, (Lines{"calloc(16)"}));
  EXPECT_EQ(created(0xFFFE8001, {9}), header(0xFFFE, 1, 0x8001, 0, 1) + Bytes{9});
  expect_silent();
}

TEST_F(Message, PayloadIsCopiedUpTo16384Bytes) {
  Bytes payload;
  for (int index = 0; index < 16384; ++index) payload.push_back(static_cast<uint8_t>(index * 7));
  EXPECT_EQ(created(0x10003, payload), header(1, 1, 3, 0, 16384) + payload);
  payload.push_back(1);
  observed_ = observe(
      [&] { EXPECT_EQ(MSG_CreateUserToKernelMessage(0x10003, payload.data(), 16385), nullptr); });
  EXPECT_EQ(observed_.calls, Lines{});
  expect_silent();
}

TEST_F(Message, WithoutPayloadThereIsNoMessage) {
  const uint8_t byte = 1;
  observed_ = observe([&] {
    EXPECT_EQ(MSG_CreateUserToKernelMessage(0x10003, nullptr, 4), nullptr);
    EXPECT_EQ(MSG_CreateUserToKernelMessage(0x10003, &byte, 0), nullptr);
    EXPECT_EQ(MSG_CreateUserToKernelMessage(0x10003, &byte, -1), nullptr);
    EXPECT_EQ(MSG_CreateUserToKernelMessage(0x10003, &byte, INT32_MIN), nullptr);
  });
  EXPECT_EQ(observed_.calls, Lines{});
  expect_silent();
}

TEST_F(Message, WithoutMemoryNothingIsSentOn) {
  world().out_of_memory = true;
  const uint8_t byte = 1;
  observed_ = observe([&] { EXPECT_EQ(MSG_CreateUserToKernelMessage(3, &byte, 1), nullptr); });
  EXPECT_EQ(observed_.calls, (Lines{"calloc(13)"}));
  expect_silent();
}

}  // namespace
