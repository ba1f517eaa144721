// SPDX-License-Identifier: MIT
// The table of sockets: places, keys and the mutex.
#include <swctl/kmsg.h>

#include <algorithm>
#include <csignal>

#include "kmsg/thread_sockets.h"
#include "scripted_world.h"

namespace {

using namespace kmsg_test;
using swctl::thread_sockets;
using swctl::ThreadSocketSlot;

// What Linux names SIGALRM; a child that hangs ends with it.
constexpr int kHung = SIGALRM;

class Table : public KmsgTest {
 protected:
  static bool is_locked() {
    if (pthread_mutex_trylock(&thread_sockets.mutex) != 0) return true;
    pthread_mutex_unlock(&thread_sockets.mutex);
    return false;
  }
  static void expect_slot(int index, uint32_t key, int32_t socket, uint32_t in_use) {
    const ThreadSocketSlot &slot = thread_sockets.slots[index];
    EXPECT_EQ(slot.key, key) << index;
    EXPECT_EQ(slot.socket, socket) << index;
    EXPECT_EQ(slot.inUse, in_use) << index;
  }
  static void fill(int places = 32) {
    for (int index = 0; index < places; ++index) {
      ASSERT_EQ(SetSockData(100 + index, static_cast<uint32_t>(1000 + index)), 0);
    }
  }
};

TEST_F(Table, StartsEmptyAndNotReady) {
  EXPECT_EQ(thread_sockets.ready, 0);
  EXPECT_EQ(thread_sockets.count, 0);
  for (int index = 0; index < 32; ++index) expect_slot(index, 0, 0, 0);
  EXPECT_FALSE(is_locked());
}

TEST_F(Table, SlotIsKeySocketAndUse) {
  EXPECT_EQ(std::size(thread_sockets.slots), 32u);
  EXPECT_EQ(sizeof(ThreadSocketSlot), 12u);
  EXPECT_EQ(offsetof(ThreadSocketSlot, key), 0u);
  EXPECT_EQ(offsetof(ThreadSocketSlot, socket), 4u);
  EXPECT_EQ(offsetof(ThreadSocketSlot, inUse), 8u);
}

TEST_F(Table, IsClearedOnceAndTheCountStays) {
  fill(3);
  Observed observed = observe([] { EXPECT_EQ(InitThreadSocketData(), 1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock"}));
  EXPECT_PRINTED(observed.printed, "", "");
  EXPECT_EQ(thread_sockets.ready, 1);
  EXPECT_EQ(thread_sockets.count, 3);
  for (int index = 0; index < 32; ++index) expect_slot(index, 0, 0, 0);

  fill(2);
  observed = observe([] { EXPECT_EQ(InitThreadSocketData(), 1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock"}));
  EXPECT_EQ(thread_sockets.count, 5);
  expect_slot(0, 1000, 100, 1);
  expect_slot(1, 1001, 101, 1);
  EXPECT_FALSE(is_locked());
}

TEST_F(Table, AnotherReadyValueThanOneIsCleared) {
  fill(1);
  thread_sockets.ready = 2;
  EXPECT_EQ(InitThreadSocketData(), 1);
  EXPECT_EQ(thread_sockets.ready, 1);
  expect_slot(0, 0, 0, 0);
}

TEST_F(Table, FirstFreePlaceIsTheLowestThatIsNotInUse) {
  EXPECT_EQ(GetFreeSockData(), 0);
  fill(5);
  EXPECT_EQ(GetFreeSockData(), 5);
  thread_sockets.slots[2].inUse = 0;  // its key does not count
  EXPECT_EQ(GetFreeSockData(), 2);
  thread_sockets.slots[2].inUse = 7;  // any value but 0 is taken
  EXPECT_EQ(GetFreeSockData(), 5);
}

TEST_F(Table, LookingForAPlaceTakesNoLock) {
  fill(31);
  const Observed observed = observe([] {
    EXPECT_EQ(GetFreeSockData(), 31);
    EXPECT_EQ(GetSockData(1030), 130);
  });
  EXPECT_EQ(observed.calls, Lines{});
  fill(1);
  EXPECT_EQ(GetFreeSockData(), -1);
}

TEST_F(Table, SocketIsStoredUnderTheLock) {
  const Observed observed = observe([] { EXPECT_EQ(SetSockData(42, 0x80000001u), 0); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock"}));
  EXPECT_PRINTED(observed.printed, "", "");
  expect_slot(0, 0x80000001u, 42, 1);
  expect_slot(1, 0, 0, 0);
  EXPECT_EQ(thread_sockets.count, 1);
  EXPECT_FALSE(is_locked());
}

TEST_F(Table, KeyMayBeStoredTwiceAndTheFirstIsFound) {
  SetSockData(42, 9);
  SetSockData(43, 9);
  EXPECT_EQ(GetSockData(9), 42);
  EXPECT_EQ(thread_sockets.count, 2);
}

TEST_F(Table, LookupGoesByKeyAlone) {
  fill(3);
  EXPECT_EQ(GetSockData(1002), 102);
  EXPECT_EQ(GetSockData(5), -1);
  thread_sockets.slots[2].inUse = 0;
  EXPECT_EQ(GetSockData(1002), 102) << "whether the place is in use does not count";
  EXPECT_EQ(GetSockData(0), 0) << "the first free place has key 0 and descriptor 0";
}

TEST_F(Table, LookupReachesTheLastPlace) {
  fill();
  EXPECT_EQ(GetSockData(1031), 131);
  EXPECT_EQ(GetSockData(0), -1);
}

TEST_F(Table, ReleaseClosesAndKeepsTheDescriptor) {
  fill(3);
  const Observed observed = observe([] { EXPECT_EQ(DeleteThreadSocket(1001), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(101)", "unlock"}));
  EXPECT_PRINTED(observed.printed, "", "");
  expect_slot(0, 1000, 100, 1);
  expect_slot(1, 0, 101, 0);
  expect_slot(2, 1002, 102, 1);
  EXPECT_EQ(thread_sockets.count, 2);
  EXPECT_EQ(GetSockData(1001), -1);
  EXPECT_FALSE(is_locked());
}

TEST_F(Table, ReleasedPlaceIsTakenNextIfItIsTheLowest) {
  fill(4);
  DeleteThreadSocket(1002);
  DeleteThreadSocket(1001);
  EXPECT_EQ(SetSockData(200, 2000), 0);
  expect_slot(1, 2000, 200, 1);
  EXPECT_EQ(SetSockData(201, 2001), 0);
  expect_slot(2, 2001, 201, 1);
}

TEST_F(Table, ReleaseVisitsEveryPlace) {
  fill();
  thread_sockets.slots[31].key = 1005;
  const Observed observed = observe([] { EXPECT_EQ(DeleteThreadSocket(1005), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(105)", "close(131)", "unlock"}));
  expect_slot(5, 0, 105, 0);
  expect_slot(31, 0, 131, 0);
  EXPECT_EQ(thread_sockets.count, 30);
}

TEST_F(Table, ReleaseOfAnUnknownKeyDoesNothing) {
  fill(2);
  const Observed observed = observe([] { EXPECT_EQ(DeleteThreadSocket(77), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock"}));
  EXPECT_EQ(thread_sockets.count, 2);
}

TEST_F(Table, ReleaseOfKeyZeroClosesWhatFreePlacesHold) {
  fill(3);
  DeleteThreadSocket(1001);
  const Observed observed = observe([] { EXPECT_EQ(DeleteThreadSocket(0), -1); });
  Lines expected = {"lock", "close(101)"};
  for (int index = 3; index < 32; ++index) expected.emplace_back("close(0)");
  expected.emplace_back("unlock");
  EXPECT_EQ(observed.calls, expected);
  EXPECT_EQ(thread_sockets.count, 2 - 30);
  expect_slot(0, 1000, 100, 1);
  expect_slot(1, 0, 101, 0);
}

TEST_F(Table, InnerReleaseTakesNoLock) {
  fill(2);
  const Observed observed = observe([] { EXPECT_EQ(SetFreeSockData(1000), -1); });
  EXPECT_EQ(observed.calls, (Lines{"close(100)"}));
  expect_slot(0, 0, 100, 0);
  EXPECT_EQ(thread_sockets.count, 1);
}

TEST_F(Table, FullTableRefusesAndStaysLocked) {
  fill();
  const Observed observed = observe([] { EXPECT_EQ(SetSockData(500, 5), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock"}));
  EXPECT_PRINTED(observed.printed, "max thread number already!\n", "");
  EXPECT_EQ(pthread_mutex_trylock(&thread_sockets.mutex), EBUSY);
  EXPECT_EQ(thread_sockets.count, 32);
  for (int index = 0; index < 32; ++index) {
    expect_slot(index, static_cast<uint32_t>(1000 + index), 100 + index, 1);
  }
}

TEST_F(Table, AfterAFullTableWhatLocksHangsAndLookupsGoOn) {
  fill();
  observe([] { SetSockData(500, 5); });
  Child clearing([] { InitThreadSocketData(); });
  Child storing([] { SetSockData(501, 6); });
  Child releasing([] { DeleteThreadSocket(1000); });
  Child looking([] {
    if (GetSockData(1031) != 131 || GetThreadSocket(1030) != 130 || GetFreeSockData() != -1)
      abort();
  });
  EXPECT_EQ(looking.signal(), 0);
  EXPECT_EQ(clearing.signal(), kHung);
  EXPECT_EQ(storing.signal(), kHung);
  EXPECT_EQ(releasing.signal(), kHung);
}

TEST_F(Table, BeforeItIsFullNothingHangs) {
  fill(31);
  Child working([] {
    InitThreadSocketData();
    SetSockData(501, 6);
    DeleteThreadSocket(1000);
  });
  EXPECT_EQ(working.signal(), 0);
}

}  // namespace
