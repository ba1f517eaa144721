// SPDX-License-Identifier: MIT
#include "keeper.h"

#include <swctl-vchip/memory.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <link.h>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace sweep {
namespace {

constexpr size_t kFewPages = 24;

// Known to the handler of the faults. A page is touched if it was written to
// since the chip was kept; it is fresh if since the last look.
struct Pages {
  uint8_t *start = nullptr;
  size_t size = 0;
  size_t page = 0;
  std::vector<uint8_t> is_open;  // by page
  std::vector<uint8_t> is_touched;
  std::vector<size_t> touched;  // has room for all of them
  std::vector<size_t> fresh;
};
Pages pages;

uint8_t *address_of(size_t page) {
  return pages.start + page * pages.page;
}

void protect(size_t page, size_t count, int protection) {
  if (mprotect(address_of(page), count * pages.page, protection) != 0) abort();
}

void close(size_t page) {
  if (pages.is_open[page] == 0) return;
  protect(page, 1, PROT_READ);
  pages.is_open[page] = 0;
}

void open(size_t page) {
  protect(page, 1, PROT_READ | PROT_WRITE);
  pages.is_open[page] = 1;
  pages.fresh.push_back(page);
  if (pages.is_touched[page] != 0) return;
  pages.is_touched[page] = 1;
  pages.touched.push_back(page);
}

void on_fault(int signal, siginfo_t *info, void *) {
  const auto *address = static_cast<uint8_t *>(info->si_addr);
  const bool ours = address >= pages.start && address < pages.start + pages.size;
  const size_t page = ours ? static_cast<size_t>(address - pages.start) / pages.page : 0;
  if (ours && pages.is_open[page] == 0) return open(page);
  // A fault like any other: it comes again and ends the program.
  ::signal(signal, SIG_DFL);
}

void watch_faults() {
  const vchip::Memory chip = vchip::memory();
  pages.start = static_cast<uint8_t *>(chip.start);
  pages.page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  pages.size = (chip.size + pages.page - 1) / pages.page * pages.page;
  const size_t count = pages.size / pages.page;
  pages.is_open.resize(count);
  pages.is_touched.resize(count);
  pages.touched.reserve(count);
  pages.fresh.reserve(count);
  struct sigaction action = {};
  action.sa_sigaction = on_fault;
  action.sa_flags = SA_SIGINFO;
  if (sigaction(SIGSEGV, &action, nullptr) != 0) throw std::runtime_error("sigaction");
  protect(0, count, PROT_READ);
}

// Writable memory of the library that is not written once by the loader.
struct Segment {
  uintptr_t *start = nullptr;
  size_t size = 0;  // in words
};

int find_variables(dl_phdr_info *object, size_t, void *out) {
  if (std::string(object->dlpi_name).find("/libswctl.so") == std::string::npos) return 0;
  uintptr_t first = 0;
  uintptr_t end = 0;
  uintptr_t relocated_end = 0;
  for (int index = 0; index < object->dlpi_phnum; ++index) {
    const auto &header = object->dlpi_phdr[index];
    const uintptr_t start = object->dlpi_addr + header.p_vaddr;
    if (header.p_type == PT_GNU_RELRO) relocated_end = start + header.p_memsz;
    if (header.p_type != PT_LOAD || (header.p_flags & PF_W) == 0) continue;
    first = start;
    end = start + header.p_memsz;
  }
  if (relocated_end > first) first = relocated_end;
  first = (first + sizeof first - 1) / sizeof first * sizeof first;
  *static_cast<Segment *>(out) = {reinterpret_cast<uintptr_t *>(first),
                                  (end - first) / sizeof first};
  return 1;
}

Segment variables() {
  static const Segment found = [] {
    Segment segment;
    if (dl_iterate_phdr(find_variables, &segment) == 0 || segment.size == 0)
      throw std::runtime_error("the library's variables cannot be found");
    return segment;
  }();
  return found;
}

// What lies between variables belongs to nobody; a sanitizer lets only plain
// reads and writes of it pass.
__attribute__((no_sanitize("address"), noinline)) void copy_raw(volatile uintptr_t *to,
                                                                const volatile uintptr_t *from,
                                                                size_t words) {
  for (size_t index = 0; index < words; ++index)
    if (to[index] != from[index]) to[index] = from[index];
}

void copy_page(size_t page, const std::vector<uint8_t> &from) {
  memcpy(address_of(page), from.data() + page * pages.page, pages.page);
}

}  // namespace

