// SPDX-License-Identifier: MIT
// Which calls are traced, recorded and compared.
#ifndef SWCTL_PROBE_FILTER_H
#define SWCTL_PROBE_FILTER_H

#include <string>
#include <vector>

#include "site.h"

namespace swprobe {

// Of calls that have one of the names, with one of the ports as argument
// "port"; without a name or without a port, any will do.
class Filter {
 public:
  // A name, with the wildcards of fnmatch(3), or a family: "vlan" is all of
  // rtk_vlan_*, user_vlan_* and so on. Throws std::runtime_error if no call
  // that is known has it.
  void add_name(const std::string &word);
  // Throws std::runtime_error if it is no number.
  void add_port(const std::string &word);

  bool has_name(std::string_view name) const;
  bool fits(const Call &call) const { return has_name(call.name) && has_port(call); }
  bool fits_all() const { return names_.empty() && ports_.empty(); }

 private:
  bool has_port(const Call &call) const;

  std::vector<std::string> names_;
  std::vector<int64_t> ports_;
};

}  // namespace swprobe

#endif
