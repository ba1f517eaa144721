// SPDX-License-Identifier: MIT
#include <swctl/swctl.h>

#include <csignal>
#include <cstdio>
#include <unistd.h>

#include "command/completion.h"
#include "command/help.h"
#include "command/manual.h"
#include "config/pending.h"
#include "number_list.h"
#include "objects/registry.h"
#include "output/wrap.h"
#include "run/batch.h"
#include "run/command.h"
#include "run/options.h"
#include "run/pager.h"
#include "run/session.h"
#include "text.h"

namespace {

using namespace swsh;

constexpr char kPlace[] = "swctl";

Answer version_answer() {
  const std::string version = SWCTL_VERSION;
  const Record record = Record().add("version", version);
  return {Shape::text, {record}, "swctl " + version + '\n'};
}

Status complete(const Settings &settings, DataOutput &output) {
  const auto last = static_cast<int64_t>(settings.words.size());
  const ParsedNumber index = parse_number(*settings.completion_index, 0, last);
  if (!index.fault.empty()) {
    complain(kPlace,
             wrong_usage("bad value of -complete: " + index.fault, *settings.completion_index));
    return kWrongUsage;
  }
  for (const Expected &each :
       line_completions(command_table(), settings.words, static_cast<size_t>(index.number))) {
    output.write(settings.described ? each.word + '\t' + each.help + '\n' : each.word + '\n');
  }
  return kDone;
}

bool is_at_terminal(const DataOutput &output) {
  return isatty(STDIN_FILENO) != 0 && isatty(output.descriptor()) != 0;
}

Status batch(const Settings &settings, DataOutput &output) {
  return run_batch(command_table(),
                   {.file = settings.batch.value_or("-"),
                    .force = settings.force,
                    .atomic = settings.atomic,
                    .style = settings.style(),
                    .in_array = settings.batch.has_value(),
                    .context = {.unit = settings.unit,
                                .width = text_width(output.descriptor()),
                                .may_exist = settings.may_exist}},
                   output);
}

Fault batch_with_command(const std::string &word) {
  return wrong_usage("unexpected word " + in_quotes(word) + " beside -batch", word);
}

std::vector<std::string> asking_help(const Settings &settings) {
  std::vector<std::string> words = settings.words;
  words.emplace_back("--help");
  return words;
}

Status run(const Settings &settings, DataOutput &output) {
  Style style = settings.style();
  if (!settings.no_pager) style.pager = pager_for(output.descriptor());
  const Context context = {
      settings.unit,
      [&](const Record &record) { output.write(line_text(record, style.format) + '\n'); },
      text_width(output.descriptor()), settings.may_exist};
  const auto show = [&](const Outcome &outcome) { return report(outcome, kPlace, style, output); };
  if (settings.completion_index) return complete(settings, output);
  if (settings.fault) return show({{}, settings.fault});
  if (settings.bring_back_after)
    return static_cast<Status>(bring_back_after(context, *settings.bring_back_after));
  if (settings.help) return show(run_command(command_table(), asking_help(settings), context));
  if (settings.version) return show({version_answer(), {}});
  if (settings.manual) return show({{Shape::text, {}, manual_sections(command_table())}, {}});
  if (settings.batch && !settings.words.empty()) {
    return show({{}, batch_with_command(settings.words.front())});
  }
  if (settings.batch) return batch(settings, output);
  if (!settings.words.empty()) return show(run_command(command_table(), settings.words, context));
  if (is_at_terminal(output)) return run_session(command_table(), context, style, output);
  return batch(settings, output);
}

}  // namespace

int main(int argc, char **argv) {
  // A closed pipe is then an error of write(), reported like a full disk.
  signal(SIGPIPE, SIG_IGN);
  set_waiting_program("/proc/self/exe");
  DataOutput output = DataOutput::take_standard_output();
  try {
    return run(read_options(argc, argv), output);
  } catch (const std::exception &error) {
    fprintf(stderr, "%s: %s\n", kPlace, error.what());
    return kRefused;
  }
}
