// SPDX-License-Identifier: MIT
// Memory and files that are mostly zero, and take only what is not.
#ifndef VCHIP_IMAGE_SPARSE_H
#define VCHIP_IMAGE_SPARSE_H

#include <cstddef>

namespace vchip {

// An address space of zeroes that belongs to this process alone; null if the
// system has none left.
void *private_memory(size_t size);
void give_back_memory(void *memory, size_t size);

// Makes private memory zero, or the memory that a file is mapped to, from
// `offset` on. What it took goes back to the system where that can be done: by
// the descriptor if it is not -1, else by the mapping.
void zero_private(void *memory, size_t size);
void zero_mapped(void *memory, size_t size, int descriptor, size_t offset);

// Writes memory into a new file of that size. False: errno says why.
bool write_sparse(int descriptor, const void *memory, size_t size);

// Copies a file, or memory, into zeroes. False: the file could not be read.
bool read_sparse(int descriptor, void *zeroes, size_t size);
void copy_sparse(const void *memory, void *zeroes, size_t size);

}  // namespace vchip

#endif
