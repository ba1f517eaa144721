// SPDX-License-Identifier: MIT
// Every call that sets something has an effect on some frame, or the table in
// docs/virtual-chip.md says why no frame shows it.
#include "settings.h"

#include <swctl/platform/adapter.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "random_settings.h"

namespace frames {
namespace {

using Names = std::set<std::string>;

bool ends_with(const std::string &text, const std::string &end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// A call of the lists that changes nothing: it reads, or translates a number.
bool only_reads(const std::string &call) {
  return ends_with(call, "_get") || ends_with(call, "_getAll") || call == "adp_intf_2_phy_id" ||
         call == "adp_phy_2_intf_id";
}

Names setting_calls() {
  const char *const listed[] = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) #name,
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  };
  Names calls;
  for (const char *call : listed)
    if (!only_reads(call)) calls.insert(call);
  return calls;
}

std::vector<Setting> settings() {
  std::vector<Setting> all;
  for (const auto &some :
       {port_setting::all(), vlan_setting::all(), forward_setting::all(), trap_setting::all(),
        qos_setting::all(), rate_setting::all(), rule_setting::all()})
    all.insert(all.end(), some.begin(), some.end());
  return all;
}

Names effects() {
  Names calls;
  for (const Setting &setting : settings()) calls.insert(setting.call);
  return calls;
}

// A row of a table in the guide: its cells, without the bars and quotes.
std::vector<std::string> cells_of(const std::string &line) {
  std::vector<std::string> cells;
  std::istringstream rest(line.substr(1));
  for (std::string cell; std::getline(rest, cell, '|');) {
    const auto plain = [](char letter) { return letter != ' ' && letter != '`'; };
    const auto first = std::find_if(cell.begin(), cell.end(), plain);
    const auto last = std::find_if(cell.rbegin(), cell.rend(), plain).base();
    cells.emplace_back(first < last ? std::string(first, last) : std::string());
  }
  return cells;
}

// Call and second cell of the rows under a heading. Every row counts, so that
// one that is there twice shows.
std::multimap<std::string, std::string> rows_under(const std::string &heading) {
  std::ifstream guide(SWCTL_VIRTUAL_CHIP_GUIDE);
  EXPECT_TRUE(guide) << SWCTL_VIRTUAL_CHIP_GUIDE;
  std::multimap<std::string, std::string> rows;
  bool inside = false;
  for (std::string line; std::getline(guide, line);) {
    if (line.rfind('#', 0) == 0) inside = line == heading;
    if (!inside || (line.rfind("| `rtk_", 0) != 0 && line.rfind("| `adp_", 0) != 0)) continue;
    const std::vector<std::string> cells = cells_of(line);
    if (cells.size() < 2) continue;
    rows.emplace(cells[0], cells[1]);
  }
  return rows;
}

constexpr const char *kWithEffect = "### Settings and where they act";
constexpr const char *kWithoutEffect = "### Settings without effect on frames";

Names names_of(const std::multimap<std::string, std::string> &rows) {
  Names names;
  for (const auto &[name, text] : rows) names.insert(name);
  EXPECT_EQ(names.size(), rows.size()) << "a call has two rows";
  return names;
}

TEST(EverySetting, HasAnEffectOrAReason) {
  const Names with = names_of(rows_under(kWithEffect));
  const Names without = names_of(rows_under(kWithoutEffect));
  Names both;
  std::set_intersection(with.begin(), with.end(), without.begin(), without.end(),
                        std::inserter(both, both.end()));
  EXPECT_EQ(both, Names()) << "in both tables";
  Names all = with;
  all.insert(without.begin(), without.end());
  EXPECT_EQ(all, setting_calls());
}

TEST(EverySetting, ThatActsHasATest) {
  EXPECT_EQ(names_of(rows_under(kWithEffect)), effects());
}

// The steps of the table of the way, and when a frame does not move.
TEST(EverySetting, ActsAtAStepOfTheWay) {
  const Names steps = {"port",   "length", "mac-control", "mirror-in", "ingress-rate", "attack",
                       "vlan",   "filter", "trap",        "state",     "learn",        "rule",
                       "lookup", "storm",  "egress",      "tags",      "queue"};
  for (const auto &[name, step] : rows_under(kWithEffect))
    EXPECT_EQ(steps.count(step), 1u) << name << step;
  for (const auto &[name, reason] : rows_under(kWithoutEffect))
    EXPECT_FALSE(reason.empty()) << name;
}

// What left every port, in the order in which it left: bytes, time, and why.
std::string outcome() {
  std::ostringstream text;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    for (const Left &left : Switch::taken(port)) {
      text << port << '<' << left.port_in << " reason " << left.reason << " at " << left.time
           << ':';
      for (const uint8_t byte : left.bytes) text << ' ' << static_cast<uint32_t>(byte);
      text << '\n';
    }
  return text.str();
}

class AnySetting : public Switch, public testing::WithParamInterface<Setting> {
 protected:
  static void prepare() {
    power_on();
    for (uint32_t entity = 0; entity < 40; ++entity) adp_fp_delete_entity_rule(entity, 0, 0);
    if (GetParam().prepare != nullptr) GetParam().prepare();
    // The chip has switched with these settings, so that one that it would only
    // look at later shows.
    send(27, Maker(kBroadcast, station(99)).tag(4095).type(0x88b5).bytes());
    left();
  }
};

// The same frames, on a chip that differs by one call.
TEST_P(AnySetting, SendsAFrameAnotherWay) {
  prepare();
  GetParam().traffic();
  const std::string without = outcome();
  prepare();
  ASSERT_EQ(GetParam().set(), 0);
  GetParam().traffic();
  const std::string with = outcome();
  EXPECT_TRUE(with != without) << "the frames go the same way";
  prepare();
  GetParam().traffic();
  EXPECT_TRUE(outcome() == without) << "the same chip has to send them the same way";
}

// Calls of the other table, with words that other settings would show.
struct Quiet {
  Quiet(const char *name, std::function<int32_t()> makes) : call(name), set(std::move(makes)) {}
  const char *call;
  std::function<int32_t()> set;
};
#define SWCTL_QUIET(call, arguments) Quiet(#call, [=] { return call arguments; })

std::vector<Quiet> quiet_settings(uint32_t word, int32_t port) {
  const uint32_t bit = word % 2;
  const auto which = static_cast<uint32_t>(port);
  static const uint32_t codes[CHIP_ACL_TEMPLATE_FIELDS] = {8, 7, 6};
  static const uint32_t ports = mask({1, 2});
  return {
      SWCTL_QUIET(rtk_acl_meterMode_set, (0, word % 9, bit)),
      SWCTL_QUIET(rtk_acl_statByteCnt_clear, (0, word % 9)),
      SWCTL_QUIET(rtk_acl_statPktCnt_clear, (0, word % 9)),
      SWCTL_QUIET(rtk_acl_template_set, (0, word % 8, codes)),
      SWCTL_QUIET(rtk_acl_templateSelector_set, (0, word % 12, 1, 2, 3)),
      SWCTL_QUIET(rtk_diag_rtctEnable_set, (0, &ports)),
      SWCTL_QUIET(rtk_eee_portEnable_set, (0, port, bit)),
      SWCTL_QUIET(rtk_port_backpressureEnable_set, (0, port, bit)),
      SWCTL_QUIET(rtk_port_phyCrossOverMode_set, (0, port, word % 3)),
      SWCTL_QUIET(rtk_qos_1pDfltPriSrcSel_set, (0, bit)),
      SWCTL_QUIET(rtk_rate_stormControlExceed_reset, (0, port, word % 5)),
      SWCTL_QUIET(rtk_rate_stormControlTypeSel_set, (0, port, word % 5, bit)),
      SWCTL_QUIET(rtk_stat_port_reset, (0, port)),
      SWCTL_QUIET(rtk_switch_pkt2CpuTypeFormat_set, (0, which % 8, word % 4)),
      SWCTL_QUIET(rtk_vlan_igrVlanCnvtBlkMode_set, (0, which % 3, word % 3)),
  };
}

TEST(EverySetting, WithoutEffectIsInTheOtherTable) {
  Names names;
  for (const Quiet &quiet : quiet_settings(0, 1)) names.insert(quiet.call);
  EXPECT_EQ(names_of(rows_under(kWithoutEffect)), names);
}

class QuietSettings : public Switch {
 protected:
  // What becomes of random frames on a chip with random settings, whether these
  // calls are made in between or not.
  static std::string outcome_of(uint32_t seed, bool quiet) {
    power_on();
    std::mt19937 random(seed);
    set_at_random(random);
    left();
    for (int each = 0; each < 150; ++each) {
      const Bytes frame = frame_at_random(random);
      const auto port = static_cast<int32_t>(random() % VCHIP_CPU_PORT);
      const auto word = static_cast<uint32_t>(random());
      arrive(port, frame);
      if (each % 10 == 0) advance(random() % kSecond);
      if (!quiet) continue;
      for (const Quiet &setting : quiet_settings(word, port))
        EXPECT_EQ(setting.set(), 0) << setting.call;
    }
    return outcome();
  }
};

TEST_F(QuietSettings, SendNoFrameAnotherWay) {
  for (uint32_t seed = 1; seed <= 6; ++seed) {
    const std::string without = outcome_of(seed, false);
    EXPECT_GT(without.size(), 1000u);
    EXPECT_TRUE(outcome_of(seed, true) == without) << "seed " << seed;
  }
}

INSTANTIATE_TEST_SUITE_P(Calls, AnySetting, testing::ValuesIn(settings()),
                         [](const auto &each) { return std::string(each.param.call); });

}  // namespace
}  // namespace frames
