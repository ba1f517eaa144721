// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FIELD_ACTION_WORDS_H
#define SWCTL_SRC_FIELD_ACTION_WORDS_H

#include <swctl/platform/field_records.h>

namespace swctl {

// Merges one generic action into a rule's action record. An action that is not
// known changes nothing.
void merge_action(chip_acl_action &record, uint32_t action, uint32_t param0, uint32_t param1);

}  // namespace swctl

#endif
