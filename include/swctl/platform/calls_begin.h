/* SPDX-License-Identifier: MIT */
/*
 * Words for the lists under calls/. Each call that the library makes into the
 * platform is listed there once, as
 *
 *     SWCTL_CALL(name, argument, ...)
 *
 * and a file that includes a list defines SWCTL_CALL, to make of it a prototype
 * (sdk.h), an interposer (the probe), or a name to look up (a test).
 *
 * An argument is a tuple (direction, type, name, count, form):
 *   direction  val  a value                 type name
 *              out  written by the call     type *name
 *              ref  read by the call        const type *name
 *              upd  read and written        type *name
 *   count      elements that a pointer points to; may name another argument
 *   form       how it is shown: dec or hex
 *
 * There is no include guard: calls_end.h undefines the words again.
 */
#ifndef SWCTL_CALLS_WORDS
#define SWCTL_CALLS_WORDS

#define VALUE(type, name) (val, type, name, 1, dec)
#define U32(name) (val, uint32_t, name, 1, dec)
#define I32(name) (val, int32_t, name, 1, dec)
#define MASK(name) (val, uint32_t, name, 1, hex)
#define UNIT U32(unit)
#define PORT I32(port)
#define OUT(name) (out, uint32_t, name, 1, dec)
#define OUT_HEX(name) (out, uint32_t, name, 1, hex)
#define OUT_OF(type, name, count) (out, type, name, count, dec)
#define REF_HEX(name) (ref, uint32_t, name, 1, hex)
#define REF_OF(type, name, count) (ref, type, name, count, dec)
#define UPDATE_OF(type, name, count) (upd, type, name, count, dec)
#define BYTES(name, count) (ref, uint8_t, name, count, hex)

/* SWCTL_PARAMETERS(argument, ...) is the parameter list of a prototype,
   SWCTL_ARGUMENTS(argument, ...) the names alone, for passing a call on. */
#define SWCTL_PARAMETERS(...) SWCTL_EACH(SWCTL_PARAMETER, __VA_ARGS__)
#define SWCTL_ARGUMENTS(...) SWCTL_EACH(SWCTL_ARGUMENT, __VA_ARGS__)

#define SWCTL_PARAMETER(tuple) SWCTL_PARAMETER_ tuple
#define SWCTL_PARAMETER_(direction, type, name, count, form) SWCTL_PARAMETER_##direction(type, name)
#define SWCTL_PARAMETER_val(type, name) type name
#define SWCTL_PARAMETER_out(type, name) type *name
#define SWCTL_PARAMETER_ref(type, name) const type *name
#define SWCTL_PARAMETER_upd(type, name) type *name

#define SWCTL_ARGUMENT(tuple) SWCTL_ARGUMENT_ tuple
#define SWCTL_ARGUMENT_(direction, type, name, count, form) name

/* SWCTL_EACH(M, a, b, ...) is M(a), M(b), ... for up to eight arguments. */
#define SWCTL_EACH(M, ...)                                                                 \
  SWCTL_PICK(__VA_ARGS__, SWCTL_EACH8, SWCTL_EACH7, SWCTL_EACH6, SWCTL_EACH5, SWCTL_EACH4, \
             SWCTL_EACH3, SWCTL_EACH2, SWCTL_EACH1, 0)                                     \
  (M, __VA_ARGS__)
#define SWCTL_PICK(a, b, c, d, e, f, g, h, picked, ...) picked
#define SWCTL_EACH1(M, a) M(a)
#define SWCTL_EACH2(M, a, ...) M(a), SWCTL_EACH1(M, __VA_ARGS__)
#define SWCTL_EACH3(M, a, ...) M(a), SWCTL_EACH2(M, __VA_ARGS__)
#define SWCTL_EACH4(M, a, ...) M(a), SWCTL_EACH3(M, __VA_ARGS__)
#define SWCTL_EACH5(M, a, ...) M(a), SWCTL_EACH4(M, __VA_ARGS__)
#define SWCTL_EACH6(M, a, ...) M(a), SWCTL_EACH5(M, __VA_ARGS__)
#define SWCTL_EACH7(M, a, ...) M(a), SWCTL_EACH6(M, __VA_ARGS__)
#define SWCTL_EACH8(M, a, ...) M(a), SWCTL_EACH7(M, __VA_ARGS__)

#endif
