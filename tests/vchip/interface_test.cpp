// SPDX-License-Identifier: MIT
// What leaves the library: every call that there is, and a sentence per result.
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <dlfcn.h>
#include <set>
#include <string>
#include <vector>

#include "private_chip.h"

namespace {

using Interface = vchip_test::PrivateChip;

constexpr int32_t kResults[] = {
    VCHIP_E_UNIT,        VCHIP_E_PORT,     VCHIP_E_NULL,      VCHIP_E_VALUE,
    VCHIP_E_INDEX,       VCHIP_E_CPU_PORT, VCHIP_E_LINK,      VCHIP_E_IMAGE,
    VCHIP_E_BUSY,        VCHIP_E_VLAN,     VCHIP_E_RULE_KIND, VCHIP_E_DUPLICATE,
    VCHIP_E_RULE_EXISTS, VCHIP_E_NO_RULE,  VCHIP_E_MEDIUM,    VCHIP_E_NO_TEST,
};

TEST_F(Interface, EveryListedCallLivesInTheLibrary) {
  const std::vector<const char *> names = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) #name,
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
      "Log_logging_func",  "sys_trace_get",     "sys_trace_add_log",  "swctl_platform_result_text",
      "vchip_open",        "vchip_reset",       "vchip_cable_plug",   "vchip_cable_pull",
      "vchip_medium_set",  "vchip_trace_set",   "vchip_result_text",  "vchip_pair_set",
      "vchip_counter_set", "vchip_counter_add", "vchip_storm_exceed", "vchip_close",
  };
  for (const char *name : names) {
    void *address = dlsym(RTLD_DEFAULT, name);
    ASSERT_NE(address, nullptr) << name;
    Dl_info owner = {};
    ASSERT_NE(dladdr(address, &owner), 0) << name;
    EXPECT_NE(strstr(owner.dli_fname, "libswctl-vchip.so"), nullptr) << name << owner.dli_fname;
    EXPECT_STREQ(owner.dli_sname, name);
  }
}

TEST_F(Interface, InternalsAreHidden) {
  // Functions of the sources that are not marked as interface.
  for (const char *name :
       {"_ZN5vchip7refusalEv", "_ZN5vchip11reset_stateERNS_5StateE", "_ZN5vchip12interface_ofEi"})
    EXPECT_EQ(dlsym(RTLD_DEFAULT, name), nullptr) << name;
  // A marked one, so that the spelling above is known to be right.
  EXPECT_NE(dlsym(RTLD_DEFAULT, "_ZN5vchip11switch_wideEj"), nullptr);
}

TEST_F(Interface, EveryResultHasItsOwnSentence) {
  std::set<std::string> sentences;
  for (const int32_t result : kResults) {
    EXPECT_LT(result, 0);
    const char *sentence = vchip_result_text(result);
    ASSERT_NE(sentence, nullptr) << result;
    EXPECT_GT(strlen(sentence), 10u);
    EXPECT_EQ(strchr(sentence, '\n'), nullptr);
    EXPECT_TRUE(sentences.insert(sentence).second) << sentence;
    EXPECT_STREQ(swctl_platform_result_text(result), sentence);
  }
  EXPECT_STREQ(vchip_result_text(0), "success");
}

TEST_F(Interface, OtherNumbersHaveNoSentence) {
  for (const int32_t result : {-1, 1, -1000, -1010, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(vchip_result_text(result), nullptr) << result;
    EXPECT_EQ(swctl_platform_result_text(result), nullptr) << result;
  }
}

TEST_F(Interface, APrivateChipIsNeverRefused) {
  EXPECT_EQ(vchip_open(), nullptr);
}

}  // namespace
