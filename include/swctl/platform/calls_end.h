/* SPDX-License-Identifier: MIT */
/* Undefines the words of calls_begin.h. No include guard, on purpose. */
#undef SWCTL_CALLS_WORDS
#undef SWCTL_CALL

#undef VALUE
#undef U32
#undef I32
#undef MASK
#undef UNIT
#undef PORT
#undef OUT
#undef OUT_HEX
#undef OUT_OF
#undef REF_HEX
#undef REF_OF
#undef UPDATE_OF
#undef BYTES

#undef SWCTL_PARAMETERS
#undef SWCTL_ARGUMENTS
#undef SWCTL_PARAMETER
#undef SWCTL_PARAMETER_
#undef SWCTL_PARAMETER_val
#undef SWCTL_PARAMETER_out
#undef SWCTL_PARAMETER_ref
#undef SWCTL_PARAMETER_upd
#undef SWCTL_ARGUMENT
#undef SWCTL_ARGUMENT_
#undef SWCTL_EACH
#undef SWCTL_PICK
#undef SWCTL_EACH1
#undef SWCTL_EACH2
#undef SWCTL_EACH3
#undef SWCTL_EACH4
#undef SWCTL_EACH5
#undef SWCTL_EACH6
#undef SWCTL_EACH7
#undef SWCTL_EACH8
