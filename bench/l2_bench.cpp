// SPDX-License-Identifier: MIT
// The address table of the virtual chip, through the library and by the same
// SDK calls made directly.
#include <swctl-vchip/vchip.h>
#include <swctl/l2.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

#include "pairs.h"

namespace {

constexpr uint32_t kVlan = 1;  // exists after power-on
constexpr uint32_t kFull = 16384;
constexpr uint32_t kChosen = 1000;  // entries that a selective delete removes
constexpr int32_t kChosenPort = 4;
constexpr double kWalkLimit = 1.05;

// Numbered addresses spread evenly, so that the table can be filled.
chip_l2_ucast_entry numbered(uint32_t number) {
  chip_l2_ucast_entry entry = {};
  entry.vid = kVlan;
  const uint8_t mac[SWCTL_MAC_BYTES] = {
      2, 0, 0, 0, static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)};
  memcpy(entry.mac, mac, sizeof entry.mac);
  entry.port = 3;
  return entry;
}

void add(const chip_l2_ucast_entry &entry) {
  if (rtk_l2_addr_add(0, &entry) != 0) abort();
}

void fill(uint32_t entries) {
  vchip_reset();
  for (uint32_t number = 0; number < entries; ++number) add(numbered(number));
}

// The loop that every walk is, with nothing around it.
template <typename Visit>
void walk_directly(Visit visit) {
  int32_t index = -1;
  chip_l2_ucast_entry entry = {};
  while (rtk_l2_nextValidAddr_get(0, &index, 1, &entry) == 0) {
    uint32_t members = 0;
    uint32_t untagged = 0;
    rtk_vlan_port_get(0, entry.vid, &members, &untagged);
    visit(entry);
  }
}

int32_t count_entry(uint32_t, chip_l2_ucast_entry *, void *data) {
  ++*static_cast<uint32_t *>(data);
  return 0;
}

template <uint32_t Entries>
void walk_library(benchmark::State &state) {
  fill(Entries);
  for (auto _ : state) {
    uint32_t count = 0;
    rtk_l2_traverse(0, count_entry, &count);
    if (count != Entries) abort();
  }
}

template <uint32_t Entries>
void walk_direct(benchmark::State &state) {
  fill(Entries);
  // What is done with an entry is a call on both sides, so that the loops alone
  // are compared.
  user_l2_walk_callback_t visit = count_entry;
  benchmark::DoNotOptimize(visit);
  for (auto _ : state) {
    uint32_t count = 0;
    walk_directly([&](chip_l2_ucast_entry &entry) { visit(0, &entry, &count); });
    if (count != Entries) abort();
  }
}

// Makes 1,000 entries, spread over the table, entries of port 4.
void choose(benchmark::State &state) {
  state.PauseTiming();
  for (uint32_t number = 0; number < kChosen; ++number) {
    chip_l2_ucast_entry entry = numbered(number * (kFull / kChosen));
    entry.port = kChosenPort;
    entry.flags = USER_L2_FLAG_STATIC;
    add(entry);
  }
  state.ResumeTiming();
}

void delete_library(benchmark::State &state) {
  fill(kFull);
  for (auto _ : state) {
    choose(state);
    user_l2_addr_delete_static_by_port(0, 0, 0, kChosenPort);
  }
}

// As the library logs each removal, so does this.
void delete_direct(benchmark::State &state) {
  fill(kFull);
  for (auto _ : state) {
    choose(state);
    walk_directly([](chip_l2_ucast_entry &entry) {
      if (entry.port != kChosenPort || !STATIC_ENTRY_TEST(entry.flags)) return;
      rtk_l2_addr_del(0, entry.vid, entry.mac);
      if (sys_trace_get() != 0) abort();
      const uint8_t *mac = entry.mac;
      Log_logging_func(6, 0, "STATIC-MAC",
                       "User remove static MAC %02x:%02x:%02x:%02x:%02x:%02x from network system\n",
                       mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
    });
  }
}

std::string dump_path() {
  return "/tmp/swctl-bench-" + std::to_string(getpid());
}

void dump_library(benchmark::State &state) {
  fill(kFull);
  const std::string path = dump_path();
  for (auto _ : state) {
    user_mac_table_show(0, path.c_str());
    FILE *file = fopen(path.c_str(), "r");
    uint32_t count = 0;
    user_l2_addr_t record = {};
    while (user_l2_mactable_fread(&record, file, 0) == 1) ++count;
    fclose(file);
    if (count != kFull) abort();
  }
  unlink(path.c_str());
}

void dump_direct(benchmark::State &state) {
  fill(kFull);
  const std::string path = dump_path();
  for (auto _ : state) {
    FILE *file = fopen(path.c_str(), "w+");
    walk_directly([=](chip_l2_ucast_entry &entry) { fwrite(&entry, sizeof entry, 1, file); });
    fclose(file);
    file = fopen(path.c_str(), "r");
    uint32_t count = 0;
    chip_l2_ucast_entry entry = {};
    while (fread(&entry, sizeof entry, 1, file) == 1) ++count;
    fclose(file);
    if (count != kFull) abort();
  }
  unlink(path.c_str());
}

user_l2_addr_t record_of(uint32_t number) {
  const chip_l2_ucast_entry entry = numbered(number);
  user_l2_addr_t record = {};
  memcpy(record.mac, entry.mac, sizeof record.mac);
  record.vid = kVlan;
  record.port = entry.port;
  return record;
}

// One addition to a table that is half full.
void add_library(benchmark::State &state) {
  fill(kFull / 2);
  uint32_t number = 0;
  for (auto _ : state) {
    if (user_mac_addr_add(0, record_of(number++ % kFull)) != 0) abort();
  }
}

void add_direct(benchmark::State &state) {
  fill(kFull / 2);
  uint32_t number = 0;
  for (auto _ : state) {
    const chip_l2_ucast_entry entry = numbered(number++ % kFull);
    if (rtk_l2_addr_add(0, &entry) != 0) abort();
  }
}

const Pair kPairs[] = {
    {"walk_1024_entries", walk_library<1024>, walk_direct<1024>, 0},
    {"walk_4096_entries", walk_library<4096>, walk_direct<4096>, 0},
    {"walk_16384_entries", walk_library<kFull>, walk_direct<kFull>, kWalkLimit},
    {"delete_1000_of_16384", delete_library, delete_direct, 0},
    {"dump_and_read_16384", dump_library, dump_direct, 0},
    {"add_one_entry", add_library, add_direct, 0},
};

}  // namespace

int main(int argc, char **argv) {
  setenv("VCHIP_LOG", "none", 1);
  unsetenv("VCHIP_IMAGE");
  return run_pairs(argc, argv, kPairs);
}
