// SPDX-License-Identifier: MIT
// What an image holds, as a document, and such documents in files.
#ifndef VCHIPCTL_DOCUMENTS_H
#define VCHIPCTL_DOCUMENTS_H

#include <nlohmann/json.hpp>
#include <string>

namespace vchipctl {

// Whether the file holds a JSON object rather than an image.
bool is_document(const std::string &path);
// Throws Refused.
nlohmann::ordered_json read_document(const std::string &path);
// Of an image, which is opened: all that it holds, with its words by name.
nlohmann::ordered_json document_of(const std::string &image);

}  // namespace vchipctl

#endif
