// SPDX-License-Identifier: MIT
#include "pipeline/edit.h"

#include <bit>

#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kDscpShift = 2;
constexpr uint32_t kEcnMask = 3;
constexpr uint32_t kChecksumAt = 10;

// A tag to be written.
struct NewTag {
  bool there = false;
  uint32_t type = 0;
  uint32_t priority = 0;
  bool drop_eligible = false;
  uint32_t vid = 0;
};

// The tags of a frame that leaves: the VLAN's first, then the one inside.
struct NewTags {
  NewTag vlan;
  NewTag inside;
};

NewTag as_received(const Tag &tag, uint32_t type) {
  return {tag.there, type, tag.priority, tag.drop_eligible, tag.vid};
}

uint32_t either(uint32_t first, uint32_t otherwise) {
  return first != kUnset ? first : otherwise;
}

bool is_double(const Way &way, int32_t port) {
  return way.unit.tag.port(port).double_tag != 0;
}

// A trunk of which a VLAN names only some members is tagged as the lowest of
// those.
bool is_untagged(const Way &way, const Vlan &vlan, int32_t port) {
  const uint32_t group = way.tables.group[static_cast<size_t>(port)];
  const uint32_t named = vlan.member & group;
  const uint32_t one = named == group ? port_bit(port) : named & ~(named - 1);
  return (vlan.untagged & one) != 0;
}

bool converts(const chip_vlan_egress_entry &entry, const Way &way, int32_t port, uint32_t vid) {
  if (entry.ignore_port == 0 && entry.port != static_cast<uint32_t>(port)) return false;
  if (entry.ignore_vid == 0 && entry.vid != vid) return false;
  return entry.ignore_second_key != 0 || (way.inner.there && entry.second_key == way.inner.vid);
}

uint32_t converted_vid(const Way &way, int32_t port) {
  if ((way.tables.converted & port_bit(port)) == 0) return way.vid;
  for (const uint16_t index : way.tables.conversions) {
    const chip_vlan_egress_entry &entry = way.unit.conversion.egress(index);
    if (!converts(entry, way, port, way.vid)) continue;
    if (way.told())
      way.tell("tags", "convert",
               "entry " + number_text(index) + " makes " + vlan_text(entry.new_vid) + " of " +
                   vlan_text(way.vid) + " at " + port_text(port),
               "rtk_vlan_egrVlanCnvtEntry_set");
    return entry.new_vid;
  }
  return way.vid;
}

// Whether a tagged member in double-tag mode sends the VLAN's tag: one that came
// if it keeps outer tags, a new one if its frames leave with an outer tag.
bool leaves_with_outer(const PortTags &tags, bool came) {
  return (came && tags.egress_keep.outer != 0) || tags.outer_tag_status != 0;
}

NewTag vlan_tag(const Way &way, int32_t port) {
  const PortTags &tags = way.unit.tag.port(port);
  const bool outer = tags.double_tag != 0;
  const Vlan &vlan = way.unit.vlan.vlan(way.vid);
  if (is_untagged(way, vlan, port)) return {};
  if (outer && !leaves_with_outer(tags, way.tag.there)) return {};
  const QosPort &defaults = way.unit.qos.port(way.port);
  NewTag tag;
  tag.there = true;
  tag.vid = converted_vid(way, port);
  tag.type = outer ? way.unit.tag.outer()[tags.egress_outer_tpid]
                   : way.unit.tag.inner()[tags.egress_inner_tpid];
  if (way.tag.there && (!outer || tags.egress_keep.outer != 0)) {
    tag.priority = way.tag.priority;
    tag.drop_eligible = way.tag.drop_eligible;
  } else {
    tag.priority =
        either(way.edit.priority, outer ? defaults.outer_priority : defaults.inner_priority);
  }
  return tag;
}

// A tag inside is the customer's: it is carried, and only touched where a
// setting says so.
NewTag inside_tag(const Way &way, int32_t port) {
  if (!way.inner.there && way.edit.inner_vid == kUnset) return {};
  const PortTags &in = way.unit.tag.port(way.port);
  const PortTags &out = way.unit.tag.port(port);
  NewTag tag = as_received(way.inner, way.inner_type);
  const bool known = way.inner.there && in.ingress_keep.inner != 0;
  if (known && out.double_tag != 0 && out.egress_keep.inner == 0) return {};
  if (known || !tag.there) tag.type = way.unit.tag.inner()[out.egress_inner_tpid];
  if (!tag.there)
    tag.priority = either(way.edit.inner_priority, way.unit.qos.port(way.port).inner_priority);
  tag.there = true;
  tag.vid = either(way.edit.inner_vid, tag.vid);
  return tag;
}

