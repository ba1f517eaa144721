// SPDX-License-Identifier: MIT
#include "wire.h"

#include <swctl/platform/adapter.h>
#include <swctl/platform/field_read.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <stdexcept>
#include <string_view>

namespace sweep {

const std::vector<std::string> &call_names() {
  static const std::vector<std::string> all = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) #name,
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
      "sys_trace_get", "sys_trace_add_log", "Log_logging_func"};
  return all;
}

size_t call_index(const std::string &name) {
  const auto &names = call_names();
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) throw std::logic_error("no call " + name);
  return static_cast<size_t>(found - names.begin());
}

bool can_fail(size_t call) {
  const std::string &name = call_names()[call];
  return name != "sys_trace_add_log" && name != "Log_logging_func";
}

namespace {

// What becomes of a call.
enum class Way { pass, fail, succeed_with, zeros, only_look };

struct Watch {
  enum { off, on, only_look } state = off;
  // A call that the chip makes inside one of its own is the chip's affair.
  bool inside = false;
  Plan plan;
  const Rules *rules = nullptr;
  Keeper *keeper = nullptr;
  Trace trace;
};
Watch watch;
constexpr size_t kManyCalls = 1200;
std::set<const void *> places;
std::vector<const void *> last_places;  // by call

// The next holder of the name after this program.
template <typename Function>
Function *next_of(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// An answer that is a value and no verdict is simply replaced.
bool is_value(Rule rule, const std::string &name) {
  return rule == Rule::trace || name == "adp_intf_2_phy_id" || name == "adp_phy_2_intf_id";
}

Way way_of(const Seen &seen, size_t place) {
  if (watch.state == Watch::only_look) return Way::only_look;
  if (!watch.plan.failing.holds(place) || !can_fail(seen.call)) return Way::pass;
  const Rule rule = (*watch.rules)[seen.call];
  if (watch.plan.answer_zeros) return rule == Rule::zero ? Way::zeros : Way::pass;
  if (watch.plan.value < 0 || is_value(rule, call_names()[seen.call])) return Way::fail;
  return Way::succeed_with;
}

struct Hash {
  uint64_t value = 14695981039346656037u;
  void add(const void *data, size_t size) {
    const auto *bytes = static_cast<const uint8_t *>(data);
    for (size_t index = 0; index < size; ++index) value = (value ^ bytes[index]) * 1099511628211u;
  }
};

// Every byte of a value means something.
template <typename Type>
void add_values(const Type *values, size_t count, Hash &hash) {
  static_assert(std::has_unique_object_representations_v<Type>);
  hash.add(values, count * sizeof *values);
}

// Between the fields of this one are bytes that nobody writes.
void add_values(const chip_vlan_egress_entry *entry, size_t, Hash &hash) {
  const uint32_t fields[] = {
      entry->valid,      entry->ignore_vid, entry->vid,     entry->ignore_second_key,
      entry->second_key, entry->field6,     entry->field7,  entry->ignore_port,
      entry->port,       entry->field10,    entry->field11, entry->new_vid,
      entry->field13,    entry->field14};
  hash.add(fields, sizeof fields);
}

// One argument. What is only written by the call is no part of it.
template <typename Type>
void see_value(std::string_view name, const Type &value, Seen &seen, Hash &hash) {
  if constexpr (std::is_same_v<Type, int32_t>) {
    if (name == "port") {
      seen.has_port = true;
      seen.port = value;
      return;
    }
  }
  add_values(&value, 1, hash);
}

template <typename Type, typename Count>
void see_memory(const Type *address, Count count, Hash &hash) {
  const size_t there = address == nullptr ? 0 : static_cast<size_t>(count);
  hash.add(&there, sizeof there);
  if (there != 0) add_values(address, there, hash);
}

template <typename Type, typename Count>
void write_zeros(Type *address, Count count) {
  if (address != nullptr) memset(address, 0, static_cast<size_t>(count) * sizeof *address);
}

// Most calls come from where the last one of the name came from.
void note_place(size_t call, const void *place) {
  if (last_places.empty()) last_places.resize(call_names().size());
  if (last_places[call] == place) return;
  last_places[call] = place;
  places.insert(place);
}

// A function to call now; it need not outlive the call.
class Step {
 public:
  template <typename Function>
  Step(const Function &function)
      : function_(&function),
        call_([](const void *it) -> int32_t { return (*static_cast<const Function *>(it))(); }) {}
  int32_t operator()() const { return call_(function_); }

 private:
  const void *function_;
  int32_t (*call_)(const void *);
};

// Makes the call the way that the plan wants it.
int32_t make(Seen seen, const void *place, Step call, Step zero) {
  if (watch.state == Watch::on) note_place(seen.call, place);
  const size_t number = watch.trace.size();
  const Way way = way_of(seen, number);
  const bool measured = watch.plan.measured.holds(number);
  if (measured && number == watch.plan.measured.first) watch.keeper->begin_looking();
  seen.reached_chip = way == Way::pass || way == Way::succeed_with;
  seen.result = way == Way::zeros || way == Way::only_look ? 0 : watch.plan.value;
  if (seen.reached_chip) {
    watch.inside = true;
    const int32_t result = call();
    watch.inside = false;
    // A chip that refuses is not made to agree.
    if (way == Way::pass || result < 0) seen.result = result;
  }
  if (way == Way::zeros) zero();
  if (measured) {
    seen.has_effect = true;
    seen.effect = watch.keeper->look();
  }
  const int32_t result = seen.result;
  watch.trace.push_back(std::move(seen));
  return result;
}

// Functions of the platform that have a variable list or no result.
int32_t make_plain(const char *name, const void *place, int32_t (*next)()) {
  Seen seen{call_index(name)};
  const auto nothing = [] { return 0; };
  return make(std::move(seen), place, next, nothing);
}

}  // namespace

void start_watching(const Plan &plan, const Rules &rules, Keeper &keeper) {
  watch.plan = plan;
  watch.rules = &rules;
  watch.keeper = &keeper;
  watch.trace.clear();
  watch.trace.reserve(kManyCalls);
  watch.state = Watch::on;
}

Trace stop_watching() {
  watch.state = Watch::off;
  return std::move(watch.trace);
}

Seen as_seen(const std::function<void()> &make_call) {
  const Watch before = std::move(watch);
  watch = {};
  watch.state = Watch::only_look;
  make_call();
  const Seen seen = watch.trace.at(0);
  watch = before;
  return seen;
}

const std::set<const void *> &places_reached() {
  return places;
}

}  // namespace sweep

