// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>

#include "config/state.h"
#include "number_list.h"

namespace swsh {
namespace {

// Longer lists of IDs become several commands.
constexpr size_t kLongestList = 60;
// The words of no setting.
constexpr const char *kNotKnown = "";

enum class Phase { removal, change, late_removal };

class Planner {
 public:
  Planner(const State &from, const State &to, const Board &board)
      : all_(kinds(board)), now_(from.contents), from_(from), to_(to) {}

  std::vector<Step> run() {
    for (size_t kind = 0; kind < all_.size(); ++kind)
      if (all_[kind].prepare) prepare(kind);
    for (size_t kind = all_.size(); kind-- > 0;)
      if (!all_[kind].goes_last) remove(kind);
    for (size_t kind = 0; kind < all_.size(); ++kind) change(kind);
    for (size_t kind = all_.size(); kind-- > 0;)
      if (all_[kind].goes_last) remove(kind);
    return std::move(steps_);
  }

 private:
  // What a setting is and what it is to be.
  struct Pair {
    Id id;
    Content from;
    Content to;
  };
  // IDs that take the same step.
  using Groups = std::map<std::pair<Content, Content>, std::vector<Id>>;

  static const Content *find(const Contents &contents, const Id &id) {
    const auto found = contents.find(id);
    return found == contents.end() ? nullptr : &found->second;
  }

  Content content(const SettingKind &kind, const Contents &contents, const Id &id) const {
    const Content *found = find(contents, id);
    return found == nullptr ? kind.usual(id) : *found;
  }

  // Every ID that is in one of both and differs.
  std::vector<Pair> differing(size_t number) const {
    const SettingKind &kind = all_[number];
    const Contents &from = now_[number];
    const Contents &to = to_.contents[number];
    std::vector<Pair> pairs;
    auto here = from.begin();
    auto there = to.begin();
    while (here != from.end() || there != to.end()) {
      const bool only_here =
          there == to.end() || (here != from.end() && here->first < there->first);
      const bool only_there =
          here == from.end() || (there != to.end() && there->first < here->first);
      const Id &id = only_there ? there->first : here->first;
      Pair pair = {id, only_there ? kind.usual(id) : here->second,
                   only_here ? kind.usual(id) : there->second};
      if (pair.from != pair.to) pairs.push_back(std::move(pair));
      if (!only_there) ++here;
      if (!only_here) ++there;
    }
    return pairs;
  }

  // What belongs to a thing that goes, goes with it.
  bool goes_with_owner(const SettingKind &kind, const Id &id) const {
    const std::optional<Owner> owner =
        kind.owner && !kind.outlives_owner ? kind.owner(id) : std::nullopt;
    if (!owner) return false;
    for (size_t number = 0; number < all_.size(); ++number)
      if (all_[number].title() == owner->kind)
        return !content(all_[number], to_.contents[number], owner->id);
    return false;
  }

  void remove(size_t number) {
    const SettingKind &kind = all_[number];
    Groups groups;
    for (const Pair &pair : differing(number)) {
      const bool is_remade =
          pair.from && pair.to && kind.remade && kind.remade(*pair.from, *pair.to);
      const bool gone = pair.from && !pair.to;
      if ((!gone && !is_remade) || goes_with_owner(kind, pair.id)) continue;
      groups[{Content(), Content()}].push_back(pair.id);
      now_[number][pair.id] = std::nullopt;
    }
    emit(number, groups, kind.removal_merges);
  }

  void change(size_t number) {
    const SettingKind &kind = all_[number];
    Groups groups;
    for (const Pair &pair : differing(number))
      if (pair.to && !goes_with_owner(kind, pair.id))
        groups[{pair.from, pair.to}].push_back(pair.id);
    emit(number, groups, kind.merges);
    for (const auto &[contents, ids] : groups)
      if (kind.upsets && contents.second == kind.upsets->by) forget(*kind.upsets);
  }

  // Of what is not read it is not known what is wanted either.
  void forget(const Upset &upset) {
    for (size_t number = 0; number < all_.size(); ++number) {
      if (all_[number].title() != upset.kind || is_unread(number)) continue;
      for (const int64_t id : upset.ids) now_[number][{id}] = kNotKnown;
    }
  }

  bool is_unread(size_t number) const {
    return from_.unread_kinds.contains(number) || to_.unread_kinds.contains(number);
  }

  void prepare(size_t number) {
    Commands commands;
    all_[number].prepare(now_[number], to_.contents[number], commands);
    for (std::string &command : commands) steps_.push_back({number, std::move(command)});
  }

  // In the order of the first ID of each command.
  void emit(size_t number, const Groups &groups, bool merges) {
    std::map<Id, Commands> sorted;
    for (const auto &[contents, ids] : groups)
      for (const auto &[first, text] : lists(ids, merges)) {
        const Change change = {text, contents.first, contents.second};
        all_[number].change(change, sorted[first]);
      }
    for (auto &[first, commands] : sorted)
      for (std::string &command : commands) steps_.push_back({number, std::move(command)});
  }

  static std::string id_text(const Id &id) {
    return id.text.empty() ? std::to_string(id.number) : id.text;
  }

  static std::vector<std::pair<Id, std::string>> lists(const std::vector<Id> &ids, bool merges) {
    std::vector<std::pair<Id, std::string>> texts;
    if (!merges) {
      for (const Id &id : ids) texts.emplace_back(id, id_text(id));
      return texts;
    }
    // Runs are kept whole.
    std::string text;
    Id first;
    for (size_t begin = 0; begin < ids.size();) {
      size_t end = begin + 1;
      while (end < ids.size() && ids[end].number == ids[end - 1].number + 1) ++end;
      std::vector<int64_t> run;
      for (size_t each = begin; each < end; ++each) run.push_back(ids[each].number);
      const std::string more = number_list_text(run);
      if (!text.empty() && text.size() + 1 + more.size() > kLongestList) {
        texts.emplace_back(first, text);
        text.clear();
      }
      if (text.empty()) first = ids[begin];
      text += text.empty() ? more : ',' + more;
      begin = end;
    }
    if (!text.empty()) texts.emplace_back(first, text);
    return texts;
  }

  const std::vector<SettingKind> &all_;
  std::vector<Contents> now_;
  const State &from_;
  const State &to_;
  std::vector<Step> steps_;
};

}  // namespace

std::vector<Step> plan(const State &from, const State &to, const Board &board) {
  return Planner(from, to, board).run();
}

}  // namespace swsh