// The tags as they came, for a port that is no member of the VLAN.
NewTags foreign_tags(const Way &way) {
  return {as_received(way.received, way.tag_type), as_received(way.inner, way.inner_type)};
}

bool is_member(const Way &way, int32_t port) {
  if (way.vid >= kVlanIds || !way.unit.vlan.exists(way.vid)) return false;
  return (way.tables.expand(way.unit.vlan.vlan(way.vid).member) & port_bit(port)) != 0;
}

// The inner tag of a port is its only one, or the one inside in double-tag mode.
void remark_tags(const Way &way, int32_t port, NewTags &tags) {
  NewTag &inner = is_double(way, port) ? tags.inside : tags.vlan;
  const bool writes = way.unit.qos.port(port).remarks != 0;
  if (writes && way.unit.qos.maps().remark_source == 0) inner.priority = way.priority;
  if (way.edit.remark == CHIP_ACL_REMARK_INNER) inner.priority = way.edit.remark_value;
  if (way.edit.remark == CHIP_ACL_REMARK_OUTER && is_double(way, port))
    tags.vlan.priority = way.edit.remark_value;
}

uint32_t write_tag(const NewTag &tag, uint8_t *to) {
  if (!tag.there) return 0;
  put_half(to, tag.type);
  put_half(to + 2, tag.priority << 13 | (tag.drop_eligible ? 0x1000u : 0) | tag.vid);
  return kTagBytes;
}

// RFC 1624: the checksum follows the change of one of its words.
void mend_checksum(uint8_t *header, uint32_t before, uint32_t after) {
  uint32_t sum = (~half_at(header + kChecksumAt) & 0xffff) + (~before & 0xffff) + after;
  sum = (sum & 0xffff) + (sum >> 16);
  sum = (sum & 0xffff) + (sum >> 16);
  put_half(header + kChecksumAt, ~sum & 0xffff);
}

void remark_dscp(const Way &way, uint8_t *header) {
  if (way.edit.remark != CHIP_ACL_REMARK_DSCP || !way.layers.ip4) return;
  const uint32_t before = half_at(header);
  header[1] = static_cast<uint8_t>(way.edit.remark_value << kDscpShift | (header[1] & kEcnMask));
  mend_checksum(header, before, half_at(header));
}

NewTags tags_of(const Way &way, int32_t port) {
  NewTags tags = is_member(way, port) ? NewTags{vlan_tag(way, port), inside_tag(way, port)}
                                      : foreign_tags(way);
  remark_tags(way, port, tags);
  return tags;
}

void tell_tags(const Way &way, int32_t port, const NewTags &tags) {
  const auto one = [](const NewTag &tag) {
    return vlan_text(tag.vid) + " priority " + number_text(tag.priority);
  };
  std::string why = port_text(port) + ": ";
  why += tags.vlan.there ? "tagged " + one(tags.vlan) : std::string("untagged");
  if (tags.inside.there) why += ", inside " + one(tags.inside);
  way.tell("tags", tags.vlan.there ? "tagged" : "untagged", why, "rtk_vlan_port_set");
}

}  // namespace

Frame write_frame(const Way &way, int32_t port, uint8_t *to) {
  const NewTags tags = tags_of(way, port);
  if (way.told()) tell_tags(way, port, tags);
  memcpy(to, way.frame.bytes, kAddressBytes);
  uint32_t length = kAddressBytes;
  length += write_tag(tags.vlan, to + length);
  length += write_tag(tags.inside, to + length);
  const uint32_t type_at = length;
  const bool same_tags = length == way.type_at && memcmp(to, way.frame.bytes, length) == 0;
  if (same_tags && way.edit.remark != CHIP_ACL_REMARK_DSCP && way.frame.length >= kMinBytes)
    return way.frame;
  memcpy(to + length, way.frame.bytes + way.type_at, way.frame.length - way.type_at);
  length += way.frame.length - way.type_at;
  remark_dscp(way, to + type_at + (way.layers.at - way.type_at));
  if (length < kMinBytes) {
    memset(to + length, 0, kMinBytes - length);
    length = kMinBytes;
  }
  return {to, length};
}

uint32_t queue_of(const Way &way) {
  return way.queue != kUnset ? way.queue : way.unit.qos.maps().queue[way.priority];
}

}  // namespace vchip
