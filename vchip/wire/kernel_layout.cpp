// SPDX-License-Identifier: MIT
#include "kernel_layout.h"

#include <array>
#include <bit>
#include <cstring>
#include <fcntl.h>
#include <linux/btf.h>
#include <sys/stat.h>
#include <vector>

#include "mapping.h"
#include "os/descriptor.h"

namespace vchipd {
namespace {

constexpr const char *kTypesOfKernel = "/sys/kernel/btf/vmlinux";
// CHECKSUM_PARTIAL: the sender has left it to its interface.
constexpr uint32_t kChecksumAsked = 3;
constexpr uint32_t kDepth = 8;  // of structures without a name in each other

// The types that such a description has, by number.
class Types {
 public:
  explicit Types(std::span<const uint8_t> bytes);

  explicit operator bool() const { return !places_.empty(); }
  const btf_type *find_structure(std::string_view name) const;
  std::optional<Member> find_member(const btf_type &type, std::string_view name,
                                    uint32_t depth) const;

 private:
  static size_t details(const btf_type &type);
  std::string_view name(uint32_t offset) const;
  const btf_type *at(uint32_t number) const;

  std::span<const uint8_t> types_;
  std::span<const uint8_t> names_;
  std::vector<uint32_t> places_;  // of type 1 and so on
};

bool is_structure(const btf_type &type) {
  const uint32_t kind = BTF_INFO_KIND(type.info);
  return kind == BTF_KIND_STRUCT || kind == BTF_KIND_UNION;
}

// The bytes that follow a type.
size_t Types::details(const btf_type &type) {
  const size_t count = BTF_INFO_VLEN(type.info);
  switch (BTF_INFO_KIND(type.info)) {
    case BTF_KIND_INT:
    case BTF_KIND_VAR:
    case BTF_KIND_DECL_TAG: return sizeof(uint32_t);
    case BTF_KIND_ARRAY: return sizeof(btf_array);
    case BTF_KIND_STRUCT:
    case BTF_KIND_UNION: return count * sizeof(btf_member);
    case BTF_KIND_ENUM: return count * sizeof(btf_enum);
    case BTF_KIND_ENUM64: return count * sizeof(btf_enum64);
    case BTF_KIND_FUNC_PROTO: return count * sizeof(btf_param);
    case BTF_KIND_DATASEC: return count * sizeof(btf_var_secinfo);
    default: return 0;
  }
}

Types::Types(std::span<const uint8_t> bytes) {
  btf_header header = {};
  if (bytes.size() < sizeof header) return;
  memcpy(&header, bytes.data(), sizeof header);
  if (header.magic != BTF_MAGIC || header.hdr_len > bytes.size()) return;
  if (header.hdr_len % alignof(btf_type) != 0 || header.type_off % alignof(btf_type) != 0) return;
  const std::span<const uint8_t> rest = bytes.subspan(header.hdr_len);
  if (uint64_t{header.type_off} + header.type_len > rest.size() ||
      uint64_t{header.str_off} + header.str_len > rest.size())
    return;
  types_ = rest.subspan(header.type_off, header.type_len);
  names_ = rest.subspan(header.str_off, header.str_len);
  for (size_t place = 0; place + sizeof(btf_type) <= types_.size();) {
    const auto &type = *reinterpret_cast<const btf_type *>(types_.data() + place);
    const size_t next = place + sizeof type + details(type);
    if (next > types_.size()) return;
    places_.push_back(static_cast<uint32_t>(place));
    place = next;
  }
}

std::string_view Types::name(uint32_t offset) const {
  if (offset >= names_.size()) return {};
  const auto *begin = reinterpret_cast<const char *>(names_.data() + offset);
  return {begin, strnlen(begin, names_.size() - offset)};
}

const btf_type *Types::at(uint32_t number) const {
  if (number == 0 || number > places_.size()) return nullptr;
  return reinterpret_cast<const btf_type *>(types_.data() + places_[number - 1]);
}

const btf_type *Types::find_structure(std::string_view wanted) const {
  for (uint32_t number = 1; number <= places_.size(); ++number) {
    const btf_type *type = at(number);
    if (BTF_INFO_KIND(type->info) == BTF_KIND_STRUCT && name(type->name_off) == wanted) return type;
  }
  return nullptr;
}

std::optional<Member> Types::find_member(const btf_type &type, std::string_view wanted,
                                         uint32_t depth) const {
  const bool has_bits = BTF_INFO_KFLAG(type.info);
  const auto *members = reinterpret_cast<const btf_member *>(&type + 1);
  for (uint32_t place = 0; place < BTF_INFO_VLEN(type.info); ++place) {
    const btf_member &member = members[place];
    const uint32_t offset = has_bits ? BTF_MEMBER_BIT_OFFSET(member.offset) : member.offset;
    const uint32_t bits = has_bits ? BTF_MEMBER_BITFIELD_SIZE(member.offset) : 0;
    if (name(member.name_off) == wanted) return Member{offset, bits};
    const btf_type *inner = member.name_off == 0 && depth != 0 ? at(member.type) : nullptr;
    if (inner == nullptr || !is_structure(*inner)) continue;
    if (const auto found = find_member(*inner, wanted, depth - 1))
      return Member{offset + found->offset, found->bits};
  }
  return std::nullopt;
}

// Several megabytes, which are mapped, so that the heap does not keep them.
struct Description {
  Mapping memory;
  size_t size = 0;
};

Description read_description(const char *path) {
  Description made;
  const os::Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
  struct stat status = {};
  if (!file || fstat(file.get(), &status) != 0 || status.st_size <= 0) return made;
  const auto room = static_cast<size_t>(status.st_size);
  void *memory = mmap(nullptr, room, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return made;
  made.memory = Mapping(memory, room);
  while (made.size < room) {
    const ssize_t count = read(file.get(), made.memory.at(made.size), room - made.size);
    if (count <= 0) break;
    made.size += static_cast<size_t>(count);
  }
  return made;
}

// Of 64 bits with the lowest byte first, as the processors are on which speed matters.
std::optional<PacketLayout> look_up_layout() {
  if (sizeof(void *) != 8 || std::endian::native != std::endian::little) return std::nullopt;
  constexpr std::array<std::string_view, 5> kNames = {"head", "data", "csum_start", "csum_offset",
                                                      "ip_summed"};
  std::array<Member, kNames.size()> found = {};
  const Description types = read_description(kTypesOfKernel);
  if (!find_members({types.memory.at(0), types.size}, "sk_buff", kNames, found))
    return std::nullopt;
  const Member &state = found.back();
  const uint32_t shift = state.offset % 8;
  if (state.bits != 2 || shift + state.bits > 8) return std::nullopt;
  return PacketLayout{found[0].offset / 8,    found[1].offset / 8, found[2].offset / 8,
                      found[3].offset / 8,    state.offset / 8,    3u << shift,
                      kChecksumAsked << shift};
}

}  // namespace

bool find_members(std::span<const uint8_t> btf, std::string_view structure,
                  std::span<const std::string_view> names, std::span<Member> members) {
  const Types types(btf);
  const btf_type *type = types ? types.find_structure(structure) : nullptr;
  if (type == nullptr) return false;
  for (size_t place = 0; place < names.size(); ++place) {
    const std::optional<Member> found = types.find_member(*type, names[place], kDepth);
    if (!found) return false;
    members[place] = *found;
  }
  return true;
}

const std::optional<PacketLayout> &packet_layout() {
  static const std::optional<PacketLayout> layout = look_up_layout();
  return layout;
}

}  // namespace vchipd
