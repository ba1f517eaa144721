# SPDX-License-Identifier: MIT
# Compiler options that every target of the tree shares.
add_library(swctl_options INTERFACE)
target_compile_options(swctl_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${SWCTL_WARNINGS_AS_ERRORS}>:-Werror>
  # GCC's -Wconversion leaves these out in C++, Clang's does not.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes>)
if(SWCTL_SANITIZE)
  # Whether behaviour is defined is asked of what is under test. The tests
  # themselves have the address sanitizer alone, which sees what is written past
  # the arrays that they hand out.
  target_compile_options(swctl_options INTERFACE
    -fsanitize=${SWCTL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # The address sanitizer reports a null pointer where it is used. To ask for
    # it at every access to a member, and for alignment where no bytes are cast
    # to what they hold, would cost a quarter of the time to compile and to start.
    -fno-sanitize=null,vptr
    $<$<NOT:$<BOOL:$<TARGET_PROPERTY:SWCTL_CASTS_BYTES>>>:-fno-sanitize=alignment>
    $<$<BOOL:$<TARGET_PROPERTY:SWCTL_IS_TEST>>:-fno-sanitize=undefined>
    # A test says by itself in which line it fails.
    $<$<BOOL:$<TARGET_PROPERTY:SWCTL_IS_TEST>>:-g0>)
  target_link_options(swctl_options INTERFACE -fsanitize=${SWCTL_SANITIZE})
  # Clang puts its runtime into the program. Where the program is C, it must
  # still serve the libraries, which are C++.
  target_link_options(swctl_options INTERFACE
    $<$<LINK_LANG_AND_ID:C,Clang>:-fsanitize-link-c++-runtime>)
  target_link_libraries(swctl_options INTERFACE $<$<LINK_LANG_AND_ID:C,Clang>:stdc++>)
endif()

# The virtual chip and the probe.
add_library(swctl_tool_options INTERFACE)
target_compile_options(swctl_tool_options INTERFACE ${SWCTL_TOOL_OPTIONS})
target_link_libraries(swctl_tool_options INTERFACE swctl_options)

# Programs that wait for people, files and the chip.
add_library(swctl_program_options INTERFACE)
target_compile_options(swctl_program_options INTERFACE ${SWCTL_PROGRAM_OPTIONS})
target_link_libraries(swctl_program_options INTERFACE swctl_options)

# Compiles so many files of a target at a time, 0 for all, which takes a third of
# the processor time: what they include is read once. A name of a file's own must be
# its own among the files of its target; ./dev headers compiles each file alone.
function(swctl_unite target files)
  set_target_properties(${target} PROPERTIES
    UNITY_BUILD ${SWCTL_UNITY} UNITY_BUILD_BATCH_SIZE ${files})
endfunction()

# The same, a folder at a time: a name must be its own among the files of its
# folder. Folders given as A+B+C are one together; "." is the target's own.
function(swctl_unite_folders target)
  get_target_property(files ${target} SOURCES)
  foreach(file ${files})
    cmake_path(GET file PARENT_PATH folder)
    if(NOT folder)
      set(folder .)
    endif()
    set(number 0)
    foreach(together ${ARGN})
      math(EXPR number "${number} + 1")
      string(REPLACE "+" ";" folders ${together})
      if(folder IN_LIST folders)
        set(folder together_${number})
        break()
      endif()
    endforeach()
    string(MAKE_C_IDENTIFIER "folder_${folder}" group)
    set_source_files_properties(${file} PROPERTIES UNITY_GROUP ${group})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${SWCTL_UNITY} UNITY_BUILD_MODE GROUP)
endfunction()
