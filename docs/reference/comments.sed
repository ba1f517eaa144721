# SPDX-License-Identifier: MIT
# Turns the comments of the C++ headers into ones that Doxygen reads: in front
# of a declaration, and after a member.
1s/.*//
s|^\( *\)// |\1/// |
s|\([;,]\)  *// |\1 ///< |
