// SPDX-License-Identifier: MIT
#include "sweep.h"

#include <swctl/platform/sdk.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

#include "judge.h"

namespace sweep {
namespace {

constexpr int32_t kAnswers[] = {-1, INT_MIN, 7};

Keeper &keeper() {
  static Keeper only;
  return only;
}

struct Figures {
  std::set<std::string> functions;
  size_t runs = 0;
  size_t survived = 0;
  std::vector<std::string> problems;
};
Figures figures;

using Bytes = std::vector<uint8_t>;

// What is in the caller's memory, one output after the other.
Bytes contents(const std::vector<Output> &outputs) {
  Bytes all;
  for (const Output &each : outputs) all.insert(all.end(), each.start, each.start + each.size);
  return all;
}

void put_back(const std::vector<Output> &outputs, const Bytes &bytes) {
  const uint8_t *from = bytes.data();
  for (const Output &each : outputs) {
    memcpy(each.start, from, each.size);
    from += each.size;
  }
}

struct Run {
  Trace trace;
  int32_t result;
  Bytes written;  // the outputs afterwards
};

Run run(const Subject &subject, const FunctionRules &rules, const Plan &plan, const Bytes &given) {
  keeper().put_back();
  put_back(subject.outputs, given);
  start_watching(plan, rules.rules, keeper());
  const int32_t result = subject.call();
  return {stop_watching(), result, contents(subject.outputs)};
}

Reference learn(const Subject &subject, const FunctionRules &rules, const Plan &plan,
                const Bytes &given) {
  Plan measured = plan;
  measured.measured = {0, kNever};
  Run usual = run(subject, rules, measured, given);
  return {&rules, std::move(usual.trace), usual.result, {}, given, std::move(usual.written)};
}

std::vector<chip_l2_ucast_entry> all_entries() {
  std::vector<chip_l2_ucast_entry> all;
  chip_l2_ucast_entry entry = {};
  for (int32_t index = -1; rtk_l2_nextValidAddr_get(0, &index, 1, &entry) == 0;)
    all.push_back(entry);
  return all;
}

// Whether another answer leads to other calls that may reach the chip.
bool leads_elsewhere(Rule rule) {
  switch (rule) {
    case Rule::carried:
    case Rule::purge:
    case Rule::port:
    case Rule::kept:
    case Rule::kept_silently:
    case Rule::mask:
    case Rule::anything: return true;
    default: return false;
  }
}

// Where calls may differ from the reference's: their effects have to be
// measured.
Range to_measure(const Reference &reference, const Plan &plan) {
  const auto rule_at = [&](size_t place) {
    return reference.rules->rules[reference.trace[place].call];
  };
  const size_t count = reference.trace.size();
  const size_t next = plan.failing.first + 1;
  const bool alone = plan.failing.first == plan.failing.last;
  if (!alone && plan.value < 0) return {};  // nothing gets through
  size_t place = plan.failing.first;
  while (place < count && plan.failing.holds(place) && !leads_elsewhere(rule_at(place))) ++place;
  if (place == count || !plan.failing.holds(place)) return {};
  const Rule rule = rule_at(place);
  if (!alone || (rule != Rule::port && rule != Rule::purge)) return {next, kNever};
  // To the next one of the kind; after the last one, to the end.
  size_t last = next;
  while (last < count && rule_at(last) != rule) ++last;
  return {next, last < count ? last - 1 : kNever};
}

void hold_chip(const Judge &judge) {
  const auto wrong = keeper().difference(judge.effects());
  if (wrong)
    throw std::runtime_error("leaves word " + std::to_string(*wrong) + " of the chip wrong");
}

// Where a call of its own fails, a function leaves in its outputs what the caller
// had or what is right, and nothing else but for what the table says.
void hold_outputs(const std::string &function, const Reference &reference, const Bytes &written) {
  const Outputs rule = outputs_rule_of(function);
  for (size_t place = 0; place < written.size(); ++place) {
    const uint8_t byte = written[place];
    if (byte == reference.given[place] || byte == reference.written[place]) continue;
    const bool fine = rule == Outputs::counted || (rule == Outputs::zeros && byte == 0);
    if (!fine)
      throw std::runtime_error("leaves byte " + std::to_string(place) + " of its outputs as " +
                               std::to_string(byte));
  }
}

void blame(const Subject &subject, const std::string &where, const std::exception &why) {
  const std::string variant = subject.variant.empty() ? "" : " (" + subject.variant + ")";
  figures.problems.push_back(subject.function + variant + where + ": " + why.what());
}

std::string text_of(const Reference &reference, const Plan &plan) {
  const std::string &name = call_names()[reference.trace[plan.failing.first].call];
  return ", call " + std::to_string(plan.failing.first) + " " + name +
         (plan.failing.last == kNever ? " and all after it answer " : " answers ") +
         std::to_string(plan.value);
}

void fail_once(const Subject &subject, const Reference &reference, Plan plan) {
  plan.measured = to_measure(reference, plan);
  const Run failed = run(subject, *reference.rules, plan, reference.given);
  ++figures.runs;
  try {
    Judge judge(reference, failed.trace);
    judge.judge(failed.result);
    hold_chip(judge);
    hold_outputs(subject.function, reference, failed.written);
    ++figures.survived;
  } catch (const std::exception &why) {
    blame(subject, text_of(reference, plan), why);
  }
}

bool counts_as_zeros(const Reference &reference, const Range &failing) {
  for (size_t place = failing.first; place < reference.trace.size(); ++place)
    if (failing.holds(place) && reference.rules->rules[reference.trace[place].call] == Rule::zero)
      return true;
  return false;
}

void fail_range(const Subject &subject, const Reference &usual, const Range &failing) {
  const bool zeros = counts_as_zeros(usual, failing);
  Reference with_zeros;
  if (zeros) {
    with_zeros =
        learn(subject, *usual.rules, {.failing = failing, .answer_zeros = true}, usual.given);
    with_zeros.entries = usual.entries;
  }
  for (const int32_t answer : kAnswers)
    fail_once(subject, zeros && answer < 0 ? with_zeros : usual,
              {.failing = failing, .value = answer});
}

void hold_usual(const Subject &subject, const Reference &usual) {
  if (usual.result != subject.expected)
    throw std::runtime_error("answers " + std::to_string(usual.result) + " if nothing fails");
  if (usual.rules->passes_on && usual.trace.size() != 1)
    throw std::runtime_error("makes " + std::to_string(usual.trace.size()) +
                             " calls and has no line in the table");
  Judge judge(usual, usual.trace);
  judge.judge(usual.result);
  hold_chip(judge);
}

void sweep_calls(const Subject &subject, const Reference &usual) {
  for (size_t place = 0; place < usual.trace.size(); ++place) {
    if (!can_fail(usual.trace[place].call)) continue;
    fail_range(subject, usual, {place, place});
    fail_range(subject, usual, {place, kNever});
  }
}

}  // namespace

void sweep(const Subject &subject) {
  keeper().keep();
  const std::vector<chip_l2_ucast_entry> entries = all_entries();
  const FunctionRules &rules = rules_of(subject.function, subject.variant);
  const Bytes given = contents(subject.outputs);
  Reference usual = learn(subject, rules, {}, given);
  usual.entries = entries;
  if (usual.trace.empty()) return;
  figures.functions.insert(subject.function);
  try {
    hold_usual(subject, usual);
    sweep_calls(subject, usual);
  } catch (const std::exception &why) {
    blame(subject, "", why);
  }
  run(subject, rules, {}, given);
}

void start_over() {
  keeper().start_over();
}

void start_library_over() {
  keeper().start_library_over();
}

bool write_list(const std::string &path) {
  FILE *const file = fopen(path.c_str(), "w");
  if (file == nullptr) return false;
  for (const std::string &name : figures.functions) fprintf(file, "function %s\n", name.c_str());
  for (const void *place : places_reached()) {
    Dl_info object;
    if (dladdr(place, &object) == 0) continue;
    fprintf(file, "place %zx\n",
            static_cast<size_t>(static_cast<const char *>(place) -
                                static_cast<const char *>(object.dli_fbase)));
  }
  return fclose(file) == 0;
}

bool report() {
  for (const std::string &line : unused_lines())
    figures.problems.push_back("the table's line " + line + " is not used");
  for (const std::string &problem : figures.problems) printf("sweep: %s\n", problem.c_str());
  printf(
      "sweep: %zu functions, %zu call sites, %zu failures injected, %zu survived as they should\n",
      figures.functions.size(), places_reached().size(), figures.runs, figures.survived);
  return figures.problems.empty();
}

}  // namespace sweep
