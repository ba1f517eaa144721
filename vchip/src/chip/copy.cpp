// SPDX-License-Identifier: MIT
#include "chip/copy.h"

#include <new>

#include "chip/process.h"
#include "chip/viewing.h"
#include "image/sparse.h"

namespace vchip {

Copy::Copy(const Locked &) : state_(static_cast<State *>(private_memory(sizeof(State)))) {
  if (state_ == nullptr) throw std::bad_alloc();
  if (!read_image(this_process(), state_)) copy_sparse(this_process().state, state_, sizeof(State));
}

Copy::~Copy() {
  give_back_memory(state_, sizeof(State));
}

Copy take_copy(std::string &image) {
  Viewing chip;
  image = chip.image_path();
  return Copy(chip.locked());
}

}  // namespace vchip
