// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/mcast_l2.h>

#include "frame/port_mask.h"
#include "l2/entry.h"

namespace {

// Makes the file, has walk(file) fill it, and answers what the walk did.
template <typename Walk>
int32_t dump_to(const char *path, Walk walk) {
  FILE *file = fopen(path, "w+");
  if (file == nullptr) {
    puts("create mactable Error!!!!!!!!!!!!1");
    return -1;
  }
  const int32_t result = walk(file);
  fclose(file);
  return result;
}

template <typename Entry>
int32_t write_record(const Entry *entry, void *file) {
  const Entry copy = *entry;
  return static_cast<int32_t>(fwrite(&copy, sizeof copy, 1, static_cast<FILE *>(file)));
}

template <typename Entry>
bool read_record(Entry &entry, FILE *file) {
  return fread(&entry, sizeof entry, 1, file) == 1;
}

void convert_group(const chip_l2_mcast_entry &entry, User_mcast_addr_t &out) {
  out.vid = entry.vid;
  out.pbmp = swctl::bitmap_of(entry.portmask);
  memcpy(out.mac, entry.mac, sizeof out.mac);
}

int32_t read_group(void *out, FILE *file) {
  chip_l2_mcast_entry entry = {};
  if (!read_record(entry, file)) return 0;
  convert_group(entry, *static_cast<User_mcast_addr_t *>(out));
  return 1;
}

}  // namespace

int32_t user_mac_table_show(uint32_t, const char *path) {
  return dump_to(path, [](FILE *file) { return rtk_l2_traverse(0, test_fun3_callback, file); });
}

int32_t user_mac_mcast_table_show(uint32_t, const char *path) {
  return dump_to(path,
                 [](FILE *file) { return rtk_l2_mcast_traverse(0, test_fun4_callback, file); });
}

int32_t user_l2_mactable_fread(void *out, FILE *file, uint32_t mcast) {
  if (mcast != 0) return read_group(out, file);
  chip_l2_ucast_entry entry = {};
  if (!read_record(entry, file)) return 0;
  swctl::convert(entry, *static_cast<user_l2_addr_t *>(out));
  return 1;
}

int32_t user_bcm_l2_addr_dumptest(const chip_l2_ucast_entry *entry) {
  const uint8_t *mac = entry->mac;
  printf("MAC_ADDR=%02x:%02x:%02x:%02x:%02x:%02x, ", mac[0], mac[1], mac[2], mac[3], mac[4],
         mac[5]);
  printf("VLAN_TAG=0x%x, PORT=%d, TGID=%d", entry->vid, entry->port, entry->trunk);
  return printf(" FLAGS=0x%08x\n", entry->flags);
}

int32_t test_fun_callback(uint32_t, chip_l2_ucast_entry *entry, void *) {
  user_bcm_l2_addr_dumptest(entry);
  return 0;
}

int32_t test_fun3_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return write_record(entry, data);
}

int32_t test_fun4_callback(uint32_t, chip_l2_mcast_entry *entry, void *data) {
  return write_record(entry, data);
}