Keeper::Keeper() {
  watch_faults();
  first_.assign(pages.start, pages.start + pages.size);
  kept_ = first_;
  expected_ = kept_;
  looked_at_ = kept_;
  first_variables_.resize(variables().size);
  copy_raw(first_variables_.data(), variables().start, variables().size);
  variables_ = first_variables_;
}

void Keeper::start_over() {
  for (const size_t page : left_) copy_page(page, first_);
  for (const size_t page : pages.touched) copy_page(page, first_);
  start_library_over();
}

void Keeper::start_library_over() {
  copy_raw(variables().start, first_variables_.data(), variables().size);
}

void Keeper::keep() {
  for (const size_t page : pages.touched) {
    const size_t at = page * pages.page;
    for (std::vector<uint8_t> *copy : {&kept_, &expected_, &looked_at_})
      memcpy(copy->data() + at, address_of(page), pages.page);
    pages.is_touched[page] = 0;
    left_.insert(page);
    close(page);
  }
  pages.touched.clear();
  pages.fresh.clear();
  copy_raw(variables_.data(), variables().start, variables_.size());
}

void Keeper::put_back() {
  for (const size_t page : pages.touched) copy_page(page, kept_);
  copy_raw(variables().start, variables_.data(), variables_.size());
}

void Keeper::begin_looking() {
  for (const size_t page : pages.touched) {
    memcpy(looked_at_.data() + page * pages.page, address_of(page), pages.page);
    if (pages.touched.size() > kFewPages) close(page);
  }
  pages.fresh.clear();
}

void Keeper::look_at(size_t page, Changes &changes) {
  const size_t at = page * pages.page;
  if (memcmp(address_of(page), looked_at_.data() + at, pages.page) == 0) return;
  const auto *now = reinterpret_cast<const uint32_t *>(address_of(page));
  auto *before = reinterpret_cast<uint32_t *>(looked_at_.data() + at);
  for (size_t word = 0; word < pages.page / sizeof *now; ++word) {
    const uint32_t bits = now[word] ^ before[word];
    if (bits == 0) continue;
    changes.push_back({at / sizeof *now + word, bits, now[word] & bits, now[word] - before[word]});
    before[word] = now[word];
  }
}

// A few pages are looked at each time; of many, those that were written to.
Changes Keeper::look() {
  Changes changes;
  if (pages.touched.size() <= kFewPages) {
    for (const size_t page : pages.touched) look_at(page, changes);
    return changes;
  }
  for (const size_t page : pages.fresh) look_at(page, changes);
  for (const size_t page : pages.fresh) close(page);
  pages.fresh.clear();
  return changes;
}

bool Keeper::is_counted(size_t word, const std::vector<const Changes *> &changes) const {
  uint32_t number = reinterpret_cast<const uint32_t *>(kept_.data())[word];
  for (const Changes *some : changes)
    for (const Change &change : *some)
      if (change.word == word) number += change.difference;
  return number == reinterpret_cast<const uint32_t *>(pages.start)[word];
}

std::optional<size_t> Keeper::difference(const std::vector<const Changes *> &changes) {
  const auto *now = reinterpret_cast<const uint32_t *>(pages.start);
  const auto *kept = reinterpret_cast<const uint32_t *>(kept_.data());
  auto *expected = reinterpret_cast<uint32_t *>(expected_.data());
  std::optional<size_t> wrong;
  const auto compare = [&](size_t word) {
    if (now[word] != expected[word] && !is_counted(word, changes)) wrong = word;
  };
  for (const Changes *some : changes)
    for (const Change &change : *some)
      expected[change.word] = (expected[change.word] & ~change.bits) | change.value;
  for (const Changes *some : changes)
    for (const Change &change : *some) compare(change.word);
  const size_t words = pages.page / sizeof *now;
  for (const size_t page : pages.touched) {
    if (memcmp(address_of(page), expected_.data() + page * pages.page, pages.page) == 0) continue;
    for (size_t word = page * words; word < (page + 1) * words; ++word) compare(word);
  }
  for (const Changes *some : changes)
    for (const Change &change : *some) expected[change.word] = kept[change.word];
  return wrong;
}

}  // namespace sweep
