// SPDX-License-Identifier: MIT
#include "config/state.h"

#include "chip/optional_call.h"

namespace swsh {
namespace {

// Why a kind cannot be read at all: the function that the platform is without, or the
// unit. Empty if it can.
Unread unreadable(const SettingKind &kind, const Context &context) {
  Unread unread = {kind.object, kind.title(), "", ""};
  if (kind.on_unit_zero && context.unit != 0) unread.reason = "the library reaches unit 0 only";
  for (const char *function : kind.needs) {
    if (find_symbol(function) != nullptr) continue;
    unread.reason = std::string("this platform has no ") + function;
    unread.missing = function;
  }
  return unread;
}

}  // namespace

State read_state(const Context &context, const Board &board, const std::string &object) {
  State state(board);
  const std::vector<SettingKind> &all = kinds(board);
  for (size_t number = 0; number < all.size(); ++number) {
    const SettingKind &kind = all[number];
    if (!object.empty() && kind.object != object) continue;
    const Unread unread = unreadable(kind, context);
    if (unread.reason.empty()) {
      SettingReader reader(context, board, kind, state.contents[number], state.unread);
      kind.read(reader);
    } else {
      state.unread.push_back(unread);
      state.unread_kinds.insert(number);
    }
  }
  return state;
}

}  // namespace swsh
