// SPDX-License-Identifier: MIT
// Documents for programs that are not written in C++: no exception leaves here.
#include <swctl-vchip/document.h>
#include <swctl-vchip/explain.h>
#include <swctl-vchip/view.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

// Null only if memory runs out.
char *document_copy(const std::string &text) {
  char *const copy = static_cast<char *>(malloc(text.size() + 1));
  if (copy != nullptr) memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

template <class Write>
int32_t written(char **text, int32_t out_of_range, Write write) {
  if (text == nullptr) return VCHIP_E_NULL;
  int32_t result = VCHIP_E_IMAGE;
  std::string said;
  try {
    said = write();
    result = 0;
  } catch (const std::out_of_range &error) {
    said = error.what();
    result = out_of_range;
  } catch (const std::invalid_argument &error) {
    said = error.what();
    result = VCHIP_E_VALUE;
  } catch (const std::exception &error) {
    said = error.what();
  }
  *text = document_copy(said);
  return result;
}

std::string dumped(int32_t unit, const char *block) {
  if (unit < -1 || unit >= VCHIP_UNITS) throw std::out_of_range("there is no such switch unit");
  return vchip::dump_json(-1, {unit, block == nullptr ? "" : block});
}

}  // namespace

int32_t vchip_dump_text(int32_t unit, const char *block, char **text) {
  return written(text, VCHIP_E_UNIT, [&] { return dumped(unit, block); });
}

int32_t vchip_explain_text(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length,
                           char **text) {
  if (bytes == nullptr) return VCHIP_E_NULL;
  return written(text, VCHIP_E_PORT,
                 [&] { return vchip::explain_json(unit, port, bytes, length); });
}

void vchip_text_free(char *text) {
  free(text);
}
