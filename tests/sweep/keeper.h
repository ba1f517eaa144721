// SPDX-License-Identifier: MIT
// Keeps the chip and the library's own variables as they are before a run, puts
// them back after it, and tells what a run has changed.
#ifndef SWCTL_TESTS_SWEEP_KEEPER_H
#define SWCTL_TESTS_SWEEP_KEEPER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace sweep {

// What became of a word of the chip's memory. Words are numbers or sets of
// bits; each way of making the change again is right for one of the two.
struct Change {
  size_t word;
  uint32_t bits;        // that became others
  uint32_t value;       // of those bits
  uint32_t difference;  // of the numbers
};
using Changes = std::vector<Change>;

// The system tells which pages of the chip are written to: they are protected,
// and the first write to one is a fault that opens it. So a run costs what it
// touches, not what the chip holds.
class Keeper {
 public:
  Keeper();

  // A chip as after power-on, and a library as loaded.
  void start_over();
  void start_library_over();

  // What is there now is what put_back() brings back.
  void keep();
  void put_back();

  // Changes of the chip from one look to the next.
  void begin_looking();
  Changes look();

  // A word of the chip that is not as kept with `changes` made one after the
  // other; none if all are.
  std::optional<size_t> difference(const std::vector<const Changes *> &changes);

 private:
  void look_at(size_t page, Changes &changes);
  bool is_counted(size_t word, const std::vector<const Changes *> &changes) const;

  std::vector<uint8_t> first_;
  std::vector<uintptr_t> first_variables_;
  std::set<size_t> left_;  // pages that may not be as in first_
  std::vector<uint8_t> kept_;
  std::vector<uint8_t> expected_;   // as kept_, but while difference() works
  std::vector<uint8_t> looked_at_;  // as kept_, but for pages touched since
  std::vector<uintptr_t> variables_;
};

}  // namespace sweep

#endif
