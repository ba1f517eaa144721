// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "chip/absent.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/l2_walk.h"
#include "fault.h"
#include "objects/mac.h"
#include "text.h"

namespace swsh {
namespace {

constexpr uint32_t kUnicast = 0;
constexpr uint32_t kMulticast = 1;

struct Close {
  void operator()(FILE *file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, Close>;

CommandError bad_file(const std::string &path, const std::string &what) {
  Fault fault;
  fault.status = kRefused;
  fault.message = in_quotes(path) + ' ' + what;
  fault.culprit = path;
  return CommandError(fault);
}

File open_dump(const std::string &path) {
  File file(fopen(path.c_str(), "r"));
  if (!file && errno == ENOENT) throw there_is_no("file", in_quotes(path));
  if (!file) throw bad_file(path, std::string("cannot be opened: ") + strerror(errno));
  return file;
}

size_t record_size(bool groups) {
  return groups ? sizeof(chip_l2_mcast_entry) : sizeof(chip_l2_ucast_entry);
}

// Throws if the file is no whole dump.
void expect_whole(FILE *file, const std::string &path, bool groups) {
  const long length = fseek(file, 0, SEEK_END) == 0 ? ftell(file) : -1;
  rewind(file);
  if (length < 0) throw bad_file(path, "cannot be read");
  const auto bytes = static_cast<size_t>(length);
  if (bytes % record_size(groups) != 0) {
    throw bad_file(path, "is no whole dump: " + std::to_string(bytes) +
                             " bytes are no multiple of " + std::to_string(record_size(groups)));
  }
}

CommandError not_written(const std::string &path) {
  return bad_file(path, std::string("cannot be written: ") + strerror(errno));
}

// The same bytes as the library's own dump, which does not say whether the
// chip refused before the end or whether the file took them all.
template <typename Entry>
Record write_dump(const std::string &path, const std::vector<Entry> &entries) {
  File file(fopen(path.c_str(), "w"));
  if (!file) throw not_written(path);
  const size_t written = fwrite(entries.data(), sizeof(Entry), entries.size(), file.get());
  if (fclose(file.release()) != 0 || written != entries.size()) throw not_written(path);
  return Record().add("file", path).add("entries", static_cast<int64_t>(entries.size()));
}

Answer dump(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const std::string &path = arguments.word("FILE");
  const Record record = arguments.has("groups") ? write_dump(path, read_groups(context.unit))
                                                : write_dump(path, read_address_entries());
  return {Shape::detail, {record}, ""};
}

Record read_group(const Interfaces &interfaces, FILE *file, bool &more) {
  User_mcast_addr_t group = {};
  more = user_l2_mactable_fread(&group, file, kMulticast) == 1;
  return group_record(interfaces, group.mac, group.vid, group.pbmp.word[0]);
}

Record read_address(const Interfaces &interfaces, FILE *file, bool &more) {
  user_l2_addr_t entry = {};
  more = user_l2_mactable_fread(&entry, file, kUnicast) == 1;
  return address_record(interfaces, entry);
}

Answer view(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const std::string &path = arguments.word("FILE");
  const bool groups = arguments.has("groups");
  const File file = open_dump(path);
  expect_whole(file.get(), path, groups);
  const auto read = groups ? read_group : read_address;
  const Interfaces interfaces;
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  for (bool more = true; more;) {
    Record record = read(interfaces, file.get(), more);
    if (more) answer.records.push_back(std::move(record));
  }
  return answer;
}

Node file_command(const char *name, const char *help, Handler run) {
  return {
      .name = name,
      .help = help,
      .positional = {required("FILE", text(), "The dump file")},
      .keywords = {{.name = "groups",
                    .type = flag(),
                    .help = "Multicast groups instead of addresses"}},
      .details =
          "A dump holds the chip's records as they are in memory: it is read on a\n"
          "machine of the same byte order.\n",
      .run = run,
  };
}

}  // namespace

std::vector<Node> mac_dump_commands() {
  return {
      file_command("dump", "Write the table to a file", dump),
      file_command("restore-view", "Show what a dump file holds; nothing is changed", view),
  };
}

}  // namespace swsh
