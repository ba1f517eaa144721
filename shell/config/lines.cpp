// SPDX-License-Identifier: MIT
#include "config/lines.h"

namespace swsh {

std::string TextLine::text() const {
  if (unread == nullptr) return command;
  return "# " + unread->setting + ": not read: " + unread->reason;
}

std::vector<TextLine> text_lines(const State &state, const Board &board) {
  const std::vector<SettingKind> &all = kinds(board);
  const std::vector<Step> steps = plan(State(board), state, board);
  std::vector<TextLine> lines;
  std::string object;
  const auto finish_object = [&] {
    for (const Unread &unread : state.unread)
      if (unread.object == object) lines.push_back({object, unread.setting, "", &unread});
  };
  size_t at = 0;
  for (size_t kind = 0; kind < all.size(); ++kind) {
    if (all[kind].object != object) finish_object();
    object = all[kind].object;
    for (; at < steps.size() && steps[at].kind <= kind; ++at) {
      const SettingKind &own = all[steps[at].kind];
      lines.push_back({own.object, own.title(), steps[at].command});
    }
  }
  finish_object();
  return lines;
}

std::string text_of(const State &state, const Board &board) {
  std::string text;
  for (const TextLine &line : text_lines(state, board)) text += line.text() + '\n';
  return text;
}

}  // namespace swsh
