// SPDX-License-Identifier: MIT
#include "chip/absent.h"

#include <algorithm>
#include <iterator>

#include "number_list.h"

namespace swsh {

CommandError there_is_no(const std::string &kind, const std::string &which) {
  return CommandError(wrong_usage("there is no " + kind + ' ' + which, which));
}

void expect_among(const std::string &kind, const std::vector<int64_t> &wanted,
                  const std::vector<int64_t> &there) {
  std::vector<int64_t> absent;
  std::set_difference(wanted.begin(), wanted.end(), there.begin(), there.end(),
                      std::back_inserter(absent));
  if (!absent.empty()) throw there_is_no(kind, number_list_text(absent));
}

}  // namespace swsh
