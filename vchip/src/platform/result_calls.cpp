// SPDX-License-Identifier: MIT
// What results mean, as a sentence.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/log.h>

namespace {

const char *sentence(int32_t result) {
  switch (result) {
    case 0: return "success";
    case VCHIP_E_UNIT: return "there is no such switch unit";
    case VCHIP_E_PORT: return "the unit has no such port";
    case VCHIP_E_NULL: return "a null address was given for an output or a record";
    case VCHIP_E_VALUE: return "a value is outside its range";
    case VCHIP_E_INDEX: return "an index is outside its table";
    case VCHIP_E_CPU_PORT: return "the CPU port has no such feature";
    case VCHIP_E_LINK: return "the port's link is down";
    case VCHIP_E_BUSY: return "another process holds the virtual chip's image";
    case VCHIP_E_IMAGE: return "the virtual chip's image cannot be used";
    case VCHIP_E_FIELD: return "a rule has no such match field";
    case VCHIP_E_L2_ENTRY: return "the layer-2 table has no such entry";
    case VCHIP_E_L2_FULL: return "the layer-2 table has no place for the entry";
    case VCHIP_E_L2_EXISTS: return "the multicast group exists already";
    case VCHIP_E_L2_LIMIT: return "the port's learning limit is reached";
    case VCHIP_E_MEDIUM: return "the port's medium has no such test";
    case VCHIP_E_NO_TEST: return "no cable test has been run on the port";
    case VCHIP_E_VLAN: return "there is no such VLAN";
    case VCHIP_E_RULE_KIND: return "there is no such kind of rule, qualifier or action";
    case VCHIP_E_DUPLICATE: return "the rule has such a qualifier or action already";
    case VCHIP_E_RULE_EXISTS: return "there is such a rule already";
    case VCHIP_E_NO_RULE: return "there is no such rule";
    case VCHIP_E_INSTANCE: return "there is no such spanning-tree instance";
    case VCHIP_E_INSTANCE_EXISTS: return "the spanning-tree instance exists already";
    case VCHIP_E_IP_MCAST_ENTRY: return "there is no such IP multicast entry";
    case VCHIP_E_IP_MCAST_FULL: return "the IP multicast table is full";
    case VCHIP_E_IP_MCAST_EXISTS: return "the IP multicast entry exists already";
    case VCHIP_E_TRUNK_MEMBER: return "a port belongs to another trunk";
    case VCHIP_VLAN_EXISTS: return "the VLAN exists already";
    default: return nullptr;
  }
}

}  // namespace

const char *vchip_result_text(int32_t result) {
  return sentence(result);
}

const char *swctl_platform_result_text(int32_t result) {
  return sentence(result);
}
