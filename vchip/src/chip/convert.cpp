// SPDX-License-Identifier: MIT
// An image of another version, layout or byte order becomes one of this: each
// word is brought over under its name.
#include <swctl-vchip/image.h>

#include <bit>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

#include "chip/check.h"
#include "chip/copy.h"
#include "chip/nobody_inside.h"
#include "chip/scratch.h"
#include "chip/words.h"
#include "image/image.h"
#include "image/openers.h"
#include "image/patience.h"
#include "image/sparse.h"
#include "os/high_descriptor.h"

namespace vchip {
namespace {

constexpr uint64_t kLongestOpening = 100'000'000;  // ns
constexpr off_t kLargest = 1 << 28;                // bytes of a file that is read as a whole

[[noreturn]] void fail(const std::string &path, const std::string &why) {
  throw std::runtime_error("image " + path + ": " + why);
}

// A file that is closed again.
class OpenFile {
 public:
  explicit OpenFile(const std::string &path) : descriptor_(open_plain(path)) {
    if (descriptor_ < 0) fail(path, std::string("cannot be opened: ") + strerror(errno));
  }
  ~OpenFile() { close(descriptor_); }
  OpenFile(const OpenFile &) = delete;
  OpenFile &operator=(const OpenFile &) = delete;
  int descriptor() const { return descriptor_; }

 private:
  // Opening what is no regular file may have effects.
  static int open_plain(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
      fail(path, "not a regular file");
    return os::open_high(path, O_RDONLY);
  }
  const int descriptor_;
};

// An image of any version that has a list of its words.
class ForeignImage {
 public:
  explicit ForeignImage(const std::string &path) : path_(path) {
    read();
    if (const char *fault = foreign_fault(bytes_.data(), bytes_.size(), turned_)) fail(path, fault);
    const uint32_t at = header_word(offsetof(Header, words_at));
    if (at >= bytes_.size()) fail(path, "the list of its words is damaged");
    const std::string text(bytes_.begin() + static_cast<long>(at), bytes_.end());
    if (const char *fault = parse_word_list(text, bytes_.size(), words_)) fail(path, fault);
  }

  const WordList &words() const { return words_; }
  bool turned() const { return turned_; }
  uint32_t header_word(size_t offset) const {
    return static_cast<uint32_t>(load_word(bytes_.data() + offset, sizeof(uint32_t), turned_));
  }
  uint64_t value(const NamedWord &word, const WordIndex &index) const {
    return load_word(bytes_.data() + offset_of(word, index), word.width, turned_);
  }

 private:
  void read() {
    const NobodyInside alone;
    const OpenFile file(path_);
    struct stat status = {};
    if (fstat(file.descriptor(), &status) != 0 || status.st_size > kLargest)
      fail(path_, "not a virtual chip image");
    // Nobody begins to use it meanwhile.
    const bool quiet =
        lock_door(file.descriptor(), Door::look, monotonic_time() + kLongestOpening) ||
        !can_list_openers(file.descriptor());
    if (!quiet || is_in_use(file.descriptor())) fail(path_, "in use: it cannot be read as a whole");
    bytes_.resize(static_cast<size_t>(status.st_size));
    if (!read_sparse(file.descriptor(), bytes_.data(), bytes_.size()))
      fail(path_, "cannot be read");
  }

  std::string path_;
  std::vector<uint8_t> bytes_;
  bool turned_ = false;
  WordList words_;
};

bool is_within(const NamedWord &word, const WordIndex &index) {
  if (index.size() != word.arrays.size()) return false;
  for (size_t depth = 0; depth < index.size(); ++depth)
    if (index[depth] >= word.arrays[depth].count) return false;
  return true;
}

// Brings words into a chip after power-on, and notes what has no place there.
class Arrival {
 public:
  explicit Arrival(State &state) : bytes_(reinterpret_cast<uint8_t *>(&state)) {
    for (const NamedWord &word : own_words()) places_[word.name] = &word;
  }

