// SPDX-License-Identifier: MIT
#include "config/setting.h"

#include "config/kinds.h"
#include "fault.h"

namespace swsh {

void SettingReader::put(Id id, Content content) {
  if (content != kind_.usual(id)) contents_.insert_or_assign(std::move(id), std::move(content));
}

void SettingReader::leave_out(const std::string &which, const std::string &reason) {
  const std::string setting = which.empty() ? kind_.title() : kind_.title() + " of " + which;
  unread_.push_back({kind_.object, setting, reason, ""});
}

const Argument *Statement::take(const std::string &name) {
  if (!arguments.has(name)) return nullptr;
  taken.push_back(name);
  return &arguments.at(name);
}

std::vector<int64_t> Statement::take_ports(const std::string &name) {
  const Argument *given = take(name);
  if (given == nullptr) return {};
  if (given->all) return board.front_interfaces();
  board.expect(given->numbers);
  return given->numbers;
}

Content Draft::at(const Id &id) const {
  const auto found = contents_.find(id);
  return found == contents_.end() ? kind_.usual(id) : found->second;
}

void Draft::put(const Id &id, Content content) {
  changed_.push_back(id);
  if (content == kind_.usual(id)) {
    contents_.erase(id);
  } else {
    contents_.insert_or_assign(id, std::move(content));
  }
}

void Draft::add(const Id &id, Content content) {
  const Content before = at(id);
  if (before && before != content) {
    const std::string which = id.text.empty() ? std::to_string(id.number) : id.text;
    throw CommandError(wrong_usage(kind_.title() + ' ' + which + " is there already", which));
  }
  put(id, std::move(content));
}

const std::vector<SettingKind> &kinds(const Board &board) {
  static const std::vector<SettingKind> all = make_kinds(board);
  return all;
}

}  // namespace swsh
