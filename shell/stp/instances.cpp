// SPDX-License-Identifier: MIT
#include <swctl/stp.h>

#include "chip/call.h"
#include "stp/commands.h"
#include "stp/instance.h"

namespace swsh {
namespace {

Answer add_instance(const Arguments &arguments, const Context &context) {
  const uint32_t instance = arguments.u32("INSTANCE");
  perform(SWSH_CALL(user_stg_create_id), instance_text(instance), kLead, context.unit, instance);
  return {};
}

Answer remove_instance(const Arguments &arguments, const Context &context) {
  const uint32_t instance = existing(context, arguments.u32("INSTANCE"));
  perform(SWSH_CALL(user_stg_destroy), instance_text(instance), kLead, context.unit, instance);
  return {};
}

}  // namespace

Node stp_instance_commands() {
  return {.name = "instance",
          .help = "Make and destroy instances",
          .children = {{.name = "add",
                        .help = "Make an instance",
                        .positional = {instance_parameter(true)},
                        .run = add_instance},
                       {.name = "del",
                        .help = "Destroy an instance",
                        .positional = {instance_parameter(true)},
                        .run = remove_instance}}};
}

}  // namespace swsh
