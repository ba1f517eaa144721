/* SPDX-License-Identifier: MIT */
/**
 * @file document.h
 * @brief Views and explanations of the virtual chip as JSON, for programs
 *        that are not written in C++.
 *
 * The same documents as dump_json() of view.h and explain_json() of explain.h.
 * What is wrong comes as a sentence in the place of the document.
 */
#ifndef SWCTL_VCHIP_DOCUMENT_H
#define SWCTL_VCHIP_DOCUMENT_H

#include <swctl-vchip/vchip.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief The whole chip, or a part of it, as a JSON document on one line.
 *
 * @param unit  switch unit; -1 for all
 * @param block name of a block as in the document; null or "" for all
 * @param text  receives the document, or the sentence if the result is
 *              negative; the caller releases it with vchip_text_free()
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_dump_text(int32_t unit, const char *block, char **text);

/**
 * @brief What would become of a frame that arrives now, and why, as a JSON
 *        document on one line. Changes nothing.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param bytes  `length` bytes of the frame; read, not kept
 * @param length its bytes, ::VCHIP_FRAME_MIN to ::VCHIP_FRAME_MAX
 * @param text   as in vchip_dump_text()
 * @return 0, ::VCHIP_E_PORT for a unit or port that does not exist,
 *         ::VCHIP_E_NULL, ::VCHIP_E_VALUE for another length, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_explain_text(uint32_t unit, int32_t port, const uint8_t *bytes,
                                     uint32_t length, char **text);

/**
 * @brief Releases a text that a function of this header made.
 * @param text the text; null does nothing
 */
SWCTL_API void vchip_text_free(char *text);

SWCTL_END_DECLS

#endif
