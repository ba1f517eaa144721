// SPDX-License-Identifier: MIT
#include "library_call.h"

#include <utility>

#include "keep_errno.h"
#include "observation.h"
#include "session.h"

namespace swprobe {

LibraryCall::LibraryCall(Site &site, std::span<const Address> addresses) : site_(site) {
  const KeepErrno keep_errno;
  Session &session = Session::get();
  watched_ = session.watches_library() && !Observation::is_inside();
  next_ = site_.find_next();
  session.open_short_way(site_, next_);
  if (!watched_) return;
  call_ = captured(site_, addresses, parts_);
  session.enter(call_);
}

LibraryCall::~LibraryCall() {
  // A thread that is cancelled does not return.
  if (watched_) Session::get().abandon();
}

void LibraryCall::returned(int64_t result) {
  const KeepErrno keep_errno;
  call_.result = result;
  if (result >= 0 && next_ != nullptr) capture_after(parts_, call_);
  watched_ = false;
  Session::get().leave(std::move(call_));
}

}  // namespace swprobe
