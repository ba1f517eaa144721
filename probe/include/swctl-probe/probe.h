// SPDX-License-Identifier: MIT
/**
 * @file probe.h
 * @brief The probe, for test programs: the calls a library makes, and answers
 *        of one's own.
 *
 * The probe is between libswctl and what implements the SDK, the
 * adapter and the log. Every call passes through it, on to the next library
 * in the program's search order, and leaves a record. A test program links
 * libswctl-probe in front of the virtual chip and asks for the records here.
 *
 * A call is written as one line of text, the same in a trace and in a test:
 *
 *     rtk_port_link_get(unit=0, port=3, link=>1) = 0
 *     rtk_port_phyAutoNegoAbility_get(unit=0, port=3, ability=>0xf2000000) = 0
 *     rtk_l2_addr_del(unit=0, vid=10, mac=[02 00 00 00 00 01]) = -1005 !
 *
 * "=" shows what the call was given, "=>" what it wrote, an update shows both
 * ("mask=0x1=>0x3"). Outputs of a failed call (negative result) are left out,
 * as are outputs that a made-up answer did not write. A "!" at the end marks a
 * result that the probe made up. A null address is "link=null", an array
 * "ports=[1 2 3]". The fields of a record are arguments of their own, named
 * "entry.vid" or, in an array of records, "table[2].vid".
 *
 * Until one of take(), take_lines(), forget(), plan() and answer() is first
 * called, nothing is kept in memory: a fixture calls forget() before the
 * library under test is used. A call that the platform makes from inside one
 * of its own calls is passed on and leaves no record.
 *
 * Wherever an argument is named, "ports[2]" is an element of an array;
 * without an index the first is meant.
 *
 * All functions may be called from any thread.
 */
#ifndef SWCTL_PROBE_PROBE_H
#define SWCTL_PROBE_PROBE_H

#include <swctl/types.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace swprobe {

// How an argument's elements are shown, and which way they travel.
enum class Form { dec, hex, text };
enum class Direction { value, out, ref, update };

// One argument of one call. Elements are kept as numbers, so a recording reads
// the same on a machine of either byte order.
struct Argument {
  std::string name;
  Direction direction;
  Form form;
  int width;                    // bytes of one element; 0 for a null record
  bool array;                   // shown in brackets, however many elements
  bool null;                    // a null address was passed
  std::vector<int64_t> before;  // value, ref, update
  std::vector<int64_t> after;   // out, update; empty if left out of the line
  std::string text;             // Form::text

  bool operator==(const Argument &) const = default;
};

struct Call {
  uint64_t number;  // 1 for the first call that was watched; in order of return
  std::string name;
  std::vector<Argument> arguments;
  int64_t result;
  bool has_result;  // false for functions that return nothing
  bool made_up;     // the probe answered, not the platform
  // A function of libswctl rather than a call of the platform; only in a
  // recording that was asked for them. `depth` is how many of those it was
  // called inside of.
  bool of_library = false;
  int depth = 0;
  Form result_form = Form::dec;  // hex for an address

  // The value of an argument by name: what was passed, or what was written.
  // Throws std::out_of_range for a name the call does not have and for a value
  // that is not there (a null address, an output of a failed call, an index
  // past the end).
  SWCTL_API int64_t in(const std::string &argument) const;
  SWCTL_API int64_t out(const std::string &argument) const;
  // The line described at the top.
  SWCTL_API std::string line() const;

  bool operator==(const Call &) const = default;
};

// The calls since the last take() or forget(), oldest first.
SWCTL_API std::vector<Call> take();
// The same as lines of text.
SWCTL_API std::vector<std::string> take_lines();
SWCTL_API void forget();

// Answers that replace the platform's. The platform is not called then.
struct Answer {
  int64_t result = 0;
  // Written to the outputs of these names before the call returns, whatever
  // the result; other outputs stay as the caller had them.
  std::vector<std::pair<std::string, int64_t>> outputs;
};

// Adds one line of a fault plan, in the grammar of docs/probe.md, for example
// "rtk_vlan_port_set nth 3 result -5" or "rtk_*_get port 7 result -1".
// Throws std::invalid_argument naming the wrong word.
SWCTL_API void plan(const std::string &rule);
// Answers the nth call of `name` from now on (1 is the next one; 0 is every
// call) with `answer`. An answer goes before every plan line, one to a certain
// call before one to every call, a newer one before an older one. Throws
// std::invalid_argument for a call or an output that is not known.
SWCTL_API void answer(const std::string &name, uint64_t nth, const Answer &answer);
// Forgets every plan line and answer.
SWCTL_API void clear_plan();
// How often the plan and the answers have answered for the platform since
// clear_plan().
SWCTL_API uint64_t made_up_count();

struct Recording {
  std::vector<Call> calls;
  std::vector<uint64_t> lines;  // of the file, where each of the calls is
  // The last line, if it is not whole because its writer was killed: it is in
  // none of the calls. 0 otherwise.
  uint64_t cut_off = 0;
};

// Reads a recording back; "-" is standard input. Equal to what take() gave, but
// that numbers which a call takes as bytes are in the order of this machine.
// Throws std::runtime_error naming file and line.
SWCTL_API Recording load_recording(const std::string &path);
// Its calls alone.
SWCTL_API std::vector<Call> read_recording(const std::string &path);

// Makes a recorded call again, on the platform of this process, with what went
// into it when it was recorded. It passes the probe like any other: take()
// gives what it answers now. The area of a rule of the adapter is not in a
// record; it is kept from the calls that put the rule together until the one
// that hands it over. Throws std::invalid_argument, before anything is called,
// for a call that is not known and for a record that lacks something.
SWCTL_API void repeat(const Call &recorded);
// The same in two steps, for who makes a call more than once: the arguments are
// built now, what is returned makes the call. Throws what repeat() would throw.
SWCTL_API std::function<void()> prepare(const Call &recorded);

}  // namespace swprobe

#endif