// Names of our own have a prefix: the arguments are in scope under theirs.
#define SEE(tuple) SEE_ tuple
#define SEE_(direction, type, name, count, form) SEE_##direction(type, name, count)
#define SEE_val(type, name, count) (sweep::see_value(#name, name, sweep_seen, sweep_hash), 0)
#define SEE_out(type, name, count) 0
#define SEE_ref(type, name, count) (sweep::see_memory(name, count, sweep_hash), 0)
#define SEE_upd(type, name, count) SEE_ref(type, name, count)

#define ZERO(tuple) ZERO_ tuple
#define ZERO_(direction, type, name, count, form) ZERO_##direction(name, count)
#define ZERO_val(name, count) 0
#define ZERO_ref(name, count) 0
#define ZERO_out(name, count) (sweep::write_zeros(name, count), 0)
#define ZERO_upd(name, count) ZERO_out(name, count)

// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                                                                \
  int32_t name(SWCTL_PARAMETERS(__VA_ARGS__)) {                                              \
    static auto *const sweep_next = sweep::next_of<decltype(name)>(#name);                   \
    const auto sweep_call = [&] { return sweep_next(SWCTL_ARGUMENTS(__VA_ARGS__)); };        \
    if (sweep::watch.state == sweep::Watch::off || sweep::watch.inside) return sweep_call(); \
    static const size_t sweep_index = sweep::call_index(#name);                              \
    sweep::Seen sweep_seen{sweep_index};                                                     \
    sweep::Hash sweep_hash;                                                                  \
    static_cast<void>(std::initializer_list<int>{SWCTL_EACH(SEE, __VA_ARGS__)});             \
    sweep_seen.digest = sweep_hash.value;                                                    \
    const auto sweep_zero = [&] {                                                            \
      static_cast<void>(std::initializer_list<int>{SWCTL_EACH(ZERO, __VA_ARGS__)});          \
      return 0;                                                                              \
    };                                                                                       \
    return sweep::make(std::move(sweep_seen), __builtin_return_address(0), sweep_call,       \
                       sweep_zero);                                                          \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on

int32_t sys_trace_get(void) {
  static auto *const next = sweep::next_of<int32_t()>("sys_trace_get");
  if (sweep::watch.state == sweep::Watch::off) return next();
  return sweep::make_plain("sys_trace_get", __builtin_return_address(0), next);
}

// Nothing is written to the log and to the trace: they are no part of the chip.
static int32_t swallow() {
  return 0;
}

void sys_trace_add_log(const char *, const char *) {
  if (sweep::watch.state == sweep::Watch::off) return;
  sweep::make_plain("sys_trace_add_log", __builtin_return_address(0), swallow);
}

void Log_logging_func(int32_t, int32_t, const char *, const char *, ...) {
  if (sweep::watch.state == sweep::Watch::off) return;
  sweep::make_plain("Log_logging_func", __builtin_return_address(0), swallow);
}
