// SPDX-License-Identifier: MIT
#ifndef VCHIP_ACL_ACL_ACTION_H
#define VCHIP_ACL_ACL_ACTION_H

#include <swctl/platform/field_records.h>

#include <string>
#include <vector>

namespace vchip {

// What the words of an action record tell the chip to do, one text each, in
// the order of the words. A word that the model has no name for is "word N is
// V".
std::vector<std::string> action_texts(const chip_acl_action &action);

}  // namespace vchip

#endif
