// SPDX-License-Identifier: MIT
// What vchipctl does, once the command line is split into words. All throw
// UsageError before anything is changed, or Refused.
#ifndef VCHIPCTL_COMMANDS_H
#define VCHIPCTL_COMMANDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vchipctl {

struct LinkWords {
  std::string unit = "0";
  std::string ports;
  std::optional<std::string> partner;
  std::optional<std::string> forced;
};

struct MediumWords {
  std::string unit = "0";
  std::string ports;
  std::string medium;
};

struct StationWords {
  std::string unit = "0";
  std::string mac;
  std::string vlan = "1";
  std::string port;
  std::string trunk = "0";
};

struct MarkWords {
  std::string unit = "0";
  std::string mac;
  std::string vlan = "1";
  std::string state = "1";
  std::string aux = "0";
};

struct TimeWords {
  std::string unit = "0";
  std::string seconds;
};

struct CountWords {
  std::string unit = "0";
  std::string counter;
  std::string packets;
  std::string bytes;
};

struct DumpWords {
  std::vector<std::string> images;
  std::optional<std::string> unit;  // not given: all
  std::optional<std::string> block;
  bool compact = false;
};

struct StatusWords {
  std::vector<std::string> images;
  bool json = false;
};

struct CheckWords {
  std::vector<std::string> images;
  bool json = false;
};

struct ConvertWords {
  std::string from, to;
  bool json = false;
};

struct DiffWords {
  std::string a, b;
  bool json = false;
};

struct PairWords {
  std::string unit = "0";
  std::string ports;
  std::string pairs;
  std::string faults;
  std::string length = "0";
};

struct CounterWords {
  std::string unit = "0";
  std::string ports;
  std::string counter;
  std::string change;
  std::string number;
};

struct StormWords {
  std::string unit = "0";
  std::string ports;
  std::string type;
};

void reset(const std::vector<std::string> &images);
void link_up(const LinkWords &words);
void link_down(const LinkWords &words);
void medium(const MediumWords &words);
void learn(const StationWords &words);
void mark(const MarkWords &words);
void pass_time(const TimeWords &words);
void count(const CountWords &words);
void pair(const PairWords &words);
void counter(const CounterWords &words);
void storm(const StormWords &words);
void trace(const std::string &word);
void dump(const DumpWords &words);
void status(const StatusWords &words);
void check(const CheckWords &words);
void convert(const ConvertWords &words);
void diff(const DiffWords &words);

}  // namespace vchipctl

#endif
