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

void dump_chip(Dump &document, const State &state, const std::string &image) {
  if (image.empty()) {
    document.null("image");
  } else {
    document.text("image", image);
  }
  document.number("interrupted_writes", state.header.interrupted_writes);
  state.platform.dump("platform", document);
  state.rules.dump("rules", document);
  document.objects("units", VCHIP_UNITS, [&](Dump &entry, size_t unit) {
    entry.number("unit", static_cast<int64_t>(unit));
    each_block(state.units[unit],
               [&](const char *name, const auto &block) { block.dump(name, entry); });
  });
}

}  // namespace

std::string dump_json(int indent) {
  std::string image;
  const Copy copy = take_copy(image);
  return json_text(indent, [&](Dump &document) { dump_chip(document, copy.state(), image); });
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