  void bring(const std::string &name, uint64_t value) {
    WordIndex index;
    const auto found = places_.find(split_name(name, index));
    if (found == places_.end() || !put(*found->second, index, value)) leave_out(name, value);
  }
  void bring(const ForeignImage &image, const NamedWord &word) {
    const auto found = places_.find(word.name);
    each_index(word, [&](const WordIndex &index) {
      const uint64_t value = image.value(word, index);
      const bool placed = found != places_.end() && put(*found->second, index, value);
      if (!placed && value != 0) leave_out(name_of(word, index), value);
      return true;
    });
  }
  std::vector<std::string> left_out;

 private:
  bool put(const NamedWord &place, const WordIndex &index, uint64_t value) {
    if (!is_within(place, index) || !fits(value, place.width)) return false;
    store(place, index, value);
    return true;
  }
  // What is so already is not written, for the sake of holes.
  void store(const NamedWord &place, const WordIndex &index, uint64_t value) {
    uint8_t *const at = bytes_ + offset_of(place, index);
    if (load_word(at, place.width, false) != value) store_word(at, place.width, value);
  }
  void leave_out(const std::string &name, uint64_t value) {
    left_out.push_back(name + " = " + std::to_string(value));
  }

  uint8_t *const bytes_;
  std::map<std::string, const NamedWord *> places_;
};

void expect_whole(const std::string &from, const State &state) {
  const std::vector<Fault> faults = faults_of(state);
  if (faults.empty()) return;
  const Fault &first = faults.front();
  fail(from, std::to_string(faults.size()) + " words that no call could have left, the first " +
                 (first.unit < 0 ? "" : "of unit " + std::to_string(first.unit) + ", ") +
                 first.block + "." + first.word + ": " + first.text);
}

// A chip's worth of private memory, after power-on.
class NewState {
 public:
  NewState() { make_state(memory_.memory()); }
  State &operator*() { return *static_cast<State *>(memory_.memory()); }
  State *operator->() { return &**this; }

 private:
  Scratch<sizeof(State)> memory_;
};

void write_state(const std::string &to, const State &state) {
  Scratch<kImageSize> whole;
  make_image(whole.memory());
  copy_sparse(&state, whole.memory(), sizeof state);
  const std::string fault = write_new_image(to, whole.memory(), kImageSize);
  if (!fault.empty()) fail(to, fault);
}

}  // namespace

std::vector<std::string> convert_image(const std::string &from, const std::string &to) {
  const ForeignImage image(from);
  NewState state;
  Arrival arrival(*state);
  for (const NamedWord &word : image.words()) arrival.bring(image, word);
  if (image.turned()) state->rules.turn_values();
  state->header.writer = image.header_word(offsetof(Header, writer));
  state->header.interrupted_writes = image.header_word(offsetof(Header, interrupted_writes));
  recover_copy(*state);
  expect_whole(from, *state);
  write_state(to, *state);
  return arrival.left_out;
}

std::vector<WordValue> chip_words() {
  std::string image;
  const Copy copy = take_copy(image);
  NewState fresh;
  const auto *const bytes = reinterpret_cast<const uint8_t *>(&copy.state());
  const auto *const before = reinterpret_cast<const uint8_t *>(&*fresh);
  std::vector<WordValue> words;
  for (const NamedWord &word : own_words())
    each_difference(word, bytes, before, [&](const WordIndex &index) {
      words.push_back(
          {name_of(word, index), load_word(bytes + offset_of(word, index), word.width, false)});
    });
  return words;
}

std::vector<std::string> make_image_of(const std::vector<WordValue> &words, bool lowest_first,
                                       const std::string &to) {
  NewState state;
  Arrival arrival(*state);
  for (const auto &[name, value] : words) arrival.bring(name, value);
  if (lowest_first != (std::endian::native == std::endian::little)) state->rules.turn_values();
  expect_whole(to, *state);
  write_state(to, *state);
  return arrival.left_out;
}

}  // namespace vchip
