# SPDX-License-Identifier: MIT
# Compiler options that every target of the tree shares.
add_library(swctl_options INTERFACE)
target_compile_options(swctl_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes>)
if(SWCTL_SANITIZE)
  target_compile_options(swctl_options INTERFACE
    -fsanitize=${SWCTL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(swctl_options INTERFACE -fsanitize=${SWCTL_SANITIZE})
endif()
