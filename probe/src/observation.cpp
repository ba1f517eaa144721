// SPDX-License-Identifier: MIT
#include "observation.h"

#include "keep_errno.h"
#include "plain_recording.h"

namespace swprobe {
namespace {

// Set while a call is inside the platform: calls that the platform makes are
// its own affair.
thread_local bool inside = false;

}  // namespace

Observation::Observation(Site &site, std::span<const Address> addresses)
    : site_(site), addresses_(addresses), outermost_(!inside) {
  const KeepErrno keep_errno;
  inside = true;
  if (outermost_) look_ = Session::get().look();
  if (look_ == Look::at_all) look();
  if (look_ == Look::to_record) PlainRecording::mine().begin(site_, addresses_);
  if (!verdict_) next_ = site.find_next();
  if (outermost_ && look_ == Look::none) Session::get().open_short_way(site, next_);
}

Observation::~Observation() {
  if (outermost_) inside = false;
}

bool Observation::is_inside() {
  return inside;
}

void Observation::look() {
  call_ = captured(site_, addresses_, parts_);
  verdict_ = Session::get().judge(call_, expected_);
}

int32_t Observation::finish(int32_t result) {
  if (verdict_) {
    result = verdict_->result;
  } else if (next_ == nullptr) {
    result = -1;
  }
  const KeepErrno keep_errno;
  if (look_ == Look::at_all) add(result);
  if (look_ == Look::to_record) record(result);
  return result;
}

void Observation::record(int32_t result) {
  const bool made_up = next_ == nullptr;
  const bool refused = site_.has_result && result < 0;
  PlainRecording &recording = PlainRecording::mine();
  recording.end(site_, addresses_, {!made_up && !refused, result, made_up});
  Session::get().record(recording);
}

void Observation::add(int32_t result) {
  call_.made_up = next_ == nullptr;
  call_.result = site_.has_result ? result : 0;
  if (verdict_) {
    answer_outputs();
  } else if (next_ != nullptr && call_.result >= 0) {
    capture_after(parts_, call_);
  }
  Session::get().add(std::move(call_), expected_);
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
