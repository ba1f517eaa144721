// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FIELD_PAIR_H
#define SWCTL_SRC_FIELD_PAIR_H

#include <cstdint>

namespace swctl {

// Which bits of the template field number the halves of a pair.
enum class PairMask { half_bits, whole_field };

// Numbers the halves of the double entry `rule` and `rule` + 1 in their
// template fields and joins them. The result is that of the joining; the other
// results are not looked at.
int32_t join_pair(uint32_t unit, int32_t rule, PairMask mask);

}  // namespace swctl

#endif
