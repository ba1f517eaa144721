// SPDX-License-Identifier: MIT
#include "observation.h"

#include "keep_errno.h"
#include "session.h"

namespace swprobe {
namespace {

// Set while a call is inside the platform: calls that the platform makes are
// its own affair.
thread_local bool inside = false;

}  // namespace

Observation::Observation(Site &site, std::span<const Address> addresses)
    : site_(site), outermost_(!inside) {
  const KeepErrno keep_errno;
  inside = true;
  watched_ = outermost_ && Session::get().watches();
  if (watched_) look(addresses);
  if (!verdict_) next_ = site.find_next();
  if (outermost_ && !watched_) Session::get().open_short_way(site, next_);
}

Observation::~Observation() {
  if (outermost_) inside = false;
}

bool Observation::is_inside() {
  return inside;
}

void Observation::look(std::span<const Address> addresses) {
  call_ = captured(site_, addresses, parts_);
  verdict_ = Session::get().judge(call_, expected_);
}

int32_t Observation::finish(int32_t result) {
  if (verdict_) {
    result = verdict_->result;
  } else if (next_ == nullptr) {
    result = -1;
  }
  if (!watched_) return result;
  const KeepErrno keep_errno;
  call_.made_up = next_ == nullptr;
  call_.result = site_.has_result ? result : 0;
  if (verdict_) {
    answer_outputs();
  } else if (next_ != nullptr && call_.result >= 0) {
    capture_after(parts_, call_);
  }
  Session::get().add(std::move(call_), expected_);
  return result;
}

void Observation::answer_output(const Output &output) {
  for (size_t i = 0; i < parts_.size(); ++i) {
    const Part &part = parts_[i];
    if (part.name != output.place.name || !part.info->is_output()) continue;
    bool written = false;
    size_t index = output.place.index;
    for (const int64_t value : output.values) written |= store(part, index++, value);
    if (written && call_.result >= 0) call_.arguments[i].after = load(part);
  }
}

void Observation::answer_outputs() {
  for (const Output &output : verdict_->outputs) answer_output(output);
}

}  // namespace swprobe
