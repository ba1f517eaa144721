// SPDX-License-Identifier: MIT
#include "document/dump.h"
#include "switch/attack_block.h"
#include "switch/defaults_block.h"
#include "switch/switch_block.h"

namespace vchip {

void SwitchBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.flag("tag_counts_in_length", tag_counts());
    block.numbers("max_length", {max_length_.begin(), max_length_.end()});
    block.numbers("cpu_format", {cpu_format_.begin(), cpu_format_.end()});
  });
}

void DefaultsBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.flag("zero_source_learned", zero_source_learned());
    block.number("priority_source", priority_source_);
    block.flag("meters_count_gap", meters_count_gap());
  });
}

void AttackBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.ports("protected_ports", protected_ports_);
    block.numbers("action", {actions_.begin(), actions_.end()});
  });
}

}  // namespace vchip
