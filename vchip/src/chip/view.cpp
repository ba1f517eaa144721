// SPDX-License-Identifier: MIT
// The chip as a whole, as a document and as bytes.
#include <swctl-vchip/memory.h>
#include <swctl-vchip/view.h>

#include <string>

#include "chip/check.h"
#include "chip/copy.h"
#include "chip/viewing.h"
#include "document/dump.h"

namespace vchip {
namespace {

bool is_wanted(const DumpPart &part, const std::string &block) {
  return part.block.empty() || part.block == block;
}

void dump_unit(Dump &entry, const Unit &unit, const DumpPart &part) {
  each_block(unit, [&](const char *name, const auto &block) {
    if (is_wanted(part, name)) block.dump(name, entry);
  });
}

void dump_chip(Dump &document, const State &state, const std::string &image, const DumpPart &part) {
  if (image.empty()) {
    document.null("image");
  } else {
    document.text("image", image);
  }
  document.number("interrupted_writes", state.header.interrupted_writes);
  if (is_wanted(part, "platform")) state.platform.dump("platform", document);
  if (is_wanted(part, "rules")) state.rules.dump("rules", document);
  document.objects("units", VCHIP_UNITS, [&](Dump &entry, size_t unit) {
    entry.number("unit", static_cast<int64_t>(unit));
    if (part.unit < 0 || static_cast<size_t>(part.unit) == unit)
      dump_unit(entry, state.units[unit], part);
  });
}

}  // namespace

std::string dump_json(int indent) {
  return dump_json(indent, {});
}

std::string dump_json(int indent, const DumpPart &part) {
  std::string image;
  const Copy copy = take_copy(image);
  return json_text(indent, [&](Dump &document) { dump_chip(document, copy.state(), image, part); });
}

std::vector<Fault> chip_faults() {
  std::string image;
  const Copy copy = take_copy(image);
  return faults_of(copy.state());
}

Memory memory() {
  Locked chip;
  if (!chip) throw std::runtime_error(vchip_result_text(chip.fault()));
  // The caller may put back other settings without a call.
  ++chip.state().header.revision;
  return {&chip.state().platform, sizeof chip.state() - sizeof(Header)};
}

}  // namespace vchip
