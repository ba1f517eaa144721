// SPDX-License-Identifier: MIT
#include "stp/instance.h"

#include <swctl/stp.h>

#include "chip/absent.h"
#include "chip/call.h"
#include "chip/limits.h"

namespace swsh {
namespace {

bool exists(const Context &context, uint32_t instance) {
  return ask(SWSH_CALL(user_stp_isMstpInstanceExist_get), instance_text(instance), kLead,
             context.unit, instance) != 0;
}

}  // namespace

std::string instance_text(uint32_t instance) {
  return "instance " + std::to_string(instance);
}

uint32_t existing(const Context &context, uint32_t instance) {
  if (exists(context, instance)) return instance;
  throw there_is_no("instance", std::to_string(instance));
}

std::vector<uint32_t> chosen_instances(const Arguments &arguments, const Context &context) {
  if (arguments.has("INSTANCE")) return {existing(context, arguments.u32("INSTANCE"))};
  std::vector<uint32_t> all;
  for (uint32_t instance = 0; instance <= kLastInstance; ++instance)
    if (exists(context, instance)) all.push_back(instance);
  return all;
}

Parameter instance_parameter(bool required) {
  return {.name = "INSTANCE",
          .type = number(0, kLastInstance),
          .help = "Spanning-tree instance",
          .required = required};
}

}  // namespace swsh
