#pragma once

#include <span>
#include <string_view>

#include "support/bytes.h"

// What has to hold whatever the bytes are. A property returns when it holds and stops the program
// with a line that says what did not. Each reads its input in a form of its own; none keeps
// anything from one input to the next, or leaves a file behind.
namespace quorvane::Fuzz {

// The summaries of a report descriptor agree with the complete reading of its elements, and both
// with an item by item reading of the bytes. The differences there are:
//
//   Push and Pop   the summaries pass over them; the elements obey the first 64 levels
//   overflow       a report of 2^63 bits or more stops the summaries; the elements put what follows
//                  outside of every report. The kernel makes no node for such a device.
//
// So the two agree once Push and Pop are taken out of the descriptor, and also once each Pop is
// written out as the items that it brings back.
void descriptor(ByteView bytes);

// A descriptor's elements, and the values that reports have by them: each report put together again
// from its values is the report, a repeated one has nothing new, and what an array no longer lists
// is gone. Input: the descriptor's length in two bytes, the descriptor, and reports of an ID, a
// length and so many bytes.
void elements(ByteView bytes);

// A session that gets any reports keeps the latest of each kind, byte for byte, tells its handlers
// of each, and writes every kept value back as the byte that it came as. Input: a product, then
// reports, each led by a byte with its kind in the upper two bits and its length in the others.
void reports(ByteView bytes);

// A file of presets loads, or is refused with a DecodingError; what loads saves and loads again to
// the same. What does not load is kept when the file is saved. Input: the file.
void presetFile(ByteView bytes);

// The same for the files that presets come from and go to: share files, lists, single presets.
void shareFile(ByteView bytes);

// What the kernel says about a device, and udev's rules. Input: an uevent text, a zero byte, a
// file of rules.
void uevent(ByteView bytes);

// The words of a command line, read but not run, and completed. Input: one word a line.
void words(ByteView bytes);

// Edits to stage. Input: their text.
void demoStage(ByteView bytes);

// A simulated base takes any packets, keeps a menu that its product has, answers what it is asked,
// and notes every packet of a wrong form. Input: a product, a behaviour, then packets like those of
// `reports`.
void simbase(ByteView bytes);

// Does not hold for what begins with "bug!": shows that a property that fails is noticed.
void planted(ByteView bytes);

struct Property {
  std::string_view name;  // of its fuzzer, seeds and dictionary
  void (*check)(ByteView bytes);
};

// All but the planted one.
std::span<const Property> properties();

// Stops the program when there is no such property; the planted one has a name too.
Property propertyNamed(std::string_view name);

}  // namespace quorvane::Fuzz
