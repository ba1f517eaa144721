// SPDX-License-Identifier: MIT
// The two burst sizes that all meters of a unit share.
#ifndef SWCTL_SHELL_OBJECTS_METER_BURST_H
#define SWCTL_SHELL_OBJECTS_METER_BURST_H

#include <swctl/platform/field_records.h>

#include <string>

#include "command/table.h"

namespace swsh {

// "meter 3"
std::string meter_text(uint32_t meter);

chip_acl_meter read_meter(const Context &context, uint32_t meter);
chip_acl_burst read_bursts(const Context &context);

// Not as after power-on.
bool is_meter_in_use(const chip_acl_meter &entry);
// On, or with a rate. A meter with a place for a burst size alone limits nothing and is
// in no configuration, so it keeps no other from that place.
bool needs_burst(const chip_acl_meter &entry);

// A slot with the burst size `word` for a meter. A slot that no other meter uses
// is written if none has the size. Throws a CommandError of status kRefused
// that says who uses which size if other meters use both.
uint32_t slot_with_burst(const Context &context, uint32_t meter, uint32_t word);
void write_bursts(const Context &context, const chip_acl_burst &bursts);

}  // namespace swsh

#endif
