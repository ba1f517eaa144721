// SPDX-License-Identifier: MIT
// What an image holds, as a document, and such documents in files.
#ifndef VCHIPCTL_DOCUMENTS_H
#define VCHIPCTL_DOCUMENTS_H

#include <swctl-vchip/view.h>

#include <string>

#include "os/json.h"

namespace vchipctl {

// Whether the file holds a JSON object rather than an image.
bool is_document(const std::string &path);
// Throws Refused.
os::Json read_document(const std::string &path);
// Of an image, which is opened: all that it holds, or a part.
os::Json document_of(const std::string &image, const vchip::DumpPart &part = {});
// The same with its words by name, of which an image can be made again.
os::Json whole_document_of(const std::string &image);

}  // namespace vchipctl

#endif
